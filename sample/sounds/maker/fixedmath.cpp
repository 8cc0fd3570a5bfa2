#include "fixedmath.h"

#include <algorithm>
#include <array>

namespace fixedmath {

namespace {

constexpr int kSineBits = 10; ///< of a quarter turn
constexpr std::size_t kQuarter = std::size_t{1} << kSineBits;
constexpr int kFineBits = 30;                    ///< fraction bits while the tables are made
constexpr std::int64_t kCosineStep = 1073740561; ///< of a 4096th of a turn, kFineBits
constexpr std::int64_t kSineStep = 1647099;
constexpr std::int64_t kCent = 2148724442; ///< 2 to the power of 1/1200, kPowerBits
constexpr std::size_t kCents = 1200;
constexpr int kCentBits = 8;
constexpr std::int64_t kStepOfA4 = 85704563; ///< 440 / 22050 turns

constexpr std::int64_t rounded(std::int64_t value, int bits) {
    return (value + (std::int64_t{1} << (bits - 1))) >> bits;
}

/// A quarter turn by rotating a pointer step by step; the last entry is 1.
constexpr auto kSines = [] {
    std::array<std::int32_t, kQuarter + 1> table{};
    std::int64_t x = std::int64_t{1} << kFineBits;
    std::int64_t y = 0;
    for (std::int32_t& entry : table) {
        entry = static_cast<std::int32_t>(rounded(y, kFineBits - kUnitBits));
        const std::int64_t turned = rounded(x * kCosineStep - y * kSineStep, kFineBits);
        y = rounded(x * kSineStep + y * kCosineStep, kFineBits);
        x = turned;
    }
    return table;
}();
static_assert(kSines[kQuarter] == kUnit && kSines[kQuarter / 2] == 23170 &&
              kSines[kQuarter / 3] == 16369);

/// An octave, cent by cent. The product of two numbers with 31 fraction bits needs 64 bits
/// unsigned.
constexpr auto kPowers = [] {
    std::array<std::int64_t, kCents + 1> table{};
    std::uint64_t value = std::uint64_t{1} << kPowerBits;
    for (std::int64_t& entry : table) {
        entry = static_cast<std::int64_t>(value);
        value =
            (value * static_cast<std::uint64_t>(kCent) + (std::uint64_t{1} << 30)) >> kPowerBits;
    }
    return table;
}();
constexpr std::int64_t kPowerError = kPowers[kCents] - (std::int64_t{2} << kPowerBits);
static_assert(kPowerError > -2000 && kPowerError < 2000); // a thousandth of a cent

std::int64_t quarterSine(std::uint32_t phase) { // of 30 bits, a quarter turn
    constexpr int kFraction = 30 - kSineBits;
    const std::uint32_t index = phase >> kFraction;
    const std::int64_t rest = phase & ((1U << kFraction) - 1);
    if (index >= kQuarter) return kUnit;
    const std::int64_t low = kSines[index];
    return low + rounded((kSines[index + 1] - low) * rest, kFraction);
}

} // namespace

std::int64_t sine(std::uint32_t phase) {
    constexpr std::uint32_t kQuarterTurn = 1U << 30;
    const std::uint32_t within = phase & (kQuarterTurn - 1);
    const bool falling = (phase & kQuarterTurn) != 0;
    const std::int64_t value = quarterSine(falling ? kQuarterTurn - within : within);
    return (phase >> 31) != 0 ? -value : value;
}

std::int64_t power(std::int64_t octaves) {
    std::int64_t whole = octaves / kOctave;
    std::int64_t rest = octaves % kOctave;
    if (rest < 0) {
        rest += kOctave;
        --whole;
    }
    if (whole < -30) return 0;
    const auto cent = static_cast<std::size_t>(rest >> kCentBits);
    const std::int64_t fraction = rest & ((1 << kCentBits) - 1);
    const std::int64_t low = kPowers[cent];
    const std::int64_t value = low + ((kPowers[cent + 1] - low) * fraction >> kCentBits);
    return whole >= 0 ? value << std::min<std::int64_t>(whole, 8) : value >> -whole;
}

std::int64_t phaseStep(std::int64_t pitch) {
    // Eight bits less keep the product within 64 bits.
    return ((kStepOfA4 * (power(pitch) >> 8)) + (std::int64_t{1} << 22)) >> (kPowerBits - 8);
}

} // namespace fixedmath
