// Where the saved games and settings of a user lie on the host: one folder for all games, and in it
// one for each, named by the game's identifier. Host path names.
#pragma once

#include "platform/files.h"

#include <memory>
#include <string>

namespace platform {

/// "zorbet" in the user's folder for data by the rules of XDG base directories. Need not be there.
[[nodiscard]] std::string userDataFolder();
[[nodiscard]] std::string gameDataFolder(const std::string& identifier);

/// The folder for the game in the folder `content`. It is gameDataFolder, which belongs from then
/// on to the game that asks first: a game in another folder that claims the same identifier, as
/// long as the first one is there, gets one of its own.
[[nodiscard]] std::string claimDataFolder(const std::string& identifier,
                                          const std::string& content);

/// "zorbet" in the user's folder for states, by the same rules. Need not be there.
[[nodiscard]] std::string userStateFolder();

/// Opens a log that can be written nowhere else, in that folder, which is made when it is missing.
/// Null when it cannot be.
[[nodiscard]] std::unique_ptr<File> openUserLog(const std::string& name, OpenMode mode);

/// Moves saved games that lie in the folder of all games, where they were before each game had its
/// own, to the folder of `identifier`, unless that has some. What cannot be moved stays.
void moveOldSaves(const std::string& identifier);

} // namespace platform
