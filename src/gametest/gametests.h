// The tests of a game: each input file in its folder "tests" is played without a window, in a copy
// of the game and with nothing saved. What it expects must be so, and each of its screenshots must
// be equal to the picture of that name beside it.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace gametest {

struct Options {
    std::filesystem::path game;
    std::vector<std::string> names; ///< of tests; empty: all
    std::filesystem::path results =
        "zorbet-tests";                         ///< gets what failed tests left; made when needed
    std::optional<std::filesystem::path> junit; ///< gets the result for build servers
    bool renew = false;                         ///< the pictures are stored anew
};

struct Result {
    std::string name;
    double seconds = 0;
    int expectations = 0;
    int pictures = 0;
    std::vector<std::string> faults;
};

/// Plays them and tells on `out` what comes of each. None when there is nothing to play, which is
/// told on `errors`.
[[nodiscard]] std::optional<std::vector<Result>> play(const Options& options, std::ostream& out,
                                                      std::ostream& errors);

/// The verb `test`; its exit code.
[[nodiscard]] int run(const Options& options, std::ostream& out, std::ostream& errors);

} // namespace gametest
