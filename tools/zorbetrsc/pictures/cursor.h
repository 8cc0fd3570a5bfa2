// Cursor resources (type CURSOR), which are cursor files (.cur). All numbers are little-endian:
//
//     0   uint16  0, 2 (a cursor), number of pictures
//     6           for each picture 16 bytes: width, height (0: 256), number of colours (0: 256 or
//                 no table), 0; hot spot x, y (uint16); length and file offset (uint32)
//     +           for each picture a bitmap header of 40 bytes, whose height counts both parts; a
//                 table of colours (blue, green, red, 0); the pixels, and a mask of one bit a pixel
//                 that is 1 where the screen shows through. Rows from the bottom up, each filled up
//                 to a multiple of 4 bytes
//
// A pixel is transparent when its colour is black besides.
#pragma once

#include "bytes.h"
#include "pictures/picture.h"

#include <optional>

namespace rsc {

inline constexpr int kLargestCursor = 64; ///< pixels of a side of those that are made here

struct HotSpot {
    int x = 0;
    int y = 0;
};

/// A cursor file with this picture: 8 bits a pixel when 256 colours are enough, else 24. Refuses
/// pictures that are too large and hot spots outside of them.
[[nodiscard]] Bytes buildCursor(const Picture& picture, HotSpot hotSpot);

/// What a cursor file says about a picture.
struct CursorEntry {
    int width = 0;
    int height = 0;
    HotSpot hotSpot;
    ByteSpan image; ///< header, colours, pixels and mask; lies in the file
};

/// Whether it begins like a cursor file.
[[nodiscard]] bool isCursorFile(ByteSpan bytes);

struct CursorFile {
    std::vector<CursorEntry> entries; ///< at least one
    std::size_t length = 0;           ///< of the file: what follows the last picture is none of it
};

/// Reads the directory. Refuses one without pictures, or whose pictures lie outside of the file.
[[nodiscard]] CursorFile readCursorFile(ByteSpan bytes);

/// The pixels of a picture of 8 or 24 bits a pixel, row by row from the top left; none of any
/// other. A pixel that would invert the screen becomes transparent. Refuses one that is cut off.
[[nodiscard]] std::optional<std::vector<Pixel>> cursorPixels(const CursorEntry& entry);

} // namespace rsc
