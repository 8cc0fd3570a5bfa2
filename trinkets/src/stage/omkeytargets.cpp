#include "omkeytargets.h"

#include "ommultitrinket.h"

#include <algorithm>
#include <cstdlib>
#include <numeric>

using platform::Point;
using platform::Rect;

namespace {

/// What is wider or higher than this part of the window is scenery, onto which nothing is dropped.
constexpr int kSceneryPart = 2;
constexpr int kSamePlace = 8; ///< middles that are nearer are one place; pixels

constexpr int kWayAside = 2; ///< what a pixel to the side counts

bool isHeardBy(const OMTrinket& trinket, const char* event, std::uint32_t ignoring) {
    return (trinket.eventMask() & ignoring) == 0 && trinket.isHeard(event);
}

/// It follows the mouse, and its maker has said so by a cursor: everything moves that nobody has
/// told not to. What is in a group moves with it.
bool isMeantToMove(const OMTrinket& trinket) {
    return trinket.isMovable() && !trinket.group() &&
           (trinket.cursor() != OMTrinket::defaultCursor ||
            trinket.grabCursor() != OMTrinket::defaultGrabCursor);
}

/// Only what is held or captured until then hears the release.
bool hearsRelease(const OMTrinket& trinket) {
    return trinket.isMovable() && isHeardBy(trinket, "mouseUp", OMTrinket::kIgnoreMouseUp);
}

bool isUsed(const OMTrinket& trinket) {
    return trinket.handUse() != OMTrinket::HandUse::None ||
           isHeardBy(trinket, "mouseDown", OMTrinket::kIgnoreMouseDown) ||
           isHeardBy(trinket, "dblClick", OMTrinket::kIgnoreDoubleClick) || hearsRelease(trinket) ||
           isMeantToMove(trinket);
}

/// The trinket that a press there means something to: what is hit, or a group that it is in.
OMTrinket* usedAt(const OMTrinketWindow& window, Point point) {
    OMTrinket* trinket = window.input().hitTest(point);
    while (trinket && !isUsed(*trinket)) trinket = trinket->group();
    return trinket;
}

/// Trinkets in the order of their depth, from above.
std::vector<OMTrinket*> shownTrinkets(const OMTrinketWindow& window) {
    std::vector<OMTrinket*> all;
    (void)window.findTrinket([&](OMTrinket& trinket) {
        if (trinket.isShown()) all.push_back(&trinket);
        return false;
    });
    return all;
}

std::optional<OMKeyTarget> targetAt(OMTrinketWindow& window, OMTrinket* trinket, std::size_t part,
                                    const Rect& place) {
    const Rect seen = platform::intersection(place, window.backBuffer().bounds());
    OMKeyTarget target{trinket, part, seen, {}};
    const auto point = OMPointInside(seen, [&](Point at) {
        target.point = at;
        return OMReaches(window, target);
    });
    if (!point) return std::nullopt;
    return target;
}

void addTargets(OMTrinketWindow& window, OMTrinket& trinket, std::vector<OMKeyTarget>& targets) {
    const std::vector<Rect> parts = trinket.clickPlaces();
    for (std::size_t part = 0; part < parts.size(); ++part)
        if (const auto target = targetAt(window, &trinket, part, parts[part]))
            targets.push_back(*target);
}

/// How far it is along a direction, and aside from it.
struct Way {
    int along;
    int aside;
};

Way wayTowards(const Rect& from, const Rect& to, OMDirection direction) {
    const Point a = OMMiddle(from);
    const Point b = OMMiddle(to);
    switch (direction) {
    case OMDirection::Left: return {a.x - b.x, std::abs(b.y - a.y)};
    case OMDirection::Up: return {a.y - b.y, std::abs(b.x - a.x)};
    case OMDirection::Right: return {b.x - a.x, std::abs(b.y - a.y)};
    case OMDirection::Down: break;
    }
    return {b.y - a.y, std::abs(b.x - a.x)};
}

} // namespace

Point OMMiddle(const Rect& place) {
    return {place.left + place.width() / 2, place.top + place.height() / 2};
}

bool OMReaches(OMTrinketWindow& window, const OMKeyTarget& target) {
    if (!target.trinket) return !window.input().hitTest(target.point);
    return usedAt(window, target.point) == target.trinket;
}

std::optional<OMKeyTarget> OMFindKeyTarget(OMTrinketWindow& window, OMTrinket* trinket,
                                           std::size_t part) {
    if (!trinket) return targetAt(window, nullptr, 0, window.backBuffer().bounds());
    if (!trinket->isShown()) return std::nullopt;
    const std::vector<Rect> parts = trinket->clickPlaces();
    return part < parts.size() ? targetAt(window, trinket, part, parts[part]) : std::nullopt;
}

std::vector<OMKeyTarget> OMFindKeyTargets(OMTrinketWindow& window, bool withBackground) {
    std::vector<OMKeyTarget> found;
    for (OMTrinket* trinket : shownTrinkets(window))
        if (trinket->isTouchy() && isUsed(*trinket)) addTargets(window, *trinket, found);
    std::vector<Rect> places;
    for (const OMKeyTarget& each : found) places.push_back(each.place);
    std::vector<OMKeyTarget> targets;
    for (const std::size_t each : OMReadingOrder(places)) targets.push_back(found[each]);
    const auto background =
        withBackground ? OMFindKeyTarget(window, nullptr, 0) : std::optional<OMKeyTarget>();
    if (background) targets.push_back(*background);
    return targets;
}

bool OMIsDragged(const OMTrinket& trinket) {
    return trinket.handUse() == OMTrinket::HandUse::Drag || hearsRelease(trinket) ||
           isMeantToMove(trinket);
}

std::vector<Rect> OMFindDropPlaces(OMTrinketWindow& window, const OMTrinket& trinket) {
    if (auto known = trinket.dropPlaces()) return *std::move(known);
    const Rect all = window.backBuffer().bounds();
    const Rect own = trinket.boundingRectangle();
    std::vector<Rect> places;
    for (const OMTrinket* each : shownTrinkets(window)) {
        const Rect seen = platform::intersection(each->boundingRectangle(), all);
        const bool isScenery = seen.width() > all.width() / kSceneryPart ||
                               seen.height() > all.height() / kSceneryPart;
        if (each == &trinket || each->group() == &trinket || seen.empty() || isScenery) continue;
        const Point from = OMMiddle(own);
        const Point to = OMMiddle(seen);
        const Rect place = platform::shifted(own, to.x - from.x, to.y - from.y);
        const bool isKnown = std::ranges::any_of(places, [&](const Rect& known) {
            return std::abs(known.left - place.left) < kSamePlace &&
                   std::abs(known.top - place.top) < kSamePlace;
        });
        if (!isKnown) places.push_back(place);
    }
    return places;
}

// Orders

/// What overlaps the first one of a row by half of the lower one's height is in that row.
std::vector<std::size_t> OMReadingOrder(std::span<const Rect> places) {
    std::vector<std::size_t> order(places.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return OMMiddle(places[i]).y; });
    for (auto row = order.begin(); row != order.end();) {
        const Rect& first = places[*row];
        const auto end = std::find_if(row, order.end(), [&](std::size_t i) {
            const int away = OMMiddle(places[i]).y - OMMiddle(first).y;
            return 2 * away > std::min(first.height(), places[i].height());
        });
        std::stable_sort(row, end, [&](std::size_t a, std::size_t b) {
            return OMMiddle(places[a]).x < OMMiddle(places[b]).x;
        });
        row = end;
    }
    return order;
}

std::optional<std::size_t> OMNearestTowards(std::span<const Rect> places, const Rect& from,
                                            OMDirection direction) {
    std::optional<std::size_t> best;
    int bestWay = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
        const Way way = wayTowards(from, places[i], direction);
        if (way.along <= 0) continue;
        const int length = way.along + kWayAside * way.aside;
        if (best && length >= bestWay) continue;
        best = i;
        bestWay = length;
    }
    return best;
}

std::optional<std::size_t> OMNearest(std::span<const Rect> places, const Rect& from) {
    const auto way = [&](const Rect& place) {
        const Point a = OMMiddle(from);
        const Point b = OMMiddle(place);
        return std::abs(a.x - b.x) + std::abs(a.y - b.y);
    };
    const auto best = std::ranges::min_element(places, {}, way);
    if (best == places.end()) return std::nullopt;
    return static_cast<std::size_t>(best - places.begin());
}
