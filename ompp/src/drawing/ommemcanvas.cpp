#include "ommemcanvas.h"

#include "omdebug.h"
#include "omplatform.h"

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

OMMemCanvas::OMMemCanvas(int width, int height, int depth, Kind kind)
    : OMCanvas(depth), surface_(newSurface(width, height, this->depth())), kind_(kind) {}

platform::Surface* OMMemCanvas::behindScreen() const {
    return attached_ ? OMPlatform().display().back() : nullptr;
}

platform::Rect OMMemCanvas::visibleArea() const {
    const platform::Surface* back = behindScreen();
    return back ? platform::intersection(bounds(), back->bounds()) : bounds();
}

OMPixels OMMemCanvas::pixels() {
    platform::Surface* back = behindScreen();
    platform::Surface& surface = back ? *back : surface_;
    return {surface.row(0), surface.stride(), visibleArea(), surface.bytesPerPixel()};
}
