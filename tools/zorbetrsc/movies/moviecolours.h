// The colours of movies: they have 6 bits a component in the file and are spread over 8 bits when
// they are read. The program lifts them before it shows them, as it does with all palettes.
#pragma once

#include "platform/display.h"

namespace rsc {

/// A component as the file stores it; the lowest two bits are lost.
[[nodiscard]] constexpr std::uint8_t toMovieComponent(std::uint8_t component) {
    return component >> 2;
}

/// A stored component as readers spread it.
[[nodiscard]] constexpr std::uint8_t fromMovieComponent(std::uint8_t stored) {
    return static_cast<std::uint8_t>(stored << 2 | stored >> 4);
}

/// The colour, as readers spread it, for the screen to show `wanted` or what comes nearest to it.
/// Very dark colours keep their hue as in colourToStore.
[[nodiscard]] platform::Rgb movieColourToStore(platform::Rgb wanted);

} // namespace rsc
