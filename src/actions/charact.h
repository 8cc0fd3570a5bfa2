// Actions of characters: an animation, a speech. Halting stops the character, pausing pauses it.
#pragma once

#include "actionof.h"
#include "character/rcharctr.h"

#include <memory>

class CharacterAction : public ActionOf<RCharacter> {
  protected:
    using ActionOf::ActionOf;
    void interrupt(RCharacter& character) override { character.stop(); }
    void letGo(RCharacter& character) override { character.resume(); }
};

class CharacterAnimAction final : public OMSCopied<CharacterAnimAction, CharacterAction> {
  public:
    CharacterAnimAction(RCharacter& character, int id, int repeatCount, bool staysVisible,
                        bool interruptible);
    [[nodiscard]] static std::unique_ptr<Action> create(bool interruptible);

  protected:
    void perform(RCharacter& character, OMLink done) override;

  private:
    int id_;
    int repeatCount_;
    bool staysVisible_;
};

class CharacterSpeechAction final : public OMSCopied<CharacterSpeechAction, CharacterAction> {
  public:
    CharacterSpeechAction(RCharacter& character, int speech, bool interruptible);
    [[nodiscard]] static std::unique_ptr<Action> create(bool interruptible);

  protected:
    void perform(RCharacter& character, OMLink done) override;

  private:
    int speech_;
};
