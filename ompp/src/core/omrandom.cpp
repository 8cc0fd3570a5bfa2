#include "omrandom.h"

#include <random>

namespace {
std::mt19937 generator;
}

void OMSeedRandom(std::uint32_t seed) { generator.seed(seed); }

std::uint32_t OMRandom() { return static_cast<std::uint32_t>(generator()); }
