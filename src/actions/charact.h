// Actions of characters: an animation, a speech. Halting stops the character, pausing pauses it.
#pragma once

#include "action.h"

#include <memory>

class RCharacter;

class CharacterAction : public Action {
  protected:
    CharacterAction(RCharacter& character, bool interruptible);

    /// Has the character do its part; `done` tells the end, also of one that is busy or goes.
    virtual void perform(RCharacter& character, OMLink done) = 0;

    void begin() override;
    void end(End how) override;
    void hold() override;
    void goOn() override;
    [[nodiscard]] bool hasLostObject() const override { return !character_; }

  private:
    [[nodiscard]] RCharacter* character() const;

    OMSWatch character_;
};

class CharacterAnimAction final : public CharacterAction {
  public:
    CharacterAnimAction(RCharacter& character, int id, int repeatCount, bool staysVisible,
                        bool interruptible);
    ~CharacterAnimAction() override { halt(); }
    [[nodiscard]] static std::unique_ptr<Action> create(bool interruptible);

  protected:
    void perform(RCharacter& character, OMLink done) override;

  private:
    int id_;
    int repeatCount_;
    bool staysVisible_;
};

class CharacterSpeechAction final : public CharacterAction {
  public:
    CharacterSpeechAction(RCharacter& character, int speech, bool interruptible);
    ~CharacterSpeechAction() override { halt(); }
    [[nodiscard]] static std::unique_ptr<Action> create(bool interruptible);

  protected:
    void perform(RCharacter& character, OMLink done) override;

  private:
    int speech_;
};
