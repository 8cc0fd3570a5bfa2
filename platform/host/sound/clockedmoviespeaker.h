// The speaker of a movie that nobody hears: it plays its queue by a clock. What was played can be
// handed on, to be recorded.
#pragma once

#include "platform/host/sound/moviespeaker.h"
#include "platform/host/sound/soundpace.h"
#include "platform/host/sound/soundsink.h"

#include <vector>

namespace platform {

class ClockedMovieSpeaker : public MovieSpeaker {
  public:
    /// Both must outlive the speaker's last call; the sink may be null.
    explicit ClockedMovieSpeaker(const Clock& clock, SoundSink* sink = nullptr)
        : pace_(clock), sink_(sink) {}

    bool open(const SoundFormat& format) override;
    void close() override;
    void write(std::span<const std::uint8_t> samples) override;
    [[nodiscard]] std::size_t bytesQueued() override;
    void pause() override;
    void restart() override;
    void drop() override;

  private:
    void poll();

    SoundPace pace_;
    SoundSink* sink_;
    SoundFormat format_; ///< of rate 0: closed
    std::vector<std::uint8_t> queue_;
    std::size_t played_ = 0; ///< bytes of the queue
};

} // namespace platform
