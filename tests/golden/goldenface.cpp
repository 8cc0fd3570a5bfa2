// goldenface FILE
//
// Writes the letters of the scenes as a TrueType face, "Golden Letters". Its pixels are squares of
// a tenth of the em square, so that at a size of 10 it looks like the bitmap fonts. They are five
// units right of where whole pixels begin: no edge, not even a slanted one, passes through the
// middle of a pixel at the sizes that are shown.
#include "goldenletters.h"
#include "goldenwriter.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using golden::Bytes;
using golden::Character;
using golden::Letters;
using golden::Writer;

constexpr int kWrongUse = 2;
constexpr int kFailed = 1;

constexpr std::string_view kFamily = "Golden Letters";
constexpr std::string_view kStyle = "Regular";
constexpr int kPixel = 48; ///< units
constexpr int kEm = 10 * kPixel;
constexpr int kShift = 5;
constexpr int kUnused = 0; ///< checksums and what binary searches begin with

struct Square {
    int left;
    int bottom;
    int right;
    int top;
};

/// A rectangle for each run of ink in a row; y counts upwards from the baseline.
std::vector<Square> outlineOf(const Character& character, int ascent) {
    std::vector<Square> squares;
    for (std::size_t row = 0; row < character.rows.size(); ++row) {
        const std::string& pixels = character.rows[row];
        const int top = (ascent - static_cast<int>(row)) * kPixel;
        for (std::size_t from = pixels.find('#'); from != std::string::npos;) {
            const std::size_t to = std::min(pixels.find('.', from), pixels.size());
            const auto x = [&](std::size_t column) {
                return (character.left + static_cast<int>(column)) * kPixel + kShift;
            };
            squares.push_back({x(from), top - kPixel, x(to), top});
            from = pixels.find('#', to);
        }
    }
    return squares;
}

struct Glyph {
    std::vector<Square> squares;
    int advance;
};

Square boundsOf(const Glyph& glyph) {
    if (glyph.squares.empty()) return {};
    Square bounds = glyph.squares.front();
    for (const Square& s : glyph.squares)
        bounds = {std::min(bounds.left, s.left), std::min(bounds.bottom, s.bottom),
                  std::max(bounds.right, s.right), std::max(bounds.top, s.top)};
    return bounds;
}

/// Points clockwise from the left lower corner, as differences in full words.
Bytes glyphData(const Glyph& glyph) {
    constexpr int kOnCurve = 1;
    Writer out(true);
    if (glyph.squares.empty()) return out.bytes;
    const Square bounds = boundsOf(glyph);
    const int contours = static_cast<int>(glyph.squares.size());
    out.words({contours, bounds.left, bounds.bottom, bounds.right, bounds.top});
    for (int i = 0; i < contours; ++i) out.word(4 * i + 3);
    out.word(0); // instructions
    for (int i = 0; i < 4 * contours; ++i) out.byte(kOnCurve);
    int last = 0;
    const auto go = [&](int to) { out.word(to - std::exchange(last, to)); };
    for (const Square& s : glyph.squares)
        for (const int x : {s.left, s.left, s.right, s.right}) go(x);
    last = 0;
    for (const Square& s : glyph.squares)
        for (const int y : {s.bottom, s.top, s.top, s.bottom}) go(y);
    while (out.bytes.size() % 4 != 0) out.byte(0);
    return out.bytes;
}

struct Table {
    std::string_view tag;
    Bytes bytes;
};

class Face {
  public:
    explicit Face(const Letters& letters) : letters_(letters) {
        const auto standIn =
            std::ranges::find(letters.characters, letters.lastChar - 1, &Character::code);
        add(*standIn);
        for (const Character& character : letters.characters) add(character);
    }

    [[nodiscard]] Bytes file() const {
        const std::vector<Table> tables{
            {"OS/2", os2()},  {"cmap", cmap()}, {"fpgm", program(1)}, {"glyf", glyf()},
            {"head", head()}, {"hhea", hhea()}, {"hmtx", hmtx()},     {"loca", loca()},
            {"maxp", maxp()}, {"name", name()}, {"post", post()},     {"prep", program(4)},
        };
        const int count = static_cast<int>(tables.size());
        Writer out(true);
        out.number(0x00010000, 4);
        out.words({count, kUnused, kUnused, kUnused});
        Writer data(true);
        for (const Table& table : tables) {
            for (const char c : table.tag) out.byte(c);
            out.longs({kUnused, 12 + 16 * count + static_cast<int>(data.bytes.size()),
                       static_cast<int>(table.bytes.size())});
            data.add(table.bytes);
            while (data.bytes.size() % 4 != 0) data.byte(0);
        }
        out.add(data.bytes);
        return out.bytes;
    }

  private:
    void add(const Character& character) {
        glyphs_.push_back({outlineOf(character, letters_.ascent), character.advance * kPixel});
    }

    [[nodiscard]] Square bounds() const {
        Glyph all{{}, 0};
        for (const Glyph& glyph : glyphs_)
            all.squares.insert(all.squares.end(), glyph.squares.begin(), glyph.squares.end());
        return boundsOf(all);
    }

    /// Instructions without effect. A face that has none may be hinted by guesses.
    static Bytes program(int times) {
        Writer out(true);
        for (int i = 0; i < times; ++i)
            for (const int code : {0xB0, 0x00, 0x21}) out.byte(code); // push 0, pop
        return out.bytes;
    }

    [[nodiscard]] Bytes head() const {
        Writer out(true);
        out.longs({0x00010000, 0x00010000, kUnused, 0x5F0F3CF5});
        out.words({0x0008, kEm}); // sizes in whole pixels
        out.longs({0, 0, 0, 0});  // made and changed
        const Square b = bounds();
        out.words({b.left, b.bottom, b.right, b.top, 0, 8, 2, 1, 0});
        return out.bytes;
    }

    [[nodiscard]] Bytes hhea() const {
        Writer out(true);
        out.number(0x00010000, 4);
        for (const int pixels : {letters_.ascent, -letters_.descent, letters_.leading, 20})
            out.word(pixels * kPixel);
        const Square b = bounds();
        out.words({b.left, 0, b.right, 1, 0, 0, 0, 0, 0, 0, 0, static_cast<int>(glyphs_.size())});
        return out.bytes;
    }

    [[nodiscard]] Bytes hmtx() const {
        Writer out(true);
        for (const Glyph& glyph : glyphs_) out.words({glyph.advance, boundsOf(glyph).left});
        return out.bytes;
    }

    [[nodiscard]] Bytes maxp() const {
        std::size_t most = 0;
        for (const Glyph& glyph : glyphs_) most = std::max(most, glyph.squares.size());
        const int contours = static_cast<int>(most);
        Writer out(true);
        out.number(0x00010000, 4);
        out.words({static_cast<int>(glyphs_.size()), 4 * contours, contours, 0, 0, 1, 0, 0, 0, 0, 4,
                   0, 0, 0});
        return out.bytes;
    }

    [[nodiscard]] Bytes os2() const {
        constexpr int kRegular = 400;
        Writer out(true);
        out.words({3, 10 * kPixel, kRegular, 5, 0});
        for (int i = 0; i < 10; ++i) out.word(kPixel); // small letters, and what crosses them out
        out.words({0, 0, 0, 0, 0, 0});                 // kind of family
        out.longs({1, 0, 0, 0});                       // ranges of codes
        for (const char c : {'G', 'O', 'L', 'D'}) out.byte(c);
        const int ascent = letters_.ascent * kPixel;
        const int descent = letters_.descent * kPixel;
        const int first = letters_.characters.front().code;
        out.words({0x40, first, letters_.lastChar, ascent, -descent, letters_.leading * kPixel,
                   ascent, descent});
        out.longs({1, 0}); // Latin-1
        out.words({4 * kPixel, 8 * kPixel, 0, first, 1});
        return out.bytes;
    }

    /// A segment for each character; the first glyph stands in for others.
    [[nodiscard]] Bytes cmap() const {
        const int count = static_cast<int>(letters_.characters.size()) + 1;
        std::vector<int> codes;
        for (const Character& character : letters_.characters) codes.push_back(character.code);
        codes.push_back(0xFFFF);
        Writer out(true);
        out.words({0, 1, 3, 1, 0, 12});
        out.words({4, 16 + 8 * count, 0, 2 * count, kUnused, kUnused, kUnused});
        for (const int code : codes) out.word(code);
        out.word(0);
        for (const int code : codes) out.word(code);
        for (int i = 0; i < count; ++i) out.word(i + 1 < count ? i + 1 - codes[std::size_t(i)] : 1);
        for (int i = 0; i < count; ++i) out.word(0);
        return out.bytes;
    }

    [[nodiscard]] Bytes glyf() const {
        Writer out(true);
        for (const Glyph& glyph : glyphs_) out.add(glyphData(glyph));
        return out.bytes;
    }

    [[nodiscard]] Bytes loca() const {
        Writer out(true);
        int offset = 0;
        out.number(offset, 4);
        for (const Glyph& glyph : glyphs_)
            out.number(offset += static_cast<int>(glyphData(glyph).size()), 4);
        return out.bytes;
    }

    [[nodiscard]] static Bytes name() {
        const std::pair<int, std::string_view> names[] = {
            {1, kFamily}, {2, kStyle}, {4, kFamily}, {6, "GoldenLetters-Regular"}};
        Writer out(true);
        Writer texts(true);
        out.words({0, 4, 6 + 4 * 12});
        for (const auto& [id, text] : names) {
            out.words({3, 1, 0x409, id, 2 * static_cast<int>(text.size()),
                       static_cast<int>(texts.bytes.size())});
            for (const char c : text) texts.word(c);
        }
        out.add(texts.bytes);
        return out.bytes;
    }

    [[nodiscard]] static Bytes post() {
        constexpr int kLineBelow = 40; // to its upper edge
        Writer out(true);
        out.longs({0x00030000, 0});
        out.words({-kLineBelow, kPixel});
        out.longs({0, 0, 0, 0, 0});
        return out.bytes;
    }

    const Letters& letters_;
    std::vector<Glyph> glyphs_;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("goldenface FILE\n", stderr);
        return kWrongUse;
    }
    const Letters letters = golden::letters();
    const Bytes bytes = Face(letters).file();
    std::ofstream file(argv[1], std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (file) return 0;
    std::fprintf(stderr, "%s cannot be written\n", argv[1]);
    return kFailed;
}
