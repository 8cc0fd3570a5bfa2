#include "platform/headless/headlessdisplay.h"

#include "platform/host/pngwriter.h"

namespace platform {

void HeadlessDisplay::setPalette(int first, std::span<const Rgb> colours) {
    screen_.setPalette(first, colours);
}

const std::array<Rgb, kPaletteSize>& HeadlessDisplay::palette() const { return screen_.palette(); }

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
    return writePng(hostPath, screen_.shown(), screen_.palette());
}

} // namespace platform
