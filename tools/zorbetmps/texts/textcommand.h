// What zorbet-mps texts does. The names of the global commands must be registered; the heap is new
// afterwards.
#pragma once

#include "zorbetmps/scripts/scriptcommands.h"

#include <string>
#include <vector>

namespace mps {

struct TextsWork {
    std::string game; ///< its folder
    bool isChecked = false;
    std::vector<std::string> written; ///< languages whose catalogues are made or renewed
};

/// Prints the template of catalogues, or writes catalogues, and tells on `errors` what catalogues
/// lack; or tells just that on `out`, and is no success when something is lacking. It is none
/// either when a script has mistakes, or a file cannot be read or written.
[[nodiscard]] bool drawOutTexts(const TextsWork& work, const Told& told);

} // namespace mps
