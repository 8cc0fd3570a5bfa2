// Which files of a game's folder the game needs when it is played: scripts, resource libraries and
// maps, movies, translations, settings, the icon and licences. What it is made of stays at home.
#pragma once

#include "bundle/bundledgame.h"
#include "bundle/bundlefile.h"

namespace rsc {

struct GameFiles {
    std::vector<BundleFile> files;    ///< names begin in the game's folder
    std::vector<BundleFile> licences; ///< of its first level; not in the above
    /// Files and folders that were left out, but for those that begin with a dot.
    std::vector<std::string> leftOut;
    bool keepsSaves = false; ///< a ZORBET.INI says that saved games lie in the folder
};

/// `also` are files and folders in the game's folder, relative to it, that are taken, too. Refuses
/// games that bring native code, have no first script, or whose files cannot be read.
[[nodiscard]] GameFiles readGameFiles(const std::filesystem::path& folder, const BundledGame& game,
                                      const std::vector<std::filesystem::path>& also);

} // namespace rsc
