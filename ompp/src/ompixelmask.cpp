#include "ompixelmask.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace ompixels {

namespace {

constexpr int kByte = 8;
constexpr std::uint64_t kEveryByte = 0x0101010101010101;

/// For eight bits a byte each in memory order, 0xFF where the bit is set.
constexpr std::array<std::uint64_t, 256> kSpread = [] {
    std::array<std::uint64_t, 256> table{};
    for (unsigned bits = 0; bits < table.size(); ++bits) {
        for (int pixel = 0; pixel < kByte; ++pixel) {
            const int place = std::endian::native == std::endian::little ? pixel : 7 - pixel;
            if (bits & (0x80u >> pixel)) table[bits] |= std::uint64_t{0xFF} << (kByte * place);
        }
    }
    return table;
}();

/// The next `count` bits, at most eight, from a bit on: in the upper part of a byte. Looks at no
/// byte that has none of them.
unsigned bitsAt(const std::uint8_t* row, int bit, int count) {
    const std::uint8_t* byte = row + bit / kByte;
    const int shift = bit % kByte;
    unsigned bits = static_cast<unsigned>(*byte) << shift;
    if (shift + count > kByte) bits |= static_cast<unsigned>(byte[1]) >> (kByte - shift);
    return bits & (0xFF00u >> count) & 0xFFu;
}

/// Pixels of one byte, eight at a time where there are so many up to `end`, the end of the surface.
void inkBytes(std::uint8_t* to, const std::uint8_t* end, const std::uint8_t* row, int bit,
              int width, std::uint8_t value) {
    const std::uint64_t values = value * kEveryByte;
    for (; width > 0; width -= kByte, bit += kByte, to += kByte) {
        unsigned bits = bitsAt(row, bit, std::min(width, kByte));
        if (bits == 0) continue;
        if (end - to >= kByte) {
            std::uint64_t pixels = 0;
            std::memcpy(&pixels, to, sizeof pixels);
            const std::uint64_t mask = kSpread[bits];
            pixels = (pixels & ~mask) | (values & mask);
            std::memcpy(to, &pixels, sizeof pixels);
            continue;
        }
        for (std::uint8_t* pixel = to; bits != 0; ++pixel, bits = (bits << 1) & 0xFF)
            if (bits & 0x80) *pixel = value;
    }
}

template <int kBytes>
void inkPixels(std::uint8_t* to, const std::uint8_t* row, int bit, int width,
               const std::array<std::uint8_t, 4>& value) {
    for (; width > 0; width -= kByte, bit += kByte, to += kByte * kBytes) {
        unsigned bits = bitsAt(row, bit, std::min(width, kByte));
        for (std::uint8_t* pixel = to; bits != 0; pixel += kBytes, bits = (bits << 1) & 0xFF)
            if (bits & 0x80) std::memcpy(pixel, value.data(), kBytes);
    }
}

} // namespace

void ink(const OMPixels& pixels, const platform::Rect& area, const Mask& mask,
         std::uint32_t value) {
    const std::array<std::uint8_t, 4> bytes{
        static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
        static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 24)};
    const int width = area.width();
    const std::uint8_t* row = mask.bits;
    for (int y = area.top; y < area.bottom; ++y, row += mask.stride) {
        std::uint8_t* to = pixels.at(area.left, y);
        switch (pixels.bytesPerPixel) {
        case 1:
            inkBytes(to, to + (pixels.area.right - area.left), row, mask.firstBit, width, bytes[0]);
            break;
        case 2: inkPixels<2>(to, row, mask.firstBit, width, bytes); break;
        case 3: inkPixels<3>(to, row, mask.firstBit, width, bytes); break;
        default: inkPixels<4>(to, row, mask.firstBit, width, bytes); break;
        }
    }
}

} // namespace ompixels
