// Turns the font line of a manifest into a font resource, choosing the characters and the picture
// that stands in for those that are missing; and a font resource into a BDF file and such a line.
#pragma once

#include "filesystem.h"
#include "fonts/bitmapfont.h"
#include "manifest/plans.h"

#include <optional>
#include <string>

namespace rsc {

/// `file` is what the line names. Lines that do not hold a picture grow so far that they do.
[[nodiscard]] Bytes buildFont(const FontPlan& plan, ByteSpan file);

/// `name` begins the file's name. None when a manifest cannot say the same; otherwise the caller
/// compares what packing gives. Refuses a damaged font.
[[nodiscard]] std::optional<UnpackedResource> unpackFont(ByteSpan resource, int id,
                                                         const std::string& name);

} // namespace rsc
