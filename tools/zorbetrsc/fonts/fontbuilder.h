// Turns the font line of a manifest into a font resource: chooses the characters and the picture
// that stands in for those that are missing.
#pragma once

#include "filesystem.h"
#include "fonts/bitmapfont.h"
#include "manifest/manifest.h"

namespace rsc {

/// `file` is what the line names. Lines that do not hold a picture grow so far that they do.
[[nodiscard]] Bytes buildFont(const FontPlan& plan, ByteSpan file);

} // namespace rsc
