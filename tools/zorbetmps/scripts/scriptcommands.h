// The commands that make something else of scripts. The names of the global commands must be
// registered; the heap is new afterwards.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace mps {

/// Where the output goes and whether all went well; what did not is told on `errors`, but mistakes
/// in scripts, as the check tells them, on `out`.
struct Told {
    std::ostream& out;
    std::ostream& errors;
};

/// Writes the precompiled form of each script: into `to`, a file or, of several, a folder; without,
/// beside it. Nothing is written when one of them has a mistake, or has no such form.
[[nodiscard]] bool compileScripts(const std::vector<std::string>& files, const std::string& to,
                                  const Told& told);

/// Prints the listing of each script, whether text or precompiled; of several each with its name
/// before.
[[nodiscard]] bool listScripts(const std::vector<std::string>& files, bool withLines,
                               const Told& told);

enum class Formatting {
    Print, ///< of one script, whose mistakes are told on `errors`
    Check, ///< the names of those that would change; they are no success
    Write, ///< the names of those that were changed
};
/// Scripts, and of folders all that are in them.
[[nodiscard]] bool formatScripts(const std::vector<std::string>& paths, Formatting what,
                                 const Told& told);

} // namespace mps
