#include "racont.h"

#include "omregion.h"
#include "omsclass.h"
#include "reports.h"

#include <algorithm>
#include <utility>

using platform::Point;
using platform::Rect;

namespace {

constexpr OMSEntry kRAttributeContainerRows[] = {
    oms::data<&RAttributeContainer::anchorAnswerAtPoint,
              &RAttributeContainer::setAnchorAnswerAtPoint>(
        "anchorAnswerAtPoint", "answers rest at the anchor point, not in the middle"),
    oms::data<&RAttributeContainer::answerAnchorPointX,
              &RAttributeContainer::setAnswerAnchorPointX>("answerAnchorPointX",
                                                           "from its left edge"),
    oms::data<&RAttributeContainer::answerAnchorPointY,
              &RAttributeContainer::setAnswerAnchorPointY>("answerAnchorPointY",
                                                           "from its top edge"),
    oms::data<&RAttributeContainer::answerProperty, &RAttributeContainer::setAnswerProperty>(
        "answerProperty", "property of answers that is compared"),
    oms::data<&RAttributeContainer::attribute, &RAttributeContainer::setAttributeText>(
        "attribute", "of the answer that is right"),
    oms::data<&RAttributeContainer::doPixelCompare, &RAttributeContainer::setDoPixelCompare>(
        "doPixelCompare", "the answer's hot point must be on a pixel of its picture"),
    oms::method<&RContainer::replacePaletteEntry>("replacePaletteEntry", "old new"),
};

constexpr auto kRAttributeContainerVocabulary =
    oms::joined(kRAttributeContainerRows, kContainerLookRows, kPlayRows);

/// A point of the answer in the window.
Point inWindow(const RAnswer& answer, Point point) {
    const Rect drawn = answer.boundingRectangle();
    return {drawn.left + point.x, drawn.top + point.y};
}

constexpr OMSEntry kRValueContainerRows[] = {
    oms::data<&RValueContainer::value, &RValueContainer::setValue>("value",
                                                                   "of the answer that is right"),
};

constexpr auto kRValueContainerVocabulary =
    oms::joined(kRValueContainerRows, kContainerLookRows, kPlayRows);

} // namespace

// ---------------------------------------------------------------------------- one answer

RContainer::Hit SingleContainer::hitScore(RAnswer& answer, platform::Point) {
    const std::int64_t score = scoreOf(answer);
    const bool free = isEnabled() && answers().empty();
    return {free && score > 0 && (!rejectIncorrectAnswers() || isRight(answer)), score};
}

void SingleContainer::placeAnswer(RAnswer& answer) {
    answer.snapToRectangle(targetFor(answer));
    answer.setZ(depthAbove(kDepthOfAnswers));
    RContainer::placeAnswer(answer);
    lockIfSolved();
}

// ---------------------------------------------------------------------------- by its attribute

const OMSClass RAttributeContainer::kClass{"RAttributeContainer", &RContainer::kClass,
                                           kRAttributeContainerVocabulary,
                                           &createContainer<RAttributeContainer>, kArguments};

RAttributeContainer::RAttributeContainer(const RAttributeContainer& other)
    : OMSCopied(other), attribute_(other.attribute_), answerProperty_(other.answerProperty_),
      comparesPixels_(other.comparesPixels_), anchorsAtPoint_(other.anchorsAtPoint_),
      anchorPoint_(other.anchorPoint_) {}

void RAttributeContainer::setAnswerAnchorPointX(int x) {
    anchorPoint_.x = OMTrinket::nearestPlace(x);
}

void RAttributeContainer::setAnswerAnchorPointY(int y) {
    anchorPoint_.y = OMTrinket::nearestPlace(y);
}

void RAttributeContainer::setDoPixelCompare(bool compares) {
    comparesPixels_ = compares;
    complained_ = false;
}

std::optional<Point> RAttributeContainer::hotPointOf(RAnswer& answer) {
    if (numberOf(answer, "isUsingHotPoint").value_or(0) == 0) return std::nullopt;
    return Point{OMTrinket::nearestPlace(numberOf(answer, "hotPointX").value_or(0)),
                 OMTrinket::nearestPlace(numberOf(answer, "hotPointY").value_or(0))};
}

std::int64_t RAttributeContainer::scoreOf(RAnswer& answer) {
    const std::optional<Point> hotPoint = hotPointOf(answer);
    if (comparesPixels_ && hasFrames()) return pixelScore(answer, hotPoint);
    if (!hotPoint) return overlapScore(answer);
    return OMContains(boundingRectangle(), inWindow(answer, *hotPoint)) ? 1 : 0;
}

std::int64_t RAttributeContainer::pixelScore(const RAnswer& answer, std::optional<Point> hotPoint) {
    if (hotPoint) return containsPoint(inWindow(answer, *hotPoint)) ? 1 : 0;
    complain();
    return 0;
}

/// Once, not with every step of the drag; and in the next pass, since a box ends the drag.
void RAttributeContainer::complain() {
    if (std::exchange(complained_, true)) return;
    complaint_ = std::make_unique<OMTask>(
        [this] {
            const std::unique_ptr<OMTask> done = std::move(complaint_);
            RTell("RAttributeContainer attempting pixel comparison: "
                  "RAnswer must have hot point enabled");
        },
        OMTask::kWithScripts);
}

Rect RAttributeContainer::targetFor(RAnswer& answer) const {
    Rect target = boundingRectangle();
    if (anchorsAtPoint_) {
        // Its insets count neither for the corner nor for the hot point.
        const Rect drawn = answer.boundingRectangle();
        target = platform::shifted(answer.effectiveRectangle(),
                                   target.left + anchorPoint_.x - drawn.left,
                                   target.top + anchorPoint_.y - drawn.top);
    }
    const Point hotPoint = hotPointOf(answer).value_or(Point{});
    return platform::shifted(target, -hotPoint.x, -hotPoint.y);
}

// ---------------------------------------------------------------------------- by its value

const OMSClass RValueContainer::kClass{"RValueContainer", &RContainer::kClass,
                                       kRValueContainerVocabulary,
                                       &createContainer<RValueContainer>, kArguments};
