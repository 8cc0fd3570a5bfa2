// The command "pack": builds resource libraries and their map from what a manifest names.
#pragma once

#include "filesystem.h"
#include "manifest/manifest.h"

#include <iosfwd>
#include <optional>

namespace rsc {

struct PackOptions {
    std::filesystem::path manifest;
    std::filesystem::path folder; ///< the libraries and the map go there
};

/// The text of the resource map that the manifest asks for. Libraries whose types do not fit into a
/// map are left out of it.
[[nodiscard]] std::string buildMap(const Manifest& manifest);

/// Everything that the manifest asks for, in its order, the maps last. `warnings` are added to.
[[nodiscard]] std::vector<OutputFile> buildOutputs(const std::filesystem::path& manifest,
                                                   std::vector<Warning>& warnings);

/// The same; faults are told as "MANIFEST:LINE: text", and then there is nothing, warnings as
/// "MANIFEST:LINE: warning: text".
[[nodiscard]] std::optional<std::vector<OutputFile>>
packOrTell(const std::filesystem::path& manifest, std::ostream& errors);

/// Returns the exit code; what is wrong is told as by `packOrTell` and leaves all files as they
/// were.
[[nodiscard]] int runPack(const PackOptions& options, std::ostream& errors);

} // namespace rsc
