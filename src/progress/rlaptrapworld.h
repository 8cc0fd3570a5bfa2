// What the progress screen reads and writes of the world's memory: of the player who was playing
// when it was opened, until that player goes.
//
// Locations are numbers. Everything reads as 0, and writing does nothing, without a memory, without
// a player, and where there is no location.
#pragma once

#include "world/worldmemory.h"

#include <optional>
#include <string>
#include <string_view>

class LapTrapWorld final : private world::WorldMemory::View {
  public:
    LapTrapWorld();
    ~LapTrapWorld();
    LapTrapWorld(const LapTrapWorld&) = delete;
    LapTrapWorld& operator=(const LapTrapWorld&) = delete;

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
