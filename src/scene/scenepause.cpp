#include "scene/scenepause.h"

#include <algorithm>

void ScenePause::raise(bool thereIsAScene) {
    ++level_;
    if (thereIsAScene && !pausedSince_) pausedSince_ = clock_.milliseconds();
}

void ScenePause::lower() {
    level_ = std::max(level_ - 1, 0);
    if (level_ > 0 || !pausedSince_ || movieIsCurrent()) return;
    pausedMs_ += clock_.milliseconds() - *pausedSince_;
    pausedSince_.reset();
}

void ScenePause::end() {
    level_ = 0;
    lower();
}

std::int64_t ScenePause::ticks() {
    const std::int64_t now = pausedSince_ ? *pausedSince_ : clock_.milliseconds();
    return OMTickClock::toTicks(now - pausedMs_);
}
