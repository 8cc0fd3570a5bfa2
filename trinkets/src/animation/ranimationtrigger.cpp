#include "ranimationtrigger.h"

#include "omplatform.h"
#include "omsclass.h"

namespace {

constexpr OMSEntry kRAnimationTriggerVocabulary[] = {
    oms::data<&RAnimationTrigger::framesPerSecond, &RAnimationTrigger::setFramesPerSecond>(
        "framesPerSecond", "events a second"),
    oms::method<&RAnimationTrigger::start>("start"),
    oms::method<&RAnimationTrigger::stop>("stop"),
    oms::event("newFrame", "its time has come"),
};

constexpr std::uint32_t kPriority = 1; ///< before the scripts, which the event may belong to

} // namespace

const OMSClass RAnimationTrigger::kClass{"RAnimationTrigger", &OMScriptableObject::kClass,
                                         kRAnimationTriggerVocabulary,
                                         &RAnimationTrigger::createFromScript, "[rate]"};

std::unique_ptr<OMScriptableObject> RAnimationTrigger::createFromScript() {
    auto trigger = std::make_unique<RAnimationTrigger>();
    OMSArguments& arguments = OMSArguments::global();
    if (arguments.hasNext()) trigger->setFramesPerSecond(arguments.nextInteger());
    return trigger;
}

std::uint32_t RAnimationTrigger::periodMs() const {
    return static_cast<std::uint32_t>(platform::kMsPerSecond / framesPerSecond_);
}

/// What was missed while it stood still is not made up for.
void RAnimationTrigger::setFramesPerSecond(int rate) {
    const bool stood = framesPerSecond_ < 1;
    framesPerSecond_ = rate;
    if (stood) beginPeriod();
}

void RAnimationTrigger::beginPeriod() {
    if (framesPerSecond_ > 0) dueMs_ = OMMilliseconds() + periodMs();
}

void RAnimationTrigger::start() {
    beginPeriod();
    if (!task_) task_ = std::make_unique<OMTask>([this] { tick(); }, kPriority);
}

void RAnimationTrigger::tick() {
    // On a clock that wraps.
    if (framesPerSecond_ < 1 || static_cast<std::int32_t>(OMMilliseconds() - dueMs_) < 0) return;
    dueMs_ += periodMs();
    fireEvent("newFrame"); // it may be gone then
}
