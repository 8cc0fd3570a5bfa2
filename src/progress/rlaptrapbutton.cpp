#include "progress/rlaptrapbutton.h"

#include "omtrinketwindow.h"

#include <utility>

using platform::Point;

LapTrapButton::LapTrapButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x,
                             int y)
    : OMAnimation(window, std::move(image), id, x, y) {
    setMovable(false);
}

bool LapTrapButton::hasState(int state) const {
    return state <= (sequenceCount() > 1 ? sequenceCount() : frameCount());
}

void LapTrapButton::showState(int state) {
    if (state == state_ || !hasState(state)) return;
    state_ = state;
    if (sequenceCount() > 1) return setSequenceNumber(state);
    pause();
    setFrameNumber(state);
}

void LapTrapButton::setAttribute(Attribute which, int value, int second) {
    if (which == Attribute::Visible && state() == State::Stopped) value = 0;
    OMAnimation::setAttribute(which, value, second);
}

void LapTrapButton::onMouseDown(Point point) {
    OMAnimation::onMouseDown(point);
    if (!window()) return;
    held_ = true;
    setMouseCapture(true);
    track(point);
}

void LapTrapButton::onMouseMove(Point point) {
    OMAnimation::onMouseMove(point);
    if (held_ && window()) track(point);
}

void LapTrapButton::track(Point point) {
    if (containsPoint(point))
        window()->showCursor(grabCursor());
    else
        setCursor();
}

void LapTrapButton::onMouseUp(Point point) {
    OMAnimation::onMouseUp(point);
    if (!held_) return;
    letGo();
    // Meanwhile it may have been hidden, or the next scene may be on its way.
    if (!isShown() || !window()->isPresenting() || !containsPoint(point)) return;
    const OMLink pressed = pressed_;
    pressed();
}

void LapTrapButton::onReleaseLost() {
    if (held_) letGo();
}

void LapTrapButton::letGo() {
    held_ = false;
    setMouseCapture(false);
    setCursor();
}
