// Builds the content of .cur files and `CURSOR` resources for tests, of any values.
#pragma once

#include "formats/picture/dib.h"
#include "memoryfiles.h"

#include <optional>

namespace testing_support {

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

    [[nodiscard]] formats::Bytes build() const {
        formats::ByteWriter out;
        formats::picture::writeDibHeader(
            out, {width, 2 * height + extraHeight, depth, compression, colours}, 0);
        out.putU32(0, headerSize);
        for (const std::uint32_t colour : table) out.u32(colour);
        putRows(out, pixels, depth);
        putRows(out, mask, 1);
        return out.take();
    }

  private:
    void putRows(formats::ByteWriter& out, const std::vector<std::uint32_t>& values,
                 int bits) const {
        for (int y = height - 1; y >= 0; --y) {
            formats::Bytes row(formats::picture::dibRowSize(width, bits));
            for (int x = 0; x < width; ++x) {
                const auto place = static_cast<std::size_t>(y * width + x);
                const std::uint32_t value = place < values.size() ? values[place] : 0;
                const int bit = x * bits;
                std::uint8_t* at = &row[static_cast<std::size_t>(bit / 8)];
                if (bits < 8)
                    *at = static_cast<std::uint8_t>(*at | value << (8 - bits - bit % 8));
                else
                    for (int i = 0; i < bits / 8; ++i)
                        at[i] = static_cast<std::uint8_t>(value >> 8 * i);
            }
            out.block(row);
        }
    }
};

inline Bytes buildCursor(const std::vector<CurPicture>& pictures, int kind = 2) {
    constexpr std::size_t kEntry = 16;
    formats::ByteWriter out;
    formats::ByteWriter data;
    out.u16(0).u16(kind).u16(std::ssize(pictures));
    const std::size_t start = out.size() + kEntry * pictures.size();
    for (const CurPicture& picture : pictures) {
        const formats::Bytes bytes = picture.build();
        out.u8(picture.width).u8(picture.height).u16(0);
        out.u16(picture.hotSpot.x).u16(picture.hotSpot.y);
        out.u32(picture.claimed.value_or(static_cast<std::uint32_t>(bytes.size())));
        out.u32(static_cast<std::int64_t>(start + data.size()));
        data.block(bytes);
    }
    return toBytes(out.block(data.bytes()).bytes());
}

} // namespace testing_support
