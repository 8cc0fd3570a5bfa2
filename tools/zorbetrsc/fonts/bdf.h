// BDF files (Glyph Bitmap Distribution Format 2.1): fonts as text, which font editors read and
// write.
#pragma once

#include "filesystem.h"
#include "fonts/bitmapfont.h"

#include <string>

namespace rsc {

/// The font of a BDF file: the characters with the codes 0 to 255 and the one that stands in for
/// missing ones. Without the properties FONT_ASCENT and FONT_DESCENT they are those of the font's
/// bounding box. A refusal names the line of the file.
[[nodiscard]] BitmapFont readBdf(ByteSpan file);

/// The text of a file that reads as this font, but for its leading, which BDF does not know. Blank
/// rows at the top and bottom of pictures are left out. `name` has no line breaks.
[[nodiscard]] std::string writeBdf(const BitmapFont& font, const std::string& name);

} // namespace rsc
