// The sound devices of the machine, as SDL opens them; for the program's sounds and for movies.
//
// A host may have no device, refuse it, or lose it in the middle. Whoever wants to play goes on
// without one then, and `failure` says why nothing is heard. A device that failed is left alone for
// a while: on some hosts each attempt takes seconds.
#pragma once

#include "platform/clock.h"
#include "platform/host/sound/moviespeaker.h"

#include <SDL.h>
#include <optional>
#include <string>
#include <vector>

namespace platform {

class SdlSound {
  public:
    /// The clock must outlive it.
    explicit SdlSound(const Clock& clock) : clock_(clock) {}

    [[nodiscard]] const Clock& clock() const { return clock_; }

    /// Opens the default device, which takes its samples from `callback`, or from SDL's queue when
    /// that is null. It plays. 0 when there is none.
    SDL_AudioDeviceID open(const SoundFormat& format, SDL_AudioCallback callback = nullptr,
                           void* owner = nullptr);

    /// Whether the host has taken an open device away.
    [[nodiscard]] static bool isLost(SDL_AudioDeviceID device) {
        return SDL_GetAudioDeviceStatus(device) == SDL_AUDIO_STOPPED;
    }
    /// Whether a device was left alone (see `abandon`): SDL cannot be ended then.
    [[nodiscard]] bool hangs() const { return hangs_; }

    // Each open device comes to one of these ends.

    void close(SDL_AudioDeviceID device);
    /// Closes one that the host has taken away. Another one may be opened at once, unless this was
    /// not the first in a while.
    void closeLost(SDL_AudioDeviceID device);
    /// Leaves a device alone that takes no samples any more: closing it would wait for it for ever.
    /// It calls nobody from here on, and no other is opened.
    void abandon(SDL_AudioDeviceID device);

    /// Has all open devices that play stand still, and play again.
    void hold(bool on);

    /// Why the last opening failed or the last device was lost; in the host's words.
    [[nodiscard]] const std::string& failure() const { return failure_; }

  private:
    [[nodiscard]] bool wasJust(const std::optional<std::uint32_t>& ms) const;
    SDL_AudioDeviceID fail();

    const Clock& clock_;
    std::vector<SDL_AudioDeviceID> devices_; ///< that are open
    std::vector<SDL_AudioDeviceID> held_;
    std::optional<std::uint32_t> failedMs_; ///< when the last opening failed, with no other open
    std::optional<std::uint32_t> lostMs_;   ///< when the last device was lost
    bool hangs_ = false;
    std::string failure_;
};

} // namespace platform
