// Cursors made of pictures, and as the game shows them.
#pragma once

#include "formats/picture/cursor.h"
#include "pictures/picture.h"

#include <string>

namespace rsc {

inline constexpr int kLargestCursor = 64; ///< pixels of a side of those that are made here

/// A cursor file with this picture. Refuses pictures that are too large and hot spots outside of
/// them.
[[nodiscard]] formats::Bytes buildCursor(const Picture& picture, formats::picture::HotSpot hotSpot);

/// Why the game shows the arrow in the place of a cursor resource; empty when it shows the cursor.
[[nodiscard]] std::string whyArrow(formats::ByteSpan resource);

} // namespace rsc
