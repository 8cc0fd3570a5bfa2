// Loading of scripts: reading, compiling, precompiled files.
#include "omistream.h"
#include "omplatform.h"
#include "omresourcelog.h"
#include "rthread.h"
#include "yengine.h"
#include "yexpression.h"
#include "yprecompiled.h"

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
    code_.clear();
    operandVariables_.clear();
    script_.reset();
    switchTo_ = nullptr;
    *playing_ = false;
    loaded_ = false;
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
    status_ = pace_ = 0;
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
        link(std::move(script));
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
    link(std::move(script));
}

/// Puts operands beside the instructions, as the stepping wants them.
void YThread::link(std::unique_ptr<YScript> script) {
    YHeap& heap = YHeap::current();
    operandVariables_.clear();
    for (const std::int16_t index : script->operands)
        operandVariables_.push_back(index == YScript::kEndOfList ? nullptr : &heap.get(index));
    code_.clear();
    for (const YInstruction& instruction : script->instructions) {
        Code code{instruction.opcode, Way::Plain, instruction.operand, 0, nullptr};
        if (YHasOperands(instruction.opcode)) {
            const auto start = static_cast<std::size_t>(instruction.operand);
            code.operands = operandVariables_.data() + start;
            while (code.operands[code.count]) ++code.count;
        }
        code.way = wayOf(code);
        code_.push_back(code);
    }
    script_ = std::move(script);
    loaded_ = true;
    ++loads_;
}

/// The jump after a test is there: the compiler writes it and the reader of precompiled scripts
/// asks for it.
YThread::Way YThread::wayOf(const Code& code) {
    const auto isExpression = [&](int operand) {
        return code.count > operand &&
               code.operands[operand]->kind() == YVariable::Kind::Expression;
    };
    switch (code.opcode) {
    case YOpcode::ForNext: return code.count > 1 ? Way::CountedRound : Way::Plain;
    case YOpcode::Test: return isExpression(0) ? Way::TestExpression : Way::Plain;
    case YOpcode::Assign:
        if (code.count != 2) return Way::Plain;
        return isExpression(1) ? Way::AssignExpression : Way::AssignValue;
    case YOpcode::Jump: return Way::Jump;
    case YOpcode::Call: return Way::Call;
    case YOpcode::Procedure: return Way::EnterProcedure;
    case YOpcode::Return: return Way::Return;
    case YOpcode::Debug: return Way::Debug;
    default: return Way::Plain;
    }
}
