// Rows of animations: what is packed comes out again, and damage ends where it is.
#include "../../fuzz/rowcheck.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace formats::animation;
using formats::Bytes;

constexpr std::uint8_t kClear = 7; ///< the transparent index of these tests

Bytes encoded(const Bytes& pixels, std::optional<std::uint8_t> transparent = kClear) {
    Bytes out;
    encodeRow(pixels, transparent, out);
    return out;
}

TEST(AnimationRow, EncodesRunsAndLiterals) {
    Bytes long251; // neither equal neighbours nor kClear
    for (int i = 0; i < 251; ++i) long251.push_back(static_cast<std::uint8_t>(100 + i % 100));
    Bytes packed251 = {250};
    packed251.insert(packed251.end(), long251.begin(), long251.end());
    packed251.insert(packed251.end() - 1, 1);
    const std::pair<Bytes, Bytes> rows[] = {
        {{}, {}},
        {Bytes(251, kClear), {0, 250, 0, 1}},
        {Bytes(251, 9), {255, 9, 250, 255, 9, 1}},
        {long251, packed251},
        {{1, 5, 5, 5}, {4, 1, 5, 5, 5}},   // a run of 3 with 3 left
        {{5, 5, 5, 1}, {255, 5, 3, 1, 1}}, // with 4 left
        {{1, 5, 5, 5, 5}, {1, 1, 255, 5, 4}},
        {{1, kClear, kClear, kClear}, {1, 1, 0, 3}},
        {{1, 2, kClear, 3}, {2, 1, 2, 0, 1, 1, 3}},
    };
    for (const auto& [pixels, packed] : rows) EXPECT_EQ(encoded(pixels), packed);
    EXPECT_EQ(encoded(Bytes(4, kClear), std::nullopt), (Bytes{255, kClear, 4})) << "all opaque";
}

TEST(AnimationRow, DecodesWhatItEncodes) {
    std::mt19937 random(1);
    for (std::size_t round = 0; round < 500; ++round) {
        Bytes pixels;
        while (pixels.size() < round * 2) {
            const std::size_t run = random() % 4 != 0 ? 1 : random() % 400;
            pixels.insert(pixels.end(), run, static_cast<std::uint8_t>(random() % 9));
        }
        Bytes data = encoded(pixels);
        ASSERT_LE(data.size(), pixels.size() * 2);
        const RowEnd whole{data.size(), true};
        data.push_back(3); // the next row
        Bytes back(pixels.size());
        ASSERT_EQ(decodeRow(data, back, kClear), whole);
        ASSERT_EQ(back, pixels);
        ASSERT_EQ(skipRow(data, static_cast<int>(pixels.size())), whole);
    }
}

TEST(AnimationRow, EndsDamagedRowsWhereTheDamageIs) {
    const std::pair<Bytes, std::size_t> rows[] = {
        // data of a row four wide, and how much of it is taken
        {{}, 0},       {{1, 5, 251, 9, 9}, 3},     {{1, 5, 0, 0, 3}, 4}, {{255, 5, 0, 3}, 3},
        {{255, 5}, 2}, {{5, 1, 2, 3, 4, 6, 1}, 6},
    };
    for (const auto& [data, bytes] : rows)
        EXPECT_EQ(skipRow(data, 4), (RowEnd{bytes, false})) << bytes;
    EXPECT_EQ(skipRow(Bytes{1, 2}, 0), (RowEnd{0, true})) << "a row without pixels";
    std::mt19937 random(2);
    constexpr std::uint8_t kTokens[] = {0, 1, 3, 250, 251, 254, 255};
    for (int round = 0; round < 20000; ++round) {
        Bytes data(random() % 12); // as large as it is, so that the sanitizer sees a read past it
        for (std::uint8_t& byte : data) byte = kTokens[random() % std::size(kTokens)];
        fuzzing::checkRows(data, static_cast<int>(random() % 6), 3);
    }
}

} // namespace
