// What the program does to the colours of every palette before it shows them. Who makes palettes
// stores darker colours than shall be seen.
#pragma once

#include <cstdint>

namespace formats::palette {

/// Components of 16 bits.
struct Colour {
    std::uint16_t red = 0;
    std::uint16_t green = 0;
    std::uint16_t blue = 0;
};

/// How much lighter a colour is shown than it is stored, in units of the full value.
inline constexpr double kLift = 0.13;

/// A stored colour as it is shown: lifted in value, hue and saturation kept, and kept off pure
/// white and pure black.
[[nodiscard]] Colour lift(const Colour& stored);

} // namespace formats::palette
