#include "platform/host/screen/pixels.h"

#include <algorithm>
#include <cstddef>

namespace platform {

namespace {

std::uint32_t packed(unsigned red, unsigned green, unsigned blue) {
    return 0xFF000000u | (red << 16) | (green << 8) | blue;
}

/// 5 bits spread over 8 so that 31 becomes 255.
unsigned widened(unsigned fiveBits) { return (fiveBits << 3) | (fiveBits >> 2); }

void readIndexed(const std::uint8_t* pixel, const std::array<std::uint32_t, kPaletteSize>& palette,
                 std::span<std::uint32_t> colours) {
    constexpr std::size_t kAtOnce = 4;
    const std::size_t whole = colours.size() / kAtOnce * kAtOnce;
    for (std::size_t i = 0; i < whole; i += kAtOnce) {
        colours[i] = palette[pixel[i]];
        colours[i + 1] = palette[pixel[i + 1]];
        colours[i + 2] = palette[pixel[i + 2]];
        colours[i + 3] = palette[pixel[i + 3]];
    }
    for (std::size_t i = whole; i < colours.size(); ++i) colours[i] = palette[pixel[i]];
}

void readFiveBits(const std::uint8_t* pixel, std::span<std::uint32_t> colours) {
    for (std::uint32_t& colour : colours) {
        const unsigned word = pixel[0] | (unsigned{pixel[1]} << 8);
        colour = packed(widened((word >> 10) & 31), widened((word >> 5) & 31), widened(word & 31));
        pixel += 2;
    }
}

void readBytes(const std::uint8_t* pixel, int bytesPerPixel, std::span<std::uint32_t> colours) {
    for (std::uint32_t& colour : colours) {
        colour = packed(pixel[2], pixel[1], pixel[0]);
        pixel += bytesPerPixel;
    }
}

} // namespace

ColourReader::ColourReader(const Surface& surface, const std::array<Rgb, kPaletteSize>& palette)
    : surface_(surface) {
    std::ranges::transform(palette, colours_.begin(), [](const Rgb& entry) {
        return packed(entry.red, entry.green, entry.blue);
    });
}

void ColourReader::read(int y, int left, std::span<std::uint32_t> colours) const {
    const std::uint8_t* pixel = surface_.row(y) + left * surface_.bytesPerPixel();
    switch (surface_.depth()) {
    case 8: readIndexed(pixel, colours_, colours); break;
    case 16: readFiveBits(pixel, colours); break;
    default: readBytes(pixel, surface_.bytesPerPixel(), colours); break;
    }
}

} // namespace platform
