#include "omtrinket.h"

#include "ommultitrinket.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

#include <algorithm>
#include <limits>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kOMTrinketVocabulary[] = {
    oms::data<&OMTrinket::x, &OMTrinket::setX>("x", "left edge; writing moves the trinket"),
    oms::data<&OMTrinket::y, &OMTrinket::setY>("y", "top edge; writing moves the trinket"),
    oms::data<&OMTrinket::z, &OMTrinket::setZ>("z", "depth; larger is nearer"),
    oms::data<&OMTrinket::isVisible, &OMTrinket::setVisible>("visible", "is drawn and hit"),
    oms::data<&OMTrinket::isMovable, &OMTrinket::setMovable>("movable",
                                                             "follows the mouse while held"),
    oms::data<&OMTrinket::isTouchy, &OMTrinket::setTouchy>("touchy", "takes part in hit testing"),
    oms::data<&OMTrinket::tag, &OMTrinket::setTag>("tag", "free value for scripts"),
    oms::method<&OMTrinket::place>("place", "x y"),
    oms::method<&OMTrinket::offset>("offset", "dx dy"),
    oms::event("mouseDown", "a mouse button went down over it"),
    oms::event("mouseUp", "the button was released after a mouseDown on it"),
    oms::event("dblClick", "double click on it"),
    oms::event("flyOn", "the pointer entered it"),
    oms::event("flyOff", "the pointer left it"),
};

/// Calls a copy, which survives when the trinket and its links are destroyed meanwhile.
template <class Link, class... Arguments>
void call(Link link, Arguments... arguments) {
    link(arguments...);
}

} // namespace

const OMSClass OMTrinket::kClass{"OMTrinket", &OMScriptableObject::kClass, kOMTrinketVocabulary};

OMTrinket::OMTrinket(OMTrinketWindow& window, UpdateStyle style, const Rect& bounds)
    : window_(&window), updateStyle_(style), eventMask_(window.defaultEventMask()), bounds_(bounds),
      corral_(window.backBuffer().bounds()) {
    enterWindow();
}

OMTrinket::OMTrinket(const OMTrinket& other)
    : OMScriptableObject(other), window_(other.window_), updateStyle_(other.updateStyle_),
      eventMask_(other.eventMask_), bounds_(other.bounds_), z_(other.z_), visible_(other.visible_),
      movable_(other.movable_), touchy_(other.touchy_), tag_(other.tag_), cursor_(other.cursor_),
      grabCursor_(other.grabCursor_), links_(other.links_), corralled_(other.corralled_),
      corral_(other.corral_), dragBounds_(other.dragBounds_), snapGrid_(other.snapGrid_) {
    enterWindow();
}

void OMTrinket::onRetire() {
    leaveGroup();
    if (window_) {
        if (window_->input().focus() == this) window_->input().clearFocus();
        erase();
        window_->remove(*this);
    }
    window_ = nullptr;
    mouseState_ = MouseState::Idle;
    links_ = {};
}

void OMTrinket::enterWindow() {
    if (!window_) return;
    window_->add(*this);
    steppedIn_ = window_->cycles_; // one that is made in a step has its first in the next cycle
    markWhole();
}

void OMTrinket::leaveGroup() {
    if (!group_) return;
    OMMultiTrinket& group = *group_;
    group.remove(*this);
    if (window_) window_->input().handOver(*this, group);
}

// Queries

int OMTrinket::depthAbove(std::int64_t depth) const {
    using Depths = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(z_ + depth, Depths::min(), Depths::max()));
}

bool OMTrinket::isShown() const { return window_ && visible_ && z_ >= window_->minimumDepth(); }

int OMTrinket::indexInWindow() const { return window_ ? window_->indexOf(*this) : -1; }

bool OMTrinket::containsPoint(Point point) const { return OMContains(boundingRectangle(), point); }

bool OMTrinket::intersects(const OMTrinket& other) const {
    return OMOverlap(boundingRectangle(), other.boundingRectangle());
}

std::vector<Rect> OMTrinket::clickPlaces() const { return {boundingRectangle()}; }

// Changes

void OMTrinket::setAttribute(Attribute which, int value, int second) {
    switch (which) {
    case Attribute::X: moveTo(value, y()); return;
    case Attribute::Y: moveTo(x(), value); return;
    case Attribute::XY: moveTo(value, second); return;
    case Attribute::Z: changeDepth(value); return;
    case Attribute::Visible: changeVisibility(value != 0); return;
    case Attribute::Movable: movable_ = value != 0; return;
    case Attribute::Touchy: touchy_ = value != 0; return;
    }
}

void OMTrinket::offset(int dx, int dy) {
    setAttribute(Attribute::XY, nearestPlace(std::int64_t{x()} + dx),
                 nearestPlace(std::int64_t{y()} + dy));
}

void OMTrinket::moveTo(std::int64_t newX, std::int64_t newY) {
    const int dx = nearestPlace(newX) - x();
    const int dy = nearestPlace(newY) - y();
    if (dx == 0 && dy == 0) return;
    markChanged();
    bounds_ = platform::shifted(bounds_, dx, dy);
    if (dragBounds_.empty()) return;
    dragBounds_ = platform::shifted(dragBounds_, dx, dy);
}

void OMTrinket::changeDepth(int z) {
    if (z == z_) return;
    const bool wasShown = isShown();
    erase();
    z_ = z;
    if (window_) window_->resort(*this);
    if (wasShown)
        markWhole();
    else
        reappear();
}

/// Where it was not shown before: on every page, however soon it goes again.
void OMTrinket::reappear() {
    if (!isShown()) return;
    markWhole();
    if (updateStyle_ != UpdateStyle::Nothing) window_->addUnshown(boundingRectangle());
}

void OMTrinket::comeForward() {
    if (window_) window_->resort(*this);
    markWhole();
}

void OMTrinket::changeVisibility(bool visible) {
    if (visible == visible_) return;
    erase();
    visible_ = visible;
    reappear();
}

void OMTrinket::setCursors(int normal, int grab) {
    cursor_ = normal;
    grabCursor_ = grab;
}

// Repainting

void OMTrinket::markChanged() {
    if (!window_) return;
    for (PageState& page : pages_) {
        if (page.painted && page.before.isEmpty()) page.before = boundingRectangle();
        if (page.change == Change::None) page.change = Change::Changed;
    }
    window_->needRedraw();
}

void OMTrinket::markWhole() {
    if (!window_) return;
    for (PageState& page : pages_) page.change = Change::Whole;
    window_->needRedraw();
}

void OMTrinket::invalidate() {
    if (window_) window_->invalidate(boundingRectangle());
}

void OMTrinket::erase() {
    if (!window_) return;
    for (std::size_t page = 0; page < pages_.size(); ++page) {
        PageState& state = pages_[page];
        if (state.painted)
            window_->addDirty(page, state.before.isEmpty() ? OMRegion(boundingRectangle())
                                                           : state.before);
        state = {};
    }
}

void OMTrinket::takeChanges(std::size_t page, OMRegion& dirty) {
    PageState& state = pages_[page];
    if (!isShown() || updateStyle_ == UpdateStyle::Nothing) {
        state = {};
        return;
    }
    if (state.change != Change::None) {
        state.before.unite(boundingRectangle());
        if (state.change == Change::Changed && updateStyle_ == UpdateStyle::Rectangle)
            dirty.unite(state.before.boundingBox());
        else
            dirty.unite(state.before);
    }
    state.change = Change::None;
    state.before.clear();
    state.painted = true;
}

// Input

void OMTrinket::onMouseDown(Point point) {
    group_ ? group_->memberMouseDown(point) : call(links_.mouseDown, point);
}

void OMTrinket::onMouseUp(Point point) {
    group_ ? group_->memberMouseUp(point) : call(links_.mouseUp, point);
}

void OMTrinket::onMouseMove(Point point) { call(links_.mouseMove, point); }

void OMTrinket::onDoubleClick(Point point) {
    group_ ? group_->memberDoubleClick(point) : call(links_.doubleClick, point);
}

void OMTrinket::onBeginDrag(Point point) {
    group_ ? group_->onBeginDrag(point) : call(links_.beginDrag, point);
}

void OMTrinket::onFlyOn() { group_ ? group_->memberFlyOn() : call(links_.flyOn); }
void OMTrinket::onFlyOff() { group_ ? group_->memberFlyOff() : call(links_.flyOff); }
void OMTrinket::onKey(const platform::KeyPress& press) { call(links_.key, press); }
void OMTrinket::onFocusLost() { call(links_.focusLost); }

void OMTrinket::setCursor() {
    if (window_) window_->showCursor(cursor_);
}

void OMTrinket::setMouseCapture(bool on, bool withFlyOver) {
    if (on) {
        if (window_) window_->input().setTarget(*this);
        mouseState_ = withFlyOver ? MouseState::CapturedFlying : MouseState::Captured;
        return;
    }
    if (window_) window_->input().releaseTarget(*this);
    mouseState_ = MouseState::Idle;
}
