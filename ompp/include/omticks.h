// The millisecond clock of the program without its end: it does not wrap as long as somebody asks
// once in seven weeks. What lasts in 60ths of a second, ticks, is counted by it.
#pragma once

#include "omplatform.h"

#include <cstdint>
#include <utility>

inline constexpr int kOMTicksPerSecond = 60;

class OMTickClock {
  public:
    [[nodiscard]] std::int64_t milliseconds() {
        const std::uint32_t now = OMMilliseconds();
        total_ += static_cast<std::uint32_t>(now - std::exchange(last_, now));
        return total_;
    }
    [[nodiscard]] std::int64_t ticks() { return toTicks(milliseconds()); }
    [[nodiscard]] static std::int64_t toTicks(std::int64_t milliseconds) {
        return milliseconds * kOMTicksPerSecond / 1000;
    }

  private:
    std::uint32_t last_ = 0;
    std::int64_t total_ = 0;
};
