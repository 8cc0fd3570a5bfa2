// The sound of a movie. A frame has a chunk of it for each track:
//
//     4  bytes of the chunk, with these
//     and not packed: samples, 8 bits unsigned or 16 signed, left and right in turn; packed:
//     4  bytes of the unpacked samples
//     bits: 1; 1 for stereo; 1 for 16 bits; a tree of bytes for each byte of each channel, left
//     first, the low byte first; the first sample of each channel, right first, the high byte
//     first; for all others the codes of the difference to the one before of its channel
#pragma once

#include "formats/base/bytes.h"

#include <optional>

namespace formats {

inline constexpr std::size_t kSoundLengthSize = 4; ///< bytes of the length in front of a chunk

struct MovieSoundFormat {
    int rate = 0; ///< samples a second
    int bits = 8; ///< 8, unsigned, or 16, signed and little-endian
    int channels = 1;
    bool packed = false;

    [[nodiscard]] std::size_t bytesOfSample() const { return static_cast<std::size_t>(bits) / 8; }
    /// Bytes of a sample of all channels.
    [[nodiscard]] std::size_t bytesOfPoint() const {
        return bytesOfSample() * static_cast<std::size_t>(channels);
    }
};

/// A chunk of whole samples of all channels, at least one of each.
[[nodiscard]] Bytes makeSoundChunk(const MovieSoundFormat& format, ByteSpan samples);
/// The whole samples of all channels of a chunk, without its length. None when it is damaged.
[[nodiscard]] std::optional<Bytes> readSoundChunk(const MovieSoundFormat& format, ByteSpan chunk);

struct CodedSound {
    std::vector<Bytes> chunks;    ///< of each frame; empty where it has none
    std::size_t largestChunk = 0; ///< bytes of samples
    std::size_t leftOut = 0;      ///< samples of all channels behind the last frame
};

/// Samples cut into a chunk for each frame. The first frame carries the sound of itself and of one
/// second more, the others one frame each, so that players always have sound in stock. What lies
/// behind the last frame is left out. `frameTime` is in hundredths of a millisecond.
[[nodiscard]] CodedSound codeSound(const MovieSoundFormat& format, ByteSpan samples,
                                   std::size_t frames, int frameTime);

} // namespace formats
