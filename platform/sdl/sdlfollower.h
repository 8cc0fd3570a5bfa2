// Devices that play by a clock, as those of a machine without a person do, and are heard all the
// same: the machine's real device follows, a moment later. So the program gets the times of a
// recorded visit, which are the same whenever it is played again.
#pragma once

#include "platform/host/sound/clockedmoviespeaker.h"
#include "platform/host/sound/clockedwaveout.h"
#include "platform/host/sound/soundsink.h"
#include "platform/sdl/sdlsound.h"

#include <memory>

namespace platform {

class SdlFollower final : public SoundSink {
  public:
    /// What opens devices must outlive it.
    explicit SdlFollower(SdlSound& sound) : sound_(sound) {}
    ~SdlFollower() override { finish(); }
    SdlFollower& operator=(SdlFollower&&) = delete;

    /// Without a device, or when that lags far behind, the samples are not heard.
    void play(std::span<const std::uint8_t> samples, const SoundFormat& format) override;
    void finish() override;

  private:
    SdlSound& sound_;
    SDL_AudioDeviceID device_ = 0; ///< 0: closed
    SoundFormat format_;
};

/// A device that plays by a clock, and what is heard of it.
template <class Clocked>
class Followed final : public Clocked {
  public:
    Followed(const Clock& clock, SdlSound& sound) : Clocked(clock, &follower_), follower_(sound) {}
    ~Followed() override { this->close(); }
    Followed& operator=(Followed&&) = delete;

  private:
    SdlFollower follower_;
};

using FollowedWaveOut = Followed<ClockedWaveOut>;
using FollowedMovieSpeaker = Followed<ClockedMovieSpeaker>;

class FollowedMovieSpeakers final : public MovieSpeakers {
  public:
    /// Both must outlive the speakers.
    FollowedMovieSpeakers(const Clock& clock, SdlSound& sound) : clock_(clock), sound_(sound) {}
    [[nodiscard]] std::unique_ptr<MovieSpeaker> make() override {
        return std::make_unique<FollowedMovieSpeaker>(clock_, sound_);
    }

  private:
    const Clock& clock_;
    SdlSound& sound_;
};

} // namespace platform
