// The command "extract": unpacks libraries into pictures, sounds and other files, and a manifest
// that packs them again to the same bytes.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <vector>

namespace rsc {

struct ExtractOptions {
    /// Maps among them are passed over: those that lie beside the libraries are read anyway.
    std::vector<std::filesystem::path> files;
    std::filesystem::path folder;
    std::optional<int> palette; ///< id of the one for all pictures
    bool force = false;         ///< write into a folder that is not empty
};

inline constexpr const char* kExtractedManifest = "resources.manifest";

/// Returns the exit code. What is refused leaves all files as they were. A damaged animation is
/// told as a fault, but all is unpacked. What does not become pictures, or would not be packed to
/// the same bytes, is told on `out`.
[[nodiscard]] int runExtract(const ExtractOptions& options, std::ostream& out,
                             std::ostream& errors);

} // namespace rsc
