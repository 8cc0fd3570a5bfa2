// What the player allows single games, in a file of their own that no game can write to: games.ini
// in the folder "zorbet" of the user's folder for configuration (XDG base directories). A section
// is a game's folder:
//
//     [/home/ana/games/pond]
//     components=yes
#pragma once

#include <string>

namespace platform {

/// The file's name on the host, there or not.
[[nodiscard]] std::string permitsFile();

/// Whether the game in the folder `content` (of the host) may bring native code.
[[nodiscard]] bool permitsComponents(const std::string& content);

} // namespace platform
