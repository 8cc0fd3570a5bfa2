// Where the sound of a movie is heard: a queue of samples in the movie's own format. Not for the
// program, which plays its sounds through WaveOut.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace platform {

struct SoundFormat {
    int rate = 0; ///< samples a second of each channel
    int bits = 8; ///< 8: unsigned, 16: signed, low byte first
    int channels = 1;

    /// Bytes of one sample of all channels.
    [[nodiscard]] int blockSize() const { return bits / 8 * channels; }
    [[nodiscard]] int bytesPerSecond() const { return rate * blockSize(); }
    friend bool operator==(const SoundFormat&, const SoundFormat&) = default;
};

/// Closed by destruction. Each has a queue of its own.
class MovieSpeaker {
  public:
    virtual ~MovieSpeaker() = default;

    /// Opens it, playing. False when there is no device or it cannot play the format.
    virtual bool open(const SoundFormat& format) = 0;
    /// Drops what is queued. Without effect on a closed one, as all that follows.
    virtual void close() = 0;

    /// Queues whole blocks, which are copied.
    virtual void write(std::span<const std::uint8_t> samples) = 0;
    /// What the device has not taken yet.
    [[nodiscard]] virtual std::size_t bytesQueued() = 0;

    /// Stops where it is; the queue stays.
    virtual void pause() = 0;
    virtual void restart() = 0;
    /// Empties the queue.
    virtual void drop() = 0;
};

class MovieSpeakers {
  public:
    virtual ~MovieSpeakers() = default;
    /// A closed one; never null.
    [[nodiscard]] virtual std::unique_ptr<MovieSpeaker> make() = 0;
};

} // namespace platform
