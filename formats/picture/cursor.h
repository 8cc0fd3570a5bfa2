// Cursors: `.cur` files, which are `CURSOR` resources too. Little-endian:
//
//     0, 2, number of pictures                       2 bytes each
//     count times: width, height, colours, 0         1 byte each; a side of 0 is 256, colours are 0
//                                                    for 256 and without a table
//                  hot spot x, y                     2 bytes each
//                  size, offset of the picture       4 bytes each
//
// Each picture is an information header (dib.h), whose height is twice that of the picture, a table
// of colours (up to 8 bits a pixel), the rows of colours and the rows of the mask, a bit a pixel.
// Rows come from the bottom up and are padded to 4 bytes. 1, 4, 8, 24 and 32 bits a pixel, not
// compressed.
//
// A pixel with its mask bit set is transparent when it is black. In any other colour it would
// invert the screen, which cursors of today cannot: it becomes black. The mask of a 32-bit picture
// counts only when all its alpha values are 0, else a pixel is transparent below half of full
// alpha.
#pragma once

#include "formats/base/bytes.h"
#include "formats/base/result.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace formats::picture {

inline constexpr int kLargestCursorSide = 256; ///< pixels

struct HotSpot {
    int x = 0;
    int y = 0;
};

/// 0xAARRGGBB, alpha 0 or 255; row by row from the top left.
using CursorPixels = std::vector<std::uint32_t>;

struct Cursor {
    int width = 0;
    int height = 0;
    HotSpot hotSpot;
    CursorPixels pixels;
};

/// What is shown of a file: the first picture of 32 by 32 pixels that is whole, else the first
/// whole one. None when there is no such picture. A hot spot outside of it becomes the nearest
/// pixel.
[[nodiscard]] std::optional<Cursor> readCursor(ByteSpan bytes);

/// Whether it begins like a cursor file.
[[nodiscard]] bool isCursorFile(ByteSpan bytes);

/// What the directory says of a picture.
struct CursorEntry {
    int width = 0;
    int height = 0;
    HotSpot hotSpot;
    ByteSpan image; ///< header, colours, pixels and mask; lies in the file
};

struct CursorFile {
    std::vector<CursorEntry> entries; ///< at least one
    std::size_t length = 0;           ///< of the file: what follows the last picture is none of it
};

/// Reads the directory alone. None when there is no picture, or one of them lies outside of the
/// file.
[[nodiscard]] Result<CursorFile> readCursorFile(ByteSpan bytes);

/// The pixels of a picture of the kinds that writeCursor makes; one that would invert the screen is
/// transparent. A picture of another kind has none; one that is damaged is refused.
[[nodiscard]] Result<std::optional<CursorPixels>> plainPixels(const CursorEntry& entry);

/// A file with this picture: 8 bits a pixel when 256 colours are enough, else 24. Transparent
/// pixels become black.
[[nodiscard]] Bytes writeCursor(const Cursor& cursor);

} // namespace formats::picture
