// The command "list": shows what lies in resource libraries, one line a resource, and what movies
// are.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <vector>

namespace rsc {

/// Prints type, id, size and offset in bytes, and what animations, fonts and cursors consist of.
/// Faults are told as "FILE: text"; the other files are listed all the same. Returns the exit code.
[[nodiscard]] int runList(const std::vector<std::filesystem::path>& files, std::ostream& out,
                          std::ostream& errors);

} // namespace rsc
