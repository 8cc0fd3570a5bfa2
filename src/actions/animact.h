// Actions that play animations: one of their own, or one of the script.
#pragma once

#include "actionof.h"
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
    [[nodiscard]] static std::unique_ptr<Action> create(bool interruptible);

  protected:
    void begin() override;
    void end(End) override;
    void hold() override;
    void goOn() override;

  private:
    Settings settings_;
    std::unique_ptr<OMAnimation> animation_; ///< while active
};

/// Plays an animation of the script, which stays as it ends. Halting stops it.
class PlayAnimAction final : public OMSCopied<PlayAnimAction, ActionOf<RAnimation>> {
  public:
    using OMSCopied::OMSCopied;
    [[nodiscard]] static std::unique_ptr<Action> create(bool interruptible);

  protected:
    void perform(RAnimation& animation, OMLink done) override;
    void interrupt(RAnimation& animation) override;
};
