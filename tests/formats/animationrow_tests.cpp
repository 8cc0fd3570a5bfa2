#include "../../fuzz/rowcheck.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using formats::animation::decodeRow;
using formats::animation::encodeRow;
using formats::animation::RowEnd;
using formats::animation::skipRow;
using RowBytes = formats::Bytes;

constexpr std::uint8_t kClear = 7; ///< the transparent index of these tests

RowBytes times(std::size_t count, std::uint8_t pixel) { return RowBytes(count, pixel); }

RowBytes join(std::initializer_list<RowBytes> parts) {
    RowBytes all;
    for (const RowBytes& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

RowBytes distinct(std::size_t count) { // neither equal neighbours nor kClear
    RowBytes pixels(count);
    for (std::size_t i = 0; i < count; ++i) pixels[i] = static_cast<std::uint8_t>(100 + i % 100);
    return pixels;
}

RowBytes encoded(const RowBytes& pixels, std::optional<std::uint8_t> transparent = kClear) {
    RowBytes out;
    encodeRow(pixels, transparent, out);
    return out;
}

TEST(AnimationRow, EncodesRunsAndLiterals) {
    const struct {
        const char* name;
        RowBytes pixels;
        RowBytes packed;
    } cases[] = {
        {"empty", {}, {}},
        {"clear 251", times(251, kClear), {0, 250, 0, 1}},
        {"fill 251", times(251, 9), {255, 9, 250, 255, 9, 1}},
        {"literal 251", distinct(251), join({{250}, distinct(250), {1}, {distinct(251).back()}})},
        {"run of 3 with 3 left", {1, 5, 5, 5}, {4, 1, 5, 5, 5}},
        {"run of 3 with 4 left", {5, 5, 5, 1}, {255, 5, 3, 1, 1}},
        {"run of 4 at the end", {1, 5, 5, 5, 5}, {1, 1, 255, 5, 4}},
        {"clear run of 3 at the end", {1, kClear, kClear, kClear}, {1, 1, 0, 3}},
        {"literals on both sides", {1, 2, kClear, 3}, {2, 1, 2, 0, 1, 1, 3}},
    };
    for (const auto& row : cases) EXPECT_EQ(encoded(row.pixels), row.packed) << row.name;
    EXPECT_EQ(encoded(times(4, kClear), std::nullopt), (RowBytes{255, kClear, 4})) << "all opaque";
}

TEST(AnimationRow, DecodesWhatItEncodes) {
    std::mt19937 random(1);
    for (int round = 0; round < 500; ++round) {
        RowBytes pixels;
        while (pixels.size() < static_cast<std::size_t>(round * 2)) {
            const auto colour = static_cast<std::uint8_t>(random() % 9);
            const std::size_t run = random() % 4 != 0 ? 1 : random() % 400;
            pixels.insert(pixels.end(), run, colour);
        }
        RowBytes data = encoded(pixels);
        ASSERT_LE(data.size(), pixels.size() * 2);
        const RowEnd whole{data.size(), true};
        data.push_back(3); // the next row
        RowBytes back(pixels.size());
        ASSERT_EQ(decodeRow(data, back, kClear), whole);
        ASSERT_EQ(back, pixels);
        ASSERT_EQ(skipRow(data, static_cast<int>(pixels.size())), whole);
    }
}

TEST(AnimationRow, EndsDamagedRowsWhereTheDamageIs) {
    const struct {
        const char* name;
        RowBytes data;
        RowBytes pixels; ///< of a row four wide
        std::size_t bytes;
    } cases[] = {
        {"no data", {}, times(4, kClear), 0},
        {"token 251", {1, 5, 251, 9, 9}, {5, kClear, kClear, kClear}, 3},
        {"clear run of 0", {1, 5, 0, 0, 3}, {5, kClear, kClear, kClear}, 4},
        {"fill of 0", {255, 5, 0, 3}, times(4, kClear), 3},
        {"data ends behind the colour", {255, 5}, times(4, kClear), 2},
        {"literal past the width", {5, 1, 2, 3, 4, 6, 1}, {1, 2, 3, 4}, 6},
    };
    for (const auto& row : cases) {
        RowBytes pixels(4, 99);
        EXPECT_EQ(decodeRow(row.data, pixels, kClear), (RowEnd{row.bytes, false})) << row.name;
        EXPECT_EQ(pixels, row.pixels) << row.name;
        EXPECT_EQ(skipRow(row.data, 4), (RowEnd{row.bytes, false})) << row.name;
    }
    EXPECT_EQ(skipRow(RowBytes{1, 2}, 0), (RowEnd{0, true})) << "a row without pixels";
}

TEST(AnimationRow, AnyDataIsUnpackedAndWalkedAlike) {
    std::mt19937 random(2);
    constexpr std::uint8_t kTokens[] = {0, 1, 3, 250, 251, 254, 255};
    for (int round = 0; round < 20000; ++round) {
        RowBytes data(random() %
                      12); // as large as it is, so that the sanitizer sees a read past it
        for (std::uint8_t& byte : data) byte = kTokens[random() % std::size(kTokens)];
        fuzzing::checkRows(data, static_cast<int>(random() % 6), 3);
    }
}

} // namespace
