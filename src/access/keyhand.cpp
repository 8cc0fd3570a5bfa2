#include "access/keyhand.h"

#include "omticks.h"

using platform::Message;
using platform::Point;

namespace {

constexpr std::uint32_t kPressMs = 80;   ///< of a click
constexpr std::uint32_t kBetweenMs = 80; ///< two clicks of a double click

} // namespace

void KeyHand::moveTo(Point point) {
    pointer_ = point;
    add(Message::Kind::MouseMove);
}

void KeyHand::press() {
    if (pressed_) return;
    pressed_ = true;
    add(Message::Kind::MouseDown);
}

void KeyHand::release() {
    if (!pressed_) return;
    pressed_ = false;
    add(Message::Kind::MouseUp, kPressMs);
}

void KeyHand::click() {
    press();
    release();
}

void KeyHand::clickTwice() {
    click();
    add(Message::Kind::DoubleClick, kBetweenMs);
    add(Message::Kind::MouseUp, kPressMs);
}

void KeyHand::mouseMoved(Point screen) {
    if (isBusy()) return;
    pointer_ = {screen.x - window_.rectangle().left, screen.y - window_.rectangle().top};
}

void KeyHand::mouseReleased() {
    waiting_.clear();
    pressed_ = false;
}

void KeyHand::step() {
    const std::uint32_t now = OMMilliseconds();
    if (waiting_.empty() || now - lastMs_ < waiting_.front().restMs) return;
    const Deed deed = waiting_.front();
    waiting_.pop_front();
    lastMs_ = now;
    app_.post({.kind = deed.kind,
               .timeMs = now,
               .position = {deed.point.x + window_.rectangle().left,
                            deed.point.y + window_.rectangle().top}});
}
