// Takes a movie's frames apart, one after the other, with the library libavcodec. Nothing of the
// library is needed to include this.
#pragma once

#include "platform/clock.h"
#include "platform/display.h"
#include "platform/host/movies/moviefile.h"
#include "platform/host/movies/movieheader.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace platform {

using MoviePalette = std::array<Rgb, kPaletteSize>;

/// 8-bit pixels, top row first. Null pixels: no picture.
struct MoviePixels {
    const std::uint8_t* pixels = nullptr;
    std::ptrdiff_t stride = 0;
};

class MovieDecoder {
  public:
    /// Null when the movie's trees are damaged. File and clock must outlive the decoder.
    [[nodiscard]] static std::unique_ptr<MovieDecoder>
    open(MovieFile& file, const MovieHeader& header, const Clock& clock);
    ~MovieDecoder();
    MovieDecoder(const MovieDecoder&) = delete;
    MovieDecoder& operator=(const MovieDecoder&) = delete;

    /// Decodes the next frame; the first call the first one. One that is damaged or missing, as are
    /// all behind the last, leaves picture and palette as they are.
    void next();
    /// Starts over: all is as before the first frame.
    void rewind();

    /// The frame that `next` decoded last, -1 before the first.
    [[nodiscard]] int frame() const;
    /// Of the header's width and height. None before the first good frame and after `letGo`; a
    /// frame that brings none leaves the one before.
    [[nodiscard]] MoviePixels picture() const;
    /// To be called when the picture was copied. The library would copy one that is kept.
    void letGo();
    /// Whether a good frame came since the start; until then the picture is all zeros.
    [[nodiscard]] bool hadPicture() const;
    [[nodiscard]] const MoviePalette& palette() const;
    /// The sound that came with the frame, in whole blocks of the header's format.
    [[nodiscard]] std::span<const std::uint8_t> sound() const;

    /// Time of decoding, without that of reading.
    [[nodiscard]] std::uint32_t decodeMs() const;
    /// Bytes, as far as they are known: pictures, trees, packets.
    [[nodiscard]] std::size_t highestMemory() const;

  private:
    struct State;
    explicit MovieDecoder(std::unique_ptr<State> state);

    std::unique_ptr<State> state_;
};

} // namespace platform
