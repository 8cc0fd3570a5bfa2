// What the program does to the colours of every palette before it is set.
#pragma once

#include "omcolor.h"

/// How much lighter a colour is shown than it is stored, in units of the full value.
inline constexpr double kRPaletteLift = 0.13;

/// A game colour as it is shown: lifted in value, hue and saturation kept, and kept off pure white
/// and pure black.
[[nodiscard]] OMColor RLiftColor(const OMColor& stored);

/// Lifts the game's colours, entries 10 to 245. The other entries stay untouched.
void RLiftPalette(OMPalette& colors);
