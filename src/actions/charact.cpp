#include "charact.h"

#include "actionparameters.h"

// ---------------------------------------------------------------------------- animation

CharacterAnimAction::CharacterAnimAction(RCharacter& character, int id, int repeatCount,
                                         bool staysVisible, bool interruptible)
    : OMSCopied(character, interruptible), id_(id), repeatCount_(repeatCount),
      staysVisible_(staysVisible) {}

std::unique_ptr<Action> CharacterAnimAction::create(bool byDefault) {
    ActionParameters parameters("CharacterAnimAction", byDefault);
    if (!parameters.areAtLeast(2)) return nullptr;
    const std::string name = parameters.text("RCharacter variable name");
    const int id = parameters.integer("animID");
    const int repeatCount = parameters.integer("repeatCount", 1, "1");
    const bool staysVisible = parameters.flag("showSettleWhenDone", true);
    const bool interruptible = parameters.interruptible();
    auto* character = parameters.object<RCharacter>(name);
    if (!character) return nullptr;
    parameters.report();
    return std::make_unique<CharacterAnimAction>(*character, id, repeatCount, staysVisible,
                                                 interruptible);
}

void CharacterAnimAction::perform(RCharacter& character, OMLink done) {
    character.playAnim(id_, repeatCount_, staysVisible_, std::move(done));
}

// ---------------------------------------------------------------------------- speech

CharacterSpeechAction::CharacterSpeechAction(RCharacter& character, int speech, bool interruptible)
    : OMSCopied(character, interruptible), speech_(speech) {}

std::unique_ptr<Action> CharacterSpeechAction::create(bool byDefault) {
    ActionParameters parameters("CharacterSpeechAction", byDefault);
    if (!parameters.areAtLeast(2)) return nullptr;
    const std::string name = parameters.text("RCharacter variable name");
    const int speech = parameters.integer("speechSoundID");
    const bool interruptible = parameters.interruptible();
    auto* character = parameters.object<RCharacter>(name);
    if (!character) return nullptr;
    parameters.report();
    return std::make_unique<CharacterSpeechAction>(*character, speech, interruptible);
}

void CharacterSpeechAction::perform(RCharacter& character, OMLink done) {
    character.playSpeech(speech_, std::nullopt, std::nullopt, std::move(done));
}
