// Stepping, interrupts, timers and control flow.
#include "rthread.h"

#include "omapp.h"
#include "omdebug.h"
#include "omformat.h"
#include "omscrptb.h"
#include "yengine.h"
#include "yexpression.h"
#include "ynumber.h"
#include "ythreaddetail.h"

namespace {

/// Whether the string form of a number begins with the character "0".
bool beginsWithZero(const YExpression::Number& number) {
    if (number.tag == YExpression::Number::Tag::Integer) return number.integer == 0;
    char buffer[ynumber::kBufferSize];
    return ynumber::format(number.real, buffer).starts_with('0');
}

std::int16_t narrow(std::int32_t value) { return static_cast<std::int16_t>(value); }

} // namespace

YThread::YThread(YEngine& engine, const char* name, YScriptLocator locator)
    : engine_(engine), locator_(std::move(locator)), playing_(std::make_shared<bool>(false)) {
    loadScript(name);
    if (loaded_) engine_.add(*this);
}

YThread::~YThread() { engine_.remove(*this); }

void YThread::run() { running_ = loaded_; }

void YThread::stop() {
    running_ = false;
    halt();
}

void YThread::switchToScript(const std::string& name) {
    if (name == scriptName_) return;
    switchName_ = name;
    engine_.requestSwitch(*this);
    halt();
}

void YThread::callScript(const std::string& name) {
    if (name == scriptName_) return;
    engine_.pushScript(scriptName_);
    switchToScript(name);
}

void YThread::requestSwitch(YVariable* script) {
    switchTo_ = script;
    if (script) status_ = -script->index();
    running_ = false;
    engine_.requestSwitch(*this);
    halt();
}

void YThread::setStatus(int status) {
    status_ = status;
    halt();
}

void YThread::giveUp() {
    inInterrupt_ = false; // in nobody's way
    waiting_ = true;
    pausing_ = false;
    halt();
}

void YThread::report(std::string_view what) {
    std::string place = scriptName_;
    if (script_ && !script_->lines.empty() && pc_ > 0) {
        const YSourceLine line = script_->lines[static_cast<std::size_t>(pc_ - 1)];
        place = OMFormat("%s:%d", script_->files[line.file].c_str(), line.line);
    }
    engine_.warn(OMFormat("%s: %.*s", place.c_str(), static_cast<int>(what.size()), what.data()));
}

void YThread::reportAndStop(std::string_view what) {
    stop();
    report(what);
}

// ---------------------------------------------------------------------------- stepping

/// One turn in the tick: until the thread has to give way.
void YThread::turn() {
    const YEngine::Turn scope(engine_);
    status_ = pace_;
    step(nullptr);
}

/// Begins a handler, if there is one, and runs instructions at the current pace. False when the
/// thread cannot run or refused the event.
bool YThread::step(const eventRecord* event) {
    if (!running_ || *playing_) {
        status_ = kStatusBlocked;
        return false;
    }
    if (event && !enterInterrupt(*event)) return false;
    endPause();
    if (waiting_) return true;
    setHalted(false);
    if (status_ == 0)
        runCarefully();
    else
        runInstructions();
    if (const auto excess = engine_.takeExcess())
        reportAndStop("the script is stopped: " + *excess +
                      ". Look for a loop without end, or for objects that nobody lets go");
    return true;
}

bool YThread::enterInterrupt(const eventRecord& event) {
    if (!eventsEnabled_) {
        status_ = kStatusInterruptEnded;
        return false;
    }
    YVariable& receiver = YHeap::current().get(YHeap::kReceiver);
    if (event.receiver)
        receiver.setReference(event.receiver);
    else if (event.variable.empty())
        receiver.setString(event.event);
    else
        receiver.setReference(OMScriptableObject::lastBorn);
    OMDebug::check(!event.receiver || event.receiver == OMScriptableObject::lastPass,
                   "eventRec->receiver && (eventRec->receiver != OMScriptableObject::lastPass)",
                   "RECEIVER Mismatch");
    nestedCalls_ = 0;
    if (inInterrupt_) {
        const std::string someone = event.variable.empty() ? "someone" : event.variable;
        restore(saved_);
        engine_.warn(OMFormat("Nested interrupt on %s's event", someone.c_str()));
    }
    saved_ = context();
    waiting_ = false;
    pausing_ = false;
    inInterrupt_ = true;
    pc_ = event.handler;
    return true;
}

void YThread::restore(const Context& context) {
    pc_ = context.pc;
    waiting_ = context.waiting;
    callDepth_ = context.callDepth;
    condition_ = context.condition;
    pausing_ = context.pausing;
    loopDepth_ = context.loopDepth;
    endPause();
}

/// A pause may run out while a handler is at work, so each context knows whether it waits for it.
void YThread::endPause() {
    if (!pausing_ || !engine_.pauseIsOver()) return;
    pausing_ = false;
    waiting_ = false;
}

void YThread::deliverEvent(const eventRecord& event) {
    if (engine_.isSwitching() || YEngine::isHeld()) return;
    if (engine_.deliveries >= YEngine::kMaxDeliveries) {
        reportAndStop("events are nested too deep");
        return;
    }
    const YEngine::Turn scope(engine_);
    ++engine_.deliveries;
    const int savedStatus = status_;
    const int savedPace = pace_;
    const bool savedHalt = (attention_ & kHalted) != 0;
    status_ = 1;
    step(&event);
    if (!engine_.isSwitching()) status_ = savedStatus;
    pace_ = savedPace;
    // The instruction that fired the event goes on unless the thread is blocked now.
    setHalted(savedHalt || !running_ || waiting_ || *playing_ || engine_.isSwitching());
    --engine_.deliveries;
}

/// Runs until the thread is blocked, its status says to give way, or the turn's budget is used up.
void YThread::runInstructions() {
    int budget = engine_.budget_; // in a register, unless others spend of it too
    const auto share = [&](const auto& run) {
        engine_.budget_ = budget;
        run();
        budget = engine_.budget_;
    };
    for (; attention_ == 0 && budget > 0; --budget) {
        const Code& code = code_[static_cast<std::size_t>(pc_++)];
        switch (code.way) {
        case Way::Plain: share([&] { execute(code); }); break;
        case Way::CountedRound: {
            if (loopDepth_ < 0) [[unlikely]] {
                execute(code);
                break;
            }
            CountedLoop& loop = loops_[static_cast<std::size_t>(loopDepth_)];
            condition_ = countRound(loop, *code.operands[0]);
            decideJump();
            break;
        }
        case Way::Jump: jump(code.target); break;
        case Way::AssignExpression: share([&] { assignExpression(code); }); break;
        case Way::AssignValue: share([&] { assignValue(code); }); break;
        case Way::TestExpression:
            condition_ = isTrue(code);
            decideJump();
            break;
        case Way::Call: call(code); break;
        case Way::EnterProcedure: enterProcedure(code); break;
        case Way::Return: returnFromProcedure(); break;
        case Way::Debug:
            --pc_;
            share([&] { runCarefully(); });
            break;
        }
    }
    engine_.budget_ = budget;
    for (; !(attention_ & kHalted) && engine_.hasBudget(); engine_.spendOne()) runCarefully();
}

/// Carries out the JumpIfFalse after a test.
inline void YThread::decideJump() {
    const int target = code_[static_cast<std::size_t>(pc_++)].target;
    if (!condition_) jump(target);
}

/// One instruction, with all that can be said of it.
void YThread::runCarefully() {
    const Code& code = code_[static_cast<std::size_t>(pc_++)];
    if (attention_ & kCareful) noteOpcode(code.opcode);
    const int load = loads_;
    execute(code);
    // What the instruction called may have taken the script away.
    if (tracing_ && loaded_ && load == loads_) trace(code);
}

void YThread::setHalted(bool halted) {
    attention_ = static_cast<std::uint8_t>((attention_ & kCareful) | (halted ? kHalted : 0));
}

void YThread::updateCare() {
    const bool careful = tracing_ || !endPending_;
    attention_ = static_cast<std::uint8_t>((attention_ & kHalted) | (careful ? kCareful : 0));
}

/// The end notification is armed again by the first instruction that differs from the one that
/// fired it.
void YThread::noteOpcode(YOpcode opcode) {
    detail_.clear();
    if (endPending_ || opcode == endFiredBy_) return;
    endPending_ = true;
    updateCare();
}

void YThread::fireEndReached(YOpcode opcode) {
    if (!endReachedLink_ || !endPending_) return;
    endPending_ = false;
    endFiredBy_ = opcode;
    updateCare();
    endReachedLink_();
}

void YThread::execute(const Code& code) {
    switch (code.opcode) {
    case YOpcode::Call: call(code); return;
    case YOpcode::Procedure: enterProcedure(code); return;
    case YOpcode::ForSetUp: setUpLoop(code); return;
    case YOpcode::ForNext: nextRound(code); return;
    case YOpcode::JumpIfFalse:
        if (!condition_) jump(code.target);
        return;
    case YOpcode::Jump: jump(code.target); return;
    case YOpcode::Test: condition_ = isTrue(code); return;
    case YOpcode::Nothing: return;
    case YOpcode::Say: say(code); return;
    case YOpcode::Return: returnFromProcedure(); return;
    case YOpcode::Assign: assign(code); return;
    case YOpcode::Drop: drop(code); return;
    case YOpcode::Command: runCommand(code); return;
    case YOpcode::Wait:
        waiting_ = true;
        halt();
        fireEndReached(code.opcode);
        return;
    case YOpcode::Idle: setTimer(idle_, code, "%s (pc=%ld) on %s [%.1lf] idle seconds"); return;
    case YOpcode::Schedule: setTimer(schedule_, code, "%s (pc=%ld) in %s [%.1lf] seconds"); return;
    case YOpcode::Exit: requestSwitch(nullptr); return;
    case YOpcode::Suspend:
        eventsEnabled_ = false;
        detail("suspended");
        return;
    case YOpcode::Resume:
        eventsEnabled_ = true;
        detail("resumed");
        return;
    case YOpcode::Pause: pause(code); return;
    case YOpcode::Debug: setDebug(code); return;
    case YOpcode::Set: set(code); return;
    case YOpcode::Get: get(code); return;
    case YOpcode::Yield: setYield(code); return;
    case YOpcode::Play: play(code); return;
    case YOpcode::Relay: requestSwitch(code.operands[0]); return;
    case YOpcode::Quit:
        inInterrupt_ = false; // a handler that quits ends here, and is in nobody's way
        engine_.quit();
        requestSwitch(code.count > 0 ? code.operands[0] : nullptr);
        return;
    case YOpcode::End:
    case YOpcode::ReturnFromInterrupt:
    case YOpcode::Else: break;
    }
    --pc_; // stays here
    setStatus(kStatusBlocked);
    fireEndReached(code.opcode);
}

// ---------------------------------------------------------------------------- timers

/// On a counting tick. True when a handler was begun.
bool YThread::runTimers() {
    ++schedule_.elapsed;
    ++idle_.elapsed;
    const bool scheduled = fireTimer(schedule_, "schedule", true);
    const bool idled = !engine_.isSwitching() && fireTimer(idle_, "idle", false);
    return scheduled || idled;
}

/// The handler's first statement runs now, the rest in the thread's turns.
bool YThread::fireTimer(Timer& timer, const char* name, bool isSchedule) {
    if (timer.procedure == 0 || timer.elapsed <= timer.interval) return false;
    const eventRecord record{this, timer.procedure, nullptr, {}, name};
    timer.elapsed = 0;
    if (isSchedule) {
        timer.procedure = 0;
        idle_.elapsed = 0;
    }
    status_ = 0;
    return step(&record);
}

// ---------------------------------------------------------------------------- control flow

void YThread::call(const Code& code) {
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
    detail("script %s", std::string(target).c_str());
    engine_.pushScript(scriptName_);
    requestSwitch(last);
}

void YThread::callProcedure(const Code& code, std::int32_t header) {
    detail("procedure %s=%d", code.operands[0]->text().c_str(), header);
    if (!isHeader(header)) {
        reportAndStop("call of a procedure that does not exist");
        return;
    }
    if (callDepth_ >= YTSTACK - 1) {
        reportAndStop("sp < (YTSTACK-1)");
        return;
    }
    returnStack_[static_cast<std::size_t>(callDepth_++)] = narrow(pc_);
    if (inInterrupt_) ++nestedCalls_;
    pc_ = header;
}

void YThread::enterProcedure(const Code& code) {
    if (callDepth_ == 0) { // reached in sequence
        while (code_[static_cast<std::size_t>(pc_)].opcode != YOpcode::Return &&
               code_[static_cast<std::size_t>(pc_)].opcode != YOpcode::End)
            ++pc_;
        if (code_[static_cast<std::size_t>(pc_)].opcode == YOpcode::Return) ++pc_;
        return;
    }
    const int caller = returnStack_[static_cast<std::size_t>(callDepth_ - 1)] - 1;
    const Code& from = code_[static_cast<std::size_t>(caller)];
    detail("Args: ");
    for (int i = 1; i < code.count && i < from.count; ++i) {
        YVariable& parameter = code.operands[i]->resolve();
        YVariable& argument = *from.operands[i];
        if (argument.holdsInteger() && argument.isCanonical() && parameter.takesNumber()) {
            parameter.putNumberAsText(argument.heldInteger());
        } else {
            YScratch scratch;
            parameter.setString(argument.string(scratch));
        }
        if (tracing_) {
            YScratch scratch;
            detail("%s <- %s [%s] ", parameter.text().c_str(), argument.text().c_str(),
                   std::string(parameter.string(scratch)).c_str());
        }
    }
}

void YThread::returnFromProcedure() {
    if (inInterrupt_ && nestedCalls_ == 0) {
        restore(saved_);
        inInterrupt_ = false;
        setStatus(kStatusInterruptEnded);
        return;
    }
    if (callDepth_ == 0) {
        reportAndStop("sp");
        return;
    }
    if (inInterrupt_) --nestedCalls_;
    pc_ = returnStack_[static_cast<std::size_t>(--callDepth_)];
    detail("at pc = %d", pc_);
}

void YThread::setUpLoop(const Code& code) {
    if (code.count == 0) return;
    if (code.count == 1) {
        detail("loop while [%s] is true", code.operands[0]->text().c_str());
        return;
    }
    if (loopDepth_ + 1 >= kLoopStack) {
        reportAndStop("counted loops are nested too deep");
        return;
    }
    CountedLoop& loop = loops_[static_cast<std::size_t>(++loopDepth_)];
    const bool hasTarget = code.count > 2;
    loop.value = narrow(code.operands[1]->integer());
    loop.target = hasTarget ? narrow(code.operands[2]->integer()) : std::int16_t{0};
    loop.step = code.count > 3 ? narrow(code.operands[3]->integer())
                               : std::int16_t{static_cast<std::int16_t>(hasTarget ? 1 : -1)};
    // The test that follows in two instructions knows where the loop ends.
    loop.exit = code_[static_cast<std::size_t>(pc_ + 1)].target;
    loop.direction = loop.value < loop.target ? 1 : -1;
    detail("counter %s: from %d to %d by %d", code.operands[0]->text().c_str(), loop.value,
           loop.target, loop.step);
    loop.value = narrow(loop.value - loop.step);
}

void YThread::nextRound(const Code& code) {
    if (code.count < 2 || loopDepth_ < 0) {
        condition_ = isTrue(code);
        return;
    }
    CountedLoop& loop = loops_[static_cast<std::size_t>(loopDepth_)];
    condition_ = countRound(loop, *code.operands[0]);
    detail("counter %s=%d target=%d", code.operands[0]->text().c_str(), loop.value, loop.target);
}

/// Moves a loop on by its step. Whether there is a round to do.
inline bool YThread::countRound(CountedLoop& loop, YVariable& counter) {
    loop.value = narrow(loop.value + loop.step);
    if (counter.takesNumber()) [[likely]]
        counter.putInteger(loop.value);
    else
        counter.resolve().setInteger(loop.value);
    if (loop.direction == 0) return false;
    if (loop.value == loop.target) {
        loop.direction = 0;
        return true;
    }
    return loop.direction > 0 ? loop.value < loop.target : loop.value > loop.target;
}

inline void YThread::jump(int target) {
    pc_ = target;
    if (loopDepth_ < 0 || loops_[static_cast<std::size_t>(loopDepth_)].exit != target) return;
    detail("leaving a loop nested %d jumping ", loopDepth_);
    --loopDepth_;
}

bool YThread::isTrue(const Code& code) {
    if (code.count == 0) {
        detail("eternal loop");
        return true;
    }
    YVariable& operand = *code.operands[0];
    bool result = true;
    const auto number =
        operand.expression() ? operand.expression()->evaluateNumber() : YExpression::Number();
    if (number.tag != YExpression::Number::Tag::None) {
        result = !beginsWithZero(number);
    } else {
        YScratch scratch;
        result = !operand.string(scratch).starts_with('0');
    }
    detail("condition [%s] is %s", operand.text().c_str(), result ? "true" : "false");
    return result;
}
