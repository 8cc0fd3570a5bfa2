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

void copyPart(const Surface& from, Surface& to, const Rect& part) {
    const auto bytes = static_cast<std::size_t>(part.width() * from.bytesPerPixel());
    const int offset = part.left * from.bytesPerPixel();
    for (int y = part.top; y < part.bottom; ++y)
        std::copy_n(from.row(y) + offset, bytes, to.row(y) + offset);
}

// The mark is a frame of lines, the outer and the inner one in another colour than those between.
constexpr int kMarkLines = 5;
constexpr int kMarkDistance = 4; ///< of the outer line from what it is around; pixels

constexpr Rect inset(const Rect& r, int pixels) {
    return {r.left + pixels, r.top + pixels, r.right - pixels, r.bottom - pixels};
}

/// The whole of it, inside of the screen.
Rect placeOf(const Mark& mark, const Rect& screen) {
    return intersection(inset(mark.around, -kMarkDistance), screen);
}

/// White has all bits of a pixel; it is a fixed entry where there are 8.
void fillRow(Surface& surface, int y, int left, int right, bool white) {
    const std::uint8_t bits = white ? 0xFF : 0;
    const auto size = static_cast<std::size_t>(surface.bytesPerPixel());
    std::uint8_t* pixel = surface.row(y) + static_cast<std::size_t>(left) * size;
    for (int x = left; x < right; ++x, pixel += size) {
        std::fill_n(pixel, std::min<std::size_t>(size, 3), bits);
        if (size == 2) pixel[1] &= 0x7F;
    }
}

void drawOutline(Surface& surface, const Rect& r, bool white) {
    if (r.empty()) return;
    for (int y = r.top; y < r.bottom; ++y) {
        const bool isEdge = y == r.top || y == r.bottom - 1;
        fillRow(surface, y, r.left, isEdge ? r.right : r.left + 1, white);
        if (!isEdge) fillRow(surface, y, r.right - 1, r.right, white);
    }
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
    copyPart(drawn_, shown_, part);
    if (marked_) {
        copyPart(drawn_, *marked_, part);
        drawMark();
    }
    tellChange(part);
}

void HostDisplay::setMark(const std::optional<Mark>& mark) {
    if (mark == mark_) return;
    const Rect before = mark_ ? placeOf(*mark_, shown_.bounds()) : Rect();
    mark_ = mark;
    if (!mark_)
        marked_.reset();
    else if (!marked_)
        marked_ = shown_;
    else if (!before.empty())
        copyPart(shown_, *marked_, before);
    drawMark();
    const Rect changed = mark_ ? hull(before, placeOf(*mark_, shown_.bounds())) : before;
    if (!changed.empty()) tellChange(changed);
}

void HostDisplay::drawMark() {
    if (!mark_ || !marked_) return;
    const Rect place = placeOf(*mark_, marked_->bounds());
    for (int line = 0; line < kMarkLines; ++line) {
        const bool isMiddle = line > 0 && line < kMarkLines - 1;
        drawOutline(*marked_, inset(place, line), isMiddle == mark_->isBright);
    }
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
    if (changed) tellChange(shown_.bounds());
}

void HostDisplay::tellChange(const Rect& part) {
    if (calm_) calm_->mark(part);
    shownChanged(part);
}

void HostDisplay::setCalm(bool on) {
    if (on == isCalm()) return;
    calm_.reset();
    if (on) calm_.emplace(shown(), palette_);
    shownChanged(shown().bounds());
}

Rect HostDisplay::calmDown(std::uint32_t nowMs) {
    return calm_ ? calm_->follow(shown(), palette_, nowMs) : Rect();
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
    if (marked_) marked_ = shown_;
    drawMark();
    backs_.clear();
    palette_ = staticPalette();
    lost_ = false;
    if (calm_) calm_.emplace(shown(), palette_);
    modeChanged();
    tellChange(shown_.bounds());
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
