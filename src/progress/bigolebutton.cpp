#include "progress/bigolebutton.h"

#include <iterator>
#include <utility>

namespace {

constexpr int kFirstState = 1;
constexpr int kLooks = 2; ///< plain and selected

int stateOf(world::LevelColor color, bool selected) {
    return kFirstState + kLooks * static_cast<int>(color) + (selected ? 1 : 0);
}

} // namespace

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
