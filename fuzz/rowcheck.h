// Packed rows of animations, compared with what their bytes say.
#pragma once

#include "expect.h"

#include "formats/animation/row.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace fuzzing {

inline constexpr int kClear = -1;

/// A row unpacked in the plainest way: a colour index or kClear a pixel.
struct PlainRow {
    std::vector<int> pixels;
    std::size_t bytes = 0; ///< of the data that it takes

    PlainRow(formats::ByteSpan data, int width) : pixels(static_cast<std::size_t>(width), kClear) {
        for (std::size_t x = 0; x < pixels.size() && bytes < data.size();) {
            const int token = data[bytes++];
            const std::size_t left = data.size() - bytes;
            if (token > formats::animation::kLongestRun && token != formats::animation::kFillToken)
                return;
            const std::size_t wanted = token == formats::animation::kFillToken ? 2
                                       : token == 0                            ? 1
                                                                               : token;
            const auto given = data.subspan(bytes, std::min(wanted, left));
            bytes += given.size();
            const bool literal = token != 0 && token != formats::animation::kFillToken;
            if (given.empty() || (!literal && given.size() < wanted)) return;
            const std::size_t length = literal ? given.size() : given.back();
            if (length == 0) return;
            for (std::size_t i = 0; i < length && x < pixels.size(); ++i, ++x)
                pixels[x] = literal ? given[i] : token == 0 ? kClear : given.front();
        }
    }
};

/// How the rows of a frame are unpacked, by all functions that do.
inline void checkRows(formats::ByteSpan rows, int width, int height) {
    constexpr int kMostRows = 48;
    constexpr int kMostPixels = 1 << 13; // in few of the widest rows
    constexpr std::uint8_t kKeys[] = {5, 250};
    const int enough = kMostPixels / std::max(width, 1) + 1;
    for (int row = 0; row < std::min({height, kMostRows, enough}); ++row) {
        const PlainRow plain(rows, width);
        expect(formats::animation::skipRow(rows, width).bytes == plain.bytes,
               "rows are walked alike");
        for (const std::uint8_t key : kKeys) {
            std::vector<std::uint8_t> pixels(plain.pixels.size());
            expect(formats::animation::decodeRow(rows, pixels, key).bytes == plain.bytes,
                   "rows are decoded alike");
            for (std::size_t x = 0; x < pixels.size(); ++x)
                expect(pixels[x] == (plain.pixels[x] == kClear ? key : plain.pixels[x]),
                       "a row has the pixels of its runs");
        }
        rows = rows.subspan(plain.bytes);
    }
}

} // namespace fuzzing
