#include "omtrinketinput.h"

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

OMTrinketInput::~OMTrinketInput() {
    for (ClickTaker* taker : clickTakers_) taker->input_ = nullptr;
}

// Who has the mouse

/// A trinket that was held until now is so no longer.
void OMTrinketInput::setTarget(OMTrinket& trinket) {
    if (target_ && target_->mouseState_ == MouseState::Held)
        target_->mouseState_ = MouseState::Idle;
    target_ = &trinket;
}

void OMTrinketInput::releaseTarget(const OMTrinket& trinket) {
    if (target_ == &trinket) target_ = nullptr;
}

/// A capture is not passed on: only who made it gives it back.
void OMTrinketInput::handOver(const OMTrinket& trinket, OMTrinket& group) {
    if (target_ == &trinket && (isHolding() || isPressing())) {
        target_ = &group;
        group.mouseState_ = trinket.mouseState_;
    }
    if (flyOver_ != &trinket) return;
    flyOver_ = &group;
    if (!target_)
        window_.showCursor(group.containsPoint(lastMouse_) ? wantedCursor()
                                                           : OMTrinket::defaultCursor);
}

void OMTrinketInput::trinketGoes(const OMTrinket& trinket) {
    const bool ownsCursor = flyOver_ == &trinket || target_ == &trinket;
    releaseTarget(trinket);
    if (flyOver_ == &trinket) flyOver_ = nullptr;
    if (ownsCursor && !target_) window_.showCursor(OMTrinket::defaultCursor);
}

bool OMTrinketInput::isHolding() const {
    return target_ && target_->mouseState() == MouseState::Held;
}

bool OMTrinketInput::isPressing() const {
    return target_ && target_->mouseState() == MouseState::Idle;
}

int OMTrinketInput::wantedCursor() const {
    if (!cursorManagement_) return OMTrinket::defaultCursor;
    if (isHolding()) return target_->grabCursor();
    return flyOver_ ? flyOver_->cursor() : OMTrinket::defaultCursor;
}

void OMTrinketInput::updateCursor() {
    if (!isHolding() && !isPressing())
        updateFlyOver();
    else if (cursorManagement_)
        window_.showCursor(wantedCursor());
}

bool OMTrinketInput::accepts(Kind kind) {
    tellLostRelease();
    if (disabled_) return false;
    const auto hook = window_.hooks().input;
    hook(kind);
    return true;
}

OMTrinket* OMTrinketInput::hitTest(Point point) const {
    return window_.findTrinket([&](const OMTrinket& trinket) {
        return trinket.isShown() && trinket.isTouchy() &&
               hears(trinket, OMTrinket::kIgnoreMouseDown) && trinket.containsPoint(point);
    });
}

// Mouse down

void OMTrinketInput::mouseDown(Point point) {
    const OMUnderWay underWay;
    if (!accepts(Kind::MouseDown)) return;
    lastMouse_ = point;
    if (!window_.hearsPresses()) return;
    if (pressTarget(point)) return;
    const bool inside = OMContains(window_.canvas().bounds(), point);
    route(inside ? window_.background() : nullptr, &OMTBackground::mouseDown,
          OMTBackground::kIgnoreMouseDown, defaults_.mouseDown, point);
}

/// False when no trinket takes the press.
bool OMTrinketInput::pressTarget(Point point) {
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

void OMTrinketInput::beginHolding(OMTrinket& trinket, Point point) {
    trinket.onBeginDrag(point);
    if (target_ != &trinket && !isPressing()) return;
    if (cursorManagement_) window_.showCursor(target_->grabCursor());
    if (releaseLost_)
        target_ = nullptr;
    else if (isPressing())
        target_->mouseState_ = MouseState::Held;
}

/// Into the chain below the first one that swallows the clicks, which keeps who had them.
OMTrinketInput::ClickTaker::ClickTaker(OMTrinketWindow& window, MouseLink link)
    : input_(&window.input()), swallows_(!link) {
    std::vector<ClickTaker*>& takers = input_->clickTakers_;
    const auto above =
        swallows_ ? takers.end()
                  : std::ranges::find_if(takers, [](const auto* each) { return each->swallows_; });
    MouseLink& place = above == takers.end() ? input_->defaults_.mouseDown : (*above)->before_;
    before_ = std::exchange(place, std::move(link));
    takers.insert(above, this);
}

/// One that leaves the middle of the chain hands what it kept to the next.
OMTrinketInput::ClickTaker::~ClickTaker() {
    if (!input_) return;
    std::vector<ClickTaker*>& takers = input_->clickTakers_;
    const auto next = takers.erase(std::ranges::find(takers, this));
    (next == takers.end() ? input_->defaults_.mouseDown : (*next)->before_) = std::move(before_);
}

// Mouse up

void OMTrinketInput::mouseUp(Point point) {
    const OMUnderWay underWay;
    if (!accepts(Kind::MouseUp)) return;
    OMTrinket* trinket = target_;
    if (trinket && hears(*trinket, OMTrinket::kIgnoreMouseUp)) {
        dropTarget(*trinket, point);
    } else {
        // A button that is up holds nothing, whether the trinket hears of it or not.
        if (trinket && trinket->mouseState_ == MouseState::Held) {
            trinket->mouseState_ = MouseState::Idle;
            target_ = nullptr;
        }
        route(window_.background(), &OMTBackground::mouseUp, OMTBackground::kIgnoreMouseUp,
              defaults_.mouseUp, point);
    }
    updateFlyOver(point);
}

void OMTrinketInput::mouseReleaseLost() {
    releaseLost_ = true;
    letGo_.watch(target_);
    if (!target_ || target_->mouseState_ != MouseState::Held) return;
    target_->clearOvershoot();
    target_->mouseState_ = MouseState::Idle;
    if (cursorManagement_) target_->setCursor();
    target_ = nullptr;
}

/// Later, outside of whatever has shown the box that took the release.
void OMTrinketInput::tellLostRelease() {
    auto* trinket = static_cast<OMTrinket*>(letGo_.object());
    letGo_.watch(nullptr);
    if (trinket) trinket->onReleaseLost();
}

void OMTrinketInput::dropTarget(OMTrinket& trinket, Point point) {
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

void OMTrinketInput::mouseMove(Point point) {
    const OMUnderWay underWay;
    if (!accepts(Kind::MouseMove)) return;
    const int dx = point.x - lastMouse_.x;
    const int dy = point.y - lastMouse_.y;
    lastMouse_ = point;
    const MouseLink cursorMoved = window_.cursorMove().link;
    cursorMoved(point);
    if (target_ && hears(*target_, OMTrinket::kIgnoreMouseMove)) {
        moveTarget(*target_, point, dx, dy);
        return;
    }
    route(window_.background(), &OMTBackground::mouseMove, OMTBackground::kIgnoreMouseMove,
          defaults_.mouseMove, point);
    updateFlyOver(point);
}

void OMTrinketInput::moveTarget(OMTrinket& trinket, Point point, int dx, int dy) {
    trinket.onMouseMove(point);
    if (!trinket.isRetired() && trinket.isMovable()) trinket.dragBy(dx, dy);
    if (trinket.mouseState_ == MouseState::CapturedFlying) updateFlyOver(point);
}

// Double click

void OMTrinketInput::doubleClick(Point point) {
    const OMUnderWay underWay;
    if (!accepts(Kind::DoubleClick)) return;
    lastMouse_ = point;
    if (!window_.hearsPresses()) return;
    if (!target_) target_ = hitTest(point);
    OMTrinket* trinket = target_;
    const bool heard = trinket && hears(*trinket, OMTrinket::kIgnoreDoubleClick);
    if (heard) {
        trinket->onDoubleClick(point);
        trinket->fireEvent("dblClick");
    }
    if (isPressing()) target_ = nullptr;
    if (!heard)
        route(window_.background(), &OMTBackground::doubleClick, OMTBackground::kIgnoreDoubleClick,
              defaults_.doubleClick, point);
}

// Fly-over

void OMTrinketInput::updateFlyOver(Point point) {
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
    if (!flyOver_) window_.showCursor(OMTrinket::defaultCursor);
}

void OMTrinketInput::leave(OMTrinket& trinket) {
    if (!hears(trinket, OMTrinket::kNoFlyOff)) return;
    trinket.onFlyOff();
    trinket.fireEvent("flyOff");
}

void OMTrinketInput::enter(OMTrinket& trinket) {
    if (hears(trinket, OMTrinket::kNoFlyOn)) {
        trinket.onFlyOn();
        trinket.fireEvent("flyOn");
    }
    if (flyOver_ == &trinket && cursorManagement_) trinket.setCursor();
}

// Keyboard

void OMTrinketInput::key(const platform::KeyPress& press) {
    const OMUnderWay underWay;
    if (!accepts(Kind::Key)) return;
    if (focus_ && hears(*focus_, OMTrinket::kIgnoreKeys)) {
        focus_->onKey(press);
        return;
    }
    const auto link = defaults_.key;
    link(press);
}

void OMTrinketInput::setFocus(OMTrinket& trinket) {
    if (focus_ == &trinket) return;
    OMTrinket* before = std::exchange(focus_, &trinket);
    if (before) before->onFocusLost();
}

void OMTrinketInput::clearFocus() {
    OMTrinket* before = std::exchange(focus_, nullptr);
    if (before) before->onFocusLost();
}
