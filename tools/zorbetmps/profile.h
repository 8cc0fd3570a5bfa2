// Where the time of a game's scripts goes: a run of the game, as tables and as the input of viewers
// of flame graphs.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>

namespace mps {

struct ProfiledRun {
    std::filesystem::path game;
    std::optional<std::filesystem::path> input;
    int untilMs = 60'000;
    bool isInWindow = false; ///< somebody plays, and `input` and `untilMs` do not count
    int mostLines = 20;      ///< of each table
    std::optional<std::filesystem::path> folded; ///< gets a stack a line, with its microseconds
};

/// Whether the run came to its end and something is told of it; otherwise `errors` tells why.
[[nodiscard]] bool profile(const ProfiledRun& run, std::ostream& out, std::ostream& errors);

} // namespace mps
