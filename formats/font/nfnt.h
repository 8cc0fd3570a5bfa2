// Bitmap fonts: `NFNT` resources, the font record that is published with the bitmap fonts of the
// classic Macintosh. The strike holds the pictures of all characters side by side, one bit a pixel;
// the tables behind it are indexed by the character's code itself, whatever the first character is.
// Numbers of 16 bits:
//
//     0   font type: 0x9000. Bit 0x80 of byte 1 tells the byte order: clear when big-endian
//     2   first character (signed, as all but the unsigned ones named so): 0 where we write
//     4   last character
//     6   the largest advance
//     8   kern: where offsets count from, in pixels right of the pen
//     10  -descent
//     12  columns of all pictures laid upon each other and of the pen
//     14  rows of the strike (unsigned)
//     16  words from here to the offset table (unsigned)
//     18  ascent, 20 descent, 22 leading
//     24  words of a row of the strike (unsigned)
//     26  the strike, top row first, highest bit to the left, a set bit is ink
//     +   location table, (last - first + 3) entries: column of the strike where each picture
//         begins (unsigned); it ends where the next one begins. It lies right before the
//     +   offset table, as many entries: left edge of the picture, counted from kern, and advance,
//         a byte each; 255 and 255 for a character that is not there
//
// A character that is missing looks like the one before the last: code (last & 255) - 1.
#pragma once

#include "formats/base/bytes.h"
#include "formats/base/result.h"

#include <map>
#include <optional>

namespace formats::font {

inline constexpr int kCodes = 256;
inline constexpr std::size_t kHeaderSize = 26;

/// The fields of a header that count.
struct Header {
    std::endian order = std::endian::little;
    int firstChar = 0;
    int lastChar = 0;
    int kern = 0;
    std::size_t rows = 0;
    std::size_t offsets = 0; ///< place of the offset table
    int ascent = 0;
    int descent = 0;
    int leading = 0;
    std::size_t rowBytes = 0;

    /// Entries of each table; none when the last character lies before the first.
    [[nodiscard]] std::size_t entries() const {
        return lastChar - firstChar < -2 ? 0 : static_cast<std::size_t>(lastChar - firstChar + 3);
    }
    [[nodiscard]] std::size_t strikeEnd() const { return kHeaderSize + rows * rowBytes; }
    [[nodiscard]] std::size_t locations() const { return offsets - 2 * entries(); }
    [[nodiscard]] std::size_t tablesEnd() const { return offsets + 2 * entries(); }
    [[nodiscard]] bool hasTablesBehindHead() const {
        return offsets >= kHeaderSize + 2 * entries();
    }
    /// Whether a record of so many bytes holds what the header says.
    [[nodiscard]] bool fits(std::size_t size) const {
        return entries() > 0 && hasTablesBehindHead() && tablesEnd() <= size && strikeEnd() <= size;
    }
};

/// None when the record is shorter than a header.
[[nodiscard]] std::optional<Header> readHeader(std::span<const std::byte> record);

/// What the tables say of a character, in pixels.
struct Character {
    int left = 0; ///< from the pen to its picture
    int advance = 0;
    int from = 0; ///< columns of the strike; as written, they may lie outside of it
    int to = 0;
};

/// None when there is no such character. The record must hold what its header says.
[[nodiscard]] std::optional<Character> findCharacter(std::span<const std::byte> record,
                                                     const Header& header, int code);

/// A picture of a character. Places count in pixels from the pen, which stands on the baseline: x
/// to the right, rows up from the baseline.
struct Glyph {
    int advance = 0; ///< how far the pen goes on
    int left = 0;    ///< from the pen to the left edge of the picture
    int top = 0;     ///< the row above which the picture ends; its first row is top - 1
    int width = 0;
    int height = 0;
    std::vector<bool> ink; ///< row by row from the top left

    [[nodiscard]] std::size_t at(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
               static_cast<std::size_t>(x);
    }
    friend bool operator==(const Glyph&, const Glyph&) = default;
};

/// All that a font resource holds.
struct Font {
    bool bigEndian = false;
    int firstChar = 0; ///< of one that was read
    int lastChar = 0;
    int ascent = 0;
    int descent = 0;
    int leading = 0;
    std::map<int, Glyph> glyphs; ///< at most lastChar; rows outside of ascent and descent are blank

    [[nodiscard]] int standInCode() const { return lastChar - 1; }
    /// Whether that character is only there for others: it comes right behind all of them.
    [[nodiscard]] bool hasPureStandIn() const {
        return glyphs.contains(standInCode() - 1) && glyphs.rbegin()->first == standInCode();
    }
};

/// Columns from the pen.
struct Extent {
    int left = 0;
    int right = 0; ///< outside
};

/// Of all the pictures laid upon each other and of the pen.
[[nodiscard]] Extent horizontalExtent(const std::map<int, Glyph>& glyphs);

/// The resource's bytes. Refuses what its fields cannot hold.
[[nodiscard]] Result<Bytes> write(const Font& font);

/// Reads a resource of either byte order; its pictures have all the rows of the strike. Bytes
/// behind the tables are ignored. Refuses damage: tables or strike that are cut off, pictures
/// outside of the strike, a lastChar above 255.
[[nodiscard]] Result<Font> read(ByteSpan record);

} // namespace formats::font
