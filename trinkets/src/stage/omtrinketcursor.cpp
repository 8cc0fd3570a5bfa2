// The cursors of the trinket window: those of trinkets, which follow the pointer, and the one that
// an object manages.

#include "omcursor.h"
#include "omdebug.h"
#include "omid.h"
#include "omtrinketwindow.h"

OMTrinketWindow::CursorLocator OMTrinketWindow::cursorLocator_;

std::shared_ptr<const OMCursor> OMTrinketWindow::findCursor(int id) {
    auto cursor = cursorLocator_ ? cursorLocator_(id) : id < 0 ? OMCursor::load(id) : nullptr;
    return cursor ? cursor : OMCursor::load(kOMCursorArrow);
}

void OMTrinketWindow::showCursor(int id) {
    if (!managedCursor_ && canvas_.cursor()->id() != id) putCursor(findCursor(id));
}

void OMTrinketWindow::putCursor(std::shared_ptr<const OMCursor> cursor) {
    canvas_.setCursor(std::move(cursor));
}

bool OMTrinketWindow::isHolding() const {
    return target_ && target_->mouseState() == OMTrinket::MouseState::Held;
}

bool OMTrinketWindow::isPressing() const {
    return target_ && target_->mouseState() == OMTrinket::MouseState::Idle;
}

int OMTrinketWindow::wantedCursor() const {
    if (!cursorManagement_) return OMTrinket::defaultCursor;
    if (isHolding()) return target_->grabCursor();
    return flyOver_ ? flyOver_->cursor() : OMTrinket::defaultCursor;
}

void OMTrinketWindow::updateCursor() {
    if (!isHolding() && !isPressing())
        updateFlyOver();
    else if (cursorManagement_)
        showCursor(wantedCursor());
}

void OMSetCursors(OMTrinket& trinket, std::optional<int> normal, std::optional<int> grab,
                  const char* message) {
    if (!OMDebug::check(OMTrinketWindow::hasCursorLocator(), "cursorURL == NULL", message)) return;
    const auto numberOf = [](int id) { return OMTrinketWindow::findCursor(OMNarrowId(id))->id(); };
    const int normalId = normal.value_or(OMTrinket::defaultCursor);
    const int grabId = grab.value_or(normal.value_or(OMTrinket::defaultGrabCursor));
    trinket.setCursors(numberOf(normalId), numberOf(grabId));
    if (OMTrinketWindow* window = trinket.window()) window->updateCursor();
}
