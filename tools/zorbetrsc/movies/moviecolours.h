// The colours of movies: they have 6 bits a component in the file and are spread over 8 bits when
// they are read. The program lifts them before it shows them, as it does with all palettes.
#pragma once

#include "platform/display.h"

namespace rsc {

/// The colour, as readers spread it, for the screen to show `wanted` or what comes nearest to it.
/// Very dark colours keep their hue as in colourToStore.
[[nodiscard]] platform::Rgb movieColourToStore(platform::Rgb wanted);

} // namespace rsc
