// The sounds of animations: plays the sound entries of their sequences through the sound engine.
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
    RAnimationSounds(const RAnimationSounds&) = delete;
    RAnimationSounds& operator=(const RAnimationSounds&) = delete;

    /// A sound of the same animation and id that still plays ends, and the new one starts.
    bool play(OMAnimation& animation, int id, OMLink done) override;
    void stop(OMAnimation& animation) override;

  private:
    struct Record;

    /// Takes the record out of the table; null when it is not there.
    std::unique_ptr<Record> take(const Record* record);
    void finished(const Record* record);

    RResources& resources_;
    std::vector<std::unique_ptr<Record>> records_; ///< one for every sound that plays
};
