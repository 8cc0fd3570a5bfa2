// Bitmap fonts: what is written is read again, and damage is refused.
#include "formats/font/nfnt.h"

#include <gtest/gtest.h>

using formats::Bytes;
using formats::font::Font;

namespace {

/// A hook that reaches to the left of the pen and below the baseline, a dash, and their stand-in.
Font smallFont() {
    Font font{.lastChar = 5, .ascent = 2, .descent = 1, .leading = 4};
    font.glyphs[1] = {4, -1, 2, 3, 3, {true, true, true, true, false, true, false, false, true}};
    font.glyphs[3] = {3, 1, 2, 2, 3, {false, false, true, true, false, false}};
    font.glyphs[4] = {4, 1, 2, 0, 0, {}};
    return font;
}

TEST(Font, ComesBackInBothByteOrdersAndIsRefusedWhenItIsCutOff) {
    for (const bool bigEndian : {false, true}) {
        Font font = smallFont();
        font.bigEndian = bigEndian;
        const Bytes record = formats::font::write(font).value;
        const auto [back, refusal] = formats::font::read(record);
        EXPECT_EQ(refusal, "");
        EXPECT_EQ(back.glyphs, font.glyphs);
        EXPECT_EQ(back.bigEndian, bigEndian);
        EXPECT_EQ(back.lastChar, font.lastChar);
        EXPECT_EQ(back.leading, font.leading);
        for (std::size_t size = 0; size < record.size(); ++size)
            EXPECT_EQ(formats::font::read(formats::ByteSpan(record).first(size)).refusal,
                      "the font is cut off");
    }
}

TEST(Font, RefusesDamageAndWhatIsTooWide) {
    struct Row {
        std::size_t at;
        std::uint8_t value;
        const char* refusal; ///< a part of it
    };
    const Row rows[] = {
        {3, 0x80, "its characters are -32768 to 5"}, {5, 1, "its characters are 0 to 261"},
        {4, 200, "its tables lie in its head"},      {14, 2, "more rows than its pictures"},
        {16, 0, "its tables lie in its head"},       {25, 0xFF, "cut off"},
        {34, 4, "the picture of character 1"},       {41, 0x7F, "the picture of character 3"},
    };
    const Bytes whole = formats::font::write(smallFont()).value;
    for (const auto& [at, value, refusal] : rows) {
        Bytes damaged = whole;
        damaged.at(at) = value;
        EXPECT_NE(formats::font::read(damaged).refusal.find(refusal), std::string::npos) << at;
    }
    Font wide{.lastChar = 255};
    for (int code = 0; code < 40; ++code) wide.glyphs[code] = {1, 0, 0, 1000, 0, {}};
    EXPECT_NE(formats::font::write(wide).refusal, "") << "40,000 columns";
}

} // namespace
