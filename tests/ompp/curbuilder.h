// Builds the content of .cur files and `CURSOR` resources for tests, of any values.
#pragma once

#include "bytewriter.h"
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

    [[nodiscard]] Bytes build() const {
        ByteWriter out;
        out.u32(headerSize).u32(width).u32(2 * height + extraHeight).u16(1).u16(depth);
        out.u32(compression).zeros(12).u32(colours).zeros(4);
        for (const std::uint32_t colour : table) out.u32(colour);
        putRows(out, pixels, depth);
        putRows(out, mask, 1);
        return out.bytes();
    }

  private:
    void putRows(ByteWriter& out, const std::vector<std::uint32_t>& values, int bits) const {
        for (int y = height - 1; y >= 0; --y) {
            Bytes row(static_cast<std::size_t>((width * bits + 31) / 32 * 4));
            for (int x = 0; x < width; ++x) {
                const auto place = static_cast<std::size_t>(y * width + x);
                const std::uint32_t value = place < values.size() ? values[place] : 0;
                const int bit = x * bits;
                std::byte* at = &row[static_cast<std::size_t>(bit / 8)];
                if (bits < 8)
                    *at |= static_cast<std::byte>(value << (8 - bits - bit % 8));
                else
                    for (int i = 0; i < bits / 8; ++i)
                        at[i] = static_cast<std::byte>(value >> 8 * i);
            }
            out.all(row);
        }
    }
};

inline Bytes buildCursor(const std::vector<CurPicture>& pictures, int kind = 2) {
    constexpr std::size_t kEntry = 16;
    ByteWriter out;
    Bytes data;
    out.u16(0).u16(kind).u16(static_cast<int>(pictures.size()));
    const std::size_t start = out.size() + kEntry * pictures.size();
    for (const CurPicture& picture : pictures) {
        const Bytes bytes = picture.build();
        out.u8(picture.width).u8(picture.height).u16(0);
        out.u16(picture.hotSpot.x).u16(picture.hotSpot.y);
        out.u32(picture.claimed.value_or(static_cast<std::uint32_t>(bytes.size())));
        out.u32(static_cast<std::int64_t>(start + data.size()));
        data.insert(data.end(), bytes.begin(), bytes.end());
    }
    return out.all(data).bytes();
}

} // namespace testing_support
