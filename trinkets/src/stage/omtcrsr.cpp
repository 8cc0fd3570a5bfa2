#include "omtcrsr.h"

#include "omdebug.h"
#include "omplatform.h"
#include "omtask.h"
#include "omtrinketwindow.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::uint32_t kTaskPriority = 2; ///< in each pass before copies and scripts

} // namespace

OMTCursor::~OMTCursor() {
    if (imCurrent()) uninstall();
}

void OMTCursor::install(OMTrinketWindow& window) {
    if (window_ == &window) return;
    if (window_) uninstall();
    if (OMTCursor* before = window.managedCursor()) before->uninstall();
    window_ = &window;
    window.managedCursor_ = this;
    window.cursorMove() = {[this](platform::Point point) { moved(point); }, this};
    window.putCursor(OMTrinketWindow::findCursor(id_));
    installed();
}

void OMTCursor::uninstall() {
    if (!OMDebug::check(imCurrent(), "!imCurrent()", "Uninstalling non-current cursor")) return;
    OMTrinketWindow& window = *window_;
    if (hearsMoves()) window.cursorMove() = {};
    windowGone();
    window.managedCursor_ = nullptr;
    window.putCursor(OMTrinketWindow::findCursor(window.input().wantedCursor()));
}

void OMTCursor::set(int id) {
    if (!OMDebug::check(imCurrent(), "!imCurrent()", "Setting non-current cursor") || !hearsMoves())
        return;
    id_ = id;
    window_->putCursor(OMTrinketWindow::findCursor(id));
}

/// Whoever replaces the link of the current cursor leaves it without a pointer to follow.
bool OMTCursor::hearsMoves() const {
    return OMDebug::check(window_->cursorMove().instance == this,
                          "!l || (this != l->getInstance())",
                          "CursorMove link not set for current OMTCursor");
}

void OMTCursor::windowGone() {
    window_ = nullptr;
    uninstalled();
}

// A row of cursors

OMAnimCursor::OMAnimCursor(std::vector<int> ids, std::uint32_t msPerPicture)
    : OMTCursor(ids.empty() ? OMTrinket::defaultCursor : ids.front()), ids_(std::move(ids)),
      msPerPicture_(std::max(msPerPicture, 1U)) {
    if (ids_.empty()) ids_.push_back(id());
}

OMAnimCursor::~OMAnimCursor() {
    if (imCurrent()) uninstall();
}

void OMAnimCursor::installed() {
    sinceMs_ = OMMilliseconds();
    task_ = std::make_unique<OMTask>(OMLinkToObj(this, &OMAnimCursor::step), kTaskPriority);
}

void OMAnimCursor::uninstalled() { task_.reset(); }

/// Passes over those whose time went by meanwhile.
void OMAnimCursor::step() {
    const std::uint32_t steps = (OMMilliseconds() - sinceMs_) / msPerPicture_;
    if (steps == 0) return;
    sinceMs_ += steps * msPerPicture_;
    shown_ = (shown_ + steps) % ids_.size();
    set(ids_[shown_]);
}
