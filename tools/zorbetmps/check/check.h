// Checks scripts without running them: those of a whole game, or some of them.
//
// A script that others include is no script by itself: what is wrong in it is what all that include
// it find.
#pragma once

#include "zorbetmps/check/finding.h"

#include <string>
#include <vector>

namespace mps {

/// Each path, of the host, is a game's folder, as the game sees it, or a script of one. Those of a
/// folder are sorted by file and place. Notes are told of folders only. The heap is new afterwards;
/// the names of the global commands must be registered.
[[nodiscard]] std::vector<Finding> check(const std::vector<std::string>& paths);

} // namespace mps
