#include "platform/host/shownscreen.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace platform {

namespace {

int surfaceDepth(int depth) { return depth <= 8 ? 8 : std::min((depth + 7) / 8 * 8, 32); }

} // namespace

ShownScreen::ShownScreen(const ScreenMode& mode)
    : mode_(mode), drawn_(mode.width, mode.height, surfaceDepth(mode.depth)), shown_(drawn_),
      palette_(staticPalette()) {
    mode_.width = drawn_.width();
    mode_.height = drawn_.height();
}

Rect ShownScreen::present(const Rect& area) {
    const Rect part = intersection(area, drawn_.bounds());
    if (part.empty()) return {};
    const auto bytes = static_cast<std::size_t>(part.width() * drawn_.bytesPerPixel());
    const int offset = part.left * drawn_.bytesPerPixel();
    for (int y = part.top; y < part.bottom; ++y) {
        std::copy_n(drawn_.row(y) + offset, bytes, shown_.row(y) + offset);
    }
    return part;
}

bool ShownScreen::setPalette(int first, std::span<const Rgb> colours) {
    if (drawn_.depth() > 8) return false;
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
    return changed;
}

} // namespace platform
