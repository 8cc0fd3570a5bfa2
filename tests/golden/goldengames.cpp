// What the scenes of the pentomino game, of the backpack, of the dialog and of the peg game show.
#include "goldenart.h"

#include <algorithm>
#include <string>

namespace golden {

namespace {

/// Stands.
Animation still(Frame frame, int x = 0, int y = 0, int depth = 0) {
    return {.x = x,
            .y = y,
            .depth = depth,
            .frames = {std::move(frame)},
            .sequences = {{{0, 0, kHold, 0}, {0, 0, 0, 0}, {0, 0, kEnd, 0}}}};
}

// Pieces: cells of 20 pixels, each with two marks that turn and mirror along

Grid cellsIn(const Grid& shape, char letter) {
    Grid grid;
    for (const std::string& line : shape)
        for (const char* pattern : {"#####", "#W###", "###K#", "#####", "#####"}) {
            std::string row;
            for (const char cell : line)
                for (int i = 0; i < 5; ++i)
                    row += cell != 'X' ? '.' : pattern[i] == '#' ? letter : pattern[i];
            grid.push_back(row);
        }
    return grid;
}

Grid turned(const Grid& grid) { // clockwise
    Grid made(grid[0].size(), std::string(grid.size(), '.'));
    for (std::size_t row = 0; row < grid.size(); ++row)
        for (std::size_t column = 0; column < grid[0].size(); ++column)
            made[column][grid.size() - 1 - row] = grid[row][column];
    return made;
}

Grid mirrored(Grid grid) {
    for (std::string& row : grid) std::ranges::reverse(row);
    return grid;
}

Animation piece(const Grid& shape, char letter) {
    Animation made{.x = 600, .frames = {}, .sequences = {{}}};
    for (const int view : {0, 4, 6, 2, 1, 5, 7, 3}) {
        Grid grid = cellsIn(shape, letter);
        for (int i = 0; i < view % 4; ++i) grid = turned(grid);
        if (view >= 4) grid = mirrored(grid);
        made.sequences[0].push_back({0, 0, static_cast<int>(made.frames.size()), 100});
        made.frames.push_back(filled(grid, 4));
    }
    made.sequences[0].push_back({0, 0, kLoop, 0});
    return made;
}

const Grid kTurns = {
    "..cccc..", //
    ".c....cc", //
    "c....ccc", //
    "c......c", //
    ".cc..cc.", //
};
const Grid kMirrors = {
    "v..WW..v", //
    "vv.WW.vv", //
    "vvvWWvvv", //
    "vv.WW.vv", //
    "v..WW..v", //
};
const Grid kBox = {
    "yyyyy", //
    "y...y", //
    "y...y", //
    "y...o", //
    "yyyoo", //
};

// The backpack

/// A frame of single pixels.
void rectangle(Grid& grid, int left, int top, int right, int bottom, char letter) {
    for (int y = top; y < bottom; ++y)
        for (int x = left; x < right; ++x)
            if (y == top || y == bottom - 1 || x == left || x == right - 1)
                grid[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)] = letter;
}

/// With its cells and its close button painted in, and a corner through which is seen what lies
/// behind.
Animation panel() {
    constexpr int kWidth = 176;
    constexpr int kHeight = 172;
    Grid grid(kHeight, std::string(kWidth, 'v'));
    for (int y = 0; y < 30; ++y) grid[static_cast<std::size_t>(y)].replace(0, 30, 30, '.');
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 4; ++column)
            rectangle(grid, 16 + 36 * column, 74 + 28 * row, 16 + 36 * column + 36,
                      74 + 28 * row + 28, 'k');
    rectangle(grid, 80, 18, 100, 48, 'r');
    rectangle(grid, 85, 23, 95, 43, 'W');
    return still(filled(grid, 1), 12, 8);
}

Animation item(const Grid& grid, int scale) { return still(filled(grid, scale)); }

// The dialog

/// With a hole; its buttons lie over its lower half.
Animation question() {
    const std::string edge = std::string(15, 'p') + std::string(15, 't');
    Grid grid(16, "p" + std::string(14, 'n') + std::string(14, 'k') + "t");
    grid.front() = grid.back() = edge;
    for (int row = 3; row < 6; ++row) grid[static_cast<std::size_t>(row)].replace(20, 7, 7, '.');
    return still(filled(grid, 10), 170, 120);
}

Animation choice(int x, int marks) {
    std::vector<Frame> frames;
    for (const char color : {'g', 'y'}) {
        const std::string full(9, color);
        std::string marked = full;
        for (int mark = 0; mark < marks; ++mark)
            marked[static_cast<std::size_t>(1 + 3 * mark)] = 'K';
        frames.push_back(filled(Grid{full, marked, full}, 8));
    }
    return {.x = x,
            .y = 220,
            .frames = std::move(frames),
            .sequences = {{{0, 0, 0, 100}, {0, 0, 1, 100}, {0, 0, kEnd, 0}}}};
}

const Grid kFlower = {
    ".mm.mm.", //
    "mmm.mmm", //
    "...W...", //
    "mmm.mmm", //
    ".mm.mm.", //
};

// The peg game

const Grid kPeg = {
    ".yyy.", //
    "yyWyy", //
    "yyyyy", //
    ".ooo.", //
    ".ooo.", //
};

} // namespace

std::vector<Picture> gamePictures() {
    return {
        // numbers of pieces, as far as they are used
        {407, piece({"..X", "..X", "XXX"}, 'g')},
        {408, piece({"XX.", ".X.", ".XX"}, 'b')},
        {409, piece({"XXXX", "...X"}, 'o')},
        {410, piece({"..XX", "XXX."}, 'm')},
        {420, still(filled(kTurns, 6), 470, 180, 4)},
        {421, still(filled(kMirrors, 6), 470, 80, 4)},
        {422, still(filled(kBox, 4))},
        {430, panel()},
        {440, question()},
        {441, choice(180, 1)},
        {442, choice(284, 2)},
        {443, choice(388, 3)},
        {444, still(filled(kFlower, 8), 200, 140)},
        {445, still(filled(kFlower, 8), 300, 200)}, // over a button
        {450, still(filled(kPeg, 6))},
        {1013, item({"rrrr", "r..r", "rrWr", "r..r"}, 5)},           // item 1, 20 by 20
        {1005, item({"gggggggggg", "g..W...K.g", "gggggggggg"}, 4)}, // item 5, wider than a cell
        {11009, item({"..c..", ".ccc.", "ccWcc", ".ccc.", "..c.."}, 5)}, // item 19, 25 by 25
        {11015, item({"yyy", "yKy", ".y."}, 5)},                         // item 28, 15 by 15
    };
}

} // namespace golden
