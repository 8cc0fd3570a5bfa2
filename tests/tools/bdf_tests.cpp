#include "fonts/bdf.h"

#include "testfiles.h"
#include "testfonts.h"

#include <gmock/gmock.h>

namespace {

using rsc::BitmapFont;
using rsc::Bytes;
using rsc::Glyph;
using rsc::Refusal;
using testfiles::replaced;

BitmapFont read(const std::string& text) { return rsc::readBdf(Bytes(text.begin(), text.end())); }

const Glyph kHook{4, -1, 2, 3, 3, {true, true, true, true, false, true, false, false, true}};
const Glyph kDash{3, 1, 1, 2, 1, {true, true}};

TEST(Bdf, TakesWhatEditorsWrite) {
    struct Case {
        std::string old;
        std::string now;
        std::map<int, Glyph> glyphs;
    };
    const std::map<int, Glyph> both = {{1, kHook}, {3, kDash}};
    const Case cases[] = {
        {"FONT small", "COMMENT x\n\nCOMMENT\n  FONT\tsmall", both},
        {"SWIDTH 1000 0", "VVECTOR 1 2\nNEW 3", both},
        {"FONT_ASCENT 2", "FONT_ASCENT   2\nCOPYRIGHT \"ENDPROPERTIES CHARS\"", both},
        {"E0\nA0", "e0\nA0FF", both},
        {"ENCODING 3", "ENCODING 256", {{1, kHook}}},
        {"ENCODING 3", "ENCODING -1 7", {{1, kHook}}},
        {"BBX 2 1 1 0\nBITMAP\nC0",
         "BBX 0 2 1 0\nBITMAP\n00\n00",
         {{1, kHook}, {3, Glyph{3, 1, 2, 0, 0, {}}}}},
        {"FONT_ASCENT 2\nFONT_DESCENT 1\n", "", both},
    };
    for (const Case& row : cases) {
        const BitmapFont font = read(replaced(testfonts::kSmallBdf, row.old, row.now));
        EXPECT_EQ(font.glyphs, row.glyphs) << row.now;
        EXPECT_EQ(font.ascent, 2) << row.now;
        EXPECT_EQ(font.descent, 1) << row.now;
    }
    std::string crLf;
    for (const char c : testfonts::kSmallBdf) crLf += c == '\n' ? "\r\n" : std::string(1, c);
    EXPECT_EQ(read(crLf).glyphs, both);
    const std::string withDefault =
        replaced(testfonts::kSmallBdf, "FONT_ASCENT 2", "FONT_ASCENT 2\nDEFAULT_CHAR 300");
    EXPECT_EQ(read(replaced(withDefault, "ENCODING 3", "ENCODING 300")).glyphs,
              (std::map<int, Glyph>{{1, kHook}, {300, kDash}}));
}

TEST(Bdf, RefusesDamageWithItsLine) {
    const std::vector<testfiles::Change> cases = {
        {"STARTFONT", "STARTFUN", "line 1: no BDF font"},
        {"CHARS 2", "CHARS -2", "line 9: CHARS is -2, allowed is 0 to"},
        {"CHARS 2", "CHARS 3", "line 27: CHARS says 3, but the characters are 2"},
        {"FONT_ASCENT 2", "FONT_ASCENT 999999", "line 6: FONT_ASCENT is 999999"},
        {"ENDFONT\n", "", "line 26: the file ends without ENDFONT"},
        {"STARTCHAR dash", "ENDCHAR", "line 20: \"ENDCHAR\" where STARTCHAR is expected"},
        {"BBX 3 3 -1 -1", "BBX 3 3 -999999999 -1", "line 14: BBX is -999999999"},
        {"BBX 3 3 -1 -1", "BBX 3 4 -1 -1", "line 19: \"ENDCHAR\" is no row of 3 pixels"},
        {"BBX 3 3 -1 -1", "BBX 3 2 -1 -1", "line 18: the character has more rows"},
        {"BBX 3 3 -1 -1", "BBX 9 3 -1 -1", "line 16: \"E0\" is no row of 9 pixels"},
        {"BBX 3 3 -1 -1\n", "", "the character has no BBX"},
        {"BITMAP\nE0\nA0\n20\n", "", "line 15: the character has no BITMAP"},
        {"ENCODING 3", "ENCODING 1", "line 26: there are two characters of the code 1"},
        {"DWIDTH 4 0", "DWIDTH four 0", "line 13: DWIDTH: \"four\" is no number"},
    };
    testfiles::expectRefused(testfonts::kSmallBdf, cases, read);
    for (std::size_t size = 0; size + 1 < testfonts::kSmallBdf.size(); ++size)
        EXPECT_THROW((void)read(testfonts::kSmallBdf.substr(0, size)), Refusal)
            << "cut off at " << size;
}

TEST(Bdf, WritesWhatItReads) {
    BitmapFont font = read(testfonts::kSmallBdf);
    font.glyphs[200] = {7, 2, 5, 20, 3, std::vector<bool>(60)};
    font.glyphs[200].ink[25] = true;
    font.glyphs[201] = {3, 0, 1, 6, 1, std::vector<bool>(6)}; // a space of six columns
    font.defaultCode = 200;
    const BitmapFont again = read(rsc::writeBdf(font, "any name"));
    font.glyphs[200] = {7, 2, 4, 20, 1, std::vector<bool>(20)};
    font.glyphs[200].ink[5] = true;
    EXPECT_EQ(again.glyphs, font.glyphs) << "but for blank rows";
    EXPECT_EQ(again.defaultCode, 200);
    EXPECT_EQ(again.ascent, 2);
}

} // namespace
