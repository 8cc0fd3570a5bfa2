// Writing pictures as PNG files, the other half of Picture.
#pragma once

#include "pictures/picture.h"

#include <span>

namespace rsc {

/// The file of a picture with these palette indices, row by row from the top left, and a palette of
/// 1 to 256 entries. Reading it gives the same indices and entries.
[[nodiscard]] formats::Bytes writeIndexedPng(int width, int height, formats::ByteSpan indices,
                                             std::span<const Pixel> palette);

/// The truecolour file of a picture with these pixels.
[[nodiscard]] formats::Bytes writeTruecolourPng(int width, int height,
                                                std::span<const Pixel> pixels);

} // namespace rsc
