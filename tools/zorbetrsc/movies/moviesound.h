// The sound of a movie, as its author gives it.
#pragma once

#include "bytes.h"

namespace rsc {

struct MovieSound {
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

/// The samples of a WAVE file of 8 or 16 bits are kept as they are; sounds of more bits, and of all
/// other kinds, become samples of 16 bits. Refuses what is damaged, has no samples, more than two
/// channels, or less than 1,000 or more than 192,000 samples a second.
[[nodiscard]] MovieSound readMovieSound(ByteSpan file);

} // namespace rsc
