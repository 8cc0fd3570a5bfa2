// The pixels that a canvas draws on, and how copied ones meet them.
#pragma once

#include "platform/geometry.h"

#include <cstddef>
#include <cstdint>

/// How source pixels meet those of the destination in a `blt`. The values are the platform's codes.
enum class OMRasterOp : std::uint32_t {
    SrcCopy = 0x00CC0020,   ///< source
    SrcInvert = 0x00660046, ///< source xor destination
    SrcAnd = 0x008800C6,    ///< source and destination
    /// As SrcCopy, but pixels of the source's key colour are left out.
    SrcCopyKeyed = 0x80CC0020,
};

/// A writable view of a canvas's pixels in canvas coordinates, without clip region. Valid as long
/// as the canvas. Layout of the pixels: see platform::Surface.
struct OMPixels {
    std::uint8_t* first = nullptr; ///< the pixel at area.left, area.top
    std::size_t stride = 0;        ///< bytes from row to row
    platform::Rect area;           ///< only these pixels exist
    int bytesPerPixel = 1;

    /// The pixel at x, y, which must lie in `area`; the rest of its row follows it.
    [[nodiscard]] std::uint8_t* at(int x, int y) const {
        return first + stride * static_cast<std::size_t>(y - area.top) +
               static_cast<std::size_t>(x - area.left) * static_cast<std::size_t>(bytesPerPixel);
    }
};
