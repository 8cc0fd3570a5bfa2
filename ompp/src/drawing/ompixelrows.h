// Rows of pixels on their way from one surface to another: converted to the other's depth and
// combined with what is there.
//
// Pixels of 8 bits are indices into a palette, those of 16 bits are 5-5-5, those of 24 and 32 bits
// 8-8-8, red at the top. Bytes of a pixel lie lowest first.
#pragma once

#include "ompalette.h"
#include "ompixels.h"
#include "omregion.h"

#include <cstdint>
#include <functional>
#include <span>

namespace ompixels {

/// The pixel of a colour; depths deeper than 8 bits.
[[nodiscard]] std::uint32_t packed(platform::Rgb color, int depth);

/// Fills an area of pixels.
void fill(const OMPixels& pixels, const platform::Rect& area, std::uint32_t value);

struct Row {
    std::uint8_t* to;
    const std::uint8_t* from;     ///< in the depth of `to`
    const std::uint8_t* original; ///< in the depth of the source
    int width;                    ///< pixels
    int bytes;                    ///< of a pixel of `to` and `from`
    int originalBytes;
    int sourceX; ///< where `original` begins
    int sourceY;
};

void combine(const Row& row, OMRasterOp operation);
/// Leaves out the pixels whose original is `key`.
void copyUnlessKey(const Row& row, std::uint32_t key);
/// Leaves out the pixels whose bit is set in `mask`, the row of a bitmap's mask.
void copyUnmasked(const Row& row, const std::uint8_t* mask);

/// Where copied pixels come from.
struct Source {
    OMPixels pixels;
    int depth;
    const OMDevicePalette& palette; ///< of 8-bit pixels
};

/// Fills `region` of `to`, a surface of that depth, with the pixels of `source` dx, dy away, all of
/// which exist. `write` puts each row in its place. Source and destination may overlap.
void copy(const OMPixels& to, int depth, Source source, const OMRegion& region, int dx, int dy,
          const std::function<void(const Row&)>& write);

} // namespace ompixels
