#include "zorbetmps/check/check.h"

#include "formats/base/latin1.h"
#include "zorbetmps/check/includes.h"
#include "zorbetmps/check/linerules.h"
#include "zorbetmps/check/nearest.h"
#include "zorbetmps/check/scriptrules.h"
#include "zorbetmps/check/silences.h"

#include "ycompiler.h"
#include "ykeyword.h"
#include "yprecompiled.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <tuple>

namespace mps {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStartScript = "Startup.mps";
constexpr std::string_view kScript = ".mps";
constexpr std::string_view kComponent = ".lrn";
constexpr std::size_t kLargestText = std::size_t{1} << 20; ///< of maps and settings

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

std::string realPath(const std::string& path) {
    std::error_code error;
    const fs::path real = fs::weakly_canonical(path, error);
    return error ? path : real.string();
}

bool hasExtension(const fs::path& path, std::string_view extension) {
    return formats::lowerAscii(path.extension().string()) == extension;
}

bool isOfCompiler(const Finding& finding) {
    return finding.rule == Rule::Syntax || finding.rule == Rule::UnknownCommand;
}

/// One script by itself, with all that it includes.
class ScriptCheck {
  public:
    ScriptCheck(const std::string& file, const Vocabulary& vocabulary)
        : file_(file), vocabulary_(vocabulary), includes_(file) {}

    void run() {
        YHeap::recreate();
        std::string why;
        auto bytes = readHostFile(file_, kYMaxPrecompiledSize, why);
        if (!bytes)
            tell(Rule::Syntax, 0, 0, why);
        else if (YIsPrecompiled(*bytes))
            checkPrecompiled(*bytes);
        else if (bytes->size() > YCompiler::kMaxTextSize)
            tell(Rule::Syntax, 0, 0, tooLong(YCompiler::kMaxTextSize));
        else
            checkText(*std::move(bytes));
        YHeap::recreate();
    }

    std::vector<Finding> findings;
    std::map<std::string, std::string, std::less<>> included; ///< real paths by include names
    std::set<std::string> files;    ///< real paths of all that was read, its own too
    std::set<std::string> mentions; ///< real paths of scripts that its words name

  private:
    void checkText(std::string text) {
        lookAt(file_, text);
        const auto reader = [this](const std::string& name) { return readInclude(name); };
        YHeap& heap = YHeap::current();
        YCompiler compiler(heap, reader, YCompiler::OnError::Collect);
        const auto script = compiler.compile(kOwnName, std::move(text));
        for (const YCompileError& error : compiler.errors()) {
            const std::string& file = pathOf(error.file);
            if (error.kind == YCompileError::Kind::UndefinedCommand)
                add({Rule::UnknownCommand, file, error.line, error.column,
                     error.description() + vocabulary_.nearCommand(error.text)});
            else
                add({Rule::Syntax, file, error.line, error.column, error.description()});
        }
        for (int i = 0; i < heap.count(); ++i) mention(heap.get(i));
        if (script) checkScript(*script, heap);
    }

    void checkScript(const YScript& script, YHeap& heap) {
        const ScriptModel model(script, heap);
        const auto isComponent = [this](std::string_view name) {
            return includes_.find(std::string(name).append(kComponent)).has_value();
        };
        const ScriptFacts facts(
            model, [this](std::string_view name) { return vocabulary_.classNamed(name); },
            isComponent);
        const GameFacts game{
            .hasScript = [this](std::string_view name) -> std::optional<bool> {
                return includes_.find(name).has_value();
            },
            .otherSpelling = [this](std::string_view name) { return otherSpelling(name); },
            .isComponent = isComponent,
            .nearScript =
                [this](std::string_view name) {
                    const std::vector<std::string> scripts = includes_.scripts();
                    const std::vector<std::string_view> names(scripts.begin(), scripts.end());
                    return didYouMean(name, names);
                },
        };
        ScriptRules(model, facts, vocabulary_, game,
                    [&](Rule rule, YSourceLine place, int column, const std::string& text) {
                        add({rule, pathOf(script.files[place.file]), place.line, column, text});
                    })
            .run();
    }

    /// What is seen without compiling a text.
    void lookAt(const std::string& file, const std::string& text) {
        files.insert(realPath(file));
        const auto silences = silences_.try_emplace(file, text).first;
        for (const Silences::Mistake& mistake : silences->second.mistakes())
            findings.push_back({Rule::Silence, file, mistake.line, 0, mistake.text});
        checkLines(text, [&](Rule rule, int line, int column, const std::string& what) {
            add({rule, file, line, column, what});
        });
    }

    [[nodiscard]] std::string otherSpelling(std::string_view name) const {
        const auto path = includes_.find(name);
        if (!path) return {};
        const std::string file = fs::path(*path).filename().string();
        const std::string latin1 = formats::latin1FromUtf8(file).value_or(file);
        return name.substr(name.find_last_of("\\/:") + 1) == latin1 ? std::string() : latin1;
    }

    YCompiler::Source readInclude(const std::string& name) {
        const auto path = includes_.find(name);
        if (!path) return {std::nullopt, "can't find " + name};
        const bool isNew = included.emplace(name, realPath(*path)).second;
        if (const std::string other = otherSpelling(name); isNew && !other.empty())
            tell(Rule::LetterCase, 0, 0,
                 "include " + name + " reads a file that is called " + other);
        shownPaths_[name] = *path;
        std::string why;
        auto text = readHostFile(*path, YCompiler::kMaxTextSize, why);
        if (!text) return {std::nullopt, name + ": " + why};
        if (text->size() > YCompiler::kMaxTextSize)
            return {std::nullopt, name + ": " + tooLong(YCompiler::kMaxTextSize)};
        if (isNew) lookAt(*path, *text);
        return {std::move(text), {}};
    }

    void mention(const YVariable& word) {
        std::string_view text = word.text();
        if (text.size() > 2 && YVariable::isQuote(text.front()))
            text = text.substr(1, text.size() - 2);
        if (!formats::lowerAscii(text).ends_with(kScript)) return;
        if (const auto path = includes_.find(text)) mentions.insert(realPath(*path));
    }

    [[nodiscard]] const std::string& pathOf(const std::string& name) const {
        const auto path = shownPaths_.find(name);
        return path == shownPaths_.end() ? file_ : path->second;
    }

    void checkPrecompiled(std::string_view bytes) {
        files.insert(realPath(file_));
        if (bytes.size() > kYMaxPrecompiledSize) {
            tell(Rule::Syntax, 0, 0, tooLong(kYMaxPrecompiledSize));
            return;
        }
        YHeap& heap = YHeap::current();
        const auto script = YReadPrecompiled(heap, bytes);
        if (!script) {
            tell(Rule::Syntax, 0, 0, "damaged precompiled script");
            return;
        }
        for (int i = 0; i < heap.count(); ++i) mention(heap.get(i));
        for (const YInstruction& instruction : script->instructions) {
            if (instruction.opcode != YOpcode::Command) continue;
            const auto word = static_cast<std::size_t>(instruction.operand);
            const std::string& command = heap.get(script->operands[word]).text();
            if (!YCommands::find(command))
                tell(Rule::UnknownCommand, 0, 0, command + " is undefined");
        }
    }

    void tell(Rule rule, int line, int column, const std::string& text) {
        add({rule, file_, line, column, text});
    }

    void add(Finding finding) {
        const auto silences = silences_.find(finding.file);
        if (finding.rule != Rule::Syntax && silences != silences_.end() &&
            silences->second.covers(finding.rule, finding.line))
            return;
        finding.text = shown(finding.text);
        if (isOfCompiler(finding) || std::ranges::find(findings, finding) == findings.end())
            findings.push_back(std::move(finding));
    }

    const std::string& file_;
    const Vocabulary& vocabulary_;
    Includes includes_;
    std::map<std::string, std::string, std::less<>> shownPaths_; ///< by include names
    std::map<std::string, Silences, std::less<>> silences_;      ///< by shown paths
};

/// Scripts of a game, each checked once.
class GameCheck {
  public:
    enum class Depth { Folder, Tree };

    /// Those of a folder and of "scripts" in it, or of all folders in it. `given` are paths of the
    /// author's, by their real paths.
    GameCheck(const std::string& folder, Depth depth, std::map<std::string, std::string> given,
              const Vocabulary& vocabulary)
        : paths_(std::move(given)) {
        const fs::path all(folder);
        if (depth == Depth::Tree) {
            add(fs::recursive_directory_iterator(all, fs::directory_options::skip_permission_denied,
                                                 error_));
        } else {
            add(fs::directory_iterator(all, error_));
            add(fs::directory_iterator(all / "scripts", error_));
        }
        for (const auto& [real, path] : paths_)
            checks_.try_emplace(real, path, vocabulary).first->second.run();
        for (const auto& [real, check] : checks_)
            for (const std::string& file : check.files)
                if (file != real) pieces_.insert(file);
        for (const auto& [real, check] : checks_)
            for (const std::string& script : check.mentions)
                if (!check.files.contains(script)) pieces_.erase(script);
        if (depth == Depth::Tree) findUnreached(folder);
    }

    /// In all scripts. Of a file that several include, what all of them find in it.
    [[nodiscard]] std::vector<Finding> findings() const {
        std::map<std::string, int> readers;         // of a file
        std::vector<std::pair<Finding, int>> found; // and how many of them have found it
        for (const auto& [real, check] : checks_) {
            if (pieces_.contains(real) || unreached_.contains(real)) continue;
            for (const std::string& file : check.files) ++readers[file];
            for (const Finding& finding : check.findings) {
                const auto same =
                    std::ranges::find(found, finding, [](const auto& entry) -> const Finding& {
                        return entry.first;
                    });
                if (same != found.end())
                    ++same->second;
                else
                    found.emplace_back(finding, 1);
            }
        }
        std::vector<Finding> result;
        for (const auto& [finding, times] : found) {
            const std::string real = realPath(finding.file);
            if (times < readers[real]) continue;
            // Of a single includer nobody knows which of a piece's names it was to bring.
            // Of a single includer nobody knows which of a piece's names it was to bring.
            const bool isLonely = times == 1 && pieces_.contains(real);
            if (!isLonely || !aboutRule(finding.rule).isOfNames) result.push_back(finding);
        }
        // They may be pieces of other games.
        for (const std::string& real : unreached_) {
            for (const Finding& finding : checks_.at(real).findings)
                if (realPath(finding.file) == real && !aboutRule(finding.rule).isOfNames)
                    result.push_back(finding);
            result.push_back({Rule::Unreached, paths_.at(real), 0, 0,
                              "no script that the game begins with leads here"});
        }
        if (!start_.empty())
            result.push_back(
                {Rule::UnknownScript, start_, 0, 0,
                 "there is no script " + std::string(kStartScript) + ", with which a game begins"});
        return result;
    }

    /// In one script and what it includes; in a piece of others only what is its own.
    [[nodiscard]] std::vector<Finding> findingsOf(const std::string& real) const {
        const std::vector<Finding> all = findings();
        const bool isPiece = pieces_.contains(real);
        std::vector<Finding> result;
        for (const Finding& finding : isPiece ? all : checks_.at(real).findings) {
            const bool isHere = realPath(finding.file) == real;
            if (isHere || (!isPiece && std::ranges::find(all, finding) != all.end()))
                result.push_back(finding);
        }
        return result;
    }

  private:
    void findUnreached(const std::string& folder) {
        const Includes start((fs::path(folder) / kStartScript).string());
        const auto first = start.find(kStartScript);
        const bool isInside = first && realPath(*first).starts_with(realPath(folder) + '/');
        if (!isInside) {
            start_ = folder;
            return;
        }
        std::set<std::string> reached;
        std::vector<std::string> todo{realPath(*first)};
        for (const auto& [real, path] : paths_)
            if (otherTexts_.find(formats::lowerAscii(fs::path(real).filename().string())) !=
                std::string::npos)
                todo.push_back(real);
        while (!todo.empty()) {
            const std::string real = todo.back();
            todo.pop_back();
            const auto check = checks_.find(real);
            if (!reached.insert(real).second || check == checks_.end()) continue;
            for (const auto* more : {&check->second.files, &check->second.mentions})
                todo.insert(todo.end(), more->begin(), more->end());
        }
        for (const auto& [real, path] : paths_)
            if (!reached.contains(real)) unreached_.insert(real);
    }

    template <class Walk>
    void add(Walk walk) {
        for (; !error_ && walk != Walk(); walk.increment(error_)) {
            const fs::path& path = walk->path();
            std::error_code error;
            if (!walk->is_regular_file(error)) continue;
            if (hasExtension(path, kScript)) {
                paths_.try_emplace(realPath(path.string()), path.lexically_normal().string());
            } else if (hasExtension(path, ".map") || hasExtension(path, ".ini")) {
                std::string why;
                if (auto text = readHostFile(path.string(), kLargestText, why))
                    otherTexts_ += formats::lowerAscii(*text) + '\n';
            }
        }
        error_.clear();
    }

    std::map<std::string, std::string> paths_; ///< as they are shown, by real paths
    std::map<std::string, ScriptCheck> checks_;
    std::set<std::string> pieces_; ///< scripts that others include and that none starts
    std::set<std::string> unreached_;
    std::string start_;      ///< the folder that lacks the first script
    std::string otherTexts_; ///< of the game's maps and settings, in small letters
    std::error_code error_;
};

/// The game's folder that a script lies in.
std::string gameFolderOf(const std::string& script) {
    fs::path folder = fs::path(script).parent_path();
    if (folder.empty()) folder = ".";
    const bool isInner =
        formats::lowerAscii(fs::path(realPath(folder.string())).filename().string()) == "scripts";
    return (isInner ? folder / ".." : folder).lexically_normal().string();
}

} // namespace

std::vector<Finding> check(const std::vector<std::string>& paths) {
    const Vocabulary vocabulary;
    std::map<std::string, std::map<std::string, std::string>> files; // given ones, by folder
    std::error_code error;
    for (const std::string& path : paths)
        if (!fs::is_directory(path, error)) files[gameFolderOf(path)].emplace(realPath(path), path);
    std::map<std::string, GameCheck> games;
    for (const auto& [folder, given] : files)
        games.try_emplace(folder, folder, GameCheck::Depth::Folder, given, vocabulary);

    std::vector<Finding> all;
    for (const std::string& path : paths) {
        std::vector<Finding> found;
        if (fs::is_directory(path, error)) {
            const GameCheck game(path, GameCheck::Depth::Tree, {}, vocabulary);
            found = game.findings();
            std::ranges::stable_sort(found, {}, &Finding::file);
        } else {
            found = games.at(gameFolderOf(path)).findingsOf(realPath(path));
            std::erase_if(found, [](const Finding& finding) {
                return aboutRule(finding.rule).severity == Severity::Note;
            });
        }
        // What the compiler tells keeps its order; the rest follows, the script itself first.
        std::map<std::string, std::size_t> rank{{path, 0}};
        for (const Finding& finding : found) rank.try_emplace(finding.file, rank.size());
        const bool isFolder = fs::is_directory(path, error);
        std::ranges::stable_sort(found, {}, [&](const Finding& finding) {
            const bool isFirst = !isFolder && isOfCompiler(finding);
            return isFirst ? std::tuple(false, std::size_t{0}, 0, 0)
                           : std::tuple(true, rank[finding.file], finding.line, finding.column);
        });
        for (Finding& finding : found)
            if (isOfCompiler(finding) || std::ranges::find(all, finding) == all.end())
                all.push_back(std::move(finding));
    }
    return all;
}

} // namespace mps
