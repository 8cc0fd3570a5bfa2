// Pictures in BMP data, as files and as `BITMAP` resources: of 8, 16, 24 or 32 bits a pixel, not
// compressed.
//
//     files only  14 bytes, "BM" first and not looked at else
//     then        the information header (dib.h)
//     then        8 bits: 256 colours; 24 bits: as many as the header says, passed over
//     then        the rows, each padded to 4 bytes, the lowest first unless the height is negative
#pragma once

#include "formats/base/bytes.h"
#include "formats/picture/palette.h"

#include <cstdint>
#include <optional>

namespace formats::picture {

inline constexpr int kLargestBitmapSide = 0x7FFF; ///< pixels

struct Bitmap {
    int width = 0;
    int height = 0;
    int depth = 0;
    bool highestFirst = false;
    std::optional<Palette> palette; ///< of 8-bit pictures
    ByteSpan rows;                  ///< as they are stored, in the bytes that were read

    /// Counted from the top, padded.
    [[nodiscard]] ByteSpan row(int y) const;
};

enum class BitmapFault : std::uint8_t {
    None,
    Unknown,        ///< no picture of these kinds, or cut short
    PaletteSize,    ///< 8 bits and not 256 colours
    UnwantedPalette ///< 16 or 32 bits and colours
};

/// None after a fault.
[[nodiscard]] std::optional<Bitmap> readBitmap(ByteSpan bytes, BitmapFault& fault);

} // namespace formats::picture
