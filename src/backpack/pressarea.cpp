#include "pressarea.h"

#include "omtrinketwindow.h"

#include <utility>

using platform::Point;

PressArea::PressArea(OMTrinketWindow& window, const platform::Rect& area, OMLink pressed)
    : OMTrinket(window, UpdateStyle::Nothing, area), pressed_(std::move(pressed)) {
    setMovable(false);
}

void PressArea::onMouseDown(Point point) {
    OMTrinket::onMouseDown(point);
    if (isRetired()) return;
    held_ = true;
    setMouseCapture(true);
}

void PressArea::onMouseUp(Point point) {
    OMTrinket::onMouseUp(point);
    if (!std::exchange(held_, false)) return;
    setMouseCapture(false);
    // It may have been hidden meanwhile, or the next scene be on its way.
    const bool counts = isShown() && window()->isPresenting() && containsPoint(point);
    const OMLink pressed = pressed_;
    if (counts) pressed();
}

void PressArea::onReleaseLost() {
    held_ = false;
    setMouseCapture(false);
}
