// The font of text windows.
#include "platform/host/textfont.h"

#include <gtest/gtest.h>

namespace platform {
namespace {

/// A line of text as rows of "#" and ".".
std::vector<std::string> picture(const Surface& surface) {
    std::vector<std::string> rows;
    for (int y = 0; y < surface.height(); ++y) {
        std::string row;
        for (int x = 0; x < surface.width(); ++x) row += surface.row(y)[x] ? '#' : '.';
        rows.push_back(row);
    }
    return rows;
}

TEST(TextFont, DrawsLettersWithAccentsAndLowerLengths) {
    Surface surface(17, textfont::kLineHeight, 8);
    textfont::draw(surface, 0, "\xC9g\xED", 1);
    const std::vector<std::string> expected{
        "...#.............", //
        "..#............#.", //
        "..............#..", //
        "#####............", //
        "#......##.#..##..", //
        "####..#..##...#..", //
        "#.....#...#...#..", //
        "#.....#...#...#..", //
        "#####..####..###.", //
        "..........#......", //
        ".......###.......", //
        ".................",
    };
    EXPECT_EQ(picture(surface), expected);
    EXPECT_NE(textfont::glyph(0xC7), textfont::glyph('C')) << "a cedilla";
}

TEST(TextFont, LeavesOutWhatLiesBeyondTheSurface) {
    Surface surface(8, 4, 8);
    for (const int top : {-100, -5, 0, 3, 4, 100}) textfont::draw(surface, top, "HHHHHHHHHH", 1);
    // Rows 5 to 8 of the first drawing, over the upper rows of the others.
    EXPECT_EQ(picture(surface)[0], "#####.##");
    EXPECT_EQ(picture(surface)[1], "#...#.#.");
    textfont::draw(surface, 0, std::string(100000, 'x'), 1);
}

} // namespace
} // namespace platform
