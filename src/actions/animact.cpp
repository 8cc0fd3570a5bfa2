#include "animact.h"

#include "actionparameters.h"
#include "omtrinketwindow.h"
#include "ranimation.h"

// ---------------------------------------------------------------------------- AnimAction

AnimAction::AnimAction(const Settings& settings, bool interruptible)
    : Action(interruptible), settings_(settings) {}

AnimAction::~AnimAction() { halt(); }

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
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (settings_.id != kNoAnimation && window &&
        OMDebug::check(OMAnimation::hasSourceLocator(), "url == NULL",
                       "Source URL is not installed in AnimAction"))
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

PlayAnimAction::PlayAnimAction(RAnimation& animation, bool interruptible)
    : Action(interruptible), animation_(&animation) {}

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

RAnimation* PlayAnimAction::animation() const {
    return static_cast<RAnimation*>(animation_.object());
}

/// An animation that goes tells that it is complete, too.
void PlayAnimAction::begin() {
    if (!animation_) {
        finish();
        return;
    }
    animation()->addCompletionLink(doneLink());
    animation()->play();
}

void PlayAnimAction::end(End how) {
    if (how == End::Halted && animation_) animation()->endPlayback();
}

void PlayAnimAction::hold() {
    if (animation_) animation()->pause();
}

void PlayAnimAction::goOn() {
    if (animation_) animation()->resume();
}
