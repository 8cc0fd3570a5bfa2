// Findings as lines for people, and as JSON for programs.
#pragma once

#include "zorbetmps/check/finding.h"

#include <iosfwd>
#include <span>
#include <string>

namespace mps {

/// "FILE:LINE:COLUMN: SEVERITY: TEXT [NAME]" each; what cannot be silenced, since the game refuses
/// it, is "FILE:LINE: TEXT".
void report(std::span<const Finding> findings, std::ostream& out);
/// A list of objects with file, line, column, severity, name and text.
void reportJson(std::span<const Finding> findings, std::ostream& out);
/// All names with their severities and meanings, a line each.
[[nodiscard]] std::string ruleList();

} // namespace mps
