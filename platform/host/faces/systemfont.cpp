#include "platform/host/faces/systemfont.h"

#include "platform/host/faces/latin1letters.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <iterator>
#include <string_view>

namespace platform::systemfont {

namespace {

using latin1letters::kCedilla;
using latin1letters::Parts;

// A drawing has three hexadecimal digits and a space for each of its rows: twelve pixels, the
// leftmost one counts 800. It begins at the top of the letters with an upper length, ten rows above
// the baseline; empty rows at its end are left out. Capitals have nine rows and small letters
// seven; upright strokes are two pixels wide and level ones one.
constexpr std::size_t kCharactersPerRow = 4;
constexpr int kUpperLength = 10;
constexpr int kCapitalHeight = 9;
constexpr int kSmallHeight = 7;

constexpr int kFirstAscii = 0x20;
constexpr unsigned char kGrave = 0x60; ///< the accent alone, which has no drawing here
constexpr std::string_view kAscii[] = {
    "",
    "000 C00 C00 C00 C00 C00 C00 000 C00 C00",
    "000 D80 D80 D80",
    "000 6C0 6C0 FE0 6C0 6C0 6C0 FE0 6C0 6C0",
    "300 780 CC0 C00 E00 780 1C0 0C0 CC0 780 300",
    "000 618 930 930 660 0C0 198 324 324 618",
    "000 380 6C0 6C0 380 7B0 CE0 C60 CE0 7B0",
    "000 C00 C00 C00",
    "300 600 C00 C00 C00 C00 C00 C00 C00 600 300",
    "C00 600 300 300 300 300 300 300 300 600 C00",
    "000 300 B40 780 780 B40 300",
    "000 000 000 300 300 FC0 FC0 300 300",
    "000 000 000 000 000 000 000 000 C00 C00 400 800",
    "000 000 000 000 000 F00 F00",
    "000 000 000 000 000 000 000 000 C00 C00",
    "000 0C0 0C0 180 180 300 300 600 600 C00 C00",
    "000 780 CC0 CC0 CC0 CC0 CC0 CC0 CC0 780",
    "000 300 700 F00 300 300 300 300 300 FC0",
    "000 780 CC0 0C0 0C0 180 300 600 C00 FC0",
    "000 780 CC0 0C0 0C0 380 0C0 0C0 CC0 780",
    "000 180 380 780 D80 D80 FC0 180 180 180",
    "000 FC0 C00 C00 F80 0C0 0C0 0C0 CC0 780",
    "000 780 CC0 C00 F80 CC0 CC0 CC0 CC0 780",
    "000 FC0 0C0 0C0 180 180 300 300 300 300",
    "000 780 CC0 CC0 CC0 780 CC0 CC0 CC0 780",
    "000 780 CC0 CC0 CC0 CC0 7C0 0C0 CC0 780",
    "000 000 000 C00 C00 000 000 000 C00 C00",
    "000 000 000 C00 C00 000 000 000 C00 C00 400 800",
    "000 000 000 180 300 600 C00 600 300 180",
    "000 000 000 000 FC0 FC0 000 FC0 FC0",
    "000 000 000 C00 600 300 180 300 600 C00",
    "000 780 CC0 0C0 180 300 300 000 300 300",
    "000 3F0 618 CEC DAC DAC DAC CF8 C00 618 3F0",
    "000 180 180 3C0 3C0 660 660 7E0 C30 C30",
    "000 FC0 C60 C60 C60 FC0 C60 C60 C60 FC0",
    "000 7C0 C60 C00 C00 C00 C00 C00 C60 7C0",
    "000 FC0 C60 C30 C30 C30 C30 C30 C60 FC0",
    "000 FC0 C00 C00 C00 F80 C00 C00 C00 FC0",
    "000 FC0 C00 C00 C00 F80 C00 C00 C00 C00",
    "000 3E0 630 C00 C00 CF0 C30 C30 630 3F0",
    "000 C30 C30 C30 C30 FF0 C30 C30 C30 C30",
    "000 F00 600 600 600 600 600 600 600 F00",
    "000 0C0 0C0 0C0 0C0 0C0 0C0 CC0 CC0 780",
    "000 C60 CC0 D80 F00 E00 F00 D80 CC0 C60",
    "000 C00 C00 C00 C00 C00 C00 C00 C00 FC0",
    "000 C18 E38 F78 DD8 C98 C18 C18 C18 C18",
    "000 C30 E30 F30 F30 DB0 CF0 CF0 C70 C30",
    "000 3C0 660 C30 C30 C30 C30 C30 660 3C0",
    "000 FC0 C60 C60 C60 FC0 C00 C00 C00 C00",
    "000 3C0 660 C30 C30 C30 C30 C30 660 3C0 0C0 070",
    "000 FC0 C60 C60 C60 FC0 D80 CC0 C60 C60",
    "000 7C0 C60 C00 E00 7C0 0E0 060 C60 7C0",
    "000 FF0 180 180 180 180 180 180 180 180",
    "000 C30 C30 C30 C30 C30 C30 C30 660 3C0",
    "000 C30 C30 660 660 660 3C0 3C0 180 180",
    "000 C0C C0C CCC CCC CCC CCC 7F8 738 330",
    "000 C30 C30 660 3C0 180 3C0 660 C30 C30",
    "000 C30 C30 660 660 3C0 180 180 180 180",
    "000 FE0 060 0C0 0C0 180 300 600 C00 FE0",
    "F00 C00 C00 C00 C00 C00 C00 C00 C00 C00 F00",
    "000 C00 C00 600 600 300 300 180 180 0C0 0C0",
    "F00 300 300 300 300 300 300 300 300 300 F00",
    "000 300 780 CC0",
    "000 000 000 000 000 000 000 000 000 000 000 FF0",
    "",
    "000 000 000 780 CC0 0C0 7C0 CC0 CC0 7C0",
    "C00 C00 C00 F80 CC0 CC0 CC0 CC0 CC0 F80",
    "000 000 000 780 CC0 C00 C00 C00 CC0 780",
    "0C0 0C0 0C0 7C0 CC0 CC0 CC0 CC0 CC0 7C0",
    "000 000 000 780 CC0 CC0 FC0 C00 CC0 780",
    "380 600 600 F00 600 600 600 600 600 600",
    "000 000 000 7C0 CC0 CC0 CC0 CC0 CC0 7C0 0C0 0C0 780",
    "C00 C00 C00 F80 CC0 CC0 CC0 CC0 CC0 CC0",
    "C00 C00 000 C00 C00 C00 C00 C00 C00 C00",
    "300 300 000 300 300 300 300 300 300 300 300 300 E00",
    "C00 C00 C00 CC0 D80 F00 E00 F00 D80 CC0",
    "C00 C00 C00 C00 C00 C00 C00 C00 C00 600",
    "000 000 000 FF8 CCC CCC CCC CCC CCC CCC",
    "000 000 000 F80 CC0 CC0 CC0 CC0 CC0 CC0",
    "000 000 000 780 CC0 CC0 CC0 CC0 CC0 780",
    "000 000 000 F80 CC0 CC0 CC0 CC0 CC0 F80 C00 C00 C00",
    "000 000 000 7C0 CC0 CC0 CC0 CC0 CC0 7C0 0C0 0C0 0C0",
    "000 000 000 D80 F80 E00 C00 C00 C00 C00",
    "000 000 000 780 CC0 C00 780 0C0 CC0 780",
    "000 600 600 F80 600 600 600 600 600 380",
    "000 000 000 CC0 CC0 CC0 CC0 CC0 CC0 7C0",
    "000 000 000 CC0 CC0 CC0 CC0 780 780 300",
    "000 000 000 C0C CCC CCC CCC 7F8 738 330",
    "000 000 000 CC0 CC0 780 300 780 CC0 CC0",
    "000 000 000 CC0 CC0 CC0 CC0 CC0 CC0 7C0 0C0 0C0 780",
    "000 000 000 FC0 0C0 180 300 600 C00 FC0",
    "380 600 600 600 600 C00 600 600 600 600 380",
    "C00 C00 C00 C00 C00 C00 C00 C00 C00 C00 C00 C00",
    "E00 300 300 300 300 180 300 300 300 300 E00",
    "000 000 000 000 000 730 CE0",
};
constexpr std::string_view kBox = "000 FE0 820 820 820 820 820 820 820 FE0";

struct Drawing {
    unsigned char code;
    std::string_view rows;
};
/// Characters beyond ASCII that are no letters with an accent.
constexpr Drawing kOthers[] = {
    {0xA0, ""},
    {0xA1, "000 000 000 C00 C00 000 C00 C00 C00 C00 C00 C00"},
    {0xA2, "000 000 300 780 CC0 C00 C00 C00 CC0 780 300"},
    {0xA3, "000 3C0 660 600 600 F80 600 600 620 FE0"},
    {0xA4, "000 000 000 C30 7E0 660 660 7E0 C30"},
    {0xA5, "000 C30 C30 660 3C0 180 7E0 180 7E0 180"},
    {0xA6, "C00 C00 C00 C00 C00 000 000 C00 C00 C00 C00 C00"},
    {0xA7, "000 780 CC0 C00 780 CC0 CC0 CC0 780 0C0 CC0 780"},
    {0xA9, "000 3F0 408 9E4 B34 B04 B34 9E4 408 3F0"},
    {0xAA, "700 180 780 D80 780 000 F80"},
    {0xAB, "000 000 000 000 330 660 CC0 660 330"},
    {0xAC, "000 000 000 000 000 FE0 FE0 060 060"},
    {0xAD, "000 000 000 000 000 F00 F00"},
    {0xAE, "000 3F0 408 BE4 B34 BE4 B64 B34 408 3F0"},
    {0xAF, "FC0"},
    {0xB0, "700 D80 D80 700"},
    {0xB1, "000 000 300 300 FC0 FC0 300 300 000 FC0 FC0"},
    {0xB2, "E00 300 600 C00 F00"},
    {0xB3, "E00 300 600 300 E00"},
    {0xB5, "000 000 000 CC0 CC0 CC0 CC0 CC0 DC0 F40 C00 C00 C00"},
    {0xB6, "000 7E0 F40 F40 F40 740 140 140 140 140 140 140"},
    {0xB7, "000 000 000 000 000 C00 C00"},
    {0xB9, "600 E00 600 600 600"},
    {0xBA, "700 D80 D80 700 000 F80"},
    {0xBB, "000 000 000 000 CC0 660 330 660 CC0"},
    {0xBC, "608 E10 610 620 620 04C 04D 08F 081 101"},
    {0xBD, "608 E10 610 620 620 04E 043 086 08C 10F"},
    {0xBE, "E08 310 610 320 E20 04C 04D 08F 081 101"},
    {0xBF, "000 000 000 300 300 000 300 300 600 C00 CC0 780"},
    {0xC6, "000 1FF 1E0 360 360 67E 7E0 660 C60 C7F"},
    {0xD0, "000 7E0 630 618 618 F98 618 618 630 7E0"},
    {0xD7, "000 000 000 000 CC0 780 300 780 CC0"},
    {0xD8, "000 3D0 660 C70 CB0 DB0 D30 E30 660 BC0"},
    {0xDE, "000 C00 C00 FC0 C60 C60 C60 FC0 C00 C00"},
    {0xDF, "780 CC0 CC0 D80 D80 CC0 C60 C60 C60 DC0"},
    {0xE6, "000 000 000 7F8 CCC 0CC 7FC CC0 CCC 7F8"},
    {0xF0, "680 300 580 7C0 CC0 CC0 CC0 CC0 CC0 780"},
    {0xF7, "000 000 300 300 000 FC0 FC0 000 300 300"},
    {0xF8, "000 000 000 3D0 660 CB0 DB0 D30 660 BC0"},
    {0xFE, "C00 C00 C00 F80 CC0 CC0 CC0 CC0 CC0 F80 C00 C00 C00"},
};

// What stands on a letter or hangs from it, up to six pixels wide: the leftmost one in bit 5.
constexpr int kAccentWidth = 6;
struct Accent {
    char name;
    int height;
    std::array<std::uint8_t, 3> rows;
};
constexpr Accent kAccents[] = {
    {'`', 2, {0b110000, 0b011000}},           {'\'', 2, {0b011000, 0b110000}},
    {'^', 2, {0b001100, 0b110011}},           {'~', 2, {0b011101, 0b101110}},
    {':', 2, {0b110011, 0b110011}},           {'o', 3, {0b011000, 0b100100, 0b011000}},
    {',', 3, {0b011000, 0b001100, 0b111000}},
};

/// Accents that are characters by themselves; they stand where they stand on small letters.
struct LoneAccent {
    unsigned char code;
    char name;
};
constexpr LoneAccent kLoneAccents[] = {{kGrave, '`'}, {0xA8, ':'}, {0xB4, '\''}, {0xB8, kCedilla}};

constexpr int kBlankAdvance = 5;
struct Bearings {
    unsigned char code;
    int left, right;
};
/// Characters that do not keep one pixel free on either side: two hooks that reach over or under
/// their neighbours' room, and the underline, which joins itself.
constexpr Bearings kBearings[] = {{'_', 0, 0}, {'f', 1, 0}, {'j', 0, 1}};

/// The rows of a glyph while it is put together: the leftmost column in bit 31, so that an accent
/// wider than its letter finds room.
using Canvas = std::array<std::uint32_t, kHeight>;
constexpr int kCanvasWidth = 32;

constexpr std::uint32_t digitOf(char digit) {
    return static_cast<std::uint32_t>(digit <= '9' ? digit - '0' : digit - 'A' + 10);
}

constexpr Canvas fromDrawing(std::string_view drawing) {
    Canvas canvas{};
    for (std::size_t i = 0; i < drawing.size(); ++i) {
        if (drawing[i] == ' ') continue;
        std::uint32_t& row = canvas[kAscent - kUpperLength + i / kCharactersPerRow];
        row |= digitOf(drawing[i]) << (kCanvasWidth - 4 - 4 * (i % kCharactersPerRow));
    }
    return canvas;
}

constexpr Canvas fromAscii(int code) { return fromDrawing(kAscii[code - kFirstAscii]); }

constexpr std::uint32_t columnsOf(const Canvas& canvas) {
    std::uint32_t columns = 0;
    for (const std::uint32_t row : canvas) columns |= row;
    return columns;
}

constexpr int widthOf(const Canvas& canvas) {
    return kCanvasWidth - std::countr_zero(columnsOf(canvas));
}

constexpr Canvas shifted(Canvas canvas, int right) {
    for (std::uint32_t& row : canvas) row >>= right;
    return canvas;
}

/// The accent at the canvas's left edge, one row above a letter of the given height. The ring on a
/// capital has no room for that row.
constexpr Canvas accentOver(char name, int letterHeight) {
    const auto* accent = std::ranges::find(kAccents, name, &Accent::name);
    const int above = kAscent - letterHeight - 1 - accent->height;
    const int top = name == kCedilla ? kAscent : std::max(0, above);
    Canvas canvas{};
    for (int y = 0; y < accent->height; ++y)
        canvas[static_cast<std::size_t>(top + y)] =
            std::uint32_t{accent->rows[static_cast<std::size_t>(y)]}
            << (kCanvasWidth - kAccentWidth);
    return canvas;
}

constexpr Canvas accentedLetter(const Parts& parts) {
    Canvas canvas = fromAscii(parts.letter);
    const int height = parts.small ? kSmallHeight : kCapitalHeight;
    // The dot of the "i" gives way.
    std::fill_n(canvas.begin(), kAscent - height, 0U);
    Canvas accent = accentOver(parts.mark, height);
    const int space = widthOf(canvas) - widthOf(accent);
    // Where there is no exact middle, the acute accent leans to the right, the grave to the left.
    if (space >= 0)
        accent = shifted(accent, (space + (parts.mark == '\'' ? 1 : 0)) / 2);
    else
        canvas = shifted(canvas, (-space + (parts.mark == '`' ? 1 : 0)) / 2);
    for (std::size_t y = 0; y < canvas.size(); ++y) canvas[y] |= accent[y];
    return canvas;
}

constexpr Canvas canvasOf(unsigned char code) {
    const auto* lone = std::ranges::find(kLoneAccents, code, &LoneAccent::code);
    if (lone != std::end(kLoneAccents)) return accentOver(lone->name, kSmallHeight);
    if (code >= kFirstAscii && code < kFirstAscii + std::ssize(kAscii)) return fromAscii(code);
    const auto* own = std::ranges::find(kOthers, code, &Drawing::code);
    if (own != std::end(kOthers)) return fromDrawing(own->rows);
    const std::optional<Parts> parts = latin1letters::partsOf(code);
    return parts ? accentedLetter(*parts) : fromDrawing(kBox);
}

constexpr Glyph makeGlyph(unsigned char code) {
    const Canvas canvas = canvasOf(code);
    Glyph glyph;
    if (columnsOf(canvas) == 0) {
        glyph.advance = kBlankAdvance;
        return glyph;
    }
    const auto* bearings = std::ranges::find(kBearings, code, &Bearings::code);
    const bool special = bearings != std::end(kBearings);
    glyph.width = widthOf(canvas);
    glyph.left = special ? bearings->left : 1;
    glyph.advance = glyph.left + glyph.width + (special ? bearings->right : 1);
    for (std::size_t y = 0; y < canvas.size(); ++y)
        glyph.rows[y] = static_cast<std::uint16_t>(canvas[y] >> (kCanvasWidth - kMaxWidth));
    return glyph;
}

constexpr std::size_t kCodes = 256;

constexpr std::array<Glyph, kCodes> makeGlyphs() {
    std::array<Glyph, kCodes> glyphs;
    for (std::size_t code = 0; code < kCodes; ++code)
        glyphs[code] = makeGlyph(static_cast<unsigned char>(code));
    return glyphs;
}

constexpr std::array<Glyph, kCodes> kGlyphs = makeGlyphs();

} // namespace

const Glyph& glyph(unsigned char code) { return kGlyphs[code]; }

} // namespace platform::systemfont
