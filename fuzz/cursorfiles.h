// Cursor files of all depths, and the rows of pictures of any depth, for seeds.
#pragma once

#include "formats/picture/dib.h"
#include "memoryfiles.h"

#include <optional>

namespace fuzzing {

using testing_support::Bytes;
using testing_support::toBytes;

/// The rows of a picture, of which the top one comes first in `values`; missing ones are 0.
inline void putRows(formats::ByteWriter& out, const std::vector<std::uint32_t>& values, int width,
                    int height, int depth, bool lowestFirst) {
    for (int row = 0; row < height; ++row) {
        formats::Bytes bytes(formats::picture::dibRowSize(width, depth));
        for (int x = 0; x < width; ++x) {
            const int y = lowestFirst ? height - 1 - row : row;
            const auto place = static_cast<std::size_t>(y * width + x);
            const std::uint32_t value = place < values.size() ? values[place] : 0;
            for (int i = 0; i < depth; ++i) { // a byte's highest bit is the leftmost pixel's
                const int bit = x * depth + i;
                const int from = depth < 8 ? depth - 1 - i : i / 8 * 8 + 7 - i % 8;
                auto& byte = bytes[static_cast<std::size_t>(bit / 8)];
                byte = static_cast<std::uint8_t>(byte | (value >> from & 1) << (7 - bit % 8));
            }
        }
        out.block(bytes);
    }
}

/// One picture of a file, with what most of the tests want.
struct CurPicture {
    int width = 2;
    int height = 2;
    int depth = 32;
    platform::Point hotSpot{};
    std::uint32_t headerSize = 40;
    std::uint32_t compression = 0;
    std::uint32_t colours = 0;                 ///< of the table, as the header says
    std::int32_t extraHeight = 0;              ///< added to the height in the header
    std::vector<std::uint32_t> table{};        ///< 0xRRGGBB
    std::vector<std::uint32_t> pixels{};       ///< top row first; the missing ones are 0
    std::vector<std::uint32_t> mask{};         ///< the same
    std::optional<std::uint32_t> claimed = {}; ///< bytes, as the directory says
};

inline Bytes buildCursor(const std::vector<CurPicture>& pictures, int kind = 2) {
    formats::ByteWriter out;
    formats::ByteWriter data;
    out.u16(0).u16(kind).u16(std::ssize(pictures));
    for (const CurPicture& each : pictures) {
        const std::size_t start = data.size();
        formats::picture::writeDibHeader(data,
                                         {each.width, 2 * each.height + each.extraHeight,
                                          each.depth, each.compression, each.colours},
                                         0);
        data.putU32(start, each.headerSize);
        for (const std::uint32_t colour : each.table) data.u32(colour);
        putRows(data, each.pixels, each.width, each.height, each.depth, true);
        putRows(data, each.mask, each.width, each.height, 1, true);
        out.u8(each.width).u8(each.height).u16(0).u16(each.hotSpot.x).u16(each.hotSpot.y);
        out.u32(each.claimed.value_or(static_cast<std::uint32_t>(data.size() - start)));
        out.u32(static_cast<std::int64_t>(6 + 16 * pictures.size() + start));
    }
    return toBytes(out.block(data.bytes()).bytes());
}

} // namespace fuzzing
