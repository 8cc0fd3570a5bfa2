// The content of a .cur file, little-endian:
//
//     0, 2, count                                    2 bytes each
//     count times: width, height, colours, 0         1 byte each, a side of 0 is 256
//                  hot spot x, y                     2 bytes each
//                  size, offset of the picture       4 bytes each
//
// Each picture is a "BITMAPINFOHEADER" (40 bytes), whose height is twice that of the picture, a
// colour table (up to 8 bits a pixel), the rows of colours and the rows of the mask, a bit a pixel.
// Rows come from the bottom up and are padded to 4 bytes. 1, 4, 8, 24 and 32 bits a pixel,
// uncompressed.
//
// A pixel with its mask bit set is transparent when it is black. In any other colour it would
// invert the screen, which cursors of today cannot: it becomes black. The mask of a 32-bit picture
// counts only when all its alpha values are 0, else a pixel is transparent below half of full
// alpha.
#pragma once

#include "platform/cursor.h"

#include <cstddef>
#include <optional>
#include <span>

/// The first picture of 32 by 32 pixels that is whole, else the first whole one with sides of at
/// most platform::CursorImage::kMaxSide. None when there is no such picture. A hot spot outside of
/// it becomes the nearest pixel.
[[nodiscard]] std::optional<platform::CursorImage>
OMReadCursorImage(std::span<const std::byte> resource);
