#include "goldenart.h"

#include <string>

namespace golden {

namespace {

constexpr int kWindowWidth = 640;
constexpr int kWindowHeight = 480;

// Backgrounds

/// Cells of 40 pixels; the shade tells the place: two to the right and three down are one on.
Animation chart() {
    constexpr int kCell = 40;
    const std::string_view shades = "knstp";
    Frame frame;
    for (int line = 0; line < kWindowHeight / kCell; ++line) {
        Row row;
        for (int cell = 0; cell < kWindowWidth / kCell; ++cell)
            row.fill(shades[static_cast<std::size_t>(cell * 2 + line * 3) % shades.size()], kCell);
        frame += repeated(row, kCell);
    }
    return {.frames = {frame}, .sequences = {{{0, 0, 0, 0}, {0, 0, kEnd, 0}}}};
}

/// Smaller than the window and off its corner, with a hole, and not the first frame of its
/// resource: what is shown is the sequence's first frame, at (16 + 4, 20 - 6).
Animation plank() {
    Frame frame = repeated(Row().fill('t', 250).fill('t', 250).fill('y', 100), 8);
    frame += repeated(Row().fill('s', 250).clear(100).fill('p', 250), 300);
    frame += repeated(Row().same('n', 30).fill('s', 250).fill('p', 250).fill('k', 70), 132);
    return {.x = 16,
            .y = 20,
            .frames = {drawn({"rg", "gr"}), frame},
            .sequences = {{{0, 0, kHold, 0}, {4, -6, 1, 0}, {0, 0, 0, 0}, {0, 0, kEnd, 0}}}};
}

/// All 256 colours, 16 in a row, in squares of 9 pixels.
Animation allColors() {
    Frame frame;
    for (int line = 0; line < 16; ++line) {
        Row row;
        for (int column = 0; column < 16; ++column) row.fillIndex(line * 16 + column, 9);
        frame += repeated(row, 9);
    }
    return {.frames = {frame}, .sequences = {{{0, 0, 0, 0}, {0, 0, kEnd, 0}}}};
}

// The figure: no two of its eight views are alike, and its second frame has another size and place

const std::vector<std::string_view> kStanding = {
    "yrrrrrrrrrrrrg", //
    "yr.........bbg", //
    "yr..ccc......g", //
    "yr..c.c.......", //
    "yrrrrrrrr.....", //
    "yr......r.....", //
    "yr..o...m.....", //
    "yr............", //
    "yI............", //
    "wwwWKK........", //
};
const std::vector<std::string_view> kLeaping = {
    ".....mmmmm........", //
    "oooooo...m..ggg...", //
    "o.y.......bbb.g...", //
    "o.yy......b....ccc", //
    "o..............c.c", //
    "WWWWrr...........v", //
    "...r.............v", //
    "...r..........vvvv", //
};

constexpr int kFigureScale = 3;

Animation figure(Packing packing, bool bigEndian) {
    return {
        .frames = {drawn(kStanding, kFigureScale, packing), drawn(kLeaping, kFigureScale, packing)},
        .sequences =
            {{{0, 0, kHold, 0}, {0, 0, 0, 0}, {-9, 15, 1, 0}, {0, 0, kLoop, 0}, {0, 0, kEnd, 0}}},
        .bigEndian = bigEndian};
}

// Runs

Row letters(int pixels) {
    const std::string_view cycle = "rgbycmo";
    Row row;
    std::string text;
    for (int i = 0; i < pixels; ++i) {
        text += cycle[static_cast<std::size_t>(i) % cycle.size()];
        if (text.size() == 250 || i + 1 == pixels) {
            row.single(text);
            text.clear();
        }
    }
    return row;
}

/// One token each, the shortest that there are.
Row crumbs(int pixels) {
    Row row;
    for (int i = 0; i < pixels; ++i) {
        if (i % 4 == 0) row.clear(1);
        if (i % 4 == 1) row.fill('m', 1);
        if (i % 4 == 2) row.single("c");
        if (i % 4 == 3) row.single("y");
    }
    return row;
}

/// Five pixels of white, five clear ones, and so on.
Row dots(int pixels) {
    Row row;
    for (int i = 0; i < pixels / 10; ++i) row.fill('W', 5).clear(5);
    if (pixels % 10 > 0) row.fill('W', pixels % 10);
    return row;
}

/// Three lines of each kind of row, with a line of dots below them.
Frame stacked(const std::vector<Row>& rows) {
    Frame frame;
    for (const Row& row : rows) {
        frame += repeated(row, 3);
        frame += {dots(row.width())};
    }
    return frame;
}

Frame rowsOf300() {
    return stacked({
        Row().fill('r', 250).fill('r', 50),
        Row().same('g', 250).same('g', 50),
        Row().clear(250).clear(50),
        Row().clear(250).fill('b', 50),
        Row().clear(250).clear(1).same('b', 49),
        Row().fill('y', 250).fill('y', 1).clear(49),
        Row().same('c', 250).same('c', 1).clear(49),
        Row().fill('m', 1).clear(250).fill('o', 49),
        Row().single("v").clear(249).clear(1).single("v").fill('r', 48),
        Row().fill('g', 25).clear(250).same('b', 25),
        Row().clear(25).fill('y', 250).clear(25),
        Row().clear(25).same('c', 250).clear(25),
        Row().fill('r', 50).fill('g', 250),
        Row().same('r', 50).same('g', 250),
        Row().fill('m', 100).clear(100).same('o', 100),
        letters(300),
        crumbs(300),
    });
}

Animation runs() {
    const Frame of250 =
        stacked({Row().fill('r', 250), Row().same('g', 250), Row().clear(250), letters(250),
                 Row().clear(249).single("v"), Row().single("v").clear(249)});
    const Frame of251 =
        stacked({Row().fill('r', 250).fill('r', 1), Row().same('g', 250).same('g', 1),
                 Row().fill('y', 1).fill('b', 250), Row().clear(250).single("v"),
                 Row().single("v").clear(250), letters(251)});
    return {.frames = {rowsOf300(), of250, of251},
            .sequences = {
                {{0, 0, kHold, 0}, {0, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 2, 0}, {0, 0, kEnd, 0}}}};
}

// Embedded places

Animation sign(int x, int y, int depth, char letter) {
    const std::string full(5, letter);
    const std::string left = full.substr(0, 3) + "..";
    const std::string dot = full.substr(0, 1) + ".K.W";
    return {.x = x,
            .y = y,
            .depth = depth,
            .frames = {drawn({full, left, full, dot, left, dot}, 6)},
            .sequences = {{{0, 0, kHold, 0}, {2, -3, 0, 0}, {0, 0, kEnd, 0}}}};
}

// Movers: rings through which is seen what lies behind

Animation ring(char outer, char inner, int width, int height) {
    const std::string edge(static_cast<std::size_t>(width), outer);
    std::string middle(static_cast<std::size_t>(width), '.');
    middle.front() = middle.back() = outer;
    std::string marked = middle;
    marked[1] = inner;
    std::vector<std::string_view> art{edge, marked};
    for (int line = 3; line < height; ++line) art.emplace_back(middle);
    art.emplace_back(edge);
    return {.frames = {drawn(art, 8, Packing::Fills)},
            .sequences = {{{0, 0, kHold, 0}, {0, 0, 0, 0}, {0, 0, kEnd, 0}}}};
}

/// Frames of different sizes at different places. The first sequence ends and hides, the second
/// one holds, the third goes round.
Animation dancer() {
    const std::vector<Frame> frames{drawn({"rr..", "rrrr", ".r.r"}, 10, Packing::Fills),
                                    drawn({"g", "g", "W", "g"}, 10, Packing::Fills),
                                    drawn({"bbbbbb", "b....b"}, 10)};
    constexpr int kMs = 100;
    return {.frames = frames,
            .sequences = {{{0, 0, 0, kMs}, {25, -5, 1, kMs}, {10, 20, 2, kMs}, {0, 0, kEnd, 0}},
                          {{0, 0, 2, kMs}, {-10, 0, 0, kMs}, {0, 0, kHold, 0}, {0, 0, kEnd, 0}},
                          {{0, 0, 1, kMs}, {30, 0, 0, kMs}, {0, 0, kLoop, 0}, {0, 0, kEnd, 0}}}};
}

// Buttons

/// Round corners and a hole, up and pressed.
Animation button() {
    return {.frames = {drawn({".gggggg.", "gggggggg", "ggg..ggg", "gggggggg", ".gggggg."}, 8),
                       drawn({".rrrrrr.", "rWWWWWWr", "rWW..WWr", "rWWWWWWr", ".rrrrrr."}, 8)},
            .sequences = {{{0, 0, 0, 100}, {0, 0, 1, 100}, {0, 0, kEnd, 0}}}};
}

/// Six frames, each with one cell more.
Animation gauge() {
    Animation made{.frames = {}, .sequences = {{}}};
    for (int cells = 1; cells <= 6; ++cells) {
        made.frames.push_back(drawn({std::string(cells, 'c') + std::string(6 - cells, 'k')}, 12));
        made.sequences[0].push_back({0, 0, cells - 1, 100});
    }
    made.sequences[0].push_back({0, 0, kEnd, 0});
    return made;
}

// Palettes

constexpr Color kShades[] = {{30, 30, 60}, {40, 60, 40}, {70, 50, 30}, {60, 60, 60}, {20, 70, 80}};
constexpr Color kColors[] = {{200, 20, 20},  {20, 180, 40},  {40, 60, 210},  {210, 200, 30},
                             {20, 190, 200}, {190, 30, 180}, {220, 120, 20}, {110, 60, 200}};
constexpr int kFirstShade = 10;
constexpr int kFirstColor = 20;

/// Every other entry tells its number. White stands at 100.
Palette day() {
    Palette palette{};
    for (int i = 0; i < 256; ++i) palette[static_cast<std::size_t>(i)] = {i, 255 - i, i * 7 % 256};
    std::size_t at = kFirstShade;
    for (const Color& shade : kShades) palette[at++] = shade;
    at = kFirstColor;
    for (const Color& color : kColors) palette[at++] = color;
    palette[100] = {255, 255, 255};
    return palette;
}

/// The day with its colours turned round, and nonsense where the fixed colours are. High bytes of
/// the words count for nothing.
Palette nonsense() {
    Palette palette = day();
    for (Color& color : palette) color = {color.blue + 0x5A00, color.red, color.green + 0xFF00};
    for (std::size_t i = 0; i < palette.size(); ++i)
        if (i < 10 || i > 245) palette[i] = {static_cast<int>(255 - i), 77, 0x1234};
    return palette;
}

/// Greys, with what is black and white among them: black, all but black, white, all but white.
Palette night() {
    Palette palette{};
    for (int i = 0; i < 256; ++i) palette[static_cast<std::size_t>(i)] = {i, i, i / 2};
    palette[20] = palette[245] = {0, 0, 0};
    palette[21] = {1, 0, 0};
    palette[22] = palette[10] = {255, 255, 255};
    palette[23] = {255, 255, 254};
    palette[24] = {223, 223, 223}; // is lifted to white
    palette[25] = {221, 221, 221}; // is not
    return palette;
}

} // namespace

std::vector<Picture> pictures() {
    return {
        {100, chart()},
        {101, plank()},
        {110, allColors()},
        {200, figure(Packing::Singles, false)},
        {201, figure(Packing::Fills, false)},
        {202, figure(Packing::Singles, true)},
        {210, runs()},
        {220, sign(300, 200, 50, 'r')},
        {221, sign(-15, -10, 3, 'g')},
        {222, sign(610, 455, 0, 'b')},
        {223, sign(-12, 2047, 255, 'y')}, // below the window
        {224, sign(340, 215, 49, 'c')},
        {230, ring('r', 'W', 8, 8)},
        {231, ring('g', 'K', 12, 6)},
        {232, ring('b', 'R', 6, 12)},
        {233, ring('y', 'I', 10, 10)},
        {234, ring('c', 'W', 7, 9)},
        {235, ring('m', 'K', 9, 5)},
        {236, ring('o', 'R', 5, 11)},
        {237, ring('v', 'y', 14, 4)},
        {240, dancer()},
        {250, button()},
        {251, gauge()},
    };
}

std::vector<Colors> palettes() { return {{100, day()}, {101, nonsense()}, {102, night()}}; }

} // namespace golden
