// What pictures and cursors have in common: the information header of the published BMP format
// ("BITMAPINFOHEADER"), colours in tables, and rows that are padded to 4 bytes. Little-endian:
//
//     0   uint32  40, the size of the header; others are not known
//     4   int32   width
//     8   int32   height; negative: the highest row comes first
//     12  uint16  planes: 1, not looked at
//     14  uint16  bits a pixel
//     16  uint32  compression: 0 is none
//     20          size of the pixels; pixels a metre in both directions (12 bytes), not looked at
//     32  uint32  colours in the table; 0: as many as there can be
//     36  uint32  important colours, not looked at
//
// A colour of a table has 4 bytes: blue, green, red, 0.
#pragma once

#include "formats/base/bytes.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace formats::picture {

inline constexpr std::uint32_t kUncompressed = 0;
inline constexpr std::size_t kTableEntry = 4; ///< bytes

struct DibHeader {
    std::int32_t width = 0;
    std::int32_t height = 0;
    int depth = 0;
    std::uint32_t compression = kUncompressed;
    std::uint32_t colours = 0;
};

/// Leaves the reader behind the header. None when it is another one, or, and the reader is not ok
/// then, when it is cut short.
[[nodiscard]] std::optional<DibHeader> readDibHeader(ByteReader& reader);

/// `pixels`: their bytes.
void writeDibHeader(ByteWriter& out, const DibHeader& header, std::size_t pixels);

/// Bytes of a row of pixels, filled up.
[[nodiscard]] constexpr std::size_t dibRowSize(int width, int depth) {
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(depth) + 31) / 32 * 4;
}

} // namespace formats::picture
