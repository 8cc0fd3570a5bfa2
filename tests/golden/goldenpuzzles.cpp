// What the scenes of puzzles show: answers, and containers with another look for their highlights.
#include "goldenart.h"

#include <string>

namespace golden {

namespace {

using Art = std::vector<std::string_view>;

/// The same in another colour.
Frame inked(const Art& art, char before, char after, int scale) {
    std::vector<std::string> rows(art.begin(), art.end());
    for (std::string& row : rows)
        for (char& letter : row)
            if (letter == before) letter = after;
    return drawn({rows.begin(), rows.end()}, scale);
}

/// Holds, and when it is played it goes round between its colour and another one. Drawn so many
/// pixels beside its place.
Animation answer(const Art& art, char color, char other, int scale, int dx = 0, int dy = 0) {
    constexpr int kMs = 100;
    return {.frames = {drawn(art, scale), inked(art, color, other, scale)},
            .sequences = {{{0, 0, kHold, 0},
                           {dx, dy, 0, kMs},
                           {dx, dy, 1, kMs},
                           {0, 0, kLoop, 0},
                           {0, 0, kEnd, 0}}}};
}

/// The first sequence shows the container alone, the second one its highlight.
Animation container(Frame alone, Frame lit) {
    return {.frames = {std::move(alone), std::move(lit)},
            .sequences = {{{0, 0, kHold, 0}, {0, 0, 0, 0}, {0, 0, kEnd, 0}},
                          {{0, 0, kHold, 0}, {0, 0, 1, 0}, {0, 0, kEnd, 0}}}};
}

/// A frame with a mark in its left upper corner.
Frame hollow(int width, int height, int edge, char letter, char mark) {
    Frame frame = repeated(Row().fill(mark, 2 * edge).fill(letter, width - 2 * edge), edge);
    frame += repeated(Row().fill(letter, edge).clear(width - 2 * edge).fill(letter, edge),
                      height - 2 * edge);
    frame += repeated(Row().fill(letter, width), edge);
    return frame;
}

Animation hollowContainer(int width, int height, int edge, char mark) {
    return container(hollow(width, height, edge, 'v', mark),
                     hollow(width, height, edge, 'w', mark));
}

// Answers

const Art kTile = {
    "rrrrr", //
    "r...r", //
    "r.W.r", //
    "r.W.r", //
    "rrrrr", //
};
const Art kPost = {
    "ggggg", //
    "g.gKg", //
    "g.ggg", //
    "ggggg", //
    "ggg.g", //
    "gWg.g", //
    "ggggg", //
};
const Art kBeam = {
    "bbbbbbbbbbbbbbbbbbb", //
    "b..b..b..b..b..b..b", //
    "bbWbbWbbWbbWbbWbbWb", //
    "bbbbbbbbbbbbbbbbbbb", //
};
const Art kChip = {
    ".yyy.", //
    "yyyyy", //
    "yyKyy", //
    "yyyyy", //
    ".yyy.", //
};
const Art kSlab = {
    "cccccccccc", //
    "cc......cc", //
    "cccccccccW", //
    "c........c", //
    "cccccccccc", //
};
const Art kBadge = {
    "mmmmmmmm", //
    "m......m", //
    "m......m", //
    "mmmmmmmW", //
};
const Art kStar = {
    "..o..", //
    "ooooo", //
    ".oWo.", //
    ".ooo.", //
    "oo.oo", //
};
const Art kDrop = {
    ".v.", //
    ".v.", //
    "vvv", //
    "vWv", //
    "vvv", //
};

/// One to three segments of the cloth, 30 pixels each.
Animation patch(int segments, char letter) {
    const std::string full(static_cast<std::size_t>(segments) * 5, letter);
    std::string open = full;
    for (std::size_t i = 2; i < open.size(); i += 5) open[i] = '.';
    return answer({full, open, full}, letter, 'W', 6);
}

// Containers

const Art kKeyhole = {
    "...vvvv...vv", //
    "..vvvvvv..vv", //
    ".vvvvvvvv...", //
    ".vvv..vvv...", //
    "vvvv..vvvvvv", //
    "vvvvvvvvvvvv", //
    "..vvvvvvvv..", //
    "...vvvvvv...", //
    "....vvvv....", //
    "ss..vvvv...s", //
};

/// Five segments; a frame for each number of those that are covered, which are marked at the lower
/// edge.
Animation cloth() {
    constexpr int kSegments = 5;
    Animation made{.frames = {}, .sequences = {{{0, 0, kHold, 0}}}};
    for (int covered = 0; covered <= kSegments; ++covered) {
        std::string edge;
        std::string mark;
        for (int segment = 0; segment < kSegments; ++segment) {
            edge += "vtttv";
            mark += segment < covered ? "vWWWv" : "vtttv";
        }
        made.frames.push_back(drawn({edge, edge, edge, mark}, 6));
        made.sequences[0].push_back({0, 0, covered, 0});
    }
    made.sequences[0].push_back({0, 0, kEnd, 0});
    return made;
}

/// As many dots as there are segments covered, at most three.
Animation counter() {
    return {.frames = {drawn({"WWWWWWW", "W.....W"}, 6), drawn({"WWWWWWW", "Wr....W"}, 6),
                       drawn({"WWWWWWW", "Wr.g..W"}, 6), drawn({"WWWWWWW", "Wr.g.bW"}, 6)},
            .sequences = {{{0, 0, kHold, 0},
                           {0, 0, 0, 0},
                           {0, 0, 1, 0},
                           {0, 0, 2, 0},
                           {0, 0, 3, 0},
                           {0, 0, kEnd, 0}}}};
}

} // namespace

std::vector<Picture> puzzlePictures() {
    return {
        {260, answer(kTile, 'r', 'I', 8)},  // 40 by 40
        {261, answer(kPost, 'g', 'W', 7)},  // 35 by 49
        {262, answer(kBeam, 'b', 'I', 5)},  // 95 by 20
        {263, answer(kChip, 'y', 'o', 5)},  // 25 by 25
        {264, answer(kSlab, 'c', 'W', 6)},  // 60 by 30
        {265, answer(kBadge, 'm', 'v', 8)}, // 64 by 32
        {266, answer(kStar, 'o', 'y', 4)},  // 20 by 20
        {267, answer(kStar, 'o', 'y', 4, 34, -8)},
        {268, answer(kDrop, 'v', 'I', 4, 46, 8)}, // 12 by 20
        {271, patch(1, 'r')},
        {272, patch(2, 'g')},
        {273, patch(3, 'b')},
        {280, hollowContainer(70, 60, 5, 'r')},
        {281, container(drawn(kKeyhole, 7), inked(kKeyhole, 'v', 'w', 7))}, // 84 by 70
        {282, hollowContainer(60, 100, 4, 'g')},
        {283, hollowContainer(200, 50, 4, 'b')},
        {284, cloth()},   // 150 by 24
        {285, counter()}, // 42 by 12
    };
}

} // namespace golden
