#include "scene/scenepause.h"

#include "omplatform.h"

#include <algorithm>

void ScenePause::raise(bool thereIsAScene) {
    ++level_;
    if (thereIsAScene && !pausedSince_) pausedSince_ = clock();
}

void ScenePause::lower() {
    level_ = std::max(level_ - 1, 0);
    if (level_ > 0 || !pausedSince_ || movieIsCurrent()) return;
    pausedMs_ += clock() - *pausedSince_;
    pausedSince_.reset();
}

std::int64_t ScenePause::ticks() {
    const std::int64_t now = pausedSince_ ? *pausedSince_ : clock();
    return (now - pausedMs_) * kTicksPerSecond / platform::kMsPerSecond;
}

std::int64_t ScenePause::clock() {
    const std::uint32_t now = OMMilliseconds();
    clock_ += now - std::exchange(readMs_, now);
    return clock_;
}
