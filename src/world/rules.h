// The rules of the world: what guesses make of levels, how items are shared out, and what games and
// players begin with.
#pragma once

#include "omlink.h"
#include "playerrecord.h"

#include <span>
#include <string_view>

namespace world {

/// Where the lines of the rules' reports go. A line may be empty, and may hold line feeds of its
/// own.
using Report = OMLinkTo<void(std::string_view)>;

// ---------------------------------------------------------------------------- levels

// How well a player does in an activity, and what that makes of the level.
//
// Guesses are counted as they come; when it is asked for, the last of them decide whether the
// player moves a level up or down. Counters stay at the largest number. A level or a count of
// results that is out of range, as a changed file may have it, has no totals, no colour and no
// results: what would use them is left out.

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

// ---------------------------------------------------------------------------- items

// The items that are shared out between rounds: twelve among the four activities of a hub, the most
// to the activities in which the player does worst.

/// Fills the item queues of the activities of the current location, which must be a hub. In the
/// first hub the items are glyphs by chance, in the second the gems that the current door misses.
/// Nothing happens, and nothing is reported, anywhere else and when there is no such door or one of
/// its slots is below 1.
void distributeItems(PlayerRecord& record, const Report& report);

void removeNextFromQueue(ActivityRecord& record);

// ---------------------------------------------------------------------------- doors

// The five doors of the second hub. Each shows a row of positions, numbered from 1, in which the
// gems of its pattern repeat: position p shows pattern item (p - 1) modulo their number. Twelve of
// the positions have lost their gems.

/// New patterns and missing slots for all doors. What a door does not use of its pattern stays.
void makeDoors(PlayerRecord& record);

void reportDoors(const PlayerRecord& record, const Report& report);

/// Whether missing slots look like chance: there is an odd one and a second beside it, and their
/// distances within the pattern are not all alike. At least two slots, all from 1.
[[nodiscard]] bool isVaried(std::span<const std::int32_t> slots, int patternCount);

// ---------------------------------------------------------------------------- beginnings

// What a game begins with, and what a player begins with.

/// Takes back what belongs to one game, makes the doors and shares out the first items of
/// both hubs. What the player has learned stays: levels, their colours and data sets, totals of
/// guesses. The report lists the doors with their patterns and missing positions.
void newGame(PlayerRecord& record, const Report& report);

/// What a player who has just been created starts with; ends with a new game.
void resetNewPlayer(PlayerRecord& record, const Report& report);

} // namespace world
