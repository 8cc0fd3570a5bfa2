// The system's stock font.
#include "platform/host/systemfont.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>

namespace platform {
namespace {

using systemfont::Glyph;

const Glyph& at(int code) { return systemfont::glyph(static_cast<unsigned char>(code)); }

bool isCharacter(int code) { return (code >= 0x20 && code <= 0x7E) || code >= 0xA0; }
bool isBlank(int code) { return code == 0x20 || code == 0xA0; }

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

} // namespace
} // namespace platform
