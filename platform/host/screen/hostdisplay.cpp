#include "platform/host/screen/hostdisplay.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace platform {

namespace {

int surfaceDepth(int depth) { return depth <= 8 ? 8 : std::min((depth + 7) / 8 * 8, 32); }

Surface surfaceOf(const ScreenMode& mode) {
    return {mode.width, mode.height, surfaceDepth(mode.depth)};
}

} // namespace

HostDisplay::HostDisplay(const ScreenMode& mode)
    : mode_(mode), drawn_(surfaceOf(mode)), shown_(drawn_), palette_(staticPalette()) {
    mode_.width = drawn_.width();
    mode_.height = drawn_.height();
}

void HostDisplay::present(const Rect& area) {
    const Rect part = intersection(area, drawn_.bounds());
    if (part.empty() || lost_) return;
    const auto bytes = static_cast<std::size_t>(part.width() * drawn_.bytesPerPixel());
    const int offset = part.left * drawn_.bytesPerPixel();
    for (int y = part.top; y < part.bottom; ++y)
        std::copy_n(drawn_.row(y) + offset, bytes, shown_.row(y) + offset);
    shownChanged(part);
}

void HostDisplay::setPalette(int first, std::span<const Rgb> colours) {
    if (drawn_.depth() > 8) return;
    bool changed = false;
    std::int64_t entry = first;
    for (const Rgb& colour : colours) {
        const bool free = entry >= kFirstFreeColour && entry < kFirstHighStaticColour;
        if (free && palette_[static_cast<std::size_t>(entry)] != colour) {
            palette_[static_cast<std::size_t>(entry)] = colour;
            changed = true;
        }
        ++entry;
    }
    if (changed) shownChanged(shown_.bounds());
}

// Exclusive mode

bool HostDisplay::canBeExclusive(const ScreenMode& mode) const {
    const bool depthExists =
        mode.depth == 8 || mode.depth == 16 || mode.depth == 24 || mode.depth == 32;
    return driver_ == Driver::Whole && depthExists && mode.width >= 1 && mode.width <= kMaxSide &&
           mode.height >= 1 && mode.height <= kMaxSide;
}

bool HostDisplay::enterExclusive(const ScreenMode& mode) {
    if (!canBeExclusive(mode)) return false;
    if (!desktop_) desktop_ = mode_;
    change(mode);
    return true;
}

void HostDisplay::leaveExclusive() {
    if (desktop_) change(*std::exchange(desktop_, std::nullopt));
}

void HostDisplay::change(const ScreenMode& mode) {
    mode_ = mode;
    drawn_ = surfaceOf(mode);
    shown_ = drawn_;
    backs_.clear();
    palette_ = staticPalette();
    lost_ = false;
    modeChanged();
    shownChanged(shown_.bounds());
}

bool HostDisplay::makeFlipChain(int backs) {
    if (!isExclusive()) return false;
    const auto count = static_cast<std::size_t>(std::clamp(backs, 0, kMaxBacks));
    backs_.assign(count, surfaceOf(mode_));
    return true;
}

FlipResult HostDisplay::flip() {
    if (lost_) return FlipResult::Lost;
    if (backs_.empty()) return FlipResult::NoChain;
    std::swap(drawn_, backs_.front());
    std::rotate(backs_.begin(), backs_.begin() + 1, backs_.end());
    present(drawn_.bounds());
    return FlipResult::Shown;
}

void HostDisplay::setInForeground(bool inForeground) {
    inForeground_ = inForeground;
    if (!inForeground && isExclusive()) {
        lost_ = true;
        blacken();
    }
}

bool HostDisplay::restore() {
    if (!inForeground_) return false;
    if (std::exchange(lost_, false)) blacken();
    return true;
}

std::unique_ptr<Cursor> HostDisplay::makeCursor(int id) { return std::make_unique<Cursor>(id); }

std::unique_ptr<Cursor> HostDisplay::makeCursor(int id, const CursorImage& image) {
    return image.isWhole() ? std::make_unique<Cursor>(id) : nullptr;
}

void HostDisplay::blacken() {
    drawn_ = surfaceOf(mode_);
    for (Surface& surface : backs_) surface = drawn_;
}

} // namespace platform
