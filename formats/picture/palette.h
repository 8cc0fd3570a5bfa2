// Palette resources (type `RRGB`): 256 times red, green and blue, each a 16-bit little-endian word
// whose low byte is the intensity.
#pragma once

#include "formats/base/bytes.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace formats::picture {

struct Colour {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
};

using Palette = std::array<Colour, 256>;

inline constexpr std::size_t kPaletteSize = std::tuple_size_v<Palette> * 3 * 2; ///< bytes

/// None when there are less than kPaletteSize bytes; what follows them is ignored, as are the high
/// bytes of the words.
[[nodiscard]] std::optional<Palette> readPalette(ByteSpan bytes);

[[nodiscard]] Bytes writePalette(const Palette& palette);

} // namespace formats::picture
