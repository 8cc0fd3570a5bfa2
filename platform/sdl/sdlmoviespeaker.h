// Speakers of movies on the machine's real sound device, through SDL, which plays its own queue on
// a thread of its own. Some of SDL's drivers open one device at a time: there a second movie is
// silent.
#pragma once

#include "platform/host/moviespeaker.h"

#include <SDL.h>

namespace platform {

class SdlMovieSpeaker final : public MovieSpeaker {
  public:
    SdlMovieSpeaker() = default;
    ~SdlMovieSpeaker() override { close(); }
    SdlMovieSpeaker(const SdlMovieSpeaker&) = delete;
    SdlMovieSpeaker& operator=(const SdlMovieSpeaker&) = delete;

    bool open(const SoundFormat& format) override;
    void close() override;
    void write(std::span<const std::uint8_t> samples) override;
    [[nodiscard]] std::size_t bytesQueued() override;
    void pause() override;
    void restart() override;
    void drop() override;

  private:
    SDL_AudioDeviceID device_ = 0; ///< 0: closed
};

class SdlMovieSpeakers final : public MovieSpeakers {
  public:
    [[nodiscard]] std::unique_ptr<MovieSpeaker> make() override {
        return std::make_unique<SdlMovieSpeaker>();
    }
};

} // namespace platform
