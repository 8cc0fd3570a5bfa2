// A movie file (.smk), put together from its parts:
//
//     header      104 bytes
//     sizes       4 bytes for each frame: a multiple of 4, bit 0 marks a key frame
//     contents    1 byte for each frame: bit 0 a palette, bit 1 a chunk of sound
//     trees       of the pictures' codes
//     frames      palette, sound and picture of each, filled up with zeros
#pragma once

#include "movies/videocoder.h"
#include "pictures/palette.h"

namespace rsc {

inline constexpr std::string_view kMovieSignature = "SMK2";
inline constexpr std::string_view kLaterMovieSignature = "SMK4"; ///< listed, never written

/// What both the writer and the reader of the header know of it: offsets in the file.
struct MovieHeader {
    static constexpr std::size_t kSize = 104;
    static constexpr std::size_t kWidth = 4;
    static constexpr std::size_t kHeight = 8;
    static constexpr std::size_t kFrames = 12;
    static constexpr std::size_t kFrameTime = 16; ///< ms, or negative in 1/100 ms
    static constexpr std::size_t kFlags = 20;
    static constexpr std::size_t kTreesSize = 52;
    static constexpr std::size_t kSoundFormat = 72; ///< of the first track
    static constexpr std::size_t kTracks = 7;

    static constexpr std::uint32_t kRingFlag = 1;
    static constexpr std::uint32_t kDoubledFlags = 2 | 4; ///< either: each line is shown twice
    static constexpr std::uint32_t kPacked = std::uint32_t{1} << 31; ///< of the sound format
    static constexpr std::uint32_t kPresent = std::uint32_t{1} << 30;
    static constexpr std::uint32_t k16Bits = std::uint32_t{1} << 29;
    static constexpr std::uint32_t kStereo = std::uint32_t{1} << 28;
    static constexpr std::uint32_t kRateMask = 0xFFFFFF; ///< samples a second
};

struct SoundTrack {
    int rate = 0; ///< samples a second
    int channels = 1;
    int bits = 8;
    bool packed = true;
    std::size_t largestChunk = 0; ///< bytes of samples
};

struct MovieFrame {
    const Palette* palette = nullptr; ///< new colours from this frame on; null: as before
    bool key = false;                 ///< it needs none of the frames before
    Bytes sound;                      ///< a chunk; may be empty
};

struct MovieParts {
    int width = 0;
    int height = 0;
    int frameTime = 0; ///< hundredths of a millisecond
    bool ring = false; ///< the last frame leads back to the second one
    std::optional<SoundTrack> track;
    CodedVideo video;
    std::vector<MovieFrame> frames; ///< as many as the video's
};

/// Refused when the file becomes too large.
[[nodiscard]] Bytes buildMovieFile(const MovieParts& parts);

} // namespace rsc
