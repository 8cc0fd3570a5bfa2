// The system's stock font.
#include "platform/host/systemfont.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace platform {
namespace {

using systemfont::Glyph;
using systemfont::kAscent;

const Glyph& at(int code) { return systemfont::glyph(static_cast<unsigned char>(code)); }

bool isCharacter(int code) { return (code >= 0x20 && code <= 0x7E) || code >= 0xA0; }
bool isBlank(int code) { return code == 0x20 || code == 0xA0; }

bool inked(const Glyph& glyph, int x, int y) {
    return glyph.rows[static_cast<std::size_t>(y)] >> (systemfont::kMaxWidth - 1 - x) & 1;
}

std::uint16_t columnsOf(const Glyph& glyph) {
    std::uint16_t columns = 0;
    for (const std::uint16_t row : glyph.rows) columns |= row;
    return columns;
}

TEST(SystemFont, InkFillsTheWidthAndKeepsWithinTheAdvance) {
    for (int code = 0; code <= 0xFF; ++code) {
        SCOPED_TRACE(code);
        const Glyph& glyph = at(code);
        EXPECT_GT(glyph.advance, 0);
        EXPECT_GE(glyph.left, 0);
        EXPECT_LE(glyph.left + glyph.width, glyph.advance + 1);
        if (isBlank(code)) {
            EXPECT_EQ(columnsOf(glyph), 0);
            continue;
        }
        ASSERT_GT(glyph.width, 0);
        const int spare = systemfont::kMaxWidth - glyph.width;
        EXPECT_TRUE(columnsOf(glyph) & 0x8000) << "the first column";
        EXPECT_EQ(columnsOf(glyph) & ((2 << spare) - 1), 1 << spare) << "the last column";
    }
}

TEST(SystemFont, CharactersDifferAndTheOthersShowTheBox) {
    std::map<decltype(Glyph::rows), int> seen;
    for (int code = 0x20; code <= 0xFF; ++code) {
        if (!isCharacter(code)) continue;
        const auto [twin, isNew] = seen.emplace(at(code).rows, code);
        // The no-break space is one, and so is the soft hyphen, when it is seen.
        EXPECT_TRUE(isNew || code == 0xA0 || code == 0xAD)
            << std::hex << code << " looks as " << twin->second;
    }
    EXPECT_FALSE(seen.contains(at(0x7F).rows));
    for (int code = 0; code <= 0xFF; ++code)
        EXPECT_EQ(at(code) == at(0x7F), !isCharacter(code)) << code;
}

TEST(SystemFont, DigitsShareOneAdvance) {
    for (int digit = '1'; digit <= '9'; ++digit) EXPECT_EQ(at(digit).advance, at('0').advance);
}

/// Whether the letter's ink below `top` is in the accented one too, somewhere along the row.
bool contains(const Glyph& accented, const Glyph& letter, int top) {
    for (int shift = 0; shift + letter.width <= accented.width; ++shift) {
        bool all = true;
        for (int y = top; y < systemfont::kHeight; ++y)
            for (int x = 0; x < letter.width; ++x)
                all = all && (!inked(letter, x, y) || inked(accented, x + shift, y));
        if (all) return true;
    }
    return false;
}

/// Rows with ink above `bottom`.
int inkedRowsAbove(const Glyph& glyph, int bottom) {
    int rows = 0;
    for (int y = 0; y < bottom; ++y) rows += glyph.rows[static_cast<std::size_t>(y)] != 0;
    return rows;
}

TEST(SystemFont, AccentedLettersContainTheirLetter) {
    const std::pair<char, std::vector<int>> families[] = {
        {'A', {0xC0, 0xC1, 0xC2, 0xC3, 0xC4, 0xC5}},
        {'C', {0xC7}},
        {'E', {0xC8, 0xC9, 0xCA, 0xCB}},
        {'I', {0xCC, 0xCD, 0xCE, 0xCF}},
        {'N', {0xD1}},
        {'O', {0xD2, 0xD3, 0xD4, 0xD5, 0xD6}},
        {'U', {0xD9, 0xDA, 0xDB, 0xDC}},
        {'Y', {0xDD}}};
    constexpr int kToSmall = 0x20;
    constexpr int kCapitalTop = kAscent - 9;
    constexpr int kSmallTop = kAscent - 7;
    for (const auto& [letter, codes] : families) {
        for (const int code : codes) {
            SCOPED_TRACE(code);
            EXPECT_TRUE(contains(at(code), at(letter), 0));
            EXPECT_TRUE(contains(at(code + kToSmall), at(letter + kToSmall), kSmallTop));
            if (letter == 'C') continue;
            EXPECT_GE(inkedRowsAbove(at(code), kCapitalTop), 2);
            EXPECT_EQ(at(code + kToSmall).rows[kSmallTop - 1], 0) << "the accent stands clear";
        }
    }
    EXPECT_TRUE(contains(at(0xFF), at('y'), 0));
    EXPECT_EQ(inkedRowsAbove(at(0xED), kSmallTop), inkedRowsAbove(at(0xE1), kSmallTop))
        << "the dot of the i gives way";
}

} // namespace
} // namespace platform
