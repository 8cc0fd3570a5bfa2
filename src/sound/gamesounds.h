// The sounds that the game has started, addressed by handle numbers. This is what scripts, answers,
// buttons and activities play their sounds through.
#pragma once

#include "omeffectsounds.h"
#include "omlink.h"

#include <memory>
#include <vector>

class RResources;

class RGameSounds final : public OMEffectSounds {
  public:
    static constexpr int kNoSound = -1;      ///< instead of a handle
    static constexpr int kNoSoundId = 65535; ///< an id that stands for "none"

    /// What plays the sounds of objects on the screen, while it lives. The resources must outlive
    /// it.
    explicit RGameSounds(RResources& resources);
    ~RGameSounds() override;

    /// Plays the `WAVE` resource `id` once, or for ever with `loop`. `done` is called when a sound
    /// that plays once has ended or was killed, before its handle becomes invalid; never for a
    /// loop, nor for a sound that cannot start, whose handle means nothing. kNoSound when there is
    /// no such resource.
    int play(int id, OMLink done, bool loop);

    int playEffect(int id, OMLink done) override;
    void endEffect(int handle) override { kill(handle); }

    // Handles that are not known do nothing.
    void kill(int handle);
    void pause(int handle);
    void resume(int handle);

    /// All at once, and nobody is told.
    void endAll();

    [[nodiscard]] std::size_t count() const { return records_.size(); }

  private:
    struct Record;

    [[nodiscard]] Record* find(int handle) const;
    void remove(int handle);
    void finished(int handle);

    RResources& resources_;
    std::vector<std::unique_ptr<Record>> records_;
    int nextHandle_ = 0;
};
