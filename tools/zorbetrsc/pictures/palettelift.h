// What the program does to a scene's colours before it shows them, and the way back: every game
// colour (palette entries 10 to 245) is lifted by 0.13 in value, hue and saturation kept. A palette
// resource therefore holds darker colours than the artist chose.
#pragma once

#include "platform/display.h"

#include <algorithm>
#include <cstdlib>

namespace rsc {

/// The colour on the screen of a game colour that is stored as `stored`.
[[nodiscard]] platform::Rgb liftColour(platform::Rgb stored);

/// No game colour on the screen has a smaller largest component.
inline constexpr int kDarkestValue = 33;

/// The colour to store so that the screen shows `wanted`, or the nearest colour that it can show. A
/// colour below kDarkestValue is brought up to it in its own hue and saturation (black to a dark
/// grey), since the nearest by distance alone would have a tint. Given the colour that a result
/// shows, it gives that result again.
[[nodiscard]] platform::Rgb colourToStore(platform::Rgb wanted);

/// The same for a movie, whose colours have 6 bits a component in the file and are spread over 8
/// bits when they are read: the colour as readers spread it.
[[nodiscard]] platform::Rgb movieColourToStore(platform::Rgb wanted);

/// Squared distance in RGB, the measure of "nearest" throughout the tool.
[[nodiscard]] inline int colourDistance(platform::Rgb a, platform::Rgb b) {
    const int red = a.red - b.red;
    const int green = a.green - b.green;
    const int blue = a.blue - b.blue;
    return red * red + green * green + blue * blue;
}

/// By how much the component that differs most differs.
[[nodiscard]] inline int componentDistance(platform::Rgb a, platform::Rgb b) {
    return std::max(
        {std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue)});
}

} // namespace rsc
