// Turns an animation resource into what a manifest makes it from: a picture for each frame and the
// lines that name them and tell the sequences. It proves itself: an animation whose pictures and
// lines would give other bytes is not unpacked.
#pragma once

#include "filesystem.h"
#include "pictures/palette.h"

#include <optional>
#include <string>

namespace rsc {

/// `shown` are the colours of the pictures; `name` begins their names, and the lines name them so.
/// `resource` may end in zeros that do not belong to it; none when packing would give anything
/// else. Refuses a damaged animation.
[[nodiscard]] std::optional<UnpackedResource>
unpackAnimation(formats::ByteSpan resource, int id, const Colours& shown, const std::string& name);

} // namespace rsc
