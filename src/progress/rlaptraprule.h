// When the progress screen refuses to change the level of a location.
//
// Four locations keep in a flag of the player whether they are solved: CMA, OMA, PWS1 and PWS2. In
// the game their level is fixed before the first visit, once they are solved, and, where the screen
// was opened for the location itself, while it is being played. In practice only CMA is: on its own
// screen, before the first visit.
#pragma once

#include <algorithm>
#include <string_view>

struct RLevelChange {
    bool inGame;
    std::string_view location;
    std::string_view screenLocation;
    int visits;    ///< of `location`
    bool isSolved; ///< so is `location`; false where there is no flag
};

/// Whether the player has a flag that tells that the location is solved: its name and "Solved".
[[nodiscard]] constexpr bool RHasSolvedFlag(std::string_view location) {
    constexpr std::string_view kWithFlag[] = {"CMA", "OMA", "PWS1", "PWS2"};
    return std::ranges::find(kWithFlag, location) != std::ranges::end(kWithFlag);
}

[[nodiscard]] constexpr bool RIsLevelFixed(const RLevelChange& change) {
    const bool isVisited = change.visits >= 1;
    const bool isHere = change.location == change.screenLocation;
    if (!change.inGame) return change.location == "CMA" && isHere && !isVisited;
    return RHasSolvedFlag(change.location) && (!isVisited || change.isSolved || isHere);
}
