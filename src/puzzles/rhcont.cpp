#include "rhcont.h"

#include "omlog.h"
#include "omsclass.h"

#include <algorithm>

using platform::Rect;

namespace {

constexpr int kFarthestDelta = 65'535;

int widthOf(const RAnswer& answer) { return std::max(answer.effectiveRectangle().width(), 0); }

int leftOf(const RAnswer& answer) { return answer.effectiveRectangle().left; }

void moveLeftTo(RAnswer& answer, std::int64_t left) {
    answer.offset(OMTrinket::nearestPlace(left) - leftOf(answer), 0);
}

/// Twice the middle, so that no half is lost.
int middleOf(const RAnswer& answer) {
    const Rect r = answer.effectiveRectangle();
    return r.left + r.right;
}

constexpr OMSEntry kRHorizontalContainerRows[] = {
    oms::data<&RHorizontalContainer::answerMatchString,
              &RHorizontalContainer::setAnswerMatchString>(
        "answerMatchString", "the attributes in the row; writing: the only match"),
    oms::method<&RHorizontalContainer::addAnswerMatch>("addAnswerMatch", "text"),
    oms::method<&RHorizontalContainer::dumpAnswerMatches>("dumpAnswerMatches"),
};

constexpr auto kRHorizontalContainerVocabulary =
    oms::joined(kRHorizontalContainerRows, kRowContainerRows, kContainerLookRows, kPlayRows);

constexpr auto kRHorizontalValueContainerVocabulary =
    oms::joined(kContainerSumRows, kRowContainerRows, kContainerLookRows, kPlayRows);

} // namespace

// ---------------------------------------------------------------------------- rows

void RowContainer::setDeltaZ(int depth) {
    deltaZ_ = std::clamp(depth, -kFarthestDelta, kFarthestDelta);
}

std::int64_t RowContainer::rowWidth() const {
    std::int64_t width = 0;
    for (const RAnswer* answer : answers()) width += widthOf(*answer);
    return width;
}

std::vector<Rect> RowContainer::placesFor(const RAnswer& answer) const {
    std::vector<Rect> places;
    const Rect all = boundingRectangle();
    int left = all.left;
    for (const RAnswer* each : answers()) {
        if (each == &answer) continue;
        const int middle = middleOf(*each) / 2;
        places.push_back({left, all.top, middle, all.bottom});
        left = middle;
    }
    places.push_back({left, all.top, all.right, all.bottom});
    return places;
}

RContainer::Hit RowContainer::hitScore(RAnswer& answer, platform::Point) {
    const std::int64_t score = overlapScore(answer);
    const bool fits = rowWidth() + widthOf(answer) <= boundingRectangle().width();
    return {isEnabled() && fits && score > 0, score};
}

bool RowContainer::isFull() const { return rowWidth() >= boundingRectangle().width(); }

std::size_t RowContainer::indexFor(const RAnswer& answer) const {
    const auto behind = std::ranges::find_if(
        answers(), [&](const RAnswer* each) { return middleOf(*each) > middleOf(answer); });
    return static_cast<std::size_t>(behind - answers().begin());
}

std::vector<RowContainer::Place> RowContainer::places() const {
    std::vector<Place> all;
    for (const RAnswer* answer : answers()) all.push_back({answer, leftOf(*answer) - x()});
    return all;
}

void RowContainer::placeAnswer(RAnswer& answer) {
    const std::vector<Place> before = places();
    const std::size_t index = indexFor(answer);
    const int left = makeRoom(index, widthOf(answer));
    insertAnswer(answer, index);
    if (contains(answer)) {
        const Rect area = boundingRectangle(); // which a handler may have moved
        answer.snapToRectangle({left, area.top, left + widthOf(answer), area.bottom});
        answer.setZ(depthAbove(deltaZ_));
    }
    pack();
    if (hasMoved(before)) playSound(slideSound_);
}

/// The answers from `index` on give way to one before them. Returns its left edge.
int RowContainer::makeRoom(std::size_t index, int width) {
    const int edge = boundingRectangle().left;
    const int left =
        index == 0 ? edge : std::max(edge, answers()[index - 1]->effectiveRectangle().right);
    std::int64_t free = std::int64_t{left} + width;
    for (std::size_t i = index; i < answers().size(); ++i) {
        RAnswer& behind = *answers()[i];
        free = std::max<std::int64_t>(free, leftOf(behind));
        moveLeftTo(behind, free);
        free += widthOf(behind);
    }
    return left;
}

/// Without gaps from the left edge on; what then reaches over the right edge goes back inside, for
/// which there is room unless a script has put too many in.
void RowContainer::pack() {
    const Rect area = boundingRectangle();
    std::int64_t next = area.left;
    for (RAnswer* answer : answers()) {
        moveLeftTo(*answer, next);
        next += widthOf(*answer);
    }
    std::int64_t end = area.right;
    for (auto answer = answers().rbegin(); answer != answers().rend(); ++answer) {
        end -= widthOf(**answer);
        if (leftOf(**answer) > end) moveLeftTo(**answer, end);
    }
}

bool RowContainer::hasMoved(const std::vector<Place>& before) const {
    return std::ranges::any_of(before, [&](const Place& place) {
        const auto still = std::ranges::find(answers(), place.answer);
        return still != answers().end() && leftOf(**still) - x() != place.left;
    });
}

// ---------------------------------------------------------------------------- words

const OMSClass RHorizontalContainer::kClass{"RHorizontalContainer", &RContainer::kClass,
                                            kRHorizontalContainerVocabulary,
                                            &createContainer<RHorizontalContainer>, kArguments};

std::string RHorizontalContainer::answerMatchString() const {
    std::string row;
    for (RAnswer* answer : answers()) row += textOf(*answer, "attribute").value_or("");
    return row;
}

void RHorizontalContainer::dumpAnswerMatches() {
    for (const std::string& match : matches_)
        OMLog::writef(OMLog::Kind::Message,
                      "RHorizontalContainer: dumpAnswerMatches forgets \"%s\"", match.c_str());
    matches_.clear();
}

bool RHorizontalContainer::isSolved() const {
    return std::ranges::find(matches_, answerMatchString()) != matches_.end();
}

// ---------------------------------------------------------------------------- sums

const OMSClass RHorizontalValueContainer::kClass{
    "RHorizontalValueContainer", &RContainer::kClass, kRHorizontalValueContainerVocabulary,
    &createContainer<RHorizontalValueContainer>, kArguments};
