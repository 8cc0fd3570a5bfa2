// The command "map": writes the maps of libraries that are there already.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

namespace rsc {

struct MapOptions {
    std::vector<std::filesystem::path> files; ///< maps among them are passed over
    std::filesystem::path output;             ///< a folder, or a file whose name ends in ".map"
    std::string name;                         ///< empty: named like the first library
    bool audio = false;                       ///< write "audio.map" too
};

/// Returns the exit code; faults are told and leave all files as they were.
[[nodiscard]] int runMap(const MapOptions& options, std::ostream& errors);

} // namespace rsc
