// Where the saved games and settings of a user lie on the host: in the user's folder for data
// (userfolders.h) one folder for each game, named by the game's identifier. Host path names.
#pragma once

#include <string>

namespace platform {

/// Need not be there.
[[nodiscard]] std::string gameDataFolder(const std::string& identifier);

/// The folder for the game in the folder `content`. It is gameDataFolder, which belongs from then
/// on to the game that asks first: a game in another folder that claims the same identifier, as
/// long as the first one is there, gets one of its own.
[[nodiscard]] std::string claimDataFolder(const std::string& identifier,
                                          const std::string& content);

/// Moves saved games that lie in the folder of all games, where they were before each game had its
/// own, to the folder of `identifier`, unless that has some. What cannot be moved stays.
void moveOldSaves(const std::string& identifier);

} // namespace platform
