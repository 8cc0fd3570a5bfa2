#include "fonts/fontbuilder.h"
#include "testfiles.h"
#include "testfonts.h"

#include <gmock/gmock.h>

namespace {

using formats::font::Font;
using rsc::Bytes;
using rsc::FontPlan;
using rsc::Glyph;
using rsc::Refusal;
using testfiles::asBytes;

/// A BDF font whose characters of these codes are dots.
std::string dots(const std::vector<int>& codes, const std::string& properties = {}) {
    std::string text = "STARTFONT 2.1\nSTARTPROPERTIES 2\nFONT_ASCENT 5\nFONT_DESCENT 1\n" +
                       properties + "ENDPROPERTIES\nCHARS " + std::to_string(codes.size()) + "\n";
    for (const int code : codes)
        text += "STARTCHAR x\nENCODING " + std::to_string(code) +
                "\nDWIDTH 2 0\nBBX 1 1 0 0\nBITMAP\n80\nENDCHAR\n";
    return text + "ENDFONT\n";
}

Font built(const std::string& bdf, const FontPlan& plan = {}) {
    return formats::font::read(rsc::buildFont(plan, asBytes(bdf))).value;
}

/// Ink as "#", the rest as ".", a line a row.
std::string drawn(const Glyph& glyph) {
    std::string rows;
    for (int y = 0; y < glyph.height; ++y) {
        for (int x = 0; x < glyph.width; ++x) rows += glyph.ink[glyph.at(x, y)] ? '#' : '.';
        rows += '\n';
    }
    return rows;
}

TEST(Nfnt, PacksASmallFontInBothByteOrders) {
    EXPECT_EQ(rsc::buildFont({}, asBytes(testfonts::kSmallBdf)), testfonts::kSmallNfnt);
    Bytes big = testfonts::kSmallNfnt;
    const auto swapWords = [&](std::size_t first, std::size_t end) {
        for (std::size_t at = first; at < end; at += 2) std::swap(big[at], big[at + 1]);
    };
    swapWords(0, 26);
    swapWords(32, 48);
    FontPlan plan;
    plan.bigEndian = true;
    EXPECT_EQ(rsc::buildFont(plan, asBytes(testfonts::kSmallBdf)), big);
    big.resize(80);
    const Font font = formats::font::read(big).value;
    EXPECT_EQ(font.glyphs, formats::font::read(testfonts::kSmallNfnt).value.glyphs);
    EXPECT_EQ(font.lastChar, 5);
    EXPECT_EQ(font.glyphs.at(1).left, -1);
    EXPECT_EQ(drawn(font.glyphs.at(1)), "###\n#.#\n..#\n");
    EXPECT_EQ(drawn(font.glyphs.at(3)), "..\n##\n..\n");
}

TEST(Nfnt, ChoosesWhatStandsInForMissingCharacters) {
    const std::string dot = ".\n.\n.\n.\n#\n.\n";
    const std::string box = "####\n#..#\n#..#\n#..#\n####\n....\n"; // as high as all characters
    FontPlan letters;
    letters.chars.emplace();
    for (std::size_t code = 'A'; code <= 'Z'; ++code) letters.chars->set(code);
    struct Case {
        std::string bdf;
        FontPlan plan;
        int lastChar;
        std::string standIn;
    };
    const Case cases[] = {
        {dots({'a', 'b'}), {}, 'b' + 2, box},
        {dots({'H', 'a'}), {}, 'a' + 2, dot},
        {dots({'a', 300}, "DEFAULT_CHAR 300\n"), {}, 'a' + 2, dot},
        {dots({0, 'a'}, "DEFAULT_CHAR 0\n"), {}, 'a' + 2, dot},
        {dots({'?', 'a'}, "DEFAULT_CHAR 63\n"), {}, 'a' + 2, box},
        {dots({'?', 'B'}, "DEFAULT_CHAR 63\n"), letters, 'B' + 2, dot},
        {dots({'a'}, "DEFAULT_CHAR 63\n"), {}, 'a' + 2, box},
        {dots({254}), {}, 255, dot},
        {dots({255}), {}, 255, box},
    };
    for (const Case& row : cases) {
        const Font font = built(row.bdf, row.plan);
        EXPECT_EQ(font.lastChar, row.lastChar) << row.bdf;
        ASSERT_TRUE(font.glyphs.contains(font.standInCode())) << row.bdf;
        EXPECT_EQ(drawn(font.glyphs.at(font.standInCode())), row.standIn) << row.bdf;
    }
}

TEST(Nfnt, KeepsTheCharactersAndRowsThatAreAskedFor) {
    FontPlan plan;
    plan.chars.emplace();
    plan.chars->set('b').set('z');
    plan.leading = 4;
    const Font font = built(dots({'a', 'b', 'c'}), plan);
    EXPECT_EQ(font.glyphs.size(), 2U) << "and the one that stands in";
    EXPECT_TRUE(font.glyphs.contains('b'));
    EXPECT_EQ(font.leading, 4);
    const auto moved = [](const char* box) {
        return built(testfiles::replaced(testfonts::kSmallBdf, "BBX 2 1 1 0", box));
    };
    EXPECT_EQ(moved("BBX 2 1 1 5").ascent, 6) << "no ink is cut off";
    EXPECT_EQ(moved("BBX 2 1 1 -5").descent, 5);
}

TEST(Nfnt, RefusesWhatItsFieldsCannotHold) {
    const std::string wide = "DWIDTH 255 0\nBBX 2 1 254 0";
    const std::vector<testfiles::Change> cases = {
        {"DWIDTH 4 0", "DWIDTH 256 0", "the width of character 1 is 256, allowed is 0 to 255"},
        {"BBX 2 1 1 0", "BBX 2 1 255 0", "the distance of character 3 from the leftmost edge"},
        {"DWIDTH 3 0\nBBX 2 1 1 0", wide, "the character 3 would count as missing"},
        {"BBX 2 1 1 0", "BBX 2 1 -40000 0", "the left edge of the pictures is -40000"},
        {"BBX 2 1 1 0", "BBX 2 1 1 40000", "the number of rows is 40002"},
        {"BBX 2 1 1 0", "BBX 2 1 1 32760", "the font is too large"},
        {"ENCODING 1", "ENCODING 1000", ""},
    };
    testfiles::expectRefused(testfonts::kSmallBdf, cases, [](const std::string& bdf) {
        (void)rsc::buildFont({}, asBytes(bdf));
    });
    FontPlan none;
    none.chars.emplace();
    EXPECT_THROW((void)rsc::buildFont(none, asBytes(testfonts::kSmallBdf)), Refusal);
}

} // namespace
