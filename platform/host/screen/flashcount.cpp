#include "platform/host/screen/flashcount.h"

#include <algorithm>

namespace platform {

FlashCount::Way FlashCount::turnTo(float level) const {
    if (way_ != Way::Down && high_ - level >= step_ && level < bright_) return Way::Down;
    if (way_ != Way::Up && level - low_ >= step_ && low_ < bright_) return Way::Up;
    return Way::None;
}

void FlashCount::move(float level, std::uint32_t nowMs) {
    const Way turn = turnTo(level);
    if (turn == Way::None) {
        low_ = std::min(low_, level);
        high_ = std::max(high_, level);
        return;
    }
    way_ = turn;
    low_ = high_ = level;
    if (count_ < kMostTurns) {
        turnsMs_[count_++] = nowMs;
    } else {
        turnsMs_[oldest_] = nowMs;
        oldest_ = static_cast<std::uint8_t>((oldest_ + 1) % kMostTurns);
    }
}

} // namespace platform
