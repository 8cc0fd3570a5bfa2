// A bitmap font out of an `NFNT` resource: the font record that is published with the bitmap fonts
// of the classic Macintosh. Sixteen-bit words; the strike holds the pictures of all characters side
// by side, one bit a pixel, a set bit is ink.
//
//     0   font type          10  descent, negative     20  descent
//     2   first character    12  width of the box      22  leading
//     4   last character     14  rows of the strike    24  words of a row of the strike
//     6   largest width      16  words from here to    26  the strike
//     8   kern                   the offset table          the location table
//
// The tables have (last - first + 3) words. The location table, right before the offset table, has
// the bit where each picture begins; it ends where the next one begins. The offset table has two
// bytes a character: where the picture lies, counted from kern right of the pen, and the advance;
// two bytes of 255 mean that there is no such character. Header and locations are big-endian unless
// the highest bit of the second byte is set.
//
// Both tables are indexed by the character's code itself, whatever the first character is. A
// character that is missing looks like the one before the last: code (last & 255) - 1.
#pragma once

#include "omfont.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

class OMIStream;

class OMNFNTFont final : public OMFont {
  public:
    /// Reads the whole of `source`, which must be a whole stream. A font that cannot be read is
    /// empty: it has no height and its characters neither ink nor width. Fatal without an
    /// application.
    explicit OMNFNTFont(OMIStream& source);

    [[nodiscard]] bool isEmpty() const { return empty_; }

    [[nodiscard]] int ascent() const override { return ascent_; }
    [[nodiscard]] int descent() const override { return descent_; }
    [[nodiscard]] int leading() const override { return leading_; }
    [[nodiscard]] Kind kind() const override { return Kind::NFNT; }
    [[nodiscard]] const OMGlyph& glyph(unsigned char code) const override { return glyphs_[code]; }

  private:
    void read(std::span<const std::byte> record);

    bool empty_ = true;
    int ascent_ = 0;
    int descent_ = 0;
    int leading_ = 0;
    std::vector<std::uint8_t> strike_; ///< rows padded to 4 bytes, and a byte more
    std::array<OMGlyph, kCodes> glyphs_;
};
