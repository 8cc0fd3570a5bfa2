// The pixels of a canvas as plain numbers, for targets that compare pictures.
#pragma once

#include "omcanvas.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace fuzzing {

/// Row by row.
using Pixels = std::vector<std::uint32_t>;

inline Pixels pixelsOf(OMCanvas& canvas) {
    const OMPixels pixels = canvas.pixels();
    Pixels all;
    for (int y = pixels.area.top; y < pixels.area.bottom; ++y) {
        const std::uint8_t* at = pixels.at(pixels.area.left, y);
        for (int x = pixels.area.left; x < pixels.area.right; ++x) {
            std::uint32_t value = 0;
            for (int byte = 0; byte < pixels.bytesPerPixel; ++byte)
                value |= std::uint32_t{*at++} << 8 * byte;
            all.push_back(value);
        }
    }
    return all;
}

/// Bytes that differ from their neighbours; another `seed` changes all of them.
inline void fillNoise(OMCanvas& canvas, unsigned seed = 0) {
    const OMPixels pixels = canvas.pixels();
    unsigned number = seed * 101 + 7;
    for (int y = pixels.area.top; y < pixels.area.bottom; ++y) {
        std::uint8_t* at = pixels.at(pixels.area.left, y);
        for (int i = 0; i < pixels.area.width() * pixels.bytesPerPixel; ++i, number += 13)
            *at++ = static_cast<std::uint8_t>(number);
    }
}

} // namespace fuzzing
