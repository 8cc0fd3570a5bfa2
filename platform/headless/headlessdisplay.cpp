#include "platform/headless/headlessdisplay.h"

#include "platform/host/pngwriter.h"

namespace platform {

void HeadlessDisplay::setTitle(std::string_view title) {
    if (title_ == title) return;
    title_ = title;
    report_.line("title", {title});
}

void HeadlessDisplay::setCursor(const Cursor& cursor) {
    if (cursor_ == cursor.id()) return;
    cursor_ = cursor.id();
    report_.line("cursor", {std::to_string(cursor.id())});
}

bool HeadlessDisplay::saveScreenshot(const std::string& hostPath) const {
    return writePng(hostPath, shown(), palette());
}

} // namespace platform
