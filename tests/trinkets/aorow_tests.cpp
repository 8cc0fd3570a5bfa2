#include "aorow.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using aorow::RowEnd;
using Bytes = std::vector<std::uint8_t>;

constexpr std::uint8_t kClear = 7; ///< the transparent index of these tests

Bytes times(std::size_t count, std::uint8_t pixel) { return Bytes(count, pixel); }

Bytes join(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

Bytes distinct(std::size_t count) { // neither equal neighbours nor kClear
    Bytes pixels(count);
    for (std::size_t i = 0; i < count; ++i) pixels[i] = static_cast<std::uint8_t>(100 + i % 100);
    return pixels;
}

Bytes encoded(const Bytes& pixels, std::optional<std::uint8_t> transparent = kClear) {
    Bytes out;
    aorow::encodeRow(pixels, transparent, out);
    return out;
}

struct EncodeCase {
    std::string name;
    Bytes pixels;
    Bytes packed;
};

TEST(AoRow, EncodesRunsAndLiterals) {
    const EncodeCase cases[] = {
        {"empty", {}, {}},
        {"one clear", {kClear}, {0, 1}},
        {"clear 250", times(250, kClear), {0, 250}},
        {"clear 251", times(251, kClear), {0, 250, 0, 1}},
        {"clear 300", times(300, kClear), {0, 250, 0, 50}},
        {"clear 500", times(500, kClear), {0, 250, 0, 250}},
        {"fill 250", times(250, 9), {255, 9, 250}},
        {"fill 251", times(251, 9), {255, 9, 250, 255, 9, 1}},
        {"fill 300", times(300, 9), {255, 9, 250, 255, 9, 50}},
        {"literal 250", distinct(250), join({{250}, distinct(250)})},
        {"literal 251", distinct(251), join({{250}, distinct(250), {1}, {distinct(251).back()}})},
        {"two equal", {5, 5, 6, 8}, {4, 5, 5, 6, 8}},
        {"run of 3 with 3 left", {1, 5, 5, 5}, {4, 1, 5, 5, 5}},
        {"run of 3 with 4 left", {5, 5, 5, 1}, {255, 5, 3, 1, 1}},
        {"run of 4 at the end", {1, 5, 5, 5, 5}, {1, 1, 255, 5, 4}},
        {"clear run of 3 at the end", {1, kClear, kClear, kClear}, {1, 1, 0, 3}},
        {"literals on both sides", {1, 2, kClear, 3}, {2, 1, 2, 0, 1, 1, 3}},
        {"tokens as colours", {0, 255, 251, 0}, {4, 0, 255, 251, 0}},
    };
    for (const EncodeCase& row : cases) EXPECT_EQ(encoded(row.pixels), row.packed) << row.name;
    EXPECT_EQ(encoded(times(4, kClear), std::nullopt), (Bytes{255, kClear, 4})) << "all opaque";
}

TEST(AoRow, DecodesWhatItEncodes) {
    std::mt19937 random(1);
    for (int round = 0; round < 500; ++round) {
        Bytes pixels;
        while (pixels.size() < static_cast<std::size_t>(round * 2)) {
            const auto colour = static_cast<std::uint8_t>(random() % 9);
            const std::size_t run = random() % 4 != 0 ? 1 : random() % 400;
            pixels.insert(pixels.end(), run, colour);
        }
        Bytes data = encoded(pixels);
        ASSERT_LE(data.size(), pixels.size() * 2);
        const RowEnd whole{data.size(), true};
        data.push_back(3); // the next row
        Bytes back(pixels.size());
        ASSERT_EQ(aorow::decodeRow(data, back, kClear), whole);
        ASSERT_EQ(back, pixels);
        ASSERT_EQ(aorow::skipRow(data, static_cast<int>(pixels.size())), whole);
    }
}

struct DamagedCase {
    std::string name;
    Bytes data;
    Bytes pixels; ///< of a row four wide
    std::size_t bytes;
};

TEST(AoRow, EndsDamagedRowsWhereTheDamageIs) {
    const DamagedCase cases[] = {
        {"no data", {}, times(4, kClear), 0},
        {"token 251", {1, 5, 251, 9, 9}, {5, kClear, kClear, kClear}, 3},
        {"token 254", {254, 1, 1}, times(4, kClear), 1},
        {"clear run of 0", {1, 5, 0, 0, 3}, {5, kClear, kClear, kClear}, 4},
        {"fill of 0", {255, 5, 0, 3}, times(4, kClear), 3},
        {"data ends between tokens", {2, 5, 6}, {5, 6, kClear, kClear}, 3},
        {"data ends in a literal", {4, 5, 6}, {5, 6, kClear, kClear}, 3},
        {"data ends before the count", {1, 5, 0}, {5, kClear, kClear, kClear}, 3},
        {"data ends behind the colour", {255, 5}, times(4, kClear), 2},
        {"data ends behind the fill token", {255}, times(4, kClear), 1},
        {"fill past the width", {255, 5, 9, 1}, {5, 5, 5, 5}, 3},
        {"clear past the width", {1, 5, 0, 9, 1}, {5, kClear, kClear, kClear}, 4},
        {"literal past the width", {5, 1, 2, 3, 4, 6, 1}, {1, 2, 3, 4}, 6},
        {"literal past the width and the data", {9, 1, 2, 3, 4, 6}, {1, 2, 3, 4}, 6},
    };
    for (const DamagedCase& row : cases) {
        Bytes pixels(4, 99);
        EXPECT_EQ(aorow::decodeRow(row.data, pixels, kClear), (RowEnd{row.bytes, false}))
            << row.name;
        EXPECT_EQ(pixels, row.pixels) << row.name;
        EXPECT_EQ(aorow::skipRow(row.data, 4), (RowEnd{row.bytes, false})) << row.name;
    }
    EXPECT_EQ(aorow::skipRow(Bytes{1, 2}, 0), (RowEnd{0, true})) << "a row without pixels";
}

/// Data of exactly this size, so that the sanitizer sees a read past it.
TEST(AoRow, StaysWithinAnyDataAndAnyWidth) {
    std::mt19937 random(2);
    constexpr std::uint8_t kTokens[] = {0, 1, 3, 250, 251, 254, 255};
    for (int round = 0; round < 20000; ++round) {
        Bytes data(random() % 12);
        for (std::uint8_t& byte : data) byte = kTokens[random() % std::size(kTokens)];
        const int width = static_cast<int>(random() % 6);
        Bytes pixels(static_cast<std::size_t>(width));
        const RowEnd end = aorow::decodeRow(data, pixels, kClear);
        ASSERT_LE(end.bytes, data.size());
        ASSERT_EQ(aorow::skipRow(data, width), end);
        if (width > 0 && !data.empty()) {
            ASSERT_GT(end.bytes, 0U) << "a row that takes nothing would not end";
        }
    }
}

} // namespace
