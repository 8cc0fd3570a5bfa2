// Speakers of movies on the machine's real sound device, through SDL, which plays its own queue on
// a thread of its own. Where no device can be opened a clock plays in its place; some of SDL's
// drivers open one at a time, so there a second movie is silent.
#pragma once

#include "platform/host/sound/clockedmoviespeaker.h"
#include "platform/sdl/sdlsound.h"

namespace platform {

class SdlMovieSpeaker final : public MovieSpeaker {
  public:
    /// What opens devices must outlive it.
    explicit SdlMovieSpeaker(SdlSound& sound) : sound_(sound), silent_(sound.clock()) {}
    ~SdlMovieSpeaker() override { close(); }
    SdlMovieSpeaker& operator=(SdlMovieSpeaker&&) = delete;

    bool open(const SoundFormat& format) override;
    void close() override;
    void write(std::span<const std::uint8_t> samples) override;
    [[nodiscard]] std::size_t bytesQueued() override;
    void pause() override;
    void restart() override;
    void drop() override;

  private:
    SdlSound& sound_;
    SDL_AudioDeviceID device_ = 0; ///< 0: closed, or silent
    ClockedMovieSpeaker silent_;   ///< open in place of the device
};

class SdlMovieSpeakers final : public MovieSpeakers {
  public:
    explicit SdlMovieSpeakers(SdlSound& sound) : sound_(sound) {}
    [[nodiscard]] std::unique_ptr<MovieSpeaker> make() override {
        return std::make_unique<SdlMovieSpeaker>(sound_);
    }

  private:
    SdlSound& sound_;
};

} // namespace platform
