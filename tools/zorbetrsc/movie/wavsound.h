// The sound of a WAVE file.
#pragma once

#include "bytes.h"

namespace rsc {

struct WavSound {
    int rate = 0;     ///< samples a second
    int channels = 1; ///< 1 or 2, left first
    int bits = 8;     ///< 8, unsigned, or 16, signed and little-endian
    Bytes samples;    ///< whole ones of all channels

    [[nodiscard]] std::size_t bytesOfSample() const { return static_cast<std::size_t>(bits) / 8; }
    /// Bytes of a sample of all channels.
    [[nodiscard]] std::size_t bytesOfPoint() const {
        return bytesOfSample() * static_cast<std::size_t>(channels);
    }
};

/// Reads a RIFF WAVE file. Refuses what is damaged, has no samples or another format than plain
/// samples of 8 or 16 bits, mono or stereo, 1,000 to 192,000 a second.
[[nodiscard]] WavSound readWav(ByteSpan file);

} // namespace rsc
