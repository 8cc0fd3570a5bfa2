// Whether the scripts of a game are sound, by the check of zorbet-mps.
#pragma once

#include <filesystem>
#include <iosfwd>

namespace rsc {

/// False when there are errors. These and warnings are told on `errors`, "FILE:LINE:COLUMN:
/// SEVERITY: TEXT [NAME]" each. Refuses when the check cannot be made.
[[nodiscard]] bool areScriptsSound(const std::filesystem::path& game, std::ostream& errors);

} // namespace rsc
