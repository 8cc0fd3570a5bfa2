#include "ommemcanvas.h"

#include "omdebug.h"

namespace {

platform::Surface newSurface(int width, int height, int depth) {
    const bool positive =
        OMDebug::check(width >= 1 && height >= 1, "(width < 1) || (height < 1)",
                       "OMMemCanvas::OMMemCanvas - height and width must be greater than 0!");
    const bool possible =
        positive &&
        OMDebug::check(width <= OMMemCanvas::kMaxSide && height <= OMMemCanvas::kMaxSide &&
                           width * height <= OMMemCanvas::kMaxPixels,
                       "width * height > kMaxPixels",
                       "OMMemCanvas::OMMemCanvas - the canvas is too large!");
    return possible ? platform::Surface(width, height, depth) : platform::Surface(1, 1, depth);
}

} // namespace

OMMemCanvas::OMMemCanvas(int width, int height, int depth)
    : OMCanvas(depth), surface_(newSurface(width, height, this->depth())) {}

OMPixels OMMemCanvas::pixels() {
    return {surface_.row(0), surface_.stride(), surface_.bounds(), surface_.bytesPerPixel()};
}
