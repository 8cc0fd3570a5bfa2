// What the program does to the colours of every palette before it is set.
#pragma once

#include "omcolor.h"

/// Lifts the game's colours, entries 10 to 245 (formats/picture/lift.h). The other entries stay
/// untouched.
void RLiftPalette(OMPalette& colors);
