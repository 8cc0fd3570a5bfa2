// The sound of a movie on its way to a speaker. It is queued as it comes out of the file, so it is
// heard without gaps and pictures follow it. Only when the program stood still for so long that the
// speaker ran dry is what comes too late left out, so that sound and pictures stay together.
#pragma once

#include "platform/host/movieheader.h"
#include "platform/host/moviespeaker.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace platform {

class MovieSound {
  public:
    MovieSound(const MovieHeader::Sound& track, std::unique_ptr<MovieSpeaker> speaker)
        : format_(track.format), lastFrame_(track.lastFrame), speaker_(std::move(speaker)) {}

    /// The first time opens the speaker. Where it cannot be opened the movie is silent.
    void run(bool on);
    /// Adds whole blocks that came with a frame. `due` is when the frame is, `now` what time it is,
    /// both in seconds of the movie since it ran from the start or since `drop`.
    void add(std::span<const std::uint8_t> samples, int frame, double due, double now);
    /// Empties the queue; what comes next is that of another place.
    void drop();
    /// Notes whether the speaker has run dry, which must be called often.
    void poll();

    /// How often the speaker ran dry before the sound's end.
    [[nodiscard]] std::uint32_t skips() const { return skips_; }
    [[nodiscard]] std::size_t highestMemory() const { return highestQueued_; }

  private:
    [[nodiscard]] std::size_t lateBytes(double due, double now) const;
    void queue(std::span<const std::uint8_t> samples);

    SoundFormat format_;
    int lastFrame_;
    std::unique_ptr<MovieSpeaker> speaker_; ///< null: silent
    std::vector<std::uint8_t> waiting_;     ///< what came before the speaker was opened
    bool opened_ = false;
    bool runs_ = false;
    bool dry_ = false;
    int frame_ = -1;   ///< the last one that brought sound; -1 after `drop`
    double heard_ = 0; ///< seconds: when what is added next is to be heard
    std::uint32_t skips_ = 0;
    std::size_t highestQueued_ = 0;
};

} // namespace platform
