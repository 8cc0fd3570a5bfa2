// The way of mouse and keys through the trinket window.
//
// A handler may have any trinket retire, or take the mouse for another; what comes after a call
// into a trinket therefore asks again. What a trinket that goes has of the mouse, its group has
// from then on.

#include "omtrinketwindow.h"

#include <algorithm>
#include <utility>

using platform::Point;

namespace {

using MouseState = OMTrinket::MouseState;

bool hears(const OMTrinket& trinket, std::uint32_t ignoring) {
    return (trinket.eventMask() & ignoring) == 0;
}

/// To the background's handler, or to the window's default where it has none or ignores the mouse.
void route(const OMTBackground* background, OMTBackground::MouseLink OMTBackground::*handler,
           std::uint32_t ignoring, OMTrinket::MouseLink fallback, Point point) {
    if (!background || !(background->*handler) || (background->eventMask() & ignoring) != 0) {
        fallback(point);
        return;
    }
    const auto link = background->*handler; // survives a handler that replaces the background
    link(point);
}

} // namespace

bool OMTrinketWindow::acceptsInput(Input kind) {
    tellLostRelease();
    if (inputDisabled_) return false;
    const auto hook = hooks_.input;
    hook(kind);
    return true;
}

OMTrinket* OMTrinketWindow::hitTest(Point point) const {
    return trinkets_.findLast([&](const OMTrinket& trinket) {
        return trinket.isShown() && trinket.isTouchy() &&
               hears(trinket, OMTrinket::kIgnoreMouseDown) && trinket.containsPoint(point);
    });
}

// Mouse down

void OMTrinketWindow::mouseDown(Point point) {
    if (!acceptsInput(Input::MouseDown)) return;
    lastMouse_ = point;
    if (!hearsPresses()) return;
    if (pressTarget(point)) return;
    const bool inside = OMContains(canvas_.bounds(), point);
    route(inside ? background_.get() : nullptr, &OMTBackground::mouseDown,
          OMTBackground::kIgnoreMouseDown, defaults_.mouseDown, point);
}

/// False when no trinket takes the press.
bool OMTrinketWindow::pressTarget(Point point) {
    if (!target_) target_ = hitTest(point);
    if (!target_) return false;
    OMTrinket& trinket = *target_;
    releaseLost_ = false;
    if (!hears(trinket, OMTrinket::kIgnoreMouseDown)) return true;
    trinket.onMouseDown(point);
    trinket.fireEvent("mouseDown");
    if (target_ != &trinket && !isPressing()) return true;
    if (target_->isMovable() && !releaseLost_)
        beginHolding(*target_, point);
    else if (isPressing())
        target_ = nullptr;
    return true;
}

void OMTrinketWindow::beginHolding(OMTrinket& trinket, Point point) {
    trinket.onBeginDrag(point);
    if (target_ != &trinket && !isPressing()) return;
    if (cursorManagement_) showCursor(target_->grabCursor());
    if (releaseLost_)
        target_ = nullptr;
    else if (isPressing())
        target_->mouseState_ = MouseState::Held;
}

/// Into the chain below the first one that swallows the clicks, which keeps who had them.
OMTrinketWindow::ClickTaker::ClickTaker(OMTrinketWindow& window, MouseLink link)
    : window_(&window), swallows_(!link) {
    std::vector<ClickTaker*>& takers = window.clickTakers_;
    const auto above =
        swallows_ ? takers.end()
                  : std::ranges::find_if(takers, [](const auto* each) { return each->swallows_; });
    MouseLink& place = above == takers.end() ? window.defaults_.mouseDown : (*above)->before_;
    before_ = std::exchange(place, std::move(link));
    takers.insert(above, this);
}

/// One that leaves the middle of the chain hands what it kept to the next.
OMTrinketWindow::ClickTaker::~ClickTaker() {
    if (!window_) return;
    std::vector<ClickTaker*>& takers = window_->clickTakers_;
    const auto next = takers.erase(std::ranges::find(takers, this));
    (next == takers.end() ? window_->defaults_.mouseDown : (*next)->before_) = std::move(before_);
}

// Mouse up

void OMTrinketWindow::mouseUp(Point point) {
    if (!acceptsInput(Input::MouseUp)) return;
    OMTrinket* trinket = target_;
    if (trinket && hears(*trinket, OMTrinket::kIgnoreMouseUp)) {
        dropTarget(*trinket, point);
    } else {
        // A button that is up holds nothing, whether the trinket hears of it or not.
        if (trinket && trinket->mouseState_ == MouseState::Held) {
            trinket->mouseState_ = MouseState::Idle;
            target_ = nullptr;
        }
        route(background_.get(), &OMTBackground::mouseUp, OMTBackground::kIgnoreMouseUp,
              defaults_.mouseUp, point);
    }
    updateFlyOver(point);
}

void OMTrinketWindow::mouseReleaseLost() {
    releaseLost_ = true;
    letGo_.watch(target_);
    if (!target_ || target_->mouseState_ != MouseState::Held) return;
    target_->clearOvershoot();
    target_->mouseState_ = MouseState::Idle;
    if (cursorManagement_) target_->setCursor();
    target_ = nullptr;
}

/// Later, outside of whatever has shown the box that took the release.
void OMTrinketWindow::tellLostRelease() {
    auto* trinket = static_cast<OMTrinket*>(letGo_.object());
    letGo_.watch(nullptr);
    if (trinket) trinket->onReleaseLost();
}

void OMTrinketWindow::dropTarget(OMTrinket& trinket, Point point) {
    trinket.clearOvershoot();
    if (cursorManagement_) trinket.setCursor();
    trinket.onDrop(point);
    if (!trinket.isRetired()) trinket.onMouseUp(point);
    trinket.fireEvent("mouseUp");
    OMTrinket* held = trinket.isRetired() ? target_ : &trinket;
    if (!held || held->mouseState_ != MouseState::Held) return;
    held->mouseState_ = MouseState::Idle;
    releaseTarget(*held);
}

// Mouse move

void OMTrinketWindow::mouseMove(Point point) {
    if (!acceptsInput(Input::MouseMove)) return;
    const int dx = point.x - lastMouse_.x;
    const int dy = point.y - lastMouse_.y;
    lastMouse_ = point;
    const MouseLink cursorMoved = cursorMove_.link;
    cursorMoved(point);
    if (target_ && hears(*target_, OMTrinket::kIgnoreMouseMove)) {
        moveTarget(*target_, point, dx, dy);
        return;
    }
    route(background_.get(), &OMTBackground::mouseMove, OMTBackground::kIgnoreMouseMove,
          defaults_.mouseMove, point);
    updateFlyOver(point);
}

void OMTrinketWindow::moveTarget(OMTrinket& trinket, Point point, int dx, int dy) {
    trinket.onMouseMove(point);
    if (!trinket.isRetired() && trinket.isMovable()) trinket.dragBy(dx, dy);
    if (trinket.mouseState_ == MouseState::CapturedFlying) updateFlyOver(point);
}

// Double click

void OMTrinketWindow::doubleClick(Point point) {
    if (!acceptsInput(Input::DoubleClick)) return;
    lastMouse_ = point;
    if (!hearsPresses()) return;
    if (!target_) target_ = hitTest(point);
    OMTrinket* trinket = target_;
    const bool heard = trinket && hears(*trinket, OMTrinket::kIgnoreDoubleClick);
    if (heard) {
        trinket->onDoubleClick(point);
        trinket->fireEvent("dblClick");
    }
    if (isPressing()) target_ = nullptr;
    if (!heard)
        route(background_.get(), &OMTBackground::doubleClick, OMTBackground::kIgnoreDoubleClick,
              defaults_.doubleClick, point);
}

// Fly-over

void OMTrinketWindow::updateFlyOver(Point point) {
    if (target_ && target_->mouseState_ != MouseState::CapturedFlying) return;
    OMTrinket* under = hitTest(point);
    if (under != flyOver_) {
        if (OMTrinket* left = std::exchange(flyOver_, nullptr)) leave(*left);
        if (flyOver_) return;
        if (under && !under->isRetired()) {
            flyOver_ = under; // only now: its group is not told of leaving what it did not enter
            enter(*under);
        }
    } else if (under && cursorManagement_ && !target_) {
        under->setCursor(); // it may have got another one since the pointer came
    }
    if (!flyOver_) showCursor(OMTrinket::defaultCursor);
}

void OMTrinketWindow::leave(OMTrinket& trinket) {
    if (!hears(trinket, OMTrinket::kNoFlyOff)) return;
    trinket.onFlyOff();
    trinket.fireEvent("flyOff");
}

void OMTrinketWindow::enter(OMTrinket& trinket) {
    if (hears(trinket, OMTrinket::kNoFlyOn)) {
        trinket.onFlyOn();
        trinket.fireEvent("flyOn");
    }
    if (flyOver_ == &trinket && cursorManagement_) trinket.setCursor();
}

// Keyboard

void OMTrinketWindow::key(const platform::KeyPress& press) {
    if (!acceptsInput(Input::Key)) return;
    if (focus_ && hears(*focus_, OMTrinket::kIgnoreKeys)) {
        focus_->onKey(press);
        return;
    }
    const auto link = defaults_.key;
    link(press);
}

void OMTrinketWindow::setFocus(OMTrinket& trinket) {
    if (focus_ == &trinket) return;
    OMTrinket* before = std::exchange(focus_, &trinket);
    if (before) before->onFocusLost();
}

void OMTrinketWindow::clearFocus() {
    OMTrinket* before = std::exchange(focus_, nullptr);
    if (before) before->onFocusLost();
}
