// Is handed what a device has played, as it was played.
#pragma once

#include "platform/host/sound/moviespeaker.h"

#include <cstdint>
#include <span>

namespace platform {

class SoundSink {
  public:
    virtual ~SoundSink() = default;
    /// Whole blocks.
    virtual void play(std::span<const std::uint8_t> samples, const SoundFormat& format) = 0;
    /// The device was closed.
    virtual void finish() = 0;
};

} // namespace platform
