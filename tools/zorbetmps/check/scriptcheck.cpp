#include "zorbetmps/check/scriptcheck.h"

#include "formats/base/latin1.h"
#include "zorbetmps/check/linerules.h"
#include "zorbetmps/check/nearest.h"
#include "zorbetmps/check/scriptrules.h"

#include "ykeyword.h"
#include "yprecompiled.h"

#include <algorithm>
#include <filesystem>

namespace mps {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kComponent = ".lrn";
/// The script's own name while it is compiled; no include can be called so.
constexpr const char* kOwnName = "";

std::string tooLong(std::size_t limit) {
    return "Script too long: at most " + std::to_string(limit) +
           " bytes are allowed; move a part of it into a script of its own";
}

/// One line of a text of the script, as it can be shown anywhere.
std::string shown(std::string_view text) {
    std::string line(text.substr(0, text.find_first_of("\r\n")));
    const auto isControl = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 || (byte >= 0x7F && byte < 0xA0);
    };
    std::ranges::replace_if(line, isControl, ' ');
    line.erase(line.find_last_not_of(' ') + 1);
    return formats::utf8FromLatin1(line);
}

} // namespace

std::string realPath(const std::string& path) {
    std::error_code error;
    const fs::path real = fs::weakly_canonical(path, error);
    return error ? path : real.string();
}

bool isOfCompiler(const Finding& finding) {
    return finding.rule == Rule::Syntax || finding.rule == Rule::UnknownCommand;
}

void ScriptCheck::run() {
    if (const auto bytes = read())
        compile(*bytes, [this](const YScript& script, YHeap& heap) {
            if (!script.lines.empty()) checkScript(script, heap);
        });
}

std::optional<std::string> ScriptCheck::read() {
    std::string why;
    auto bytes = readHostFile(file_, kYMaxPrecompiledSize, why);
    if (!bytes) tell(Rule::Syntax, why);
    return bytes;
}

void ScriptCheck::compile(const std::string& bytes, const Look& look) {
    YHeap::recreate();
    if (YIsPrecompiled(bytes))
        checkPrecompiled(bytes, look);
    else
        checkText(bytes, look);
    YHeap::recreate();
}

void ScriptCheck::checkText(std::string bytes, const Look& look) {
    auto text = lookAt(file_, std::move(bytes));
    if (!text) return tell(Rule::Syntax, tooLong(YCompiler::kMaxTextSize));
    YCompiler* asking = nullptr;
    const auto reader = [this, &asking](const std::string& name) {
        const auto [file, line] = asking->includer();
        return readInclude(name, pathOf(file), line);
    };
    YHeap& heap = YHeap::current();
    YCompiler compiler(heap, reader, YCompiler::OnError::Collect);
    asking = &compiler;
    const auto script = compiler.compile(kOwnName, *std::move(text));
    for (const YCompileError& error : compiler.errors()) {
        const std::string& file = pathOf(error.file);
        if (error.kind == YCompileError::Kind::UndefinedCommand)
            add({Rule::UnknownCommand, file, error.line, error.column,
                 error.description() + vocabulary_.nearCommand(error.text)});
        else
            add({Rule::Syntax, file, error.line, error.column, error.description()});
    }
    for (int i = 0; i < heap.count(); ++i) mention(heap.get(i));
    if (script) look(*script, heap);
}

void ScriptCheck::checkScript(const YScript& script, YHeap& heap) {
    const ScriptModel model(script, heap);
    const auto isComponent = [this](std::string_view name) {
        return includes_.find(std::string(name).append(kComponent)).has_value();
    };
    const ScriptFacts facts(
        model, [this](std::string_view name) { return vocabulary_.classNamed(name); }, isComponent);
    const GameFacts game{
        .hasScript = [this](std::string_view name) { return includes_.find(name).has_value(); },
        .otherSpelling = [this](std::string_view name) { return otherSpelling(name); },
        .isComponent = isComponent,
        .nearScript =
            [this](std::string_view name) {
                const std::vector<std::string> scripts = includes_.scripts();
                const std::vector<std::string_view> names(scripts.begin(), scripts.end());
                return didYouMean(name, names);
            },
        .resources = resources_,
    };
    ScriptRules(model, facts, vocabulary_, game,
                [&](Rule rule, YSourceLine place, int column, const std::string& text) {
                    add({rule, pathOf(script.files[place.file]), place.line, column, text});
                })
        .run();
}

/// The text in the game's letters, none when it is too long; tells what is seen without compiling
/// it.
std::optional<std::string> ScriptCheck::lookAt(const std::string& file, std::string bytes) {
    std::vector<formats::LackedLetter> lacked;
    std::string text = formats::latin1FromAuthor(std::move(bytes), lacked);
    if (text.size() > YCompiler::kMaxTextSize) return std::nullopt;
    files_.insert(realPath(file));
    const auto [silences, isNew] = silences_.try_emplace(file, text);
    if (!isNew) return text;
    for (const Silences::Mistake& mistake : silences->second.mistakes())
        findings_.push_back({Rule::Silence, file, mistake.line, 0, mistake.text});
    for (const auto& [line, letter] : lacked)
        add({Rule::Letter, file, line, 0,
             "the game has the letters of Latin-1 only, and \"?\" for " + letter});
    checkLines(text, [&](Rule rule, int line, int column, const std::string& what) {
        add({rule, file, line, column, what});
    });
    return text;
}

std::string ScriptCheck::otherSpelling(std::string_view name) const {
    const auto path = includes_.find(name);
    if (!path) return {};
    const std::string file = fs::path(*path).filename().string();
    const std::string latin1 = formats::latin1FromUtf8(file).value_or(file);
    return name.substr(name.find_last_of("\\/:") + 1) == latin1 ? std::string() : latin1;
}

YCompiler::Source ScriptCheck::readInclude(const std::string& name, const std::string& includer,
                                           int line) {
    const auto path = includes_.find(name);
    if (!path) return {std::nullopt, "can't find " + name};
    shownPaths_.emplace(name, *path);
    if (const std::string other = otherSpelling(name); !other.empty())
        add({Rule::LetterCase, includer, line, 0,
             "include " + name + " reads a file that is called " + other});
    std::string why;
    auto bytes = readHostFile(*path, kYMaxPrecompiledSize, why);
    if (!bytes) return {std::nullopt, name + ": " + why};
    auto text = lookAt(*path, *std::move(bytes));
    if (!text) return {std::nullopt, name + ": " + tooLong(YCompiler::kMaxTextSize)};
    return {std::move(text), {}};
}

void ScriptCheck::mention(const YVariable& word) {
    std::string_view text = word.text();
    if (text.size() > 2 && YVariable::isQuote(text.front())) text = text.substr(1, text.size() - 2);
    if (!formats::lowerAscii(text).ends_with(kScriptExtension)) return;
    if (const auto path = includes_.find(text)) mentions_.insert(realPath(*path));
}

const std::string& ScriptCheck::pathOf(const std::string& name) const {
    const auto path = shownPaths_.find(name);
    return path == shownPaths_.end() ? file_ : path->second;
}

void ScriptCheck::checkPrecompiled(std::string_view bytes, const Look& look) {
    files_.insert(realPath(file_));
    if (bytes.size() > kYMaxPrecompiledSize) {
        tell(Rule::Syntax, tooLong(kYMaxPrecompiledSize));
        return;
    }
    YHeap& heap = YHeap::current();
    const auto script = YReadPrecompiled(heap, bytes);
    if (!script) {
        tell(Rule::Syntax, "damaged precompiled script");
        return;
    }
    for (int i = 0; i < heap.count(); ++i) mention(heap.get(i));
    for (const YInstruction& instruction : script->instructions) {
        if (instruction.opcode != YOpcode::Command) continue;
        const auto word = static_cast<std::size_t>(instruction.operand);
        const std::string& command = heap.get(script->operands[word]).text();
        if (!YCommands::find(command)) tell(Rule::UnknownCommand, command + " is undefined");
    }
    look(*script, heap);
}

void ScriptCheck::add(Finding finding) {
    const auto silences = silences_.find(finding.file);
    if (finding.rule != Rule::Syntax && silences != silences_.end() &&
        silences->second.covers(finding.rule, finding.line))
        return;
    if (finding.rule != Rule::Letter) finding.text = shown(finding.text);
    if (isOfCompiler(finding) || std::ranges::find(findings_, finding) == findings_.end())
        findings_.push_back(std::move(finding));
}

} // namespace mps
