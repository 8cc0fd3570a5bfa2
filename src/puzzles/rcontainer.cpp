#include "rcontainer.h"

#include "omeffectsounds.h"
#include "omkeytargets.h"
#include "omsclass.h"
#include "omtrinketwindow.h"

#include <algorithm>
#include <limits>
#include <utility>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kRContainerVocabulary[] = {
    oms::readOnly<&RContainer::answerCount>("answerCount", "answers in it"),
    oms::data<&RContainer::isEnabled, &RContainer::setEnabled>(
        "enabled", "0: it accepts nothing, and its answers cannot be picked up"),
    oms::readOnly<&RContainer::isFull>("isFull"),
    oms::readOnly<&RContainer::isSolved>("isSolved"),
    oms::data<&RContainer::lockCorrectAnswers, &RContainer::setLockCorrectAnswers>(
        "lockCorrectAnswers", "what is placed right cannot be picked up again"),
    oms::data<&RContainer::rejectIncorrectAnswers, &RContainer::setRejectIncorrectAnswers>(
        "rejectIncorrectAnswers", "only what is right is accepted"),
    oms::event("answerFlyOn", "a dragged answer is over it, and it is the best place for it"),
    oms::event("answerFlyOff", "the dragged answer has left it"),
    oms::event("answerPlaced", "an answer was placed"),
    oms::event("answerRemoved", "an answer was taken out"),
};

constexpr int kLook = 0; ///< sequences of its animation
constexpr int kHighlightedLook = 1;

} // namespace

const OMSClass RContainer::kClass{"RContainer", &RAnimation::kClass, kRContainerVocabulary};

RContainer::RContainer(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x,
                       int y)
    : RAnimation(window, std::move(image), id, x, y) {
    setMovable(false);
}

RContainer::RContainer(const RContainer& other)
    : RAnimation(other), area_(other.area_), value_(other.value_),
      locksCorrect_(other.locksCorrect_), rejectsIncorrect_(other.rejectsIncorrect_),
      enabled_(other.enabled_), highlighted_(other.highlighted_) {}

void RContainer::onRetire() {
    while (!keepers_.empty()) {
        ContainerKeeper* keeper = keepers_.back();
        keepers_.pop_back();
        keeper->containerGoes(*this);
    }
    for (RAnswer* answer : std::exchange(answers_, {})) {
        release(*answer);
        if (answer->container() == this) answer->syncContainer();
    }
    RAnimation::onRetire();
}

// ---------------------------------------------------------------------------- its answers

/// A pixel of its picture, as near to the middle as there is one.
std::vector<Rect> RContainer::placesFor(const RAnswer&) const {
    const Rect all = boundingRectangle();
    const auto point = OMPointInside(all, [this](Point at) { return containsPoint(at); });
    if (!point) return {all};
    return {{point->x, point->y, point->x + 1, point->y + 1}};
}

void RContainer::placeAnswer(RAnswer& answer) { insertAnswer(answer, answers_.size()); }

void RContainer::insertAnswer(RAnswer& answer, std::size_t index) {
    if (answer.holder_ || answer.isGoing()) return;
    answers_.insert(answers_.begin() + static_cast<std::ptrdiff_t>(index), &answer);
    answer.holder_ = this;
    answerEnters(answer, index);
    if (!enabled_) answer.anchorForContainer();
    fireEvent("answerPlaced");
}

void RContainer::release(RAnswer& answer) {
    answer.holder_ = nullptr;
    answer.endAnchorForContainer();
}

void RContainer::removeAnswer(const RAnswer& answer) {
    const auto found = std::ranges::find(answers_, &answer);
    if (found == answers_.end()) return;
    answerLeaves(static_cast<std::size_t>(found - answers_.begin()));
    release(**found);
    answers_.erase(found);
    fireEvent("answerRemoved");
}

void RContainer::answerFliesOn(RAnswer&) {
    setHighlighted(true);
    fireEvent("answerFlyOn");
}

void RContainer::answerFliesOff(RAnswer&) {
    setHighlighted(false);
    fireEvent("answerFlyOff");
}

void RContainer::enable() {
    enabled_ = true;
    for (RAnswer* answer : answers_) answer->unanchor();
}

void RContainer::disable() {
    enabled_ = false;
    for (RAnswer* answer : answers_) answer->anchorForContainer();
}

void RContainer::lockIfSolved() {
    if (!locksCorrect_ || !isSolved()) return;
    for (RAnswer* answer : answers_) answer->anchor();
}

std::int64_t RContainer::overlapScore(const RAnswer& answer) const {
    const Rect common = platform::intersection(answer.effectiveRectangle(), boundingRectangle());
    return common.empty() ? 0 : std::int64_t{common.width()} * common.height();
}

std::optional<std::string> RContainer::textOf(RAnswer& answer, std::string_view property) {
    return answer.getProperty(property);
}

std::optional<int> RContainer::numberOf(RAnswer& answer, std::string_view property) {
    const std::optional<std::string> text = textOf(answer, property);
    return text ? std::optional(OMSToInteger(*text)) : std::nullopt;
}

int RContainer::answerValue() const {
    std::int64_t sum = 0;
    for (RAnswer* answer : answers_) sum += numberOf(*answer, "value").value_or(0);
    return static_cast<int>(std::clamp<std::int64_t>(sum, std::numeric_limits<int>::min(),
                                                     std::numeric_limits<int>::max()));
}

void RContainer::playSound(int id) {
    OMEffectSounds::playIfAny(id, "soundURLEx == NULL",
                              "Extended Sound URL is not installed in RContainer");
}

// ---------------------------------------------------------------------------- the trinket

void RContainer::setHighlighted(bool highlighted) {
    if (highlighted == highlighted_) return;
    highlighted_ = highlighted;
    if (sequenceCount() > kHighlightedLook)
        setSequence(highlighted ? kHighlightedLook : kLook, true);
}

void RContainer::setArea(Point size) {
    markChanged();
    area_ = {std::clamp(size.x, 0, kFarthest), std::clamp(size.y, 0, kFarthest)};
}

Rect RContainer::boundingRectangle() const {
    const Rect frame = frameRectangle();
    if (hasFrames()) return frame;
    return {frame.left, frame.top, frame.left + area_.x, frame.top + area_.y};
}

bool RContainer::containsPoint(Point point) const {
    return hasFrames() ? RAnimation::containsPoint(point) : OMTrinket::containsPoint(point);
}

void RContainer::setAttribute(Attribute which, int value, int second) {
    const Rect before = boundingRectangle();
    const int depth = z();
    RAnimation::setAttribute(which, value, second);
    const Rect after = boundingRectangle();
    for (RAnswer* answer : answers_) {
        answer->offset(after.left - before.left, after.top - before.top);
        answer->setZ(answer->depthAbove(std::int64_t{z()} - depth));
    }
}
