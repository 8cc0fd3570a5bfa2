// Turns sound files into resources that the game plays.
#pragma once

#include "filesystem.h"

#include <optional>

namespace rsc {

/// Samples a second of a sound for which neither the manifest nor its file says a rate of the game.
inline constexpr int kUsualSoundRate = 22050;

/// A file that the game plays, at the rate that is asked for, is the resource as it is. Any other
/// one becomes a RIFF WAVE file of 8 bits, mono, at that rate; without one at its own when the game
/// has it (formats::sound::kRates), else at kUsualSoundRate. Refuses what cannot be converted, and
/// what is cut off.
[[nodiscard]] Bytes buildSound(ByteSpan file, std::optional<int> rate);

/// -1 to 1 as an unsigned sample of 8 bits, or a signed one of 16 bits: the nearest step, without
/// dither, so that silence stays silent. What is louder is cut, and what is no number is silence.
[[nodiscard]] std::uint8_t toSample8(float value);
[[nodiscard]] std::int16_t toSample16(float value);

} // namespace rsc
