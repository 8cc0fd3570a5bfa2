// Cursor files for tests.
#pragma once

#include "formats/picture/cursor.h"
#include "memoryfiles.h"

namespace testing_support {

/// A picture in one colour, told from others by its hot spot.
struct CurPicture {
    int width = 2, height = 2;
    formats::picture::HotSpot hotSpot{};
};

inline Bytes buildCursor(const std::vector<CurPicture>& pictures) {
    formats::ByteWriter out;
    formats::ByteWriter data;
    out.u16(0).u16(2).u16(std::ssize(pictures));
    for (const auto& [width, height, hotSpot] : pictures) {
        const auto size = static_cast<std::size_t>(width * height);
        const formats::Bytes file = formats::picture::writeCursor(
            {width, height, hotSpot, formats::picture::CursorPixels(size, 0xFF00FF00)});
        out.block(std::span(file).subspan(6, 12));
        out.u32(static_cast<std::int64_t>(6 + 16 * pictures.size() + data.size()));
        data.block(std::span(file).subspan(22));
    }
    return toBytes(out.block(data.bytes()).bytes());
}

} // namespace testing_support
