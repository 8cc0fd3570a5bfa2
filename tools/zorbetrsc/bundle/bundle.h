// The command "bundle": makes of a game's folder what its author gives to others, a folder that
// runs anywhere and a Debian package.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace rsc {

struct BundleOptions {
    std::filesystem::path game;
    std::filesystem::path output; ///< a folder that is empty or not there yet, outside of the game
    std::string name;             ///< empty: the end of the identifier
    std::vector<std::filesystem::path> also; ///< files and folders of the game that go with it
};

/// Returns the exit code. The game's folder stays as it is; what is wrong is told on `errors`, and
/// nothing is made then.
[[nodiscard]] int runBundle(const BundleOptions& options, std::ostream& out, std::ostream& errors);

} // namespace rsc
