// A movie file (.smk), in the format known as Smacker: pictures of 256 colours in blocks of 4x4
// pixels, and sound.
//
//     0x00  4      "SMK2", or "SMK4" where runs of full blocks tell how detailed they are
//     0x04  4      width
//     0x08  4      height
//     0x0C  4      number of frames, without the ring frame
//     0x10  4      time of a frame: ms, or negative in 1/100 ms; 0: a tenth of a second
//     0x14  4      flags: bit 0 a ring frame, bits 1 and 2 every line is shown twice
//     0x18  7 x 4  of each track, the bytes of samples in its largest chunk
//     0x34  4      bytes of the trees
//     0x38  4 x 4  of each tree, its bytes in a reader's memory; often wrong
//     0x48  7 x 4  of each track: samples a second, bits 26 and 27 another codec, bit 28 stereo,
//                  bit 29 16 bits, bit 30 it is there, bit 31 packed
//     0x64  4      0
//     0x68  4 for each frame  its size, a multiple of 4; bit 0 marks a key frame
//           1 for each frame  bit 0 it has a palette, bits 1 to 7 a chunk of each track
//     trees of the pictures' codes (blocks.h), up to a multiple of 4 bytes
//     frames: palette (moviepalette.h), sound (moviesound.h) and picture (blocks.h) of each, up to
//     a
//           multiple of 4 bytes
//
// The ring frame lies behind the last one: it leads from there to the second frame.
#pragma once

#include "formats/movie/moviepalette.h"
#include "formats/movie/moviesound.h"
#include "formats/movie/videocoder.h"

namespace formats {

inline constexpr std::size_t kMovieTracks = 7;

struct MovieHeader {
    static constexpr std::size_t kSize = 0x68;
    static constexpr std::uint32_t kRingFlag = 1;
    static constexpr std::uint32_t kDoubledFlags = 2 | 4; ///< either
    static constexpr std::uint32_t kRateMask = 0xFFFFFF;
    static constexpr std::uint32_t kOtherCodec = 3U << 26;
    static constexpr std::uint32_t kStereo = 1U << 28;
    static constexpr std::uint32_t k16Bits = 1U << 29;
    static constexpr std::uint32_t kPresent = 1U << 30;
    static constexpr std::uint32_t kPacked = 1U << 31;

    bool later = false; ///< "SMK4"
    std::uint32_t width = 0;
    std::uint32_t height = 0; ///< as stored
    std::uint32_t frames = 0;
    std::int32_t frameTimeField = 0;
    std::uint32_t flags = 0;
    std::array<std::uint32_t, kMovieTracks> largestChunks{};
    std::uint32_t treesSize = 0;
    std::array<std::uint32_t, CodedVideo::kTrees> treeSizes{};
    std::array<std::uint32_t, kMovieTracks> tracks{};

    [[nodiscard]] bool hasRing() const { return (flags & kRingFlag) != 0; }
    [[nodiscard]] bool isDoubled() const { return (flags & kDoubledFlags) != 0; }
    [[nodiscard]] std::uint64_t shownHeight() const { return height * (isDoubled() ? 2ULL : 1ULL); }
    [[nodiscard]] std::uint64_t storedFrames() const { return frames + (hasRing() ? 1ULL : 0ULL); }
    /// Bytes of the two tables.
    [[nodiscard]] std::uint64_t tablesSize() const { return 5 * storedFrames(); }
    /// Where the first frame lies.
    [[nodiscard]] std::uint64_t framesStart() const { return kSize + tablesSize() + treesSize; }

    /// Hundredths of a millisecond, at most 2^31 times 100.
    [[nodiscard]] std::int64_t frameTime() const;
    void setFrameTime(int hundredths);

    /// None when there is no such track.
    [[nodiscard]] std::optional<MovieSoundFormat> sound(std::size_t track) const;
    /// Whether its sound is coded as nobody here can read it.
    [[nodiscard]] bool hasOtherCodec(std::size_t track) const {
        return (tracks[track] & kOtherCodec) != 0;
    }
    void setSound(std::size_t track, const MovieSoundFormat& format);

    void write(ByteWriter& out) const;
};

[[nodiscard]] bool isMovie(ByteSpan file);
/// None when it is no movie or cut off. The numbers are as the file has them.
[[nodiscard]] std::optional<MovieHeader> readMovieHeader(ByteSpan file);

/// What the tables tell of a frame.
struct MovieFrameEntry {
    std::uint32_t size = 0;    ///< bytes
    std::uint8_t contents = 0; ///< see the layout
    bool key = false;

    static constexpr std::uint8_t kHasPalette = 1;
    /// Of a track.
    static constexpr std::uint8_t hasSound(std::size_t track) {
        return static_cast<std::uint8_t>(2 << track);
    }
};
/// Of all stored frames; `tables` has the header's tablesSize.
[[nodiscard]] std::vector<MovieFrameEntry> readMovieTables(ByteSpan tables);

struct MovieFrame {
    bool key = false;                         ///< it needs none of the frames before
    Bytes palette{};                          ///< a chunk; may be empty
    std::array<Bytes, kMovieTracks> sounds{}; ///< chunks; may be empty
    Bytes picture{}; ///< at least a byte; some readers refuse a frame without any

    [[nodiscard]] std::size_t size() const; ///< bytes in the file
    [[nodiscard]] Bytes bytes() const;
    [[nodiscard]] std::uint8_t contents() const;
};

/// The file. Of the header, the numbers of frames and trees are filled in; with the ring flag the
/// last frame is the ring frame.
[[nodiscard]] Bytes makeMovieFile(MovieHeader header, Bytes trees,
                                  std::span<const MovieFrame> frames);

} // namespace formats
