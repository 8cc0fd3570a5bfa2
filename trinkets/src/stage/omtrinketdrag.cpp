// How a held trinket follows the mouse inside its corral, and where it comes to rest.

#include "ommultitrinket.h"

#include <algorithm>
#include <cstdlib>

using platform::Point;
using platform::Rect;

namespace {

/// A trinket and its corral along one axis.
struct Axis {
    int position;
    int size;
    int low; ///< edges of the corral
    int high;
};

/// Where the axis goes for a step of `d` pixels of the mouse. Beyond an edge the trinket stays
/// there and `overshoot` follows the mouse; it joins the mouse again when that fits into the
/// corral.
int follow(const Axis& axis, int d, std::optional<int>& overshoot) {
    if (overshoot) {
        *overshoot += d;
        if (*overshoot < axis.low || *overshoot + axis.size > axis.high) return axis.position;
        const int joined = *overshoot;
        overshoot.reset();
        return joined;
    }
    int candidate = axis.position + d;
    if (candidate + axis.size > axis.high) {
        overshoot = candidate;
        candidate = axis.high - axis.size;
    }
    if (candidate < axis.low) {
        overshoot = candidate;
        candidate = axis.low;
    }
    return candidate;
}

/// The way from `position` to the nearest line of a grid, to the lower one when two are equally
/// near.
int wayToGrid(int position, int origin, int step) {
    if (step == 0) return 0;
    const std::int64_t width = std::abs(std::int64_t{step});
    const std::int64_t fromOrigin = std::int64_t{position} - origin;
    std::int64_t above = fromOrigin % width; // pixels above the lower line
    if (above < 0) above += width;
    const std::int64_t way = 2 * above > width ? width - above : -above;
    return OMTrinket::nearestPlace(way);
}

} // namespace

// A trinket of a group neither moves nor comes to rest on its own: the group does as a whole.

void OMTrinket::clearOvershoot() {
    if (group_) group_->clearOvershoot();
    overshootX_ = overshootY_ = std::nullopt;
}

void OMTrinket::dragBy(int& dx, int& dy) {
    if (group_) {
        group_->dragBy(dx, dy);
        return;
    }
    if (corralNormalization_ && corralled_) {
        const Rect r = boundingRectangle();
        dx = follow({r.left, r.width(), corral_.left, corral_.right}, dx, overshootX_) - r.left;
        dy = follow({r.top, r.height(), corral_.top, corral_.bottom}, dy, overshootY_) - r.top;
    }
    offset(dx, dy);
    const auto link = links_.drag; // survives a handler that destroys the trinket
    link(dx, dy);
}

void OMTrinket::onDrop(Point point) {
    if (group_) {
        group_->onDrop(point);
        return;
    }
    if (movable_) snap();
    const auto link = links_.drop;
    link(point);
}

void OMTrinket::snap() {
    if (snapGrid_.stepX == 0 && snapGrid_.stepY == 0) return;
    const Rect r = boundingRectangle();
    if (!dragBounds_.empty() && !OMOverlap(dragBounds_, r)) return;
    offset(wayToGrid(r.left, snapGrid_.origin.x, snapGrid_.stepX),
           wayToGrid(r.top, snapGrid_.origin.y, snapGrid_.stepY));
    clearOvershoot();
}
