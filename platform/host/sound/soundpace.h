// How much of a sound a clock has played: stands in for a device that takes samples by itself.
//
// The clock only moves on between the program's calls, so every call first plays what the time
// since the last one is worth.
#pragma once

#include "platform/clock.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace platform {

class SoundPace {
  public:
    /// The clock must outlive it. Stands still until `start`.
    explicit SoundPace(const Clock& clock) : clock_(clock) {}

    /// From now on `rate` samples a second; with 0 none.
    void start(int rate) {
        rate_ = static_cast<std::uint64_t>(rate);
        paused_ = false;
        due_ = 0;
        lastMs_ = clock_.milliseconds();
    }
    /// To be called after `advance`.
    void setPaused(bool paused) { paused_ = paused; }

    /// How many of the `waiting` samples were played since the last call. Time in which none waited
    /// is lost; a part of a sample is kept for the next call.
    [[nodiscard]] std::size_t advance(std::size_t waiting) {
        const std::uint32_t elapsedMs = clock_.milliseconds() - lastMs_;
        lastMs_ += elapsedMs;
        if (!paused_) due_ += elapsedMs * rate_;
        const std::size_t played = std::min<std::size_t>(due_ / kSample, waiting);
        due_ = played < waiting ? due_ - played * kSample : 0;
        return played;
    }

  private:
    static constexpr std::uint64_t kSample = 1000; // a millisecond is worth `rate` thousandths

    const Clock& clock_;
    std::uint64_t rate_ = 0;
    bool paused_ = false;
    std::uint32_t lastMs_ = 0;
    std::uint64_t due_ = 0; ///< thousandths of samples that time has passed but no whole one yet
};

} // namespace platform
