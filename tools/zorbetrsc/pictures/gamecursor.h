// Cursors as the game shows them. They are read by the game's own reader, so that this is what the
// game will do.
#pragma once

#include "bytes.h"

#include <string>

namespace rsc {

/// Why the game shows the arrow in the place of a cursor resource; empty when it shows the cursor.
[[nodiscard]] std::string whyArrow(ByteSpan resource);

} // namespace rsc
