// The fixed colours and the block of pixels, which are the same on every back end.
#include "platform/display.h"

#include <algorithm>
#include <limits>
#include <new>

namespace platform {

namespace {

constexpr std::array<Rgb, kFirstFreeColour> kLowColours{{
    {0, 0, 0},
    {128, 0, 0},
    {0, 128, 0},
    {128, 128, 0},
    {0, 0, 128},
    {128, 0, 128},
    {0, 128, 128},
    {192, 192, 192},
    {192, 220, 192},
    {166, 202, 240},
}};

constexpr std::array<Rgb, kPaletteSize - kFirstHighStaticColour> kHighColours{{
    {255, 251, 240},
    {160, 160, 164},
    {128, 128, 128},
    {255, 0, 0},
    {0, 255, 0},
    {255, 255, 0},
    {0, 0, 255},
    {255, 0, 255},
    {0, 255, 255},
    {255, 255, 255},
}};

std::array<Rgb, kPaletteSize> makeStaticPalette() {
    std::array<Rgb, kPaletteSize> palette{};
    std::ranges::copy(kLowColours, palette.begin());
    std::ranges::copy(kHighColours, palette.begin() + kFirstHighStaticColour);
    return palette;
}

std::size_t strideOf(int width, int depth) {
    const auto bytes = static_cast<std::size_t>(width) * static_cast<std::size_t>(depth / 8);
    return (bytes + 3) / 4 * 4;
}

/// Cannot overflow in 64 bits. More than any machine has counts as memory that ran out, like every
/// other surface that is too large.
std::size_t byteCount(std::size_t stride, int height) {
    const std::size_t bytes = stride * static_cast<std::size_t>(height);
    if (bytes > std::size_t{std::numeric_limits<std::ptrdiff_t>::max()}) throw std::bad_alloc();
    return bytes;
}

} // namespace

const std::array<Rgb, kPaletteSize>& staticPalette() {
    static const std::array<Rgb, kPaletteSize> palette = makeStaticPalette();
    return palette;
}

Surface::Surface(int width, int height, int depth)
    : width_(std::max(width, 1)), height_(std::max(height, 1)), depth_(depth),
      stride_(strideOf(width_, depth)), pixels_(byteCount(stride_, height_)) {}

} // namespace platform
