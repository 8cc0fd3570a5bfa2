#include "singlecontainer.h"

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
