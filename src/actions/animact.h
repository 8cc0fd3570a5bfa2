// Actions that have something play: an animation of their own; or, of the script, an animation, a
// character or a map game.
#pragma once

#include "action.h"
#include "activities/rmap.h"
#include "character/rcharctr.h"
#include "ranimation.h"

#include <memory>

/// Shows an animation resource while it plays; the picture goes with the end of the action.
class AnimAction final : public OMSCopied<AnimAction, Action> {
  public:
    static constexpr int kNoAnimation = -1; ///< a resource id

    struct Settings {
        int id;
        int x; ///< pixels, or OMAnimation::kEmbedded
        int y;
        int z;
        int repeatCount;
    };

    AnimAction(const Settings& settings, bool interruptible);
    AnimAction(const AnimAction& other) : OMSCopied(other), settings_(other.settings_) {}
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  protected:
    void begin() override;
    void end(End) override;
    void hold() override;
    void goOn() override;

  private:
    Settings settings_;
    std::unique_ptr<OMAnimation> animation_; ///< while active
};

/// An action that has an object of the script do something that takes its time. The object's class
/// has `pause` and `resume`. The action does not own the object. One that is gone has nothing to
/// do; one that goes meanwhile ends the action in the next pass.
template <class Object>
class ActionOf : public Action {
  public:
    ActionOf(Object& object, bool interruptible) : Action(interruptible), object_(&object) {}

  protected:
    /// Has the object begin. `done` is to be called once, at its end, and when the object goes.
    virtual void perform(Object& object, OMLink done) = 0;
    /// Ends it before its time.
    virtual void interrupt(Object& object) = 0;
    /// Called at the end if the object was paused then, and would stay so.
    virtual void letGo(Object&) {}

    void begin() final {
        if (Object* worker = object())
            perform(*worker, doneLink());
        else
            finish();
    }
    /// Letting go comes first: a handler of the object may destroy both.
    void end(End how) final {
        Object* worker = object();
        if (worker && isPaused()) letGo(*worker);
        if (worker && how == End::Halted) interrupt(*worker);
    }
    void hold() final {
        if (Object* worker = object()) worker->pause();
    }
    void goOn() final {
        if (Object* worker = object()) worker->resume();
    }
    [[nodiscard]] bool hasLostObject() const final { return !object_; }

  private:
    [[nodiscard]] Object* object() const { return static_cast<Object*>(object_.object()); }

    OMSWatch object_;
};

/// Plays an animation of the script, which stays as it ends. Halting stops it.
class PlayAnimAction final : public OMSCopied<PlayAnimAction, ActionOf<RAnimation>> {
  public:
    using OMSCopied::OMSCopied;
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  protected:
    void perform(RAnimation& animation, OMLink done) override;
    void interrupt(RAnimation& animation) override;
};

/// An animation or a speech of a character. Halting stops the character, pausing pauses it.
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
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

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
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  protected:
    void perform(RCharacter& character, OMLink done) override;

  private:
    int speech_;
};

/// Runs the moves of a map game. Halting interrupts them.
class MapAction final : public OMSCopied<MapAction, ActionOf<RMap>> {
  public:
    using OMSCopied::OMSCopied;
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  protected:
    void perform(RMap& map, OMLink done) override { map.move(std::move(done)); }
    void interrupt(RMap& map) override { map.interruptMove(); }
};
