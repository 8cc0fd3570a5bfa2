// The time of a movie, which passes only while it runs.
#pragma once

#include "platform/clock.h"

#include <cstdint>

namespace platform {

class MovieClock {
  public:
    /// The clock must outlive it.
    explicit MovieClock(const Clock& clock) : clock_(clock) {}

    void run(bool on) {
        update();
        runs_ = on;
    }
    [[nodiscard]] bool runs() const { return runs_; }
    /// To be called now and then while it runs, as the clock below wraps.
    void update() {
        const std::uint32_t now = clock_.milliseconds();
        if (runs_) total_ += now - updated_;
        updated_ = now;
    }

    /// Milliseconds for which it ran in all.
    [[nodiscard]] std::uint64_t total() const {
        return runs_ ? total_ + (clock_.milliseconds() - updated_) : total_;
    }
    /// Frames are due by the time from here on.
    void setBase(int frame) {
        base_ = total();
        baseFrame_ = frame;
    }
    /// Milliseconds since the base.
    [[nodiscard]] std::uint64_t sinceBase() const { return total() - base_; }
    /// Hundredths of a millisecond since the base at which a frame is due.
    [[nodiscard]] std::int64_t due(int frame, int frameTime) const {
        return static_cast<std::int64_t>(frame - baseFrame_) * frameTime;
    }
    /// Hundredths of a millisecond since a frame is due; negative: until then.
    [[nodiscard]] std::int64_t late(int frame, int frameTime) const {
        return static_cast<std::int64_t>(sinceBase() * 100) - due(frame, frameTime);
    }

  private:
    const Clock& clock_;
    bool runs_ = false;
    std::uint32_t updated_ = 0;
    std::uint64_t total_ = 0;
    std::uint64_t base_ = 0;
    int baseFrame_ = 0;
};

} // namespace platform
