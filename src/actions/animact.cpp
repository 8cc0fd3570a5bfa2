#include "animact.h"

#include "actionparameters.h"
#include "omsbirths.h"
#include "omtrinketwindow.h"

#include <utility>

// ---------------------------------------------------------------------------- AnimAction

AnimAction::AnimAction(const Settings& settings, bool interruptible)
    : OMSCopied(interruptible), settings_(settings) {}

std::unique_ptr<Action> AnimAction::create(ActionParameters& parameters) {
    constexpr std::size_t kShortForm = 3; // and the flag
    const bool isPlaced = parameters.count() > kShortForm + 1;
    Settings settings{.id = parameters.integer("resID"),
                      .x = isPlaced ? parameters.integer("x") : OMAnimation::kEmbedded,
                      .y = isPlaced ? parameters.integer("y") : OMAnimation::kEmbedded,
                      .z = parameters.integer("z"),
                      .repeatCount = parameters.integer("repeatCount")};
    return std::make_unique<AnimAction>(settings, parameters.interruptible());
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

std::unique_ptr<Action> PlayAnimAction::create(ActionParameters& parameters) {
    auto* animation = parameters.object<RAnimation>("RAnimation variable name");
    if (!animation) return nullptr;
    return std::make_unique<PlayAnimAction>(*animation, parameters.interruptible());
}

/// Others may wait for it too.
void PlayAnimAction::perform(RAnimation& animation, OMLink done) {
    animation.addCompletionLink(std::move(done));
    animation.play();
}

void PlayAnimAction::interrupt(RAnimation& animation) { animation.endPlayback(); }

// ---------------------------------------------------------------------------- CharacterAction

CharacterAnimAction::CharacterAnimAction(RCharacter& character, int id, int repeatCount,
                                         bool staysVisible, bool interruptible)
    : OMSCopied(character, interruptible), id_(id), repeatCount_(repeatCount),
      staysVisible_(staysVisible) {}

std::unique_ptr<Action> CharacterAnimAction::create(ActionParameters& parameters) {
    auto* character = parameters.object<RCharacter>("RCharacter variable name");
    if (!character) return nullptr;
    const int id = parameters.integer("animID");
    const int repeatCount = parameters.integer("repeatCount", 1, "1");
    const bool staysVisible = parameters.flag("showSettleWhenDone", true);
    return std::make_unique<CharacterAnimAction>(*character, id, repeatCount, staysVisible,
                                                 parameters.interruptible());
}

void CharacterAnimAction::perform(RCharacter& character, OMLink done) {
    character.playAnim(id_, repeatCount_, staysVisible_, std::move(done));
}

CharacterSpeechAction::CharacterSpeechAction(RCharacter& character, int speech, bool interruptible)
    : OMSCopied(character, interruptible), speech_(speech) {}

std::unique_ptr<Action> CharacterSpeechAction::create(ActionParameters& parameters) {
    auto* character = parameters.object<RCharacter>("RCharacter variable name");
    if (!character) return nullptr;
    const int speech = parameters.integer("speechSoundID");
    return std::make_unique<CharacterSpeechAction>(*character, speech, parameters.interruptible());
}

void CharacterSpeechAction::perform(RCharacter& character, OMLink done) {
    character.playSpeech(speech_, std::nullopt, std::nullopt, std::move(done));
}

// ---------------------------------------------------------------------------- MapAction

std::unique_ptr<Action> MapAction::create(ActionParameters& parameters) {
    auto* map = parameters.object<RMap>("RMap variable name", "map");
    if (!map) return nullptr;
    return std::make_unique<MapAction>(*map, parameters.interruptible());
}
