// Small value types for places on the screen, shared by the platform interfaces.
#pragma once

#include <algorithm>

namespace platform {

struct Point {
    int x = 0;
    int y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

/// Half-open: `right` and `bottom` lie outside. Empty when right <= left or bottom <= top.
struct Rect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    [[nodiscard]] int width() const { return right - left; }
    [[nodiscard]] int height() const { return bottom - top; }
    [[nodiscard]] constexpr bool empty() const { return right <= left || bottom <= top; }
    friend bool operator==(const Rect&, const Rect&) = default;
};

/// What both have in common; empty when they do not meet.
[[nodiscard]] constexpr Rect intersection(const Rect& a, const Rect& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
            std::min(a.bottom, b.bottom)};
}

[[nodiscard]] constexpr Rect shifted(const Rect& r, int dx, int dy) {
    return {r.left + dx, r.top + dy, r.right + dx, r.bottom + dy};
}

/// The smallest rectangle around both; an empty one does not count.
[[nodiscard]] constexpr Rect hull(const Rect& a, const Rect& b) {
    if (a.empty()) return b;
    if (b.empty()) return a;
    return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom)};
}

/// The point of `area`, which is not empty, that lies nearest to `point`.
[[nodiscard]] constexpr Point nearestInside(Point point, const Rect& area) {
    return {std::clamp(point.x, area.left, area.right - 1),
            std::clamp(point.y, area.top, area.bottom - 1)};
}

} // namespace platform
