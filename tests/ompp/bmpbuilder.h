// Builds BMP files and `BITMAP` resources for tests, of any values.
#pragma once

#include "curbuilder.h"

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

    [[nodiscard]] Bytes build() const {
        formats::ByteWriter out;
        if (isFile) out.text("BM").zeros(8).u32(pixelOffset);
        const std::size_t header = out.size();
        formats::picture::writeDibHeader(out, {width, height, depth, compression, colours}, 0);
        out.putU32(header, headerSize);
        out.putU16(header + 12, planes);
        if (depth == 8)
            for (std::size_t i = 0; i < table; ++i) // red i, rest fixed
                out.u8(0x11).u8(0x22).u16(static_cast<std::uint8_t>(i));
        // As many rows as there are pixels for.
        if (width > 0)
            putRows(out, pixels, width, static_cast<int>(std::ssize(pixels)) / width, depth, false);
        return toBytes(out.bytes());
    }
};

} // namespace testing_support
