// The sound of a movie on its way to a speaker. It is queued as it comes out of the file, so it is
// heard without gaps and pictures follow it. Only when the program stood still for so long that the
// speaker ran dry is what comes too late left out, so that sound and pictures stay together.
//
// Sound comes in pieces with the frames, but is one stream: a piece follows the one before it, and
// may be that of a much later time than its frame's. What a jump finds still to be heard may so
// have come long before, and is kept for it.
#pragma once

#include "platform/host/sound/moviespeaker.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace platform {

class MovieSound {
  public:
    /// `lastFrame` is the last one that brings sound; -1 when none does.
    MovieSound(const SoundFormat& format, int lastFrame, std::unique_ptr<MovieSpeaker> speaker)
        : format_(format), lastFrame_(lastFrame), speaker_(std::move(speaker)) {}

    // Times are in seconds of the movie, from its start on. Samples are whole blocks.

    /// The first time opens the speaker. Where it cannot be opened the movie is silent.
    void run(bool on);
    /// Adds what came with a frame. `due` is when the frame is, `now` what time it is.
    void add(std::span<const std::uint8_t> samples, int frame, double due, double now);
    /// Notes whether the speaker has run dry, which must be called often.
    void poll();

    // Jumps: drop, perhaps rewind, pass for each frame on the way, goOn.

    /// Empties the queue.
    void drop();
    /// What comes next is that of the first frame.
    void rewind();
    /// What came with a frame on the way to the time `target`.
    void pass(std::span<const std::uint8_t> samples, int frame, double due, double target);
    /// Queues what came already and is to be heard from `time` on.
    void goOn(double time);

    /// How often the speaker ran dry before the sound's end.
    [[nodiscard]] std::uint32_t skips() const { return skips_; }
    [[nodiscard]] std::size_t highestMemory() const { return highestMemory_; }

  private:
    [[nodiscard]] std::size_t lateBytes(double due, double now) const;
    void queue(std::span<const std::uint8_t> samples);
    double keep(std::span<const std::uint8_t> samples, double due, double from);
    void forgetBefore(double time);
    [[nodiscard]] double lengthOf(std::size_t bytes) const;

    SoundFormat format_;
    int lastFrame_;
    std::unique_ptr<MovieSpeaker> speaker_; ///< null: silent
    std::vector<std::uint8_t> waiting_;     ///< what came before the speaker was opened
    bool opened_ = false;
    bool runs_ = false;
    bool dry_ = false;
    int frame_ = -1; ///< the last one that brought sound; -1 when what it brought was not heard
    /// The end of the stream as far as it has come, from the byte forgotten_ on, and when it is to
    /// be heard.
    std::vector<std::uint8_t> kept_;
    std::size_t forgotten_ = 0;
    double end_ = 0;
    std::uint32_t skips_ = 0;
    std::size_t highestMemory_ = 0;
};

} // namespace platform
