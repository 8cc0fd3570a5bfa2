// The statements that work on variables, timers and the thread itself.
#include "omformat.h"
#include "omplatform.h"
#include "omsarguments.h"
#include "omsclass.h"
#include "omscrptb.h"
#include "omsregistry.h"
#include "omunderway.h"
#include "rthread.h"
#include "rthreaddetail.h"
#include "yengine.h"
#include "yexpression.h"
#include "ykeyword.h"

namespace {

constexpr double kTicksPerSecond = 9; ///< of schedule and idle
constexpr double kPauseMsPerSecond = 900;
constexpr std::size_t kMaxSayLength = 255;
constexpr std::size_t kPaceWordLength = 2; ///< "on", against "off"

} // namespace

// ---------------------------------------------------------------------------- assignment

/// `x=y` where y is no expression, without a trace.
void YThread::assignValue(const Instruction& code) {
    YVariable& target = code.operands[0]->resolve();
    YVariable& word = *code.operands[1];
    YVariable& value = word.resolve();
    if (target.takesNumber() && value.holdsInteger() && value.isCanonical()) {
        target.putNumberAsText(value.heldInteger());
    } else if (target.takesNumber() && word.kind() == YVariable::Kind::Substring) {
        YScratch scratch;
        target.setString(word.string(scratch));
    } else {
        assign(code);
    }
}

/// Any assignment.
void YThread::assign(const Instruction& code) {
    const OMUnderWay underWay;
    YVariable& name = *code.operands[0];
    YVariable& target = name.resolve();
    const std::string before = tracing_ ? textOf(target) : std::string();
    YVariable* const value = code.count < 2 ? nullptr : code.operands[1];
    OMScriptableObject* const taken = value ? value->object() : nullptr;
    // An alias is pointed at the object's holder instead of being written through.
    YVariable& written = taken && name.ownership() == YVariable::Ownership::Alias ? name : target;
    OMScriptableObject* const lost = written.object();
    if (lost && lost != taken && written.ownership() == YVariable::Ownership::Owner)
        engine_.removeRecords(lost);
    if (!value) {
        engine_.warn(
            OMFormat("%s=\nis equivalent to\ndrop %s", name.text().c_str(), name.text().c_str()));
        target.makeEmpty();
    } else {
        const bool unsetName = value->kind() == YVariable::Kind::Name && !value->isDefined();
        const bool marked = name.kind() == YVariable::Kind::Compound &&
                            name.ownership() == YVariable::Ownership::Reference;
        if (unsetName && OMSRegistry::global().isClass(value->text())) {
            construct(target, code);
        } else if (taken && marked) {
            target.setReference(taken);
        } else if (taken) {
            const std::string copied(taken->classEntry() ? taken->classEntry()->name() : "It");
            if (!written.copyFrom(*value))
                report(OMFormat("%s cannot be copied, so %s is empty now.\n"
                                "For a second name of it write %s=&%s",
                                copied.c_str(), written.text().c_str(), name.text().c_str(),
                                value->text().c_str()));
        } else if (&value->resolve() != &target) {
            if (unsetName) engine_.warn(OMFormat("Variable %s is empty", value->text().c_str()));
            YScratch scratch;
            target.setString(value->string(scratch));
        }
    }
    if (!tracing_) return;
    const std::string source = code.count > 1 ? code.operands[1]->text() : std::string();
    const std::string after = textOf(target);
    if (&target == &name)
        detail("%s=%s: %s was [%s] now [%s]", name.text().c_str(), source.c_str(),
               name.text().c_str(), before.c_str(), after.c_str());
    else
        detail("%s=%s: %s(%s) was [%s] now [%s]", name.text().c_str(), source.c_str(),
               name.text().c_str(), target.text().c_str(), before.c_str(), after.c_str());
}

void YThread::construct(YVariable& target, const Instruction& code) {
    const std::string& className = code.operands[1]->text();
    if (code.count == 2)
        engine_.warn(OMFormat("Constructor %s has no parameters", className.c_str()));
    engine_.spend(YEngine::kCreationCost);
    pushArguments(code, 2, code.count);
    std::unique_ptr<OMScriptableObject> object = OMSRegistry::global().create(className);
    const OMSR* entry = OMSRegistry::global().find(className);
    if (entry && !entry->scriptClass().create)
        report(className + " objects are made by the program alone");
    if (object)
        target.setObject(std::move(object));
    else
        target.setInteger(0);
}

/// Fills the argument list with the string forms of the operands `from` to `to` - 1.
void YThread::pushArguments(const Instruction& code, int from, int to) {
    OMSArguments& arguments = OMSArguments::global();
    arguments.clear();
    for (int i = from; i < to; ++i) {
        YScratch scratch;
        arguments.push(code.operands[i]->string(scratch));
    }
}

void YThread::runCommand(const Instruction& code) {
    const std::string& name = code.operands[0]->text();
    const YKeyword* command = YCommands::find(name);
    if (!command) {
        engine_.warn(OMFormat("Keyword \"%s\" is undefined", name.c_str()));
        return;
    }
    pushArguments(code, 1, code.count);
    engine_.spend(YEngine::kCommandCost);
    command->invoke();
}

// ---------------------------------------------------------------------------- say, drop

void YThread::say(const Instruction& code) {
    std::string line;
    std::size_t blank = 0; // before the next word
    for (int i = 0; i < code.count; ++i) {
        YScratch scratch;
        const std::string_view word = code.operands[i]->string(scratch);
        if (line.size() + blank + word.size() > kMaxSayLength) continue;
        line.append(blank, ' ');
        line += word;
        blank = 1;
    }
    engine_.writeDebugLine(line);
}

void YThread::drop(const Instruction& code) {
    for (int i = 0; i < code.count; ++i) {
        YVariable& word = *code.operands[i];
        const std::string& text = word.text();
        YVariable* next = i + 1 < code.count ? code.operands[i + 1] : nullptr;
        if (text == "schedule" || text == "idle") {
            (text == "idle" ? idle_ : schedule_).procedure = 0;
            flow_.forgetInterrupt();
        } else if (text == "stack") {
            flow_.forgetCalls();
        } else if (text == "wait") {
            flow_.stopWaiting();
        } else if (text == "trinkets") {
            YHeap::current().emptyOwners();
        } else if (text == "[" || text == "var" || text == "script") {
            if (!next) continue;
            ++i;
            if (text == "[") {
                YHeap::current().emptyFamily(next->text());
            } else if (text == "script") {
                if (textOf(*next) == "stack") engine_.emptyThreadStack();
            } else if (const int index = YHeap::current().lookup(textOf(*next)); index >= 0) {
                YHeap::current().get(index).makeEmpty();
            }
        } else {
            dropVariable(word);
        }
    }
}

void YThread::dropVariable(YVariable& word) {
    YVariable& variable = word.resolve();
    const std::string before = tracing_ ? textOf(variable) : std::string();
    OMScriptableObject* object = variable.object();
    if (object && !object->isOfProgram()) {
        engine_.removeRecords(object);
        YHeap::current().forget(object, true);
    } else {
        variable.makeEmpty();
        if (object)
            report(OMFormat("The object in %s is the program's own and stays.\n"
                            "Only the name is dropped",
                            word.text().c_str()));
    }
    detail("%s was [%s]  ", word.text().c_str(), before.c_str());
}

// ---------------------------------------------------------------------------- timers and modes

std::optional<int> YThread::handlerOf(std::string_view procedure) const {
    if (!procedure.starts_with('+')) return std::nullopt;
    const int header = ynumber::scanInteger(procedure);
    return isHeader(header) ? std::optional(header + 1) : std::nullopt;
}

void YThread::setTimer(Timer& timer, const Instruction& code, const char* format) {
    const double seconds = code.operands[0]->number();
    if (seconds == 0) return;
    YScratch scratch;
    const std::optional<int> handler = handlerOf(code.operands[1]->string(scratch));
    if (!handler) {
        engine_.warn(OMFormat("Procedure %s not found", code.operands[1]->text().c_str()));
        return;
    }
    timer.procedure = *handler;
    timer.interval = ynumber::truncate(seconds * kTicksPerSecond);
    timer.elapsed = 0;
    if (tracing_)
        detail(format, code.operands[1]->text().c_str(), static_cast<long>(timer.procedure),
               code.operands[0]->text().c_str(), seconds);
}

void YThread::pause(const Instruction& code) {
    const double seconds = code.operands[0]->number();
    if (seconds == 0) return;
    const std::int32_t ms = ynumber::truncate(seconds * kPauseMsPerSecond);
    engine_.pauseFor(static_cast<std::uint32_t>(ms < 0 ? 0 : ms));
    flow_.waiting = flow_.pausing = true;
    halt();
    detail("%.1lf seconds", seconds);
}

void YThread::setDebug(const Instruction& code) {
    const std::string word = textOf(*code.operands[0]);
    if (word == "on" || word == "off") {
        tracing_ = word == "on";
    } else {
        const auto has = [&](char letter) { return word.find(letter) != std::string::npos; };
        engine_.setTraceOutputs((has('m') ? YEngine::kTraceBox : 0) |
                                (has('f') ? YEngine::kTraceFile : 0) |
                                (has('w') ? YEngine::kTraceWindow : 0));
    }
    updateCare();
    detail("%s\n\n%s", word.c_str(), scriptName_.c_str());
}

void YThread::setYield(const Instruction& code) {
    pace_ = textOf(*code.operands[0]).size() == kPaceWordLength ? Pace::OneStatement
                                                                : Pace::UntilBlocked;
    setStatus(Status::Ready);
    setHalted(pace_ == Pace::OneStatement);
    yieldLink_();
}
