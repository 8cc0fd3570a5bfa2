#include "ommultitrinket.h"

#include "omlog.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "rvar.h"

#include <algorithm>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kOMMultiTrinketVocabulary[] = {
    oms::readOnly<&OMMultiTrinket::height>("height", "of the bounding rectangle"),
    oms::readOnly<&OMMultiTrinket::width>("width", "of the bounding rectangle"),
    oms::data<&OMMultiTrinket::isCorralled, &OMMultiTrinket::setCorralled>(
        "isCorralled", "dragging keeps the group in its corral"),
    oms::data<&OMMultiTrinket::userData, &OMMultiTrinket::setUserData>("userData",
                                                                       "free text for scripts"),
    oms::method<&OMMultiTrinket::addTrinket>("addTrinket", "name [depth]"),
    oms::method<&OMMultiTrinket::removeAll>("removeTrinkets"),
};

} // namespace

const OMSClass OMMultiTrinket::kClass{"OMMultiTrinket", &OMTrinket::kClass,
                                      kOMMultiTrinketVocabulary, &OMMultiTrinket::createFromScript,
                                      "[z]"};

OMMultiTrinket::OMMultiTrinket(OMTrinketWindow& window)
    : OMSCopied(window, UpdateStyle::Nothing, {}) {}

OMMultiTrinket::OMMultiTrinket(const OMMultiTrinket& other)
    : OMSCopied(other), userData_(other.userData_) {
    const Rect place = other.boundingRectangle();
    setBounds({place.left, place.top, place.left, place.top});
}

void OMMultiTrinket::onRetire() {
    leaveGroup(); // while it knows its place
    for (const Member& member : std::exchange(members_, {})) member.trinket->group_ = nullptr;
    OMTrinket::onRetire();
}

std::unique_ptr<OMScriptableObject> OMMultiTrinket::createFromScript() {
    OMTrinketWindow* window = OMTrinketWindow::mainWindow();
    if (!window) return nullptr;
    auto group = std::make_unique<OMMultiTrinket>(*window);
    if (OMSArguments::global().hasNext()) group->setZ(OMSArguments::global().nextInteger());
    return group;
}

// Members

bool OMMultiTrinket::accepts(const OMTrinket& trinket) const {
    if (trinket.window() != window()) return false;
    for (const OMTrinket* outer = this; outer; outer = outer->group())
        if (outer == &trinket) return false;
    return true;
}

bool OMMultiTrinket::add(OMTrinket& trinket, int slot, int depth, bool shown) {
    if (!accepts(trinket)) return false;
    if (trinket.group_) trinket.group_->remove(trinket);
    trinket.clearOvershoot();
    members_.push_back({&trinket, slot, depth, shown});
    trinket.group_ = this;
    adopt(members_.back());
    return true;
}

void OMMultiTrinket::adopt(const Member& member) const {
    OMTrinket& trinket = *member.trinket;
    raiseMember(member);
    trinket.setVisible(isVisible() && member.shown);
    trinket.setTouchy(isTouchy());
    trinket.setMovable(isMovable());
    trinket.setCorral(corral());
    trinket.setCorralled(isCorralled());
    trinket.setSnapGrid(snapGrid());
    trinket.setCursors(cursor(), grabCursor());
}

/// A member of the group's own depth is hit before the group. A member that is a group brings its
/// own members forward last.
void OMMultiTrinket::raiseMember(const Member& member) const {
    member.trinket->comeForward();
    member.trinket->setZ(depthAbove(member.depth));
}

void OMMultiTrinket::showMember(const OMTrinket& trinket, bool shown) {
    const auto found = std::ranges::find(members_, &trinket, &Member::trinket);
    if (found == members_.end()) return;
    found->shown = shown;
    found->trinket->setVisible(isVisible() && shown);
}

void OMMultiTrinket::remove(const OMTrinket& trinket) {
    const auto found = std::ranges::find(members_, &trinket, &Member::trinket);
    if (found == members_.end()) return;
    setBounds(boundingRectangle()); // the place that stays when it was the last
    found->trinket->group_ = nullptr;
    members_.erase(found);
}

void OMMultiTrinket::removeAll() {
    while (!members_.empty()) remove(*members_.back().trinket);
}

OMTrinket* OMMultiTrinket::member(int slot) const {
    const auto found = std::find_if(members_.begin(), members_.end(),
                                    [&](const Member& member) { return member.slot == slot; });
    return found == members_.end() ? nullptr : found->trinket;
}

int OMMultiTrinket::freeSlot() const {
    int slot = 0;
    while (member(slot)) ++slot;
    return slot;
}

void OMMultiTrinket::addTrinket(const std::string& variable, std::optional<int> depth) {
    if (variable == YVariable::kObjectText) {
        OMLog::write(OMLog::Kind::Warning,
                     "OMMultiTrinket: addTrinket got an object and no name; write the name in "
                     "quotes, as in \"boat\"");
        return;
    }
    auto* trinket = dynamic_cast<OMTrinket*>(named(variable));
    if (!trinket || !add(*trinket, freeSlot(), depth.value_or(0)))
        OMLog::writef(OMLog::Kind::Warning,
                      "OMMultiTrinket: addTrinket leaves \"%s\" out, which %s", variable.c_str(),
                      trinket ? "is the group itself or contains it"
                              : "is the name of no object on the screen");
}

// Place and attributes

Rect OMMultiTrinket::boundingRectangle() const {
    const auto around = [this](bool hiddenToo) {
        Rect all;
        for (const Member& member : members_)
            if (member.trinket->isVisible() || (hiddenToo && member.shown))
                all = platform::hull(all, member.trinket->boundingRectangle());
        return all;
    };
    Rect place = around(false);
    if (place.empty()) place = around(true);
    if (!place.empty()) return place;
    const Rect last = members_.empty() ? OMTrinket::boundingRectangle()
                                       : members_.front().trinket->boundingRectangle();
    return {last.left, last.top, last.left, last.top};
}

bool OMMultiTrinket::containsPoint(Point point) const {
    return std::any_of(members_.begin(), members_.end(), [&](const Member& member) {
        return member.trinket->isVisible() && member.trinket->containsPoint(point);
    });
}

void OMMultiTrinket::setAttribute(Attribute which, int value, int second) {
    setBounds(boundingRectangle());
    const Rect before = OMTrinket::boundingRectangle();
    OMTrinket::setAttribute(which, value, second);
    const Rect after = OMTrinket::boundingRectangle();
    moveMembers(after.left - before.left, after.top - before.top);
    for (const Member& member : members_) {
        switch (which) {
        case Attribute::X:
        case Attribute::Y:
        case Attribute::XY: break;
        case Attribute::Z: raiseMember(member); break;
        case Attribute::Visible: member.trinket->setVisible(value != 0 && member.shown); break;
        case Attribute::Movable:
        case Attribute::Touchy: member.trinket->setAttribute(which, value); break;
        }
    }
}

void OMMultiTrinket::moveMembers(int dx, int dy) {
    if (dx == 0 && dy == 0) return;
    for (const Member& member : members_) member.trinket->offset(dx, dy);
}

void OMMultiTrinket::setCursors(int normal, int grab) {
    OMTrinket::setCursors(normal, grab);
    for (const Member& member : members_) member.trinket->setCursors(normal, grab);
}

// Events

bool OMMultiTrinket::raise(std::string_view event, std::uint32_t ignoring) {
    if ((eventMask() & ignoring) == 0) fireEvent(event);
    return !isRetired();
}

void OMMultiTrinket::memberMouseDown(Point point) {
    if (raise("mouseDown", kIgnoreMouseDown)) onMouseDown(point);
}

void OMMultiTrinket::memberMouseUp(Point point) {
    if (raise("mouseUp", kIgnoreMouseUp)) onMouseUp(point);
}

void OMMultiTrinket::memberDoubleClick(Point point) {
    if (raise("dblClick", kIgnoreDoubleClick)) onDoubleClick(point);
}

void OMMultiTrinket::memberFlyOn() {
    if (raise("flyOn", kNoFlyOn)) onFlyOn();
}

void OMMultiTrinket::memberFlyOff() {
    if (raise("flyOff", kNoFlyOff)) onFlyOff();
}
