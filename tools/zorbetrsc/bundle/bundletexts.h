// The texts that go with a game: what starts it, what desktops and software centres want to know,
// and what people read. All are UTF-8.
#pragma once

#include "bundle/bundledgame.h"
#include "bundle/bundlefile.h"
#include "bundle/engine.h"

#include <string>
#include <vector>

namespace rsc {

/// Where things lie in the folder of a bundle.
inline constexpr const char* kEngineFile = "engine/zorbet";
inline constexpr const char* kGameFolder = "game";

/// The script of a folder that may lie anywhere. It tells which libraries of the system are
/// missing, and gives the game its place in the menu.
[[nodiscard]] std::string folderStarter(const BundledGame& game, const Engine& engine);
/// The script of an installed package, whose files lie in these folders.
[[nodiscard]] std::string packageStarter(const std::string& engineFile,
                                         const std::string& gameFolder);

/// `start` is the command, `icon` a name or a path.
[[nodiscard]] std::string desktopEntry(const BundledGame& game, const std::string& start,
                                       const std::string& icon);
/// AppStream's metadata of the game.
[[nodiscard]] std::string metainfo(const BundledGame& game);
/// The page of an installed game for man(1).
[[nodiscard]] std::string manual(const BundledGame& game);

/// For players: README.txt in English, and LEIAME.txt for a game in Portuguese. `keepsSaves`: saved
/// games lie in the game's folder.
[[nodiscard]] std::vector<BundleFile> readmes(const BundledGame& game, const Engine& engine,
                                              bool keepsSaves,
                                              const std::vector<BundleFile>& licences);
/// Who made the engine, and what may be done with it.
[[nodiscard]] std::string engineNotices();

} // namespace rsc
