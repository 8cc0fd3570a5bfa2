#include "omwndcanvas.h"

#include "omplatform.h"

using platform::Rect;

namespace {

Rect visibleOnScreen(const Rect& rectangle) {
    const Rect part = OMIntersection(rectangle, OMPlatform().display().screen().bounds());
    if (part.empty()) return {};
    return {part.left - rectangle.left, part.top - rectangle.top, part.right - rectangle.left,
            part.bottom - rectangle.top};
}

} // namespace

OMWndCanvas::OMWndCanvas(const Rect& rectangle)
    : OMCanvas(OMPlatform().display().screen().depth()), rectangle_(rectangle),
      visible_(visibleOnScreen(rectangle)) {}

OMPixels OMWndCanvas::pixels() {
    platform::Surface& screen = OMPlatform().display().screen();
    const OMPixels all{screen.row(0), screen.stride(), screen.bounds(), screen.bytesPerPixel()};
    std::uint8_t* first =
        visible_.empty() ? nullptr
                         : all.at(rectangle_.left + visible_.left, rectangle_.top + visible_.top);
    return {first, all.stride, visible_, all.bytesPerPixel};
}

void OMWndCanvas::applyPalette() {
    constexpr std::size_t kFirst = platform::kFirstFreeColour;
    constexpr std::size_t kCount = platform::kFirstHighStaticColour - kFirst;
    OMPlatform().display().setPalette(platform::kFirstFreeColour,
                                      std::span(devicePalette()).subspan(kFirst, kCount));
}

void OMWndCanvas::setCursor(int id) {
    if (cursor_ == id) return;
    cursor_ = id;
    OMPlatform().display().setCursor(id);
}

void OMWndCanvas::show(const OMRegion& region) {
    for (const Rect& part : region.rectangles())
        OMPlatform().display().present({part.left + rectangle_.left, part.top + rectangle_.top,
                                        part.right + rectangle_.left,
                                        part.bottom + rectangle_.top});
}
