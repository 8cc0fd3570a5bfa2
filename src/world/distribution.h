// The items that are shared out between rounds: twelve among the four activities of a hub, the most
// to the activities in which the player does worst.
#pragma once

#include "playerrecord.h"
#include "report.h"

namespace world {

/// Fills the item queues of the activities of the current location, which must be a hub. In the
/// first hub the items are glyphs by chance, in the second the gems that the current door misses.
/// Nothing happens, and nothing is reported, anywhere else and when there is no such door or one of
/// its slots is below 1.
void distributeItems(PlayerRecord& record, const Report& report);

void removeNextFromQueue(ActivityRecord& record);

} // namespace world
