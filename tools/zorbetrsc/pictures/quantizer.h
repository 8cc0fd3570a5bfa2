// Choosing the few colours that stand for many. The work is done by the libimagequant library; a
// build without it can only say so.
#pragma once

#include "platform/display.h"

#include <span>
#include <vector>

namespace rsc {

struct ColourCount {
    platform::Rgb colour;
    unsigned count = 0; ///< pixels of this colour
};

/// Whether this build can do it at all.
[[nodiscard]] bool canReduceColours();

/// At most `limit` colours that serve these pixels best; the same input gives the same colours in
/// the same order. Refused when the library is missing or fails.
[[nodiscard]] std::vector<platform::Rgb> reduceColours(std::span<const ColourCount> colours,
                                                       int limit);

} // namespace rsc
