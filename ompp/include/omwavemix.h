// The arithmetic of the sound mixer: 8-bit samples around 128, integers only. The loops are plain
// so that compilers turn them into vector code.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace OMWaveMix {

inline constexpr std::uint8_t kSilence = 128;

/// What a volume makes of each of the 256 sample values.
using VolumeTable = std::array<std::uint8_t, 256>;

/// `volume` from 0 to 100; at 100 every value stays as it is.
[[nodiscard]] VolumeTable makeVolumeTable(int volume);

using Samples = std::span<const std::uint8_t>;
using Target = std::span<std::uint8_t>; ///< at least as long as the samples

/// A table of null means full volume, here and below.
void copy(Target target, Samples samples, const VolumeTable* table);
/// Mixes samples into mixed ones, clipping.
void add(Target target, Samples samples, const VolumeTable* table);
/// Takes samples out of mixed ones again, clipping.
void subtract(Target target, Samples samples, const VolumeTable* table);
/// Replaces samples mixed in at one volume by the same ones at another, clipping.
void change(Target target, Samples samples, const VolumeTable& from, const VolumeTable& to);

/// Sums of several sounds before they are clipped.
using Sums = std::span<std::int16_t>;
void accumulate(Sums sums, Samples samples, const VolumeTable* table);
void clip(Target target, std::span<const std::int16_t> sums);

} // namespace OMWaveMix
