#include "delayact.h"

#include "actionparameters.h"
#include "omplatform.h"
#include "omrandom.h"

void TimedAction::begin() {
    remainingMs_ = nextDelay();
    startMs_ = OMMilliseconds();
    task_ = std::make_unique<OMTask>(
        [this] {
            if (sinceStart() >= remainingMs_) finish();
        },
        OMTask::kWithScripts);
}

std::int64_t TimedAction::sinceStart() const { return OMMilliseconds() - startMs_; }

void TimedAction::hold() {
    task_->suspend();
    remainingMs_ -= sinceStart();
}

void TimedAction::goOn() {
    task_->resume();
    startMs_ = OMMilliseconds();
}

std::unique_ptr<Action> DelayAction::create(ActionParameters& parameters) {
    const int ms = parameters.integer("delayTime (in ms)");
    return std::make_unique<DelayAction>(ms, parameters.interruptible());
}

std::int64_t RandomDelayAction::nextDelay() {
    const std::int64_t range = std::int64_t{longestMs_} - shortestMs_;
    if (range <= 0) return shortestMs_;
    return shortestMs_ + std::int64_t{OMRandom()} % range;
}

std::unique_ptr<Action> RandomDelayAction::create(ActionParameters& parameters) {
    const int shortest = parameters.integer("min delay time (ms)");
    const int longest = parameters.integer("max delay time (ms)");
    return std::make_unique<RandomDelayAction>(shortest, longest, parameters.interruptible());
}

std::unique_ptr<Action> EmptyAction::create(ActionParameters& parameters) {
    return std::make_unique<EmptyAction>(
        parameters.interruptible("interruptible", " (container specified)"));
}
