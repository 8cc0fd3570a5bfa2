// RIFF WAVE files, 8-bit mono at kSampleRate.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The bytes of a file with these samples.
[[nodiscard]] std::string waveFile(const std::vector<std::uint8_t>& samples);
