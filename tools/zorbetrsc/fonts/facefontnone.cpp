// Stands in for the rendering of faces where FreeType was not found.
#include "fonts/facefont.h"

namespace rsc {

bool canRenderFaces() { return false; }

BitmapFont renderFace(ByteSpan, const FaceStyle&) {
    throw Refusal("this program was built without FreeType (package libfreetype-dev): make the "
                  "font from a BDF file");
}

} // namespace rsc
