#include "yscriptloader.h"

#include "formats/base/latin1.h"
#include "formats/base/scanner.h"
#include "omistream.h"
#include "omlog.h"
#include "omplatform.h"
#include "omresourcelog.h"
#include "ycompiler.h"
#include "yengine.h"
#include "yexpression.h"
#include "yprecompiled.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kChosenFileLimit = 128;
constexpr const char* kDamaged = ": damaged precompiled script";

/// The whole of a file, up to one byte more than `limit`.
std::string readFile(platform::File& file, std::size_t limit) {
    std::string text(std::min<std::uint64_t>(file.size(), limit + 1), '\0');
    text.resize(file.read(std::as_writable_bytes(std::span(text))));
    return text;
}

/// The whole of a stream in any buffer mode, at least one byte more than `limit` if it is longer.
std::string readStream(OMIStream& stream, std::size_t limit) {
    std::string text;
    stream.seek(0); // some deliver their first chunk as they are made
    while (text.size() <= limit && stream.fill() > 0) {
        const auto bytes = stream.current();
        text.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    return text;
}

/// A script's text in the letters that the program has; others are told in the log.
std::string latin1Of(const std::string& name, std::string text) {
    std::vector<formats::LackedLetter> lacked;
    text = formats::latin1FromAuthor(std::move(text), lacked);
    for (const auto& [line, letter] : lacked)
        OMLog::write(OMLog::Kind::Warning, name + ":" + std::to_string(line) +
                                               ": Latin-1 has no letter " +
                                               formats::inQuotes(letter) + ", it became \"?\"");
    return text;
}

/// Texts may have the size of a script, precompiled ones are larger.
YCompiler::Source readSource(const std::string& name, const YScriptLocator& locator,
                             bool isIncluded) {
    std::string text;
    const auto file = OMPlatform().files().open(name, platform::OpenMode::Read);
    if (!file) OMLogUnreadable(name, "It is looked for in the scripts folders");
    if (file)
        text = readFile(*file, kYMaxPrecompiledSize);
    else if (!locator)
        return {std::nullopt, "can't find " + name};
    else if (const auto stream = locator(name))
        text = readStream(*stream, kYMaxPrecompiledSize);
    else
        return {std::nullopt, "unknown script"};
    const bool isText = isIncluded || !YIsPrecompiled(text);
    if (isText) text = latin1Of(name, std::move(text));
    if (text.size() > (isText ? YCompiler::kMaxTextSize : kYMaxPrecompiledSize))
        return {std::nullopt, "Script too long"};
    return {std::move(text), {}};
}

std::unique_ptr<YScript> compile(YEngine& engine, const std::string& name, std::string text,
                                 const YScriptLocator& locator) {
    const auto include = [&](const std::string& file) { return readSource(file, locator, true); };
    YHeap::current().setScript(name);
    YCompiler compiler(YHeap::current(), include);
    const auto warn = [&](const YCompileError& error, const std::string& what) {
        engine.warn(what, error.file + ':' + std::to_string(error.line));
    };
    compiler.setWarningLink([&](const YCompileError& e) { warn(e, e.description()); });
    std::unique_ptr<YScript> script = compiler.compile(name, std::move(text));
    if (script) return script;
    for (const YCompileError& error : compiler.errors()) {
        if (error.isWarning()) continue;
        if (error.kind == YCompileError::Kind::IncludeUnreadable) engine.endProgram(error.text);
        if (error.code == yerror::kUnclosedQuote) warn(error, "Unquote " + error.statement + "...");
        warn(error, YCompiler::message(error));
        break;
    }
    return nullptr;
}

std::unique_ptr<YScript> readPrecompiled(YEngine& engine, const std::string& name,
                                         std::string_view bytes) {
    // Such a script knows its variables by their places in the table, so it needs one to itself.
    if (YHeap::current().count() != YHeap::kPredefined) engine.recreateHeap();
    YHeap::current().setScript(name);
    std::unique_ptr<YScript> script = YReadPrecompiled(YHeap::current(), bytes);
    if (script) {
        script->name = name;
    } else {
        engine.warn(name + kDamaged);
        engine.recreateHeap();
    }
    return script;
}

} // namespace

std::string YChooseScript() {
    return OMPlatform().dialogs().openFile("Script", "*.mps", kChosenFileLimit);
}

std::unique_ptr<YScript> YLoadScript(YEngine& engine, const std::string& name,
                                     const YScriptLocator& locator) {
    YCompiler::Source source = readSource(name, locator, false);
    if (!source.text) engine.endProgram(source.message, name);
    if (YIsPrecompiled(*source.text)) return readPrecompiled(engine, name, *source.text);
    return compile(engine, name, std::move(*source.text), locator);
}

std::vector<std::string> YCheckScript(const std::string& name, const YScriptLocator& locator) {
    YCompiler::Source source = readSource(name, locator, false);
    if (!source.text) return {name + ": " + source.message};
    YHeap heap;
    if (YIsPrecompiled(*source.text)) {
        if (YReadPrecompiled(heap, *source.text)) return {};
        return {name + kDamaged};
    }
    const auto include = [&](const std::string& file) { return readSource(file, locator, true); };
    YCompiler compiler(heap, include, YCompiler::OnError::Collect);
    if (compiler.compile(name, std::move(*source.text))) return {};
    std::vector<std::string> mistakes;
    for (const YCompileError& error : compiler.errors())
        if (!error.isWarning())
            mistakes.push_back(error.file + ':' + std::to_string(error.line) + ": " +
                               error.description());
    return mistakes;
}
