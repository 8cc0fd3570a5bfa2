// Time that passes only when it is told to, so that every run is the same.
#pragma once

#include "platform/clock.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace platform {

class VirtualClock : public Clock {
  public:
    [[nodiscard]] std::uint32_t milliseconds() const override {
        return static_cast<std::uint32_t>(nowMs_);
    }
    /// The clock starts at a fixed date, for the sake of equal runs.
    [[nodiscard]] std::int64_t calendarSeconds() const override {
        return kStartSeconds + static_cast<std::int64_t>(nowMs_ / 1000);
    }
    void sleep(std::uint32_t ms) override { nowMs_ += ms; }
    void wasBusy(std::uint32_t ms) override {
        if (busyCounts_) nowMs_ += ms;
    }
    [[nodiscard]] bool isVirtual() const override { return true; }

    /// What the program is busy with takes no time: the times of its turns are known.
    void ignoreBusyTime() { busyCounts_ = false; }

    /// From here the main loop's time counts.
    void beginLoop() { loopBeginMs_ = nowMs_; }
    [[nodiscard]] bool loopHasBegun() const { return loopBeginMs_.has_value(); }

    /// Milliseconds since the main loop began, 0 before. Never wraps.
    [[nodiscard]] std::uint64_t loopMs() const { return nowMs_ - loopBeginMs_.value_or(nowMs_); }
    /// Moves on to a time of the main loop, which has begun; never back.
    void moveToLoopMs(std::uint64_t ms) { nowMs_ = std::max(nowMs_, *loopBeginMs_ + ms); }

  private:
    static constexpr std::int64_t kStartSeconds = 946684800; // 1 January 2000

    std::uint64_t nowMs_ = 0;
    bool busyCounts_ = true;
    std::optional<std::uint64_t> loopBeginMs_;
};

} // namespace platform
