// What the progress screen reads and writes of the world's memory: of the player who was playing
// when it was opened, until that player goes.
//
// Locations are numbers. Everything reads as 0, and writing does nothing, without a memory, without
// a player, and where there is no location.
#pragma once

#include "world/worldmemory.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

class LapTrapWorld final : private world::WorldMemory::View {
  public:
    LapTrapWorld();
    ~LapTrapWorld();
    LapTrapWorld& operator=(LapTrapWorld&&) = delete;

    [[nodiscard]] bool hasPlayer() const { return player_ != nullptr; }

    // Of the player.

    [[nodiscard]] std::string playerName() const;
    [[nodiscard]] bool isInGame() const { return isSet("inGame"); }
    [[nodiscard]] int currentLocation() const;
    [[nodiscard]] bool isMusicOff() const { return isSet(kMusicOff); }
    void setMusicOff(bool off) { set(kMusicOff, off); }
    /// Any flag of the player or, where they have none of the name, of the world.
    [[nodiscard]] bool isSet(std::string_view flag) const;
    void set(std::string_view flag, bool on = true);

    // Of a location.

    /// None when the location has no levels.
    [[nodiscard]] std::optional<int> currentLevel(int location) const;
    void setCurrentLevel(int location, int level);
    [[nodiscard]] int levelColor(int location, int level) const;
    [[nodiscard]] bool isAutoLeveling(int location) const;
    void setAutoLeveling(int location, bool on);
    [[nodiscard]] int visits(int location) const;
    [[nodiscard]] bool isSolved(int location) const;

  private:
    static constexpr std::string_view kMusicOff = "isBackgroundMusicOff";

    void playerGoes(const world::Player& player) override;
    void memoryGoes() override;
    [[nodiscard]] std::optional<world::Leveled> at(int location) const;

    world::WorldMemory* memory_;
    world::Player* player_;
};

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

/// When the screen refuses to change the level of a location.
///
/// Four locations keep in a flag of the player whether they are solved: CMA, OMA, PWS1 and PWS2. In
/// the game their level is fixed before the first visit, once they are solved, and, where the
/// screen was opened for the location itself, while it is being played. In practice only CMA is: on
/// its own screen, before the first visit.
[[nodiscard]] constexpr bool RIsLevelFixed(const RLevelChange& change) {
    const bool isVisited = change.visits >= 1;
    const bool isHere = change.location == change.screenLocation;
    if (!change.inGame) return change.location == "CMA" && isHere && !isVisited;
    return RHasSolvedFlag(change.location) && (!isVisited || change.isSolved || isHere);
}
