// The command "pack": builds resource libraries and their map from what a manifest names.
#pragma once

#include "filesystem.h"

#include <iosfwd>

namespace rsc {

struct PackOptions {
    std::filesystem::path manifest;
    std::filesystem::path folder; ///< the libraries and the map go there
};

/// Everything that the manifest asks for, in its order, the map last.
[[nodiscard]] std::vector<OutputFile> buildOutputs(const std::filesystem::path& manifest);

/// Returns the exit code; faults are told as "MANIFEST:LINE: text" and leave all files as they
/// were.
[[nodiscard]] int runPack(const PackOptions& options, std::ostream& errors);

} // namespace rsc
