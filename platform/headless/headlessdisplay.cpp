#include "platform/headless/headlessdisplay.h"

#include "platform/host/screen/png.h"

namespace platform {

namespace {

constexpr int kArrow = -1; ///< the cursor before any was set

} // namespace

void HeadlessDisplay::setTitle(std::string_view title) {
    if (title_ == title) return;
    title_ = title;
    notices_.line("title", {title});
}

void HeadlessDisplay::setCursor(const Cursor& cursor) {
    if (cursor_ == cursor.id()) return;
    cursor_ = cursor.id();
    if (cursorIsShown_) notices_.line("cursor", {std::to_string(cursor.id())});
}

void HeadlessDisplay::showCursor(bool on) {
    if (on == cursorIsShown_) return;
    cursorIsShown_ = on;
    notices_.line("cursor", {on ? std::to_string(cursor_.value_or(kArrow)) : "none"});
}

bool HeadlessDisplay::saveScreenshot(const std::string& hostPath) {
    flush();
    return writePng(hostPath, seen(), palette());
}

} // namespace platform
