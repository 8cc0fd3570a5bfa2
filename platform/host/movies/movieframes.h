// The frames of a movie's file, decoded one after the other.
#pragma once

#include "formats/movie/moviedecoder.h"
#include "platform/clock.h"
#include "platform/display.h"
#include "platform/host/movies/moviefile.h"

#include <array>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace platform {

using MoviePalette = std::array<Rgb, kPaletteSize>;

/// What is known of a movie before anything is decoded.
struct MovieFacts {
    static constexpr std::uint32_t kMaxSide = 4096; ///< pixels, of the picture that is shown

    /// None when it is no movie, the file ends within the tables or the trees, or its numbers are
    /// absurd.
    [[nodiscard]] static std::optional<MovieFacts> read(File& file);

    int width = 0;
    int height = 0;                   ///< of the pictures in the file
    bool doubled = false;             ///< every line is shown twice
    int frames = 0;                   ///< at least 1; a ring frame does not count
    int frameTime = 0;                ///< hundredths of a millisecond, at least 1
    std::optional<std::size_t> track; ///< the first one whose sound can be played
    formats::MovieHeader header;

    [[nodiscard]] int shownHeight() const { return doubled ? 2 * height : height; }
};

class MovieFrames {
  public:
    /// Null when its frames are absurd or the trees are damaged. File and clock must outlive it.
    [[nodiscard]] static std::unique_ptr<MovieFrames> open(MovieFile& file, const MovieFacts& facts,
                                                           const Clock& clock);

    /// Decodes the next frame; the first call the first one. One that is damaged or missing, as are
    /// all behind the last, leaves picture and palette as they are.
    void next();
    /// Starts over: all is as before the first frame.
    void rewind();

    /// The frame that `next` decoded last, -1 before the first.
    [[nodiscard]] int frame() const { return frame_; }
    /// A line of the picture; all zeros before the first good frame.
    [[nodiscard]] const std::uint8_t* row(int y) const;
    [[nodiscard]] const MoviePalette& palette() const { return palette_; }
    /// The sound that came with the frame, in whole samples of all channels.
    [[nodiscard]] std::span<const std::uint8_t> sound() const { return decoder_.sound(); }

    /// Bytes of all frames.
    [[nodiscard]] std::uint64_t size() const { return size_; }
    /// The last frame that brings sound; -1 when none does.
    [[nodiscard]] int lastFrameWithSound() const { return lastWithSound_; }
    /// Time of decoding, without that of reading.
    [[nodiscard]] std::uint32_t decodeMs() const { return decodeMs_; }
    /// Bytes, as far as they are known: pictures, trees, a frame.
    [[nodiscard]] std::size_t highestMemory() const;

  private:
    MovieFrames(MovieFile& file, const MovieFacts& facts, const Clock& clock,
                std::vector<formats::MovieFrameEntry> entries, formats::MovieDecoder decoder);

    MovieFile& file_;
    const Clock& clock_;
    std::size_t width_;
    std::size_t treesSize_;
    std::uint64_t start_;                           ///< where the first frame lies
    std::vector<formats::MovieFrameEntry> entries_; ///< of the frames that are shown
    formats::MovieDecoder decoder_;
    std::uint64_t size_ = 0;
    int lastWithSound_ = -1;

    int frame_ = -1;
    std::uint64_t place_;  ///< of the next frame
    formats::Bytes bytes_; ///< of the frame
    MoviePalette palette_{};
    std::uint32_t decodeMs_ = 0;
    std::size_t largestFrame_ = 0;
    std::size_t largestSound_ = 0;
};

} // namespace platform
