// How well a player does in an activity, and what that makes of the level.
//
// Guesses are counted as they come; when it is asked for, the last of them decide whether the
// player moves a level up or down. Counters stay at the largest number. A level or a count of
// results that is out of range, as a changed file may have it, has no totals, no colour and no
// results: what would use them is left out.
#pragma once

#include "playerrecord.h"
#include "report.h"

namespace world {

/// When the level of an activity changes.
struct Thresholds {
    int a = 5;  ///< points needed to advance
    int b = 6;  ///< correct results after which no more are looked at
    int x = 4;  ///< the player goes back with fewer correct results than this
    int y = 10; ///< results looked at, at most
};

void recordGuess(ActivityRecord& record, bool correct);

/// Decides about the level of a location. A level record always advances, without a report; a hub
/// or a location without a record stays as it is. `thresholds` are those of an activity.
void autoLevel(PlayerRecord& record, int location, const Thresholds& thresholds,
               const Report& report);

} // namespace world
