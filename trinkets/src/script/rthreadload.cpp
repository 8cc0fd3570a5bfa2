// Loading of scripts: reading, compiling, precompiled files.
#include "omistream.h"
#include "omplatform.h"
#include "omresourcelog.h"
#include "rthread.h"
#include "yengine.h"
#include "yexpression.h"
#include "yprecompiled.h"
#include "yprogram.h"

#include <algorithm>
#include <span>

namespace {

constexpr std::size_t kChosenFileLimit = 128;
constexpr std::string_view kTooLong = "Script too long";
constexpr std::string_view kUnknown = "unknown script";

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

} // namespace

/// A file of the current directory, else what the locator finds. Texts may have the size of a
/// script, precompiled ones are larger.
YCompiler::Source YThread::readSource(const std::string& name) {
    YCompiler::Source source;
    const auto file = OMPlatform().files().open(name, platform::OpenMode::Read);
    if (!file) OMLogUnreadable(name, "It is looked for in the scripts folders");
    if (file) {
        source.text = readFile(*file, kYMaxPrecompiledSize);
    } else if (!locator_) {
        source.message = "can't find " + name;
        return source;
    } else if (const auto stream = locator_(name)) {
        source.text = readStream(*stream, kYMaxPrecompiledSize);
    } else {
        source.message = kUnknown;
        return source;
    }
    const std::size_t limit =
        YIsPrecompiled(*source.text) ? kYMaxPrecompiledSize : YCompiler::kMaxTextSize;
    if (source.text->size() > limit) source = {std::nullopt, std::string(kTooLong)};
    return source;
}

/// As readSource, for a file that is included: a text in any case.
YCompiler::Source YThread::readText(const std::string& name) {
    YCompiler::Source source = readSource(name);
    if (source.text && source.text->size() > YCompiler::kMaxTextSize)
        source = {std::nullopt, std::string(kTooLong)};
    return source;
}

/// The thread is left without a script.
void YThread::discardScript() {
    stop();
    program_.reset();
    wanted_.variable = nullptr;
    *playing_ = false;
    loaded_ = false;
}

void YThread::loseScript() {
    if (!loaded_) return;
    discardScript();
    const OMLink unloaded = unloadedLink_; // may end the thread
    unloaded();
}

void YThread::unload() {
    if (loaded_) {
        engine_.removeAllRecords();
        discardScript();
        engine_.recreateHeap();
    }
    unloadedLink_();
}

void YThread::loadScript(const char* name) {
    unload();
    const std::string wanted =
        name ? name : OMPlatform().dialogs().openFile("Script", "*.mps", kChosenFileLimit);
    pc_ = 0;
    callDepth_ = 0;
    loopDepth_ = -1;
    status_ = Status::Ready;
    pace_ = Pace::OneStatement;
    condition_ = true;
    eventsEnabled_ = true;
    inInterrupt_ = false;
    waiting_ = pausing_ = false;
    endPending_ = true;
    updateCare();
    schedule_ = {};
    idle_ = {};
    if (wanted.empty()) return;

    YCompiler::Source source = readSource(wanted);
    if (!source.text) engine_.endProgram(source.message);
    scriptName_ = wanted;
    if (YIsPrecompiled(*source.text))
        loadPrecompiled(wanted, *source.text);
    else
        compile(wanted, std::move(*source.text));
}

void YThread::compile(const std::string& name, std::string text) {
    YCompiler compiler(YHeap::current(),
                       [this](const std::string& file) { return readText(file); });
    compiler.setWarningLink([this](const YCompileError& e) { engine_.warn(e.description()); });
    std::unique_ptr<YScript> script = compiler.compile(name, std::move(text));
    if (script) {
        takeScript(std::move(script));
        return;
    }
    for (const YCompileError& error : compiler.errors()) {
        if (error.isWarning()) continue;
        if (error.kind == YCompileError::Kind::IncludeUnreadable) engine_.endProgram(error.text);
        if (error.code == yerror::kUnclosedQuote)
            engine_.warn("Unquote " + error.statement + "...");
        engine_.warn(YCompiler::message(error));
        return;
    }
}

void YThread::loadPrecompiled(const std::string& name, std::string_view bytes) {
    // Such a script knows its variables by their places in the table, so it needs one to itself.
    if (YHeap::current().count() != YHeap::kPredefined) engine_.recreateHeap();
    std::unique_ptr<YScript> script = YReadPrecompiled(YHeap::current(), bytes);
    if (!script) {
        engine_.warn(name + ": damaged precompiled script");
        engine_.recreateHeap();
        return;
    }
    script->name = name;
    takeScript(std::move(script));
}

void YThread::takeScript(std::unique_ptr<YScript> script) {
    program_ = std::make_unique<YProgram>(YHeap::current(), std::move(script));
    loaded_ = true;
    ++loads_;
}
