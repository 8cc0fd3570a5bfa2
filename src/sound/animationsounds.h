// The sounds of animations: plays the sound entries of their sequences through the sound engine. A
// sound is loaded when its animation plays it for the first time, and kept as long as the animation
// is there.
#pragma once

#include "aosounds.h"

#include <memory>
#include <vector>

class RResources;

class RAnimationSounds final : public AOSounds {
  public:
    /// Installs itself for all animations while it lives. The resources must outlive it.
    explicit RAnimationSounds(RResources& resources);
    ~RAnimationSounds() override;

    /// A sound of the same animation and id that still plays ends, and the new one starts.
    Start play(AOVoice& voice, int id, OMLink done) override;
    void stop(AOVoice& voice) override;
    void pause(AOVoice& voice) override;
    void resume(AOVoice& voice) override;
    void forget(AOVoice& voice) override;

  private:
    struct Record;

    [[nodiscard]] Record* find(const AOVoice& voice, int id) const;

    RResources& resources_;
    std::vector<std::unique_ptr<Record>> records_;
};
