// What the progress screen reads and writes of the world's memory, through a port of its own.
//
// Locations are numbers. Everything reads as 0, and writing does nothing, without a memory, without
// a player, and where there is no location.
#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class RWorldPort;

class LapTrapWorld {
  public:
    LapTrapWorld();
    ~LapTrapWorld();

    [[nodiscard]] bool hasPlayer() const;

    // Of the player.

    [[nodiscard]] std::string playerName();
    [[nodiscard]] bool isInGame();
    [[nodiscard]] int currentLocation();
    [[nodiscard]] bool isMusicOff();
    void setMusicOff(bool off);
    /// Any flag of the player by its name.
    [[nodiscard]] bool isSet(std::string_view flag);
    void set(std::string_view flag);

    // Of a location.

    /// None when the location has no levels.
    [[nodiscard]] std::optional<int> currentLevel(int location);
    void setCurrentLevel(int location, int level);
    [[nodiscard]] int levelColor(int location, int level);
    [[nodiscard]] bool isAutoLeveling(int location);
    void setAutoLeveling(int location, bool on);
    [[nodiscard]] int visits(int location);
    [[nodiscard]] bool isSolved(int location);

  private:
    using Words = std::initializer_list<std::string_view>;

    [[nodiscard]] std::string read(std::string_view property, Words arguments);
    void write(std::string_view property, Words arguments, int value);
    // An empty name would be the current location.
    [[nodiscard]] std::string readAt(int location, std::string_view property);
    void writeAt(int location, std::string_view property, int value);

    std::unique_ptr<RWorldPort> port_; ///< null without a memory
};
