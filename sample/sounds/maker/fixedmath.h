// The mathematics of the sound maker, in integers only, so that a score gives the same bytes on
// every machine: sines, powers of two for pitches and decays, products of fixed-point numbers.
#pragma once

#include <cstdint>

namespace fixedmath {

inline constexpr int kUnitBits = 15;
inline constexpr std::int64_t kUnit = 1 << kUnitBits; ///< 1.0 of levels and samples
inline constexpr int kPowerBits = 31;                 ///< fraction bits of what `power` returns
inline constexpr std::int64_t kOctave = 1200 * 256;   ///< pitches count 256ths of a cent

/// Sine of a phase whose 32 bits are one turn; from -kUnit to kUnit.
[[nodiscard]] std::int64_t sine(std::uint32_t phase);

/// 2 to the power of octaves / kOctave, with kPowerBits fraction bits. Less than 2^-30 is 0; powers
/// above 2^8 are cut.
[[nodiscard]] std::int64_t power(std::int64_t octaves);

/// Phase step a sample, 32 bits a turn, of a pitch relative to a4 (440 Hz) at 22,050 samples a
/// second.
[[nodiscard]] std::int64_t phaseStep(std::int64_t pitch);

/// Product of two numbers of which one has kUnitBits fraction bits, rounded.
[[nodiscard]] constexpr std::int64_t scaled(std::int64_t value, std::int64_t level) {
    return (value * level + kUnit / 2) >> kUnitBits;
}

/// From 0 to kUnit while `at` goes from 0 to `length`, without corners. `length` is positive.
[[nodiscard]] constexpr std::int64_t smoothRamp(std::int64_t at, std::int64_t length) {
    if (at >= length) return kUnit;
    const std::int64_t x = at * kUnit / length;
    return scaled(scaled(x, x), 3 * kUnit - 2 * x);
}

} // namespace fixedmath
