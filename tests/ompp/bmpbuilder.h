// Builds BMP files and `BITMAP` resources for tests, of any values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace testing_support {

/// The fields, with what most of the tests want.
struct Bmp {
    bool isFile = true;
    std::uint32_t pixelOffset = 0; ///< in the header of files
    std::uint32_t headerSize = 40;
    std::int32_t width = 2;
    std::int32_t height = 2; ///< negative: the first row is the highest
    std::uint16_t planes = 1;
    std::uint16_t depth = 8;
    std::uint32_t compression = 0;
    std::uint32_t colours = 0;
    std::size_t table = 256;                       ///< entries of 8-bit pictures
    std::vector<std::uint32_t> pixels{1, 2, 3, 4}; ///< rows in the order of the file

    [[nodiscard]] std::vector<std::byte> build() const {
        std::vector<std::byte> out;
        const auto put = [&out](std::uint64_t value, int bytes) {
            for (int i = 0; i < bytes; ++i) out.push_back(static_cast<std::byte>(value >> 8 * i));
        };
        if (isFile) {
            put('B' | 'M' << 8, 2);
            put(0, 8);
            put(pixelOffset, 4);
        }
        put(headerSize, 4);
        put(static_cast<std::uint32_t>(width), 4);
        put(static_cast<std::uint32_t>(height), 4);
        put(planes, 2);
        put(depth, 2);
        put(compression, 4);
        put(0, 8);
        put(0, 4);
        put(colours, 4);
        put(0, 4);
        if (depth == 8)
            for (std::size_t i = 0; i < table; ++i) put(i << 16 | 0x2211, 4); // red i, rest fixed
        const auto start = out.size();
        for (std::size_t i = 0; i < pixels.size(); ++i) {
            put(pixels[i], depth / 8);
            if (width > 0 && (i + 1) % static_cast<std::size_t>(width) == 0)
                while ((out.size() - start) % 4 != 0) out.push_back(std::byte{0xEE});
        }
        return out;
    }
};

} // namespace testing_support
