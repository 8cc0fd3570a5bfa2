// Cursors made of pictures and taken apart again, and as the game shows them.
#pragma once

#include "filesystem.h"
#include "formats/picture/cursor.h"
#include "pictures/picture.h"

#include <optional>
#include <string>

namespace rsc {

inline constexpr int kLargestCursor = 64; ///< pixels of a side of those that are made here

/// A cursor file with this picture. Refuses pictures that are too large and hot spots outside of
/// them.
[[nodiscard]] formats::Bytes buildCursor(const Picture& picture, formats::picture::HotSpot hotSpot);

/// Why the game shows the arrow in the place of a cursor resource; empty when it shows the cursor.
[[nodiscard]] std::string whyArrow(formats::ByteSpan resource);

/// A cursor resource as a picture and the line of a manifest that names it. `name` begins the
/// picture's name. None when a manifest cannot say the same; otherwise the caller
/// compares what packing gives. Refuses a damaged cursor.
[[nodiscard]] std::optional<UnpackedResource> unpackCursor(formats::ByteSpan resource, int id,
                                                           const std::string& name);

} // namespace rsc
