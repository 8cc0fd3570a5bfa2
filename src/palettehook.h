// What the program does to the colours of every palette before it is set.
#pragma once

#include "omcolor.h"

/// Lifts the game's colours (entries 10 to 245) by 0.13 in value, keeping hue and saturation, and
/// keeps them off pure white and pure black. The other entries stay untouched.
void RLiftPalette(OMPalette& colors);
