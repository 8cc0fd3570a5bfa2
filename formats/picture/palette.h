// Palette resources (type `RRGB`): 256 times red, green and blue, each a 16-bit little-endian word
// whose low byte is the intensity. And what the program does to the colours of every palette before
// it shows them: who makes palettes stores darker colours than shall be seen.
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

/// A colour with components of 16 bits.
struct WideColour {
    std::uint16_t red = 0;
    std::uint16_t green = 0;
    std::uint16_t blue = 0;
};

/// How much lighter a colour is shown than it is stored, in units of the full value.
inline constexpr double kLift = 0.13;

/// A stored colour as it is shown: lifted in value, hue and saturation kept, and kept off pure
/// white and pure black.
[[nodiscard]] WideColour lift(const WideColour& stored);

} // namespace formats::picture
