#include "omwndcanvas.h"

#include "omcursor.h"
#include "omdebug.h"
#include "ommemcanvas.h"
#include "omplatform.h"

#include <utility>

using platform::Rect;

namespace {

Rect visibleOnScreen(const Rect& rectangle) {
    const Rect part = platform::intersection(rectangle, OMPlatform().display().screen().bounds());
    if (part.empty()) return {};
    return {part.left - rectangle.left, part.top - rectangle.top, part.right - rectangle.left,
            part.bottom - rectangle.top};
}

bool checkExclusive(const char* message) {
    return OMDebug::check(OMPlatform().display().isExclusive(), "!exclusive", message);
}

} // namespace

OMWndCanvas::OMWndCanvas(const Rect& rectangle)
    : OMCanvas(OMPlatform().display().screen().depth()), rectangle_(rectangle),
      visible_(visibleOnScreen(rectangle)), cursor_(OMCursor::load(kOMCursorArrow)) {}

OMPixels OMWndCanvas::pixels() {
    platform::Surface& screen = OMPlatform().display().screen();
    const OMPixels all{screen.row(0), screen.stride(), screen.bounds(), screen.bytesPerPixel()};
    std::uint8_t* first =
        visible_.empty() ? nullptr
                         : all.at(rectangle_.left + visible_.left, rectangle_.top + visible_.top);
    return {first, all.stride, visible_, all.bytesPerPixel};
}

// Flipping

bool OMWndCanvas::attachToFlipChain(OMMemCanvas& back) {
    if (!checkExclusive("OMWndCanvas::attachToFlipChain - must be in exclusive mode to use "
                        "flipping!"))
        return false;
    if (back.attached_) return true;
    restore();
    if (!back.isFlippable() || !OMPlatform().display().makeFlipChain(backBuffers_ + 1))
        return false;
    ++backBuffers_;
    back.attached_ = true;
    return true;
}

void OMWndCanvas::detachFromFlipChain(OMMemCanvas& back) {
    if (!checkExclusive("OMWndCanvas::detachFromFlipChain - must be in exclusive mode to use "
                        "flipping!") ||
        !back.attached_)
        return;
    if (const platform::Surface* picture = back.behindScreen();
        picture && picture->width() == back.width() && picture->height() == back.height())
        back.surface_ = *picture;
    back.attached_ = false;
    OMPlatform().display().makeFlipChain(--backBuffers_);
}

bool OMWndCanvas::flip() {
    if (!checkExclusive("OMWndCanvas::flip - must be in exclusive mode to use flipping!"))
        return false;
    restore();
    platform::FlipResult result = OMPlatform().display().flip();
    while (result == platform::FlipResult::Busy) result = OMPlatform().display().flip();
    return OMDebug::check(result == platform::FlipResult::Shown, "result != DD_OK",
                          "OMWndCanvas::flip - flip failed!");
}

bool OMWndCanvas::restore() {
    platform::Display& display = OMPlatform().display();
    return display.isLost() && display.restore();
}

void OMWndCanvas::applyPalette() {
    constexpr std::size_t kFirst = platform::kFirstFreeColour;
    constexpr std::size_t kCount = platform::kFirstHighStaticColour - kFirst;
    OMPlatform().display().setPalette(platform::kFirstFreeColour,
                                      std::span(devicePalette()).subspan(kFirst, kCount));
}

void OMWndCanvas::setCursor(std::shared_ptr<const OMCursor> cursor) {
    if (cursor_ == cursor) return;
    OMPlatform().display().setCursor(cursor->handle());
    cursor_ = std::move(cursor);
}

void OMWndCanvas::show(const OMRegion& region) {
    for (const Rect& part : region.rectangles())
        OMPlatform().display().present({part.left + rectangle_.left, part.top + rectangle_.top,
                                        part.right + rectangle_.left,
                                        part.bottom + rectangle_.top});
}
