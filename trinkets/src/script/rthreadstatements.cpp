// Statements: those that steer the thread here, the others in YStatement.
#include "rthread.h"

#include "omunderway.h"
#include "yengine.h"
#include "ynumber.h"
#include "ystatement.h"

namespace {

constexpr double kTicksPerSecond = 9; ///< of schedule and idle
constexpr double kPauseMsPerSecond = 900;
constexpr std::size_t kPaceWordLength = 2; ///< "on", against "off"

} // namespace

YStatement YThread::statement(const Instruction& code) {
    return {*this, engine_, trace_, *program_, code};
}

void YThread::execute(const Instruction& code) {
    const OMUnderWay underWay;
    switch (code.opcode) {
    case YOpcode::Call: call(code); return;
    case YOpcode::Procedure: enterProcedure(code); return;
    case YOpcode::ForSetUp: setUpLoop(code); return;
    case YOpcode::ForNext: nextRound(code); return;
    case YOpcode::JumpIfFalse:
    case YOpcode::Jump:
        if (code.opcode == YOpcode::JumpIfFalse && flow_.condition) return;
        if (flow_.jump(code.target))
            trace_.detail("leaving a loop nested %d jumping ", flow_.loopDepth + 1);
        return;
    case YOpcode::Test: flow_.condition = statement(code).isTrue(); return;
    case YOpcode::Nothing: return;
    case YOpcode::Say: statement(code).say(); return;
    case YOpcode::Return: returnFromProcedure(); return;
    case YOpcode::Assign: statement(code).assign(); return;
    case YOpcode::Drop: drop(code); return;
    case YOpcode::Command: statement(code).runCommand(); return;
    case YOpcode::Wait:
        flow_.waiting = true;
        halted_ = true;
        fireEndReached(code.opcode);
        return;
    case YOpcode::Idle: setTimer(idle_, code, "%s (pc=%ld) on %s [%.1lf] idle seconds"); return;
    case YOpcode::Schedule: setTimer(schedule_, code, "%s (pc=%ld) in %s [%.1lf] seconds"); return;
    case YOpcode::Exit: requestSwitch(nullptr); return;
    case YOpcode::Suspend:
    case YOpcode::Resume:
        eventsEnabled_ = code.opcode == YOpcode::Resume;
        trace_.detail(eventsEnabled_ ? "resumed" : "suspended");
        return;
    case YOpcode::Pause: pause(code); return;
    case YOpcode::Debug: setDebug(code); return;
    case YOpcode::Set: statement(code).set(); return;
    case YOpcode::Get: statement(code).get(); return;
    case YOpcode::Yield: setYield(code); return;
    case YOpcode::Play:
        statement(code).play(playing_);
        if (*playing_) setStatus(Status::Blocked);
        return;
    case YOpcode::Relay: requestSwitch(code.operands[0]); return;
    case YOpcode::Quit:
        flow_.forgetInterrupt(); // a handler that quits ends here, and is in nobody's way
        engine_.quit();
        requestSwitch(code.count > 0 ? code.operands[0] : nullptr);
        return;
    case YOpcode::End:
    case YOpcode::ReturnFromInterrupt:
    case YOpcode::Else: break;
    }
    --flow_.pc; // stays here
    setStatus(Status::Blocked);
    fireEndReached(code.opcode);
}

// ---------------------------------------------------------------------------- control flow

void YThread::call(const Instruction& code) {
    if (const std::int32_t header = code.operands[0]->heldProcedure(); header >= 0) {
        callProcedure(code, header);
        return;
    }
    YHeap& heap = YHeap::current();
    YVariable* last = code.operands[0];
    YScratch scratches[2];
    int used = 0;
    std::string_view target = last->string(scratches[0]);
    // A name may hold another name; a procedure's text leads nowhere else. Rings end in the end.
    for (int steps = heap.count(); steps > 0 && !target.starts_with('+'); --steps) {
        const int index = heap.lookup(target);
        if (index < 0 || &heap.get(index) == last) break;
        last = &heap.get(index);
        used = 1 - used;
        target = last->string(scratches[used]);
    }
    if (target.starts_with('+')) {
        callProcedure(code, ynumber::scanInteger(target));
        return;
    }
    trace_.detail("script %s", std::string(target).c_str());
    engine_.pushScript(scriptName_);
    requestSwitch(last);
}

void YThread::callProcedure(const Instruction& code, std::int32_t header) {
    trace_.detail("procedure %s=%d", code.operands[0]->text().c_str(), header);
    if (!program_->isHeader(header))
        reportAndStop("call of a procedure that does not exist");
    else if (!flow_.call(header))
        reportAndStop("sp < (YTSTACK-1)");
}

void YThread::enterProcedure(const Instruction& code) {
    const int caller = flow_.caller();
    if (caller < 0) { // reached in sequence
        while (program_->at(flow_.pc).opcode != YOpcode::Return &&
               program_->at(flow_.pc).opcode != YOpcode::End)
            ++flow_.pc;
        if (program_->at(flow_.pc).opcode == YOpcode::Return) ++flow_.pc;
        return;
    }
    const Instruction& from = program_->at(caller);
    trace_.detail("Args: ");
    for (int i = 1; i < code.count && i < from.count; ++i) {
        YVariable& parameter = code.operands[i]->resolve();
        YVariable& argument = *from.operands[i];
        if (argument.holdsInteger() && argument.isCanonical() && parameter.takesNumber()) {
            parameter.putNumberAsText(argument.heldInteger());
        } else {
            YScratch scratch;
            parameter.setString(argument.string(scratch));
        }
        if (trace_.isOn())
            trace_.detail("%s <- %s [%s] ", parameter.text().c_str(), argument.text().c_str(),
                          textOf(parameter).c_str());
    }
}

void YThread::returnFromProcedure() {
    if (flow_.isHandlerItself()) {
        flow_.endInterrupt();
        endPause();
        setStatus(Status::InterruptEnded);
    } else if (flow_.returnToCaller()) {
        trace_.detail("at pc = %d", flow_.pc);
    } else {
        reportAndStop("sp");
    }
}

void YThread::setUpLoop(const Instruction& code) {
    if (code.count == 0) return;
    const char* counter = code.operands[0]->text().c_str();
    if (code.count == 1) {
        trace_.detail("loop while [%s] is true", counter);
        return;
    }
    const auto number = [&](int operand, int otherwise) {
        return static_cast<std::int16_t>(operand < code.count ? code.operands[operand]->integer()
                                                              : otherwise);
    };
    YFlow::CountedLoop loop{};
    loop.value = number(1, 0);
    loop.target = number(2, 0);
    loop.step = number(3, code.count > 2 ? 1 : -1);
    // The test that follows in two instructions knows where the loop ends.
    loop.exit = program_->at(flow_.pc + 1).target;
    if (flow_.beginLoop(loop))
        trace_.detail("counter %s: from %d to %d by %d", counter, loop.value, loop.target,
                      loop.step);
    else
        reportAndStop("counted loops are nested too deep");
}

void YThread::nextRound(const Instruction& code) {
    if (code.count < 2 || !flow_.inLoop()) {
        flow_.condition = statement(code).isTrue();
        return;
    }
    flow_.condition = flow_.nextRound();
    const YFlow::CountedLoop& loop = flow_.loop();
    code.operands[0]->resolve().setInteger(loop.value);
    trace_.detail("counter %s=%d target=%d", code.operands[0]->text().c_str(), loop.value,
                  loop.target);
}

// ---------------------------------------------------------------------------- timers and modes

void YThread::drop(const Instruction& code) {
    for (int i = 0; i < code.count; ++i) {
        const std::string& word = code.operands[i]->text();
        if (word == "schedule" || word == "idle") {
            (word == "idle" ? idle_ : schedule_) = {};
            flow_.forgetInterrupt();
        } else if (word == "stack") {
            flow_.forgetCalls();
        } else if (word == "wait") {
            flow_.stopWaiting();
        } else {
            i = statement(code).drop(i);
        }
    }
}

void YThread::setTimer(Timer& timer, const Instruction& code, const char* format) {
    const double seconds = code.operands[0]->number();
    if (seconds == 0) return;
    const std::optional<int> handler = program_->handlerOf(textOf(*code.operands[1]));
    if (!handler) {
        engine_.warn(OMFormat("Procedure %s not found", code.operands[1]->text().c_str()));
        return;
    }
    timer = {*handler, ynumber::truncate(seconds * kTicksPerSecond)};
    trace_.detail(format, code.operands[1]->text().c_str(), static_cast<long>(timer.procedure),
                  code.operands[0]->text().c_str(), seconds);
}

void YThread::pause(const Instruction& code) {
    const double seconds = code.operands[0]->number();
    if (seconds == 0) return;
    const std::int32_t ms = ynumber::truncate(seconds * kPauseMsPerSecond);
    engine_.pauseFor(static_cast<std::uint32_t>(ms < 0 ? 0 : ms));
    flow_.waiting = flow_.pausing = true;
    halted_ = true;
    trace_.detail("%.1lf seconds", seconds);
}

void YThread::setDebug(const Instruction& code) {
    const std::string word = textOf(*code.operands[0]);
    if (word == "on" || word == "off") {
        trace_.turn(word == "on");
    } else {
        const auto has = [&](char letter) { return word.find(letter) != std::string::npos; };
        engine_.setTraceOutputs((has('m') ? YEngine::kTraceBox : 0) |
                                (has('f') ? YEngine::kTraceFile : 0) |
                                (has('w') ? YEngine::kTraceWindow : 0));
    }
    trace_.detail("%s\n\n%s", word.c_str(), scriptName_.c_str());
}

void YThread::setYield(const Instruction& code) {
    pace_ = textOf(*code.operands[0]).size() == kPaceWordLength ? Pace::OneStatement
                                                                : Pace::UntilBlocked;
    status_ = Status::Ready;
    halted_ = pace_ == Pace::OneStatement;
    yieldLink_();
}
