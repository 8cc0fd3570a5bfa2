// The five doors of the second hub. Each shows a row of positions, numbered from 1, in which the
// gems of its pattern repeat: position p shows pattern item (p - 1) modulo their number. Twelve of
// the positions have lost their gems.
#pragma once

#include "playerrecord.h"
#include "report.h"

namespace world {

/// New patterns and missing slots for all doors. What a door does not use of its pattern stays.
void makeDoors(PlayerRecord& record);

void reportDoors(const PlayerRecord& record, const Report& report);

/// Whether missing slots look like chance: there is an odd one and a second beside it, and their
/// distances within the pattern are not all alike. At least two slots, all from 1.
[[nodiscard]] bool isVaried(std::span<const std::int32_t> slots, int patternCount);

} // namespace world
