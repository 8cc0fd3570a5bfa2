// Font resources (type NFNT): pictures of the characters, side by side in one strike of one bit a
// pixel, and tables that are indexed by the character code. Numbers of 16 bits, all of one byte
// order but the pairs of bytes in the last table:
//
//     0   fontType: 0x9000. Its bit 0x80 of byte 1 tells the byte order: clear when big-endian
//     2   firstChar: 0
//     4   lastChar
//     6   widMax: the largest advance
//     8   kernMax (signed): the leftmost edge of any picture, from the pen, at most 0
//     10  nDescent: -descent
//     12  fRectWidth: columns of all pictures laid upon each other
//     14  fRectHeight: rows of the strike, ascent + descent
//     16  owTLoc: from here to the offset/width table, in words
//     18  ascent, 20 descent, 22 leading
//     24  rowWords: words of a row of the strike
//     26  the strike, top row first, highest bit to the left, 1 is ink
//     +   location table, lastChar + 3 entries: column of the strike where each picture begins;
//         it ends where the next one begins
//     +   offset/width table, lastChar + 3 entries: left edge of the picture, counted from kernMax,
//         and advance, a byte each; 255 and 255 for a character that is not there
#pragma once

#include "bytes.h"
#include "fonts/bitmapfont.h"

namespace rsc {

/// What a font resource holds. The game draws the character lastChar - 1 for those that are
/// missing.
struct Nfnt {
    bool bigEndian = false;
    int firstChar = 0;
    int lastChar = 0; ///< 1 to 255
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

/// The resource's bytes. Refuses what its fields cannot hold.
[[nodiscard]] Bytes writeNfnt(const Nfnt& font);

/// Reads a resource of either byte order; its pictures have all the rows of the strike. Bytes
/// behind the tables are ignored. Refuses damage: tables or strike that are cut off, pictures
/// outside of the strike, a lastChar above 255.
[[nodiscard]] Nfnt readNfnt(ByteSpan bytes);

} // namespace rsc
