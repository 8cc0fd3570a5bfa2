// What mixing sounds costs the processor: our engine, and SDL2_mixer with the same sounds.
#pragma once

#include <cstddef>

/// The sounds that are mixed: 8-bit mono at this rate and volume, looping.
inline constexpr int kMixRate = 22050;          ///< samples a second
inline constexpr int kMixVolume = 50;           ///< of 100
inline constexpr int kMixBuffer = 1024;         ///< samples of an output buffer
inline constexpr int kMixLength = 5 * kMixRate; ///< samples of one sound

/// Nanoseconds on the processor for one sample of output, mixed of `sounds` sounds.
[[nodiscard]] double measureOurMixing(int sounds);
/// The same; throws std::runtime_error when the mixer cannot be opened.
[[nodiscard]] double measureSdlMixer(int sounds);
