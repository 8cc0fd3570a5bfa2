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
    return {*this, engine_, trace_, line_ ? *line_ : *program_, code};
}

std::string YThread::runLine(const YProgram& line) {
    const YEngine::Turn scope(engine_);
    const OMUnderWay::Run statements(OMUnderWay::Run::Kind::Outermost);
    std::string warnings;
    const YEngine::AtWork atWork(engine_, *this, &warnings);
    line_ = &line;
    const Instruction& code = line.at(0);
    if (code.opcode == YOpcode::Play) {
        const OMUnderWay underWay;
        statement(code).play(std::make_shared<bool>(false));
    } else {
        execute(code);
    }
    line_ = nullptr;
    return warnings;
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
    const std::optional<int> handler = handlerOf(textOf(*code.operands[1]));
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
