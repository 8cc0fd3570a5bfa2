#include "platform/headless/headlessdisplay.h"

#include "platform/host/pngwriter.h"

namespace platform {

void HeadlessDisplay::setTitle(std::string_view title) {
    if (title_ == title) return;
    title_ = title;
    report_.line("title", {title});
}

void HeadlessDisplay::setCursor(int id) {
    if (cursor_ == id) return;
    cursor_ = id;
    report_.line("cursor", {std::to_string(id)});
}

bool HeadlessDisplay::saveScreenshot(const std::string& hostPath) const {
    return writePng(hostPath, shown(), palette());
}

} // namespace platform
