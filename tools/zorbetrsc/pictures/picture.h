// A picture as it was read from a PNG file: palette indices when the file is indexed, else colours
// with opacity; and PNG files written of pixels.
#pragma once

#include "formats/base/bytes.h"
#include "platform/display.h"

#include <span>
#include <vector>

namespace rsc {

/// Pixels of the largest picture that is read.
inline constexpr std::size_t kMostPixels = std::size_t{64} << 20;

struct Pixel {
    platform::Rgb colour;
    std::uint8_t alpha = 255;
    /// Pictures have no half-transparent pixels in the end.
    [[nodiscard]] bool opaque() const { return alpha >= 128; }
};

class Picture {
  public:
    /// Reads a PNG of any kind; deeper components are brought to 8 bits and colour profiles are not
    /// applied. Refuses what is damaged or too large, and an indexed one with a pixel outside of
    /// its palette.
    static Picture fromPng(formats::ByteSpan png);

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] std::size_t size() const {
        return static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
    }
    [[nodiscard]] bool isIndexed() const { return !palette_.empty(); }
    [[nodiscard]] const std::vector<Pixel>& palette() const { return palette_; }

    /// Pixel number `i`, counted row by row from the top left.
    [[nodiscard]] Pixel pixel(std::size_t i) const {
        return isIndexed() ? palette_[indices_[i]] : pixels_[i];
    }
    /// Its palette index; only in an indexed picture.
    [[nodiscard]] std::uint8_t index(std::size_t i) const { return indices_[i]; }

  private:
    friend class PngDecoder;

    int width_ = 0;
    int height_ = 0;
    std::vector<Pixel> palette_; ///< empty in a truecolour picture
    std::vector<std::uint8_t> indices_;
    std::vector<Pixel> pixels_;
};

/// The file of a picture with these palette indices, row by row from the top left, and a palette of
/// 1 to 256 entries. Reading it gives the same indices and entries.
[[nodiscard]] formats::Bytes writeIndexedPng(int width, int height, formats::ByteSpan indices,
                                             std::span<const Pixel> palette);

/// The truecolour file of a picture with these pixels.
[[nodiscard]] formats::Bytes writeTruecolourPng(int width, int height,
                                                std::span<const Pixel> pixels);

} // namespace rsc
