// What keys can click or drag in a trinket window, for who plays without a mouse: where it is, a
// point of it that a press really reaches, and what comes next in which direction.
#pragma once

#include "omtrinketwindow.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

/// Something that does something when it is pressed: a trinket, or a group as a whole.
struct OMKeyTarget {
    OMTrinket* trinket;   ///< null: the background
    std::size_t part = 0; ///< of the trinket's click places
    platform::Rect place; ///< window pixels, as is the point
    platform::Point point;
};

/// All that a press can reach now, in reading order. The background, which is the last one, is
/// there only with `withBackground`.
[[nodiscard]] std::vector<OMKeyTarget> OMFindKeyTargets(OMTrinketWindow& window,
                                                        bool withBackground);
/// That part of a trinket, as it is now; null for the background. None when no press reaches it.
[[nodiscard]] std::optional<OMKeyTarget> OMFindKeyTarget(OMTrinketWindow& window,
                                                         OMTrinket* trinket, std::size_t part);
/// Whether a press there reaches that target.
[[nodiscard]] bool OMReaches(OMTrinketWindow& window, const OMKeyTarget& target);

/// Whether it is taken by a press, to be let go elsewhere.
[[nodiscard]] bool OMIsDragged(const OMTrinket& trinket);
/// Where it would lie when it is let go, without its own place: what it knows of itself, or else
/// on the middles of all that is seen in the window.
[[nodiscard]] std::vector<platform::Rect> OMFindDropPlaces(OMTrinketWindow& window,
                                                           const OMTrinket& trinket);

enum class OMDirection : std::uint8_t { Left, Up, Right, Down };

/// The numbers of the places in reading order: rows from top to bottom, from left to right.
[[nodiscard]] std::vector<std::size_t> OMReadingOrder(std::span<const platform::Rect> places);
/// The one that lies nearest in a direction; none when nothing does.
[[nodiscard]] std::optional<std::size_t> OMNearestTowards(std::span<const platform::Rect> places,
                                                          const platform::Rect& from,
                                                          OMDirection direction);
/// The nearest one at all; none of none.
[[nodiscard]] std::optional<std::size_t> OMNearest(std::span<const platform::Rect> places,
                                                   const platform::Rect& from);

/// The middle, rounded down.
[[nodiscard]] platform::Point OMMiddle(const platform::Rect& place);

/// A point of `area` for which the test holds, near its middle. All of a small area is looked at,
/// and of a large one points that lie close.
template <class Test>
[[nodiscard]] std::optional<platform::Point> OMPointInside(const platform::Rect& area, Test test) {
    constexpr int kPointsOfASide = 64;
    if (area.empty()) return std::nullopt;
    const int stepX = (area.width() + kPointsOfASide - 1) / kPointsOfASide;
    const int stepY = (area.height() + kPointsOfASide - 1) / kPointsOfASide;
    const platform::Point middle = OMMiddle(area);
    const auto at = [&](int column, int row) {
        return platform::Point{middle.x + column * stepX, middle.y + row * stepY};
    };
    const auto holds = [&](platform::Point point) {
        return platform::nearestInside(point, area) == point && test(point);
    };
    // Square rings around the middle.
    for (int ring = 0; ring <= kPointsOfASide / 2 + 1; ++ring)
        for (int row = -ring; row <= ring; ++row) {
            const bool isEdge = row == -ring || row == ring;
            for (int column = -ring; column <= ring; column += isEdge || ring == 0 ? 1 : 2 * ring)
                if (const platform::Point point = at(column, row); holds(point)) return point;
        }
    return std::nullopt;
}
