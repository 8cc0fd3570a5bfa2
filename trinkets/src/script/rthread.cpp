// The life of a thread, its turns, interrupts and timers.
#include "rthread.h"

#include "omdebug.h"
#include "omformat.h"
#include "omscrptb.h"
#include "yengine.h"
#include "ykeptvariables.h"
#include "ystatement.h"

#include <algorithm>
#include <utility>

YThread::YThread(YEngine& engine, const char* name, YScriptLocator locator)
    : engine_(engine), isProfiled_(engine.profile() != nullptr), locator_(std::move(locator)),
      trace_(engine), playing_(std::make_shared<bool>(false)) {
    loadScript(name);
    if (isLoaded()) join();
}

YThread::~YThread() { engine_.remove(*this); }

void YThread::join() {
    if (!std::exchange(joined_, true)) engine_.add(*this);
}

/// The thread is left without a script.
void YThread::discardScript() {
    stop();
    program_.reset();
    wanted_.variable = nullptr;
    *playing_ = false;
}

void YThread::loseScript() {
    if (!isLoaded()) return;
    discardScript();
    const OMLink unloaded = unloadedLink_; // may end the thread
    unloaded();
}

void YThread::unload() {
    if (isLoaded()) {
        engine_.removeAllRecords();
        discardScript();
        engine_.recreateHeap();
    }
    unloadedLink_();
}

void YThread::loadScript(const char* name) {
    unload();
    const std::string wanted = name ? name : YChooseScript();
    flow_ = {};
    status_ = Status::Ready;
    pace_ = Pace::OneStatement;
    eventsEnabled_ = true;
    endPending_ = true;
    schedule_ = {};
    idle_ = {};
    if (wanted.empty()) return;
    if (scriptName_ != wanted) kept_.reset();
    scriptName_ = wanted;
    std::unique_ptr<YScript> script = YLoadScript(engine_, wanted, locator_);
    if (!script) return;
    program_ = std::make_unique<YProgram>(YHeap::current(), std::move(script));
    ++loads_;
}

void YThread::stop() {
    running_ = false;
    halted_ = true;
}

void YThread::switchToScript(const std::string& name) {
    if (name == scriptName_) return;
    wanted_.name = name;
    engine_.requestSwitch(*this);
    halted_ = true;
}

std::optional<std::string> YThread::takeWanted() {
    const Wanted wanted = std::exchange(wanted_, {});
    if (!wanted.name.empty()) return wanted.name;
    if (!wanted.variable) return std::nullopt;
    return textOf(*wanted.variable);
}

void YThread::callScript(const std::string& name) {
    if (name == scriptName_) return;
    engine_.pushScript(scriptName_);
    switchToScript(name);
}

void YThread::beginAnew(bool keepsVariables) {
    join(); // if its first script could not be compiled
    kept_ = keepsVariables ? std::make_unique<YKeptVariables>(YHeap::current()) : nullptr;
    stop();
    wanted_.name = scriptName_;
    engine_.requestSwitch(*this);
}

void YThread::requestSwitch(YVariable* script) {
    stop();
    wanted_.variable = script;
    engine_.requestSwitch(*this);
}

void YThread::setStatus(Status status) {
    status_ = status;
    halted_ = true;
}

void YThread::giveUp() {
    flow_.forgetInterrupt();
    flow_.waiting = true;
    flow_.pausing = false;
    halted_ = true;
}

void YThread::reportAndStop(std::string_view what) {
    stop();
    std::string text = scriptName_;
    if (program_ && flow_.pc > 0) text = program_->place(program_->at(flow_.pc - 1));
    engine_.warn(text.append(": ").append(what));
}

std::optional<int> YThread::handlerOf(std::string_view procedure) const {
    return program_ ? program_->handlerOf(procedure) : std::nullopt;
}

std::string YThread::placeOf(std::string_view procedure) const {
    const auto handler = handlerOf(procedure);
    return handler ? program_->place(program_->at(*handler - 1)) : std::string();
}

std::string YThread::withTrail(std::string_view warning) const {
    if (line_)
        return line_->place(line_->at(0)) + ": " + std::string(warning) + "\n    " +
               YProgram::statement(line_->at(0));
    if (!program_ || flow_.pc <= 0) return std::string(warning);
    const Instruction& code = program_->at(flow_.pc - 1);
    const std::string place = program_->place(code);
    std::string text = warning.starts_with(place) ? std::string() : place + ": ";
    text.append(warning).append("\n    ").append(YProgram::statement(code));
    flow_.eachCaller([&](int call) {
        const Instruction& from = program_->at(call);
        text += "\n    called from " + program_->place(from) + ": " + YProgram::statement(from);
    });
    return flow_.inInterrupt() ? text + "\n    " + interruptText() : text;
}

/// What began the interrupt: "in clicked, the handler of boat's mouseDown".
std::string YThread::interruptText() const {
    const OMScriptableObject* const receiver = YHeap::current().get(YHeap::kReceiver).object();
    const auto& records = engine_.records();
    const auto find = [&](bool ofReceiver) {
        return std::ranges::find_if(records, [&](const auto& record) {
            return record->thread == this && record->handler == flow_.handler() &&
                   (!ofReceiver || record->receiver == receiver);
        });
    };
    auto record = find(true);
    if (record == records.end()) record = find(false);
    const std::string text =
        "in " + program_->at(flow_.handler() - 1).operands[0]->text() + ", the handler of ";
    if (record == records.end()) return text + "a timer";
    return text + (*record)->variable + "'s " + (*record)->event;
}

// ---------------------------------------------------------------------------- stepping

void YThread::turn() {
    const YEngine::Turn scope(engine_);
    status_ = Status::Ready;
    step(nullptr, pace_);
    if (kept_ && isLoaded()) giveVariablesBack();
}

/// Once the script has done what it begins with.
void YThread::giveVariablesBack() {
    const bool gaveWay = status_ == Status::Blocked || flow_.waiting || !running_;
    if (!gaveWay || engine_.isSwitching()) return;
    kept_->giveBack(YHeap::current());
    kept_.reset();
}

/// Begins a handler, if there is one, and runs instructions. False when the thread cannot run or
/// refused the event.
bool YThread::step(const eventRecord* event, Pace pace) {
    if (!running_ || *playing_) {
        status_ = Status::Blocked;
        return false;
    }
    if (event && !enterInterrupt(*event)) return false;
    endPause();
    if (flow_.waiting) return true;
    const YEngine::AtWork atWork(engine_, *this);
    halted_ = false;
    if (pace == Pace::OneStatement)
        runOne();
    else
        runInstructions();
    if (const auto excess = engine_.takeExcess())
        reportAndStop("the script is stopped: " + *excess +
                      ". Look for a loop without end, or for objects that nobody lets go");
    return true;
}

bool YThread::enterInterrupt(const eventRecord& event) {
    if (!eventsEnabled_) {
        status_ = Status::InterruptEnded;
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
    if (flow_.inInterrupt()) {
        const std::string someone = event.variable.empty() ? "someone" : event.variable;
        flow_.endInterrupt();
        endPause();
        engine_.warn(OMFormat("Nested interrupt on %s's event", someone.c_str()));
    }
    flow_.beginInterrupt(event.handler);
    return true;
}

/// A pause may run out while a handler is at work, so each context knows whether it waits for it.
void YThread::endPause() {
    if (flow_.pausing && engine_.pauseIsOver()) flow_.waiting = flow_.pausing = false;
}

void YThread::deliverEvent(const eventRecord& event) {
    if (engine_.isSwitching() || YEngine::isHeld()) return;
    if (engine_.deliveries >= YEngine::kMaxDeliveries) {
        reportAndStop("events are nested too deep");
        return;
    }
    const YEngine::Turn scope(engine_);
    const OMUnderWay::Run statements(OMUnderWay::Run::Kind::Nested);
    ++engine_.deliveries;
    const Status savedStatus = status_;
    const Pace savedPace = pace_;
    const bool wasHalted = halted_;
    const YProgram* const line = std::exchange(line_, nullptr);
    status_ = Status::Ready;
    step(&event, Pace::UntilBlocked);
    line_ = line;
    if (!engine_.isSwitching()) status_ = savedStatus;
    pace_ = savedPace;
    // The instruction that fired the event goes on unless the thread is blocked now.
    halted_ = wasHalted || !running_ || flow_.waiting || *playing_ || engine_.isSwitching();
    --engine_.deliveries;
}

void YThread::fireEndReached(YOpcode opcode) {
    if (!endReachedLink_ || !endPending_) return;
    endPending_ = false;
    endFiredBy_ = opcode;
    endReachedLink_();
}

// ---------------------------------------------------------------------------- timers

bool YThread::runTimers() {
    schedule_.count();
    idle_.count();
    bool begun = false;
    if (schedule_.isDue()) {
        idle_.elapsed = 0;
        begun = beginTimer(std::exchange(schedule_, {}).procedure, "schedule");
    }
    if (idle_.isDue() && !engine_.isSwitching()) {
        idle_.elapsed = 0;
        begun = beginTimer(idle_.procedure, "idle") || begun;
    }
    return begun;
}

/// The handler's first statement runs now, the rest in the thread's turns.
bool YThread::beginTimer(int procedure, const char* name) {
    const eventRecord record{this, procedure, nullptr, {}, name};
    status_ = Status::Ready;
    return step(&record, Pace::OneStatement);
}
