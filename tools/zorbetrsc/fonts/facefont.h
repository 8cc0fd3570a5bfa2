// Faces (TrueType, OpenType) as bitmap fonts. The work is done by the FreeType library; a build
// without it can only say so.
#pragma once

#include "filesystem.h"
#include "fonts/bitmapfont.h"
#include "manifest/plans.h"

namespace rsc {

/// Whether this build can do it at all.
[[nodiscard]] bool canRenderFaces();

/// The Latin-1 characters of a face, black and white. The ascent, descent and leading are those of
/// the face at this size. Refused when the library is missing, or refuses the file.
[[nodiscard]] BitmapFont renderFace(ByteSpan file, const FaceStyle& style);

} // namespace rsc
