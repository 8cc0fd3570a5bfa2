// The command line of zorbet-mps.
#pragma once

#include <iosfwd>

namespace mps {

/// The exit code: 0 when every script is sound, and every class there; 1 when one is not; 2 for a
/// wrong command line, which is told on `errors` with the usage.
int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors);

} // namespace mps
