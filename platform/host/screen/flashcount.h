// How often one place of the picture went to and fro. A flash is a pair of opposing changes; what
// creeps, or goes on in the same direction, is none.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace platform {

class FlashCount {
  public:
    static constexpr std::uint32_t kSpanMs = 1000;
    static constexpr std::size_t kMostTurns = 6; ///< of three flashes, within kSpanMs

    /// Changes of less than `step` do not count, nor those between levels that are not below
    /// `bright`.
    constexpr FlashCount(float step, float bright) : step_(step), bright_(bright) {}

    /// What is there at first; no change led to it.
    void begin(float level) { low_ = high_ = level; }

    /// Whether the level can follow at this time with no more than kMostTurns turns in kSpanMs.
    [[nodiscard]] bool allows(float level, std::uint32_t nowMs) const {
        return !isSpent(nowMs) || turnTo(level) == Way::None;
    }
    void move(float level, std::uint32_t nowMs);

  private:
    enum class Way : std::uint8_t { None, Up, Down };

    /// The new direction, if the way to that level turns.
    [[nodiscard]] Way turnTo(float level) const;
    [[nodiscard]] bool isSpent(std::uint32_t nowMs) const {
        return count_ == kMostTurns && nowMs - turnsMs_[oldest_] < kSpanMs;
    }

    float step_;
    float bright_;
    float low_ = 0; ///< lowest since the last turn, as long as it does not go up
    float high_ = 0;
    std::array<std::uint32_t, kMostTurns> turnsMs_{};
    std::uint8_t count_ = 0;
    std::uint8_t oldest_ = 0;
    Way way_ = Way::None;
};

} // namespace platform
