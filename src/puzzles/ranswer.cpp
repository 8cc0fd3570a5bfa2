#include "ranswer.h"

#include "omeffectsounds.h"
#include "omsclass.h"
#include "omtrinketwindow.h"
#include "rcontainer.h"

#include <algorithm>
#include <utility>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kRAnswerVocabulary[] = {
    oms::data<&RAnswer::extraBottom, &RAnswer::setExtraBottom>(
        "extraBottom", "pixels at its bottom that do not count for hits and fits"),
    oms::data<&RAnswer::extraLeft, &RAnswer::setExtraLeft>("extraLeft", "as extraBottom"),
    oms::data<&RAnswer::extraRight, &RAnswer::setExtraRight>("extraRight", "as extraBottom"),
    oms::data<&RAnswer::extraTop, &RAnswer::setExtraTop>("extraTop", "as extraBottom"),
    oms::data<&RAnswer::goHomeSound, &RAnswer::setGoHomeSound>("goHomeSound",
                                                               "sound of going home; -1: none")
        .of("sound"),
    oms::data<&RAnswer::homeX, &RAnswer::setHomeX>("homeX",
                                                   "x of its home; writing moves it there"),
    oms::data<&RAnswer::homeY, &RAnswer::setHomeY>("homeY",
                                                   "y of its home; writing moves it there"),
    oms::readOnly<&RAnswer::isUsed>("isUsed", "it is in a container"),
    oms::data<&RAnswer::pickUpSound, &RAnswer::setPickUpSound>("pickUpSound",
                                                               "sound of being picked up; -1: none")
        .of("sound"),
    oms::data<&RAnswer::snapSound, &RAnswer::setSnapSound>(
        "snapSound", "sound of snapping into a container; -1: none")
        .of("sound"),
    oms::event("pickedUp", "the player has picked it up"),
    oms::event("dropped", "the player has let go of it"),
    oms::event("addedToContainer", "a container takes it"),
    oms::event("removedFromContainer", "it has left a container"),
};

constexpr OMSEntry kRGraphicAnswerRows[] = {
    oms::data<&RGraphicAnswer::hotPointX, &RGraphicAnswer::setHotPointX>(
        "hotPointX", "of the hot point, from its left edge"),
    oms::data<&RGraphicAnswer::hotPointY, &RGraphicAnswer::setHotPointY>(
        "hotPointY", "of the hot point, from its top edge"),
    oms::data<&RGraphicAnswer::isUsingHotPoint, &RGraphicAnswer::setUsingHotPoint>(
        "isUsingHotPoint", "the hot point decides whether it is on a container"),
    oms::method<&RAnswer::replacePaletteEntry>("replacePaletteEntry", "old new"),
};

constexpr auto kRGraphicAnswerVocabulary =
    oms::joined(kRGraphicAnswerRows, kAnswerTextRows, kAnswerPictureRows, kPlayRows);

constexpr int kWidestInset = 10'000; ///< pixels

} // namespace

const OMSClass RAnswer::kClass{"RAnswer", &RAnimation::kClass, kRAnswerVocabulary};
const OMSClass RGraphicAnswer::kClass{"RGraphicAnswer", &RAnswer::kClass, kRGraphicAnswerVocabulary,
                                      &createAnswer<RGraphicAnswer>, kArguments};

RAnswer::RAnswer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y)
    : RAnimation(window, std::move(image), id, x, y), home_(corner()), homeOrigin_(origin()),
      homeZ_(z()) {
    if (const auto* defaults = RDefaultAnswerSounds::current()) sounds_ = *defaults;
}

RAnswer::RAnswer(const RAnswer& other)
    : RAnimation(other), extra_(other.extra_), home_(other.home_), homeOrigin_(other.homeOrigin_),
      homeZ_(other.homeZ_), sounds_(other.sounds_), attribute_(other.attribute_),
      value_(other.value_) {
    if (other.anchoredByContainer_) unanchor();
}

void RAnswer::onRetire() {
    setKeeper(nullptr);
    if (holder_) holder_->removeAnswer(*this);
    container_.watch(nullptr);
    ++containerChanges_;
    held_ = false;
    RAnimation::onRetire();
}

void RAnswer::setKeeper(AnswerKeeper* keeper) {
    if (keeper == keeper_) return;
    if (AnswerKeeper* before = std::exchange(keeper_, keeper)) before->answerGoes(*this);
}

RContainer* RAnswer::container() const { return static_cast<RContainer*>(container_.object()); }

void RAnswer::syncContainer() { container_.watch(holder_); }

void RAnswer::setContainer(RContainer* container) {
    const OMScriptableObject* before = (changesContainer_ ? next_ : container_).object();
    if (container == before) return;
    const unsigned change = ++containerChanges_;
    const auto isCurrent = [&] { return containerChanges_ == change; };
    changesContainer_ = true;
    next_.watch(container);
    if (before) fireEvent("removedFromContainer");
    if (isCurrent() && next_) fireEvent("addedToContainer");
    if (!isCurrent()) return;
    changesContainer_ = false;
    container_.watch(next_.object());
}

bool RAnswer::leaveContainer() {
    if (holder_) holder_->removeAnswer(*this);
    if (!holder_) setContainer(nullptr);
    return !isRetired() && !holder_;
}

// ---------------------------------------------------------------------------- anchors

void RAnswer::anchorForContainer() {
    if (!isMovable()) return;
    anchor();
    anchoredByContainer_ = true;
}

void RAnswer::endAnchorForContainer() {
    if (anchoredByContainer_) unanchor();
}

void RAnswer::setAttribute(Attribute which, int value, int second) {
    if (which == Attribute::Movable) anchoredByContainer_ = false;
    RAnimation::setAttribute(which, value, second);
}

// ---------------------------------------------------------------------------- places

Rect RAnswer::effectiveRectangle() const {
    const Rect drawn = boundingRectangle();
    return {drawn.left + extra_.left, drawn.top + extra_.top, drawn.right - extra_.right,
            drawn.bottom - extra_.bottom};
}

int RAnswer::inset(int pixels) { return std::clamp(pixels, -kWidestInset, kWidestInset); }

void RAnswer::moveCorner(Point corner) {
    const auto way = [](int to, int from) { return nearestPlace(to) - from; };
    const Point before = this->corner();
    offset(way(corner.x, before.x), way(corner.y, before.y));
}

void RAnswer::goHome() {
    if (held_) return;
    const Point from = origin();
    offset(homeOrigin_.x - from.x, homeOrigin_.y - from.y);
    setZ(homeZ_);
    playSound(sounds_.goHome);
}

void RAnswer::snapToRectangle(const Rect& target) {
    const Rect drawn = boundingRectangle();
    const Rect effective = effectiveRectangle();
    const int x = target.left + (target.width() - effective.width()) / 2 - extra_.left;
    const int y = target.top + (target.height() - effective.height()) / 2 - extra_.top;
    offset(x - drawn.left, y - drawn.top);
    playSound(sounds_.snap);
}

void RAnswer::setHomeX(int x) {
    home_.x = x;
    moveCorner({x, corner().y});
    homeOrigin_.x = origin().x;
}

void RAnswer::setHomeY(int y) {
    home_.y = y;
    moveCorner({corner().x, y});
    homeOrigin_.y = origin().y;
}

void RAnswer::playSound(int id) {
    OMEffectSounds::playIfAny(id, "soundURLEx == NULL",
                              "Extended Sound URL is not installed in RAnswer");
}

void RAnswer::setGraphicID(int id) { changeImage(AOImage::locateOrBlank(id), id); }

// ---------------------------------------------------------------------------- the player

// An answer that is a member of a group moves with it and is not picked up.

RAnswer::HandUse RAnswer::handUse() const {
    return isMovable() && !group() ? HandUse::Drag : HandUse::None;
}

Point RAnswer::aim() const {
    const Rect r = effectiveRectangle();
    return {(r.left + r.right) / 2, (r.top + r.bottom) / 2};
}

Point RGraphicAnswer::aim() const {
    if (!usesHotPoint_) return RAnswer::aim();
    const Rect drawn = boundingRectangle();
    return {drawn.left + hotPoint_.x, drawn.top + hotPoint_.y};
}

std::optional<std::vector<Rect>> RAnswer::dropPlaces() const {
    std::vector<Rect> places;
    if (!keeper_) return places;
    const Point from = aim();
    for (const Rect& part : keeper_->answerPlaces(*this))
        places.push_back(platform::shifted(boundingRectangle(),
                                           (part.left + part.right) / 2 - from.x,
                                           (part.top + part.bottom) / 2 - from.y));
    // Out of a container when all others are full.
    const Point at = origin();
    places.push_back(
        platform::shifted(boundingRectangle(), homeOrigin_.x - at.x, homeOrigin_.y - at.y));
    return places;
}

void RAnswer::onBeginDrag(Point point) {
    RAnimation::onBeginDrag(point);
    if (isRetired() || group()) return;
    held_ = true;
    playSound(sounds_.pickUp); // or a box, which may end the drag
    if (!held_) return;
    fireEvent("pickedUp");
    if (!held_) return;
    if (keeper_)
        keeper_->answerPickedUp(*this);
    else
        leaveContainer(); // its puzzle has gone
}

void RAnswer::dragBy(int& dx, int& dy) {
    RAnimation::dragBy(dx, dy);
    if (held_ && keeper_ && window())
        keeper_->answerDragged(*this, window()->input().lastMousePosition());
}

void RAnswer::onDrop(Point point) {
    RAnimation::onDrop(point);
    if (held_) drop(point);
}

void RAnswer::onReleaseLost() {
    RAnimation::onReleaseLost();
    if (held_ && window()) drop(window()->input().lastMousePosition());
}

void RAnswer::drop(Point point) {
    held_ = false;
    fireEvent("dropped");
    if (keeper_) keeper_->answerDropped(*this, point);
}
