#include "platform/host/pixels.h"

namespace platform {

namespace {

std::uint32_t packed(unsigned red, unsigned green, unsigned blue) {
    return 0xFF000000u | (red << 16) | (green << 8) | blue;
}

/// 5 bits spread over 8 so that 31 becomes 255.
unsigned widened(unsigned fiveBits) { return (fiveBits << 3) | (fiveBits >> 2); }

void readIndexed(const std::uint8_t* pixel, const std::array<Rgb, kPaletteSize>& palette,
                 std::span<std::uint32_t> colours) {
    for (std::uint32_t& colour : colours) {
        const Rgb& entry = palette[*pixel++];
        colour = packed(entry.red, entry.green, entry.blue);
    }
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

void readColours(const Surface& surface, int y, int left,
                 const std::array<Rgb, kPaletteSize>& palette, std::span<std::uint32_t> colours) {
    const std::uint8_t* pixel = surface.row(y) + left * surface.bytesPerPixel();
    switch (surface.depth()) {
    case 8: readIndexed(pixel, palette, colours); break;
    case 16: readFiveBits(pixel, colours); break;
    default: readBytes(pixel, surface.bytesPerPixel(), colours); break;
    }
}

} // namespace platform
