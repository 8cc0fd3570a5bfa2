// Pictures of one bit a pixel, put on surfaces of any depth in one colour.
#pragma once

#include "ompixels.h"

#include <cstddef>
#include <cstdint>

namespace ompixels {

/// The leftmost pixel of a row is its highest bit. One byte more than those of all rows may be
/// read.
struct Mask {
    const std::uint8_t* bits; ///< of the first row
    std::size_t stride;       ///< bytes from row to row
    int firstBit;             ///< of each row; the picture begins there
};

/// Gives the pixels of `area` whose bits are set the value; the mask begins at the area's corner.
void ink(const OMPixels& pixels, const platform::Rect& area, const Mask& mask, std::uint32_t value);

} // namespace ompixels
