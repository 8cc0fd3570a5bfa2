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

/// Up to eight columns of a mask, row by row.
struct Column {
    std::uint8_t* to; ///< the leftmost pixel of the first row
    std::size_t toStride;
    const std::uint8_t* bits;
    std::size_t bitsStride;
    int shift; ///< of the first bit in its byte
    int width;
    int rows;

    /// Calls `put` with the first pixel of each row and its bits, from the highest of a byte on.
    template <class Put>
    void each(Put put) const {
        const unsigned columns = 0xFF00u >> width & 0xFFu;
        std::uint8_t* pixels = to;
        const std::uint8_t* row = bits;
        for (int y = 0; y < rows; ++y, pixels += toStride, row += bitsStride) {
            const unsigned two = static_cast<unsigned>(row[0]) << kByte | row[1];
            put(pixels, two >> (kByte - shift) & columns);
        }
    }
};

/// Rows of one byte a pixel that all go on for eight pixels.
void inkBytes(const Column& column, std::uint8_t value) {
    const std::uint64_t values = value * kEveryByte;
    column.each([values](std::uint8_t* to, unsigned bits) {
        std::uint64_t pixels = 0;
        std::memcpy(&pixels, to, sizeof pixels);
        pixels ^= (pixels ^ values) & kSpread[bits];
        std::memcpy(to, &pixels, sizeof pixels);
    });
}

template <std::size_t kBytes>
void inkPixels(const Column& column, const std::array<std::uint8_t, 4>& value) {
    column.each([&value](std::uint8_t* to, unsigned bits) {
        for (; bits != 0; to += kBytes, bits = bits << 1 & 0xFFu)
            if (bits & 0x80u) std::memcpy(to, value.data(), kBytes);
    });
}

} // namespace

void ink(const OMPixels& pixels, const platform::Rect& area, const Mask& mask,
         std::uint32_t value) {
    const std::array<std::uint8_t, 4> bytes{
        static_cast<std::uint8_t>(value), static_cast<std::uint8_t>(value >> 8),
        static_cast<std::uint8_t>(value >> 16), static_cast<std::uint8_t>(value >> 24)};
    Column column{pixels.at(area.left, area.top),
                  pixels.stride,
                  mask.bits + mask.firstBit / kByte,
                  mask.stride,
                  mask.firstBit % kByte,
                  0,
                  area.height()};
    for (int x = area.left; x < area.right; x += kByte, ++column.bits) {
        column.width = std::min(area.right - x, kByte);
        switch (pixels.bytesPerPixel) {
        case 1:
            if (pixels.area.right - x >= kByte)
                inkBytes(column, bytes[0]);
            else
                inkPixels<1>(column, bytes);
            break;
        case 2: inkPixels<2>(column, bytes); break;
        case 3: inkPixels<3>(column, bytes); break;
        default: inkPixels<4>(column, bytes); break;
        }
        column.to += kByte * pixels.bytesPerPixel;
    }
}

} // namespace ompixels
