// A game of somebody's own to begin with: a copy of the small one that lies beside the program,
// with a title and an identifier of its own.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

struct NewGame {
    std::string folder;               ///< of the host; not there yet, or empty
    std::optional<std::string> title; ///< none: the folder's name
};

/// Makes it, and tells on `out` what can be done with it. What goes wrong is told on `errors`, and
/// nothing is left of the game then. The exit code.
[[nodiscard]] int makeGame(const NewGame& game, std::ostream& out, std::ostream& errors);
