#include "progress/autolevelcheckbox.h"

#include <utility>

namespace {

constexpr int kCheckedState = 1;
constexpr int kUncheckedState = 2;

} // namespace

AutoLevelCheckBox::AutoLevelCheckBox(OMTrinketWindow& window, std::shared_ptr<AOImage> image,
                                     int id, int x, int y, int location)
    : LapTrapButton(window, std::move(image), id, x, y), location_(location) {
    setChecked(true);
}

void AutoLevelCheckBox::setChecked(bool checked) {
    checked_ = checked;
    showState(checked ? kCheckedState : kUncheckedState);
}
