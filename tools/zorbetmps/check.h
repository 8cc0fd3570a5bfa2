// Checks a script without running it: compiles it and tells every error in its place.
#pragma once

#include <iosfwd>
#include <string>

namespace mps {

/// Writes each error of the script, a host path, and of what it includes as "FILE:LINE: TEXT" or,
/// where there is no line, "FILE: TEXT". True when there is none. The script finds its heap new;
/// the names of the global commands must be registered.
bool checkScript(const std::string& file, std::ostream& out);

} // namespace mps
