// Stands in for the quantizer where libimagequant was not found.
#include "pictures/quantizer.h"

#include "refusal.h"

namespace rsc {

bool canReduceColours() { return false; }

std::vector<platform::Rgb> reduceColours(std::span<const ColourCount>, int limit) {
    throw Refusal("the pictures have more than " + std::to_string(limit) +
                  " colours, and this program was built without libimagequant (package "
                  "libimagequant-dev): make the palette from an indexed PNG");
}

} // namespace rsc
