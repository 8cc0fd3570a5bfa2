// What a game begins with, and what a player begins with.
#pragma once

#include "playerrecord.h"
#include "report.h"

namespace world {

/// Takes back what belongs to one game, makes the doors (doors.h) and shares out the first items of
/// both hubs. What the player has learned stays: levels, their colours and data sets, totals of
/// guesses. The report lists the doors with their patterns and missing positions.
void newGame(PlayerRecord& record, const Report& report);

/// What a player who has just been created starts with; ends with a new game.
void resetNewPlayer(PlayerRecord& record, const Report& report);

} // namespace world
