#include "omdebugwindow.h"

#include "omapp.h"
#include "omdebug.h"
#include "omplatform.h"

#include <algorithm>

namespace {

constexpr const char* kClassName = "OMDebugWindow";
constexpr const char* kTitle = "OMDebug";
constexpr platform::Rect kPlace{50, 50, 50 + 300, 50 + 400};

} // namespace

void OMDebugWindow::show(std::string_view line) {
    if (!window_ && !open()) return;
    // A window that is too low for a line has none.
    const std::size_t count = capacity();
    if (count > 0) {
        keepNewest(count - 1);
        lines_.emplace_back(line);
    }
    paint(std::min<std::size_t>(count, 1));
}

void OMDebugWindow::showText(std::string_view text) {
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        show(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

platform::Rect OMDebugWindow::position() const {
    return window_ ? window_->rectangle() : platform::Rect{};
}

void OMDebugWindow::move(int x, int y) {
    if (window_) window_->move({x, y});
}

void OMDebugWindow::destroy() {
    window_.reset();
    lines_.clear();
}

bool OMDebugWindow::open() {
    OMDebug::require(OMApp::getApp() != nullptr, "OMApp::getApp() == NULL",
                     "OMDebugWindowCreate - must have an OMApp instance before using "
                     "OMDebugWindow!");
    window_ = OMPlatform().openTextWindow({kClassName, kTitle, kPlace}, *this);
    return window_ != nullptr;
}

std::size_t OMDebugWindow::capacity() const {
    const int lines = window_->rectangle().height() / std::max(window_->lineHeight(), 1);
    return static_cast<std::size_t>(std::max(lines, 0));
}

void OMDebugWindow::keepNewest(std::size_t count) {
    if (lines_.size() <= count) return;
    const auto surplus = static_cast<std::ptrdiff_t>(lines_.size() - count);
    lines_.erase(lines_.begin(), lines_.begin() + surplus);
}

void OMDebugWindow::paint(std::size_t fresh) {
    if (window_ && !window_->isMinimised()) window_->show(lines_, fresh);
}

void OMDebugWindow::resized() {
    if (!window_) return;
    keepNewest(capacity());
    paint(0);
}
