// The data file that a visit begins with: what a recorded one found, and what one that is played
// again brings. Both of the home directory on the installed platform.
#pragma once

#include <optional>
#include <string>

/// The bytes of the data file; empty when there is none.
[[nodiscard]] std::string RDataFileBytes();

/// Puts the data file there; empty bytes stand for none. A data file that is there is not replaced:
/// unless it has these bytes, what is in the way is given, in a sentence for people.
[[nodiscard]] std::optional<std::string> RBringDataFile(const std::string& bytes);
