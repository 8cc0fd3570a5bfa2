// What the progress screens of the scenes show, under the numbers that the built-in layouts want.
#include "goldenart.h"

#include <string>
#include <utility>

namespace golden {

namespace {

constexpr int kFrameMs = 100;

/// A sequence for each frame, which it holds.
Animation held(std::vector<Frame> frames) {
    Animation made{.frames = std::move(frames), .sequences = {}};
    for (int state = 0; state < static_cast<int>(made.frames.size()); ++state)
        made.sequences.push_back({{0, 0, kHold, 0}, {0, 0, state, 0}, {0, 0, kEnd, 0}});
    return made;
}

/// A single sequence with all frames.
Animation inOneSequence(std::vector<Frame> frames) {
    Animation made{.frames = std::move(frames), .sequences = {{}}};
    for (int state = 0; state < static_cast<int>(made.frames.size()); ++state)
        made.sequences[0].push_back({0, 0, state, kFrameMs});
    made.sequences[0].push_back({0, 0, kEnd, 0});
    return made;
}

// Panels

/// The window's size, with a stripe for each row of the built-in layouts, and at the lower right a
/// hole.
Animation panel(char one, char other) {
    constexpr int kWidth = 640;
    constexpr int kTop = 85;
    constexpr int kStripe = 50;
    constexpr int kHole = 100;
    const auto stripe = [](char letter, int width) {
        Row row;
        for (; width > 250; width -= 250) row.fill(letter, 250);
        return row.fill(letter, width);
    };
    Frame frame = repeated(stripe('k', kWidth), kTop);
    for (int row = 0; row < 7; ++row)
        frame += repeated(stripe(row % 2 == 0 ? one : other, kWidth), kStripe);
    frame += repeated(stripe(other, kWidth - kHole).clear(kHole), 480 - kTop - 7 * kStripe);
    return held({frame});
}

/// For a part of the window, at a place of its own; with a sequence that ends, which is not played.
Animation board() {
    Frame frame = repeated(Row().clear(12).fill('v', 248), 12);
    frame += repeated(Row().fill('v', 4).fill('k', 250).fill('v', 6), 150);
    frame += repeated(Row().fill('v', 200).fill('v', 60), 8);
    return {.x = 340,
            .y = 20,
            .frames = {frame},
            .sequences = {{{0, 0, kHold, 0}, {0, 0, 0, 0}, {0, 0, kEnd, 0}}}};
}

// Buttons

constexpr std::string_view kMarks = "cgr"; ///< nothing yet, went on, went back

/// As many dots as the level's number says; selected, there is a white frame.
Frame levelFrame(int level, char color, bool selected) {
    Grid grid{".######.", "########", "########", "########", "########", "########", ".######."};
    for (std::string& row : grid)
        for (char& letter : row)
            if (letter == '#') letter = color;
    if (selected) {
        grid.front() = grid.back() = ".WWWWWW.";
        for (std::size_t row = 1; row + 1 < grid.size(); ++row)
            grid[row].front() = grid[row].back() = 'W';
    }
    for (int dot = 0; dot < level; ++dot)
        grid[dot < 2 ? 2 : 4][dot % 2 == 0 ? 2 : 5] = dot == 3 ? 'y' : 'K';
    return filled(grid, 4);
}

std::vector<Frame> levelFrames(int level, std::string_view colors = kMarks) {
    std::vector<Frame> frames;
    for (const char color : colors)
        for (const bool selected : {false, true})
            frames.push_back(levelFrame(level, color, selected));
    return frames;
}

/// What is selected goes round.
Animation turningLevel(int level) {
    Animation made = held(levelFrames(level));
    for (int state = 1; state < 6; state += 2)
        made.sequences[static_cast<std::size_t>(state)] = {
            {0, 0, state, kFrameMs}, {0, 3, state, kFrameMs}, {0, 0, kLoop, 0}, {0, 0, kEnd, 0}};
    return made;
}

/// A box with a hole when it is not checked.
Animation checkBox() {
    return held(
        {filled({"WWWWWWW", "W....oW", "W...ooW", "Wo.oo.W", "Wooo..W", "W.o...W", "WWWWWWW"}, 4),
         filled({"WWWWWWW", "W.....W", "W.....W", "W..c..W", "W.....W", "W.....W", "WWWWWWW"}, 4)});
}

constexpr std::string_view kPlaceColors = "bom"; ///< visited, here, never visited

/// Its number from the left in dots that are set and such as are not.
std::vector<Frame> placeFrames(int number) {
    constexpr int kBits = 6;
    std::vector<Frame> frames;
    for (const char color : kPlaceColors) {
        Grid grid(5, std::string(2 + 3 * kBits, color));
        for (int bit = 0; bit < kBits; ++bit) {
            const bool set = (number >> (kBits - 1 - bit)) % 2 == 1;
            for (const std::size_t row : {1, 2, 3})
                grid[row].replace(static_cast<std::size_t>(2 + 3 * bit), 1, 1, set ? 'W' : 'K');
        }
        grid.front().front() = grid.back().back() = '.';
        frames.push_back(filled(grid, 4));
    }
    return frames;
}

/// Hidden as long as it was never visited: that sequence ends.
Animation secretPlace(int number) {
    Animation made = held(placeFrames(number));
    made.sequences.back().erase(made.sequences.back().begin());
    return made;
}

const Grid kNote = {
    "..####", //
    "..#..#", //
    "..#..#", //
    "###.##", //
    "##..##", //
};

Animation music(char plain, char selected) {
    std::vector<Frame> frames;
    for (const char color : {plain, selected}) {
        Grid grid = kNote;
        for (std::string& row : grid)
            for (char& letter : row)
                if (letter == '#') letter = color;
        frames.push_back(filled(grid, 6));
    }
    return held(std::move(frames));
}

Animation closeButton() {
    return inOneSequence({filled({"rr.rr", ".rrr.", "..r..", ".rrr.", "rr.rr"}, 8),
                          filled({"WW.WW", ".WWW.", "..W..", ".WWW.", "WW.WW"}, 8)});
}

/// Two frames of other sizes and places.
Animation refusal() {
    constexpr int kMs = 300;
    return {.frames = {filled({"r.....r", ".r...r.", "..rrr..", ".r...r.", "r.....r"}, 20),
                       filled({"yyyyy", "y...y", "y.R.y", "y...y", "yyyyy"}, 16)},
            .sequences = {{{0, 0, 0, kMs}, {-40, 30, 1, kMs}, {0, 0, kEnd, 0}}}};
}

} // namespace

std::vector<Picture> progressPictures() {
    constexpr int kFirstPlace = 12020;
    constexpr int kSecret = 8;
    std::vector<Picture> all = {
        {12001, closeButton()},
        {12002, refusal()},
        {12003, music('p', 'g')},
        {12004, music('p', 'r')},
        {12011, held(levelFrames(1))},
        {12012, inOneSequence(levelFrames(2))},
        {12013, held(levelFrames(3, "c"))}, // without the colours
        {12014, turningLevel(4)},
        {12015, checkBox()},
        {12100, panel('t', 's')},
        {12200, panel('n', 'p')},
        {12300, board()},
    };
    for (const int place : {1, 2, 3, 4, 5, 6, 7, kSecret, 9, 10, 12, 13, 15, 16, 18, 19})
        all.push_back({kFirstPlace + place,
                       place == kSecret ? secretPlace(place) : held(placeFrames(place))});
    return all;
}

} // namespace golden
