#include "animact.h"

#include "actionparameters.h"
#include "omsbirths.h"
#include "omtrinketwindow.h"

#include <utility>

// ---------------------------------------------------------------------------- AnimAction

AnimAction::AnimAction(const Settings& settings, bool interruptible)
    : OMSCopied(interruptible), settings_(settings) {}

std::unique_ptr<Action> AnimAction::create(bool byDefault) {
    constexpr std::size_t kShortForm = 3; // and the flag
    ActionParameters parameters("AnimAction", byDefault);
    if (!parameters.areAtLeast(kShortForm)) return nullptr;
    const bool isPlaced = parameters.count() > kShortForm + 1;
    Settings settings{.id = parameters.integer("resID"),
                      .x = isPlaced ? parameters.integer("x") : OMAnimation::kEmbedded,
                      .y = isPlaced ? parameters.integer("y") : OMAnimation::kEmbedded,
                      .z = parameters.integer("z"),
                      .repeatCount = parameters.integer("repeatCount")};
    const bool interruptible = parameters.interruptible();
    parameters.report();
    return std::make_unique<AnimAction>(settings, interruptible);
}

void AnimAction::begin() {
    const OMSBirths births; // of the animation, which is set up then
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (settings_.id != kNoAnimation && window &&
        AOImage::canLocate("Source URL is not installed in AnimAction"))
        animation_ = OMAnimation::create(settings_.id, settings_.x, settings_.y, *window);
    if (!animation_) {
        finish();
        return;
    }
    animation_->setZ(settings_.z);
    animation_->setRepeatCount(settings_.repeatCount);
    animation_->setCompletionLink(doneLink());
    animation_->play();
}

void AnimAction::end(End) { animation_.reset(); }
void AnimAction::hold() { animation_->pause(); }
void AnimAction::goOn() { animation_->resume(); }

// ---------------------------------------------------------------------------- PlayAnimAction

std::unique_ptr<Action> PlayAnimAction::create(bool byDefault) {
    ActionParameters parameters("PlayAnimAction", byDefault);
    if (!parameters.areAtLeast(1)) return nullptr;
    const std::string name = parameters.text("RAnimation variable name");
    auto* animation = parameters.object<RAnimation>(name);
    if (!animation) return nullptr;
    const bool interruptible = parameters.interruptible();
    parameters.report();
    return std::make_unique<PlayAnimAction>(*animation, interruptible);
}

/// Others may wait for it too.
void PlayAnimAction::perform(RAnimation& animation, OMLink done) {
    animation.addCompletionLink(std::move(done));
    animation.play();
}

void PlayAnimAction::interrupt(RAnimation& animation) { animation.endPlayback(); }
