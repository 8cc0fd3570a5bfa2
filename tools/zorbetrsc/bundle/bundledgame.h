// Who the game is that is given to others, as its file "game.ini" says, and under which names it
// lies on their disks.
#pragma once

#include "pictures/picture.h"

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace rsc {

struct BundledGame {
    std::string name; ///< of folder, program and Debian package: a-z, digits, "+", "-" and "."
    std::string identifier;
    std::string title; ///< UTF-8, as the next three
    std::string version;
    std::string author; ///< "NAME <ADDRESS>", or less; may be empty, as the next one
    std::string about;
    std::vector<std::string> languages;
    std::filesystem::path iconFile; ///< relative to the game's folder
    Picture icon;

    /// The folder of it all.
    [[nodiscard]] std::string folder() const { return name + "-" + version; }
};

/// `name` is empty when it follows from the identifier. Refuses what is missing or unfit, all of it
/// at once, each in a line; what could be better goes to `notes`.
[[nodiscard]] BundledGame readBundledGame(const std::filesystem::path& folder,
                                          const std::string& name, std::ostream& notes);

} // namespace rsc
