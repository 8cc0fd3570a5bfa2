// Builds the content of .cur files and `CURSOR` resources for tests, of any values.
#pragma once

#include "memoryfiles.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

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
        Bytes out;
        for (const std::int64_t field : {std::int64_t{headerSize}, std::int64_t{width},
                                         std::int64_t{2 * height + extraHeight}})
            put(out, field, 4);
        put(out, 1, 2);
        put(out, depth, 2);
        put(out, compression, 4);
        for (int i = 0; i < 3; ++i) put(out, 0, 4);
        put(out, colours, 4);
        put(out, 0, 4);
        for (const std::uint32_t colour : table) put(out, colour, 4);
        putRows(out, pixels, depth);
        putRows(out, mask, 1);
        return out;
    }

    static void put(Bytes& out, std::int64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) out.push_back(static_cast<std::byte>(value >> 8 * i));
    }

  private:
    void putRows(Bytes& out, const std::vector<std::uint32_t>& values, int bits) const {
        for (int y = height - 1; y >= 0; --y) {
            const std::size_t start = out.size();
            out.resize(start + static_cast<std::size_t>((width * bits + 31) / 32 * 4));
            for (int x = 0; x < width; ++x) {
                const auto place = static_cast<std::size_t>(y * width + x);
                const std::uint32_t value = place < values.size() ? values[place] : 0;
                const int bit = x * bits;
                std::byte* at = &out[start + static_cast<std::size_t>(bit / 8)];
                if (bits < 8)
                    *at |= static_cast<std::byte>(value << (8 - bits - bit % 8));
                else
                    for (int i = 0; i < bits / 8; ++i)
                        at[i] = static_cast<std::byte>(value >> 8 * i);
            }
        }
    }
};

inline Bytes buildCursor(const std::vector<CurPicture>& pictures, int kind = 2) {
    constexpr std::size_t kEntry = 16;
    Bytes out;
    Bytes data;
    CurPicture::put(out, 0, 2);
    CurPicture::put(out, kind, 2);
    CurPicture::put(out, static_cast<std::int64_t>(pictures.size()), 2);
    const std::size_t start = out.size() + kEntry * pictures.size();
    for (const CurPicture& picture : pictures) {
        const Bytes bytes = picture.build();
        CurPicture::put(out, picture.width, 1);
        CurPicture::put(out, picture.height, 1);
        CurPicture::put(out, 0, 2);
        CurPicture::put(out, picture.hotSpot.x, 2);
        CurPicture::put(out, picture.hotSpot.y, 2);
        CurPicture::put(out, picture.claimed.value_or(static_cast<std::uint32_t>(bytes.size())), 4);
        CurPicture::put(out, static_cast<std::int64_t>(start + data.size()), 4);
        data.insert(data.end(), bytes.begin(), bytes.end());
    }
    out.insert(out.end(), data.begin(), data.end());
    return out;
}

} // namespace testing_support
