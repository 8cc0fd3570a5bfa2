// What a game begins with.
//
// A new game also makes the five doors of the second hub. Each shows a row of positions, numbered
// from 1, in which the gems of its pattern repeat: position p shows pattern item (p - 1) modulo
// their number. Twelve of the positions have lost their gems.
#pragma once

#include "playerrecord.h"
#include "report.h"

namespace world {

/// Takes back what belongs to one game, makes the doors and shares out the first items of both
/// hubs. What the player has learned stays: levels, their colours and data sets, totals of guesses.
/// The report lists the doors with their patterns and missing positions.
void newGame(PlayerRecord& record, const Report& report);

/// What a player who has just been created starts with; ends with a new game.
void resetNewPlayer(PlayerRecord& record, const Report& report);

} // namespace world
