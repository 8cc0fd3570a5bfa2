#include "platform/host/faces/textfont.h"

#include "platform/host/faces/latin1letters.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace platform::textfont {

namespace {

using latin1letters::kCedilla;
using latin1letters::Parts;

// A drawing is a digit to the base 32 for each of its rows, 0 to 9 and A to V: five pixels, the
// leftmost one counts 16. Capitals have the first seven of its nine rows and small letters without
// an upper length the third to the seventh; the last two belong to lower lengths.
constexpr std::size_t kDrawingHeight = 9;
constexpr std::size_t kCapitalHeight = 7;
constexpr std::size_t kSmallTop = 2;
constexpr std::size_t kDrawingTop = kGlyphHeight - kDrawingHeight; ///< the cell's row it begins at

constexpr int kFirstAscii = 0x20;
constexpr std::string_view kAscii[] = {
    "000000000", "444440400", "AA0000000", "AAVAVAA00", "4FKE5U400", "PP248JJ00", "CIICLID00",
    "440000000", "248884200", "842224800", "04LEL4000", "044V44000", "000006624", "000V00000",
    "000006600", "11248GG00", "EHJLPHE00", "4C4444E00", "EH1248V00", "EH161HE00", "26AIV2200",
    "VGU11HE00", "68GUHHE00", "V12244400", "EHHEHHE00", "EHHF12C00", "006606600", "006606624",
    "024842000", "00V0V0000", "084248000", "EH1240400", "EHNLMGE00", "4AHHVHH00", "UHHUHHU00",
    "EHGGGHE00", "UHHHHHU00", "VGGUGGV00", "VGGUGGG00", "EHGNHHF00", "HHHVHHH00", "E44444E00",
    "72222IC00", "HIKOKIH00", "GGGGGGV00", "HRLLHHH00", "HHPLJHH00", "EHHHHHE00", "UHHUGGG00",
    "EHHHLID00", "UHHUKIH00", "FGGE11U00", "V44444400", "HHHHHHE00", "HHHHAA400", "HHHLLRH00",
    "HHA4AHH00", "HHA444400", "V1248GV00", "E88888E00", "GG8421100", "E22222E00", "4AH000000",
    "0000000V0", "840000000", "00E1FHF00", "GGMPHHU00", "00EHGHE00", "11DJHHF00", "00EHVGE00",
    "698S88800", "00DJHHF1E", "GGMPHHH00", "40C444E00", "2062222IC", "GGIKOKI00", "C44444E00",
    "00QLLLL00", "00MPHHH00", "00EHHHE00", "00MPHHUGG", "00DJHHF11", "00MOGGG00", "00FGE1U00",
    "88U889600", "00HHHJD00", "00HHAA400", "00HLLLA00", "00HA4AH00", "00HHHJD1E", "00V248V00",
    "344844300", "444444440", "O44244O00", "0009M0000",
};
constexpr std::string_view kBox = "VHHHHHV00";

struct Drawing {
    unsigned char code;
    std::string_view rows;
};
/// Characters beyond ASCII that are no letters with an accent.
constexpr Drawing kOthers[] = {
    {0xA0, "000000000"}, {0xA1, "404444400"}, {0xA2, "44FKKF440"}, {0xA3, "698U88V00"},
    {0xA4, "0HEAEH000"}, {0xA5, "HAV4V4400"}, {0xA6, "444044400"}, {0xA7, "FGEHE1U00"},
    {0xA8, "A00000000"}, {0xA9, "EHMPMHE00"}, {0xAA, "E39F0F000"}, {0xAB, "005AKA500"},
    {0xAC, "000V11000"}, {0xAD, "000V00000"}, {0xAE, "EHTTTLE00"}, {0xAF, "V00000000"},
    {0xB0, "CIIC00000"}, {0xB1, "44V440V00"}, {0xB2, "C248E0000"}, {0xB3, "C2C2C0000"},
    {0xB4, "240000000"}, {0xB5, "00HHHJTGG"}, {0xB6, "FTTD55500"}, {0xB7, "000660000"},
    {0xB8, "00000004C"}, {0xB9, "4C44E0000"}, {0xBA, "EHHE0V000"}, {0xBB, "00KA5AK00"},
    {0xBC, "HII4ABJH0"}, {0xBD, "HII4E9IN0"}, {0xBE, "PAQ4ARJH0"}, {0xBF, "4048GHE00"},
    {0xC6, "FKKNSKN00"}, {0xD0, "UHHTHHU00"}, {0xD7, "000A4A000"}, {0xD8, "EJJLPPE00"},
    {0xDE, "GGUHUGG00"}, {0xDF, "CIIMHHM00"}, {0xE6, "00U5FKF00"}, {0xF0, "A4A1FHE00"},
    {0xF7, "040V04000"}, {0xF8, "00EJLPE00"}, {0xFE, "GGMPHHUGG"},
};

// What stands on a letter has three rows, the last one empty in most of them.
struct Accent {
    char name;
    std::array<std::uint8_t, 3> rows;
};
constexpr Accent kAccents[] = {
    {'`', {8, 4, 0}},   {'\'', {2, 4, 0}}, {'^', {4, 10, 0}},
    {'~', {13, 22, 0}}, {':', {0, 10, 0}}, {'o', {4, 10, 4}},
};
constexpr std::array<std::uint8_t, 2> kCedillaRows{4, 12};

std::uint8_t rowOf(char digit) {
    return static_cast<std::uint8_t>(digit <= '9' ? digit - '0' : digit - 'A' + 10);
}

Glyph fromDrawing(std::string_view drawing) {
    Glyph glyph{};
    std::ranges::transform(drawing, glyph.begin() + kDrawingTop, rowOf);
    return glyph;
}

Glyph ascii(int code) { return fromDrawing(kAscii[code - kFirstAscii]); }

/// Takes the first row that equals the one above it out of a capital, so that its top is free.
void makeRoomAbove(Glyph& capital) {
    const auto top = capital.begin() + kDrawingTop;
    const auto twin = std::adjacent_find(top, top + kCapitalHeight);
    std::copy_backward(top, twin, twin + 1);
    *top = 0;
}

void putAccent(Glyph& letter, const Accent& accent, std::size_t top) {
    // The dot of the "i" gives way.
    std::fill_n(letter.begin(), top + accent.rows.size(), std::uint8_t{0});
    std::ranges::copy(accent.rows, letter.begin() + static_cast<std::ptrdiff_t>(top));
}

Glyph accentedLetter(const Parts& parts) {
    Glyph glyph = ascii(parts.letter);
    if (parts.mark == kCedilla) {
        std::ranges::copy(kCedillaRows, glyph.begin() + kDrawingTop + kCapitalHeight);
        return glyph;
    }
    const auto* accent = std::ranges::find(kAccents, parts.mark, &Accent::name);
    if (!parts.small) makeRoomAbove(glyph);
    const std::size_t letterTop = kDrawingTop + (parts.small ? kSmallTop : 1);
    putAccent(glyph, *accent, letterTop - accent->rows.size());
    return glyph;
}

} // namespace

Glyph glyph(unsigned char code) {
    if (code >= kFirstAscii && code < kFirstAscii + std::ssize(kAscii)) return ascii(code);
    const auto* own = std::ranges::find(kOthers, code, &Drawing::code);
    if (own != std::end(kOthers)) return fromDrawing(own->rows);
    const std::optional<Parts> parts = latin1letters::partsOf(code);
    return parts ? accentedLetter(*parts) : fromDrawing(kBox);
}

void draw(Surface& surface, int top, std::string_view text, std::uint8_t colour) {
    const auto fitting = static_cast<std::size_t>(surface.width() / kCharacterWidth + 1);
    const std::string_view shown = text.substr(0, fitting);
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const Glyph rows = glyph(static_cast<unsigned char>(shown[i]));
        const int left = static_cast<int>(i) * kCharacterWidth;
        for (int y = std::max(0, -top); y < kGlyphHeight && top + y < surface.height(); ++y) {
            std::uint8_t* pixels = surface.row(top + y);
            for (int x = 0; x < kGlyphWidth && left + x < surface.width(); ++x) {
                if (rows[static_cast<std::size_t>(y)] >> (kGlyphWidth - 1 - x) & 1)
                    pixels[left + x] = colour;
            }
        }
    }
}

} // namespace platform::textfont
