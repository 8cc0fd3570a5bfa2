#include "platform/headless/headlesstextwindow.h"

#include "platform/host/faces/textfont.h"

#include <algorithm>

namespace platform {

int HeadlessTextWindow::lineHeight() const { return textfont::kLineHeight; }

void HeadlessTextWindow::move(Point corner) {
    rectangle_ = {corner.x, corner.y, corner.x + rectangle_.width(),
                  corner.y + rectangle_.height()};
}

void HeadlessTextWindow::show(std::span<const std::string> lines, std::size_t fresh) {
    for (const std::string& line : lines.last(std::min(fresh, lines.size())))
        notices_.line("debug", {line});
}

} // namespace platform
