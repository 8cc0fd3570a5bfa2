#include "omunderway.h"

#include <utility>
#include <vector>

namespace {

std::vector<OMLink> waitingActions;

} // namespace

std::size_t OMUnderWay::waiting() { return waitingActions.size(); }

void OMUnderWay::afterwards(OMLink action) {
    if (depth_ == ground_)
        action();
    else
        waitingActions.push_back(std::move(action));
}

/// An action may put others off, which come after those that wait already.
void OMUnderWay::runWaiting() {
    const OMUnderWay running;
    for (std::size_t next = kept_; next < waitingActions.size(); ++next)
        std::exchange(waitingActions[next], nullptr)();
    waitingActions.resize(kept_);
}
