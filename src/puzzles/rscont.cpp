#include "rscont.h"

#include "omsclass.h"

#include <algorithm>
#include <numeric>

using platform::Rect;

namespace {

constexpr OMSEntry kRStackingContainerRows[] = {
    oms::data<&RStackingContainer::droppedSound, &RStackingContainer::setDroppedSound>(
        "droppedSound", "sound of answers that fall; -1: none")
        .of("sound"),
    oms::data<&RStackingContainer::solvedAnswerCount, &RStackingContainer::setSolvedAnswerCount>(
        "solvedAnswerCount", "answers that it takes to be solved; -1: any number"),
};

constexpr auto kRStackingContainerVocabulary =
    oms::joined(kRStackingContainerRows, kContainerSumRows, kContainerLookRows, kPlayRows);

int heightOf(const RAnswer& answer) { return std::max(answer.effectiveRectangle().height(), 0); }

} // namespace

const OMSClass RStackingContainer::kClass{"RStackingContainer", &RContainer::kClass,
                                          kRStackingContainerVocabulary,
                                          &createContainer<RStackingContainer>, kArguments};

RStackingContainer::RStackingContainer(const RStackingContainer& other)
    : OMSCopied(other), solvedCount_(other.solvedCount_), droppedSound_(other.droppedSound_) {}

std::int64_t RStackingContainer::stackHeight() const {
    return std::accumulate(heights_.begin(), heights_.end(), std::int64_t{0});
}

RContainer::Hit RStackingContainer::hitScore(RAnswer& answer, platform::Point) {
    const std::int64_t score = overlapScore(answer);
    const bool fits = stackHeight() + heightOf(answer) <= boundingRectangle().height();
    return {isEnabled() && fits && score > 0, score};
}

bool RStackingContainer::isFull() const { return stackHeight() >= boundingRectangle().height(); }

bool RStackingContainer::isSolved() const {
    return answerValue() == value() && (solvedCount_ == kAnyCount || solvedCount_ == answerCount());
}

void RStackingContainer::placeAnswer(RAnswer& answer) {
    const Rect area = boundingRectangle();
    const auto bottom =
        static_cast<int>(std::max<std::int64_t>(area.bottom - stackHeight(), -kFarthest));
    answer.snapToRectangle({area.left, bottom - heightOf(answer), area.right, bottom});
    RContainer::placeAnswer(answer);
}

void RStackingContainer::answerEnters(const RAnswer& answer, std::size_t index) {
    heights_.insert(heights_.begin() + static_cast<std::ptrdiff_t>(index), heightOf(answer));
}

/// Those above it fall.
void RStackingContainer::answerLeaves(std::size_t index) {
    const auto at = static_cast<std::ptrdiff_t>(index);
    const int height = heights_[index];
    heights_.erase(heights_.begin() + at);
    if (index + 1 == answers().size() || height == 0) return;
    for (auto above = answers().begin() + at + 1; above != answers().end(); ++above)
        (*above)->offset(0, height);
    playSound(droppedSound_);
}
