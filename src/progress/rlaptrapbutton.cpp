#include "progress/rlaptrapbutton.h"

#include "omtrinketwindow.h"

#include <utility>

using platform::Point;

namespace {

constexpr int kCheckedState = 1;
constexpr int kUncheckedState = 2;

constexpr int kFirstState = 1;
constexpr int kLooks = 2; ///< plain and selected

int stateOf(world::LevelColor color, bool selected) {
    return kFirstState + kLooks * static_cast<int>(color) + (selected ? 1 : 0);
}

} // namespace

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

// The kinds

MapButton::MapButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y,
                     int location)
    : LapTrapButton(window, std::move(image), id, x, y), location_(location) {}

void MapButton::update(bool isHere, int visits) {
    const Look look = isHere ? Look::Here : visits >= 1 ? Look::Visited : Look::NeverVisited;
    showState(static_cast<int>(look));
}

AutoLevelCheckBox::AutoLevelCheckBox(OMTrinketWindow& window, std::shared_ptr<AOImage> image,
                                     int id, int x, int y, int location)
    : LapTrapButton(window, std::move(image), id, x, y), location_(location) {
    setChecked(true);
}

void AutoLevelCheckBox::setChecked(bool checked) {
    checked_ = checked;
    showState(checked ? kCheckedState : kUncheckedState);
}

BigOleButton::BigOleButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x,
                           int y)
    : LapTrapButton(window, std::move(image), id, x, y) {
    showLook();
}

void BigOleButton::setColor(world::LevelColor color) {
    color_ = color;
    showLook();
}

void BigOleButton::setSelected(bool selected) {
    selected_ = selected;
    showLook();
}

void BigOleButton::showLook() {
    const int state = stateOf(color_, selected_);
    showState(hasState(state) ? state : stateOf(world::LevelColor::None, selected_));
}

void BigOleButtonGroup::add(BigOleButton* button) {
    buttons_.push_back(button);
    if (!button) return;
    button->setPressedLink([this, number = static_cast<int>(buttons_.size())] {
        const PressedLink pressed = pressed_;
        pressed(number);
    });
}

void BigOleButtonGroup::select(int number) {
    for (int each = 1; each <= std::ssize(buttons_); ++each)
        if (button(each)) button(each)->setSelected(each == number);
}
