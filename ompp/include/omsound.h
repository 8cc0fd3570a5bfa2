// A sound that can be played: what all kinds of sounds have in common, which is the play count, the
// volume, and the links that are called when a sound starts, ends, pauses and goes on.
//
// A sound may be destroyed in any of its own links.
#pragma once

#include "omlink.h"

#include <cstdint>
#include <memory>
#include <string_view>

inline constexpr int kOMSoundPlayForever = -1; ///< a play count

class OMSound {
  public:
    static constexpr int kFullVolume = 100;

    /// Fatal without an application object.
    OMSound();
    virtual ~OMSound() = default;
    OMSound& operator=(OMSound&&) = delete;

    [[nodiscard]] virtual std::string_view className() const = 0;

    /// Whether the sound started. With `asynchronous` false it returns when all sounds have ended.
    virtual bool play(bool asynchronous) = 0;
    virtual bool stop() = 0;
    virtual bool load() = 0;
    virtual void unload() = 0;

    /// Clamped to 0 to 100.
    virtual void setVolume(int volume);
    [[nodiscard]] virtual int volume() const { return volume_; }
    [[nodiscard]] virtual int sampleRate() const = 0; ///< samples a second

    virtual void pause() = 0;
    virtual void resume() = 0;

    // The engine's notices, which call the links.
    virtual void notifyStarted();
    virtual void notifyFinished();
    virtual void notifyPaused();
    virtual void notifyResumed();

    /// kOMSoundPlayForever or above 0; anything else fails a check and changes nothing.
    void setPlayCount(int count);
    [[nodiscard]] int completedPlays() const { return completedPlays_; }
    [[nodiscard]] bool isLoaded() const { return loaded_; }
    [[nodiscard]] bool isPaused() const { return paused_; }

    void setStartedLink(OMLink link) { startedLink_ = std::move(link); }
    void setFinishedLink(OMLink link) { finishedLink_ = std::move(link); }
    void setPausedLink(OMLink link) { pausedLink_ = std::move(link); }
    void setResumedLink(OMLink link) { resumedLink_ = std::move(link); }

  protected:
    /// Waits until no sound plays any more.
    virtual void waitUntilAllSoundsEnd() = 0;

    /// Expires with the sound; for code that goes on after a link was called.
    [[nodiscard]] std::weak_ptr<const bool> watch() const { return life_; }
    /// Whether a further play follows the `completedPlays_` ones.
    [[nodiscard]] bool playsRemain() const {
        return playCount_ == kOMSoundPlayForever || completedPlays_ < playCount_;
    }

    int volume_ = kFullVolume;
    int playCount_ = 1;
    int completedPlays_ = 0;
    bool loaded_ = false;
    bool startedNotified_ = false; ///< in this play
    bool paused_ = false;

  private:
    OMLink startedLink_;
    OMLink finishedLink_;
    OMLink pausedLink_;
    OMLink resumedLink_;
    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true);
};
