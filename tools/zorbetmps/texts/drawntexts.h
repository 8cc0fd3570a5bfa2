// The texts of a game's scripts: those that are for people, drawn out, each once; and all others
// that stand in quotes, as a translation would take their place, too.
#pragma once

#include "zorbetmps/check/finding.h"

#include <compare>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace mps {

struct TextPlace {
    std::string file; ///< from the game's folder on, with "/"
    int line = 0;     ///< 0: somewhere in it

    [[nodiscard]] std::string shown() const {
        return line > 0 ? file + ':' + std::to_string(line) : file;
    }
    auto operator<=>(const TextPlace&) const = default;
};

struct DrawnText {
    std::string text; ///< UTF-8, as all here
    bool isTaken = false;
    std::set<TextPlace> places;    ///< of one that is taken, where it is shown; else all of them
    std::set<std::string> remarks; ///< what shows it, what it is joined with
    std::set<std::string> scripts; ///< the file names of those that the game loads it with
};

struct DrawnTexts {
    std::vector<DrawnText> texts;         ///< in the order of their first places
    std::vector<std::string> doubts;      ///< sentences about texts that are shown and not taken
    std::vector<Finding> mistakes;        ///< for which the game would refuse scripts
    std::vector<std::string> withoutText; ///< scripts that are precompiled
};

/// Of all scripts in the folder but those of its folder "tests". The names of the global commands
/// must be registered; the heap is new afterwards.
///
/// A comment decides about the statement in the next line: "; texts take" that its texts are for
/// people, "; texts skip" that they are not.
[[nodiscard]] DrawnTexts drawTexts(const std::string& folder);

} // namespace mps
