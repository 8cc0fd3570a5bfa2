// The files that a command line names: libraries to read, and the maps that lie beside them.
#pragma once

#include "library/nelibrary.h"

#include <filesystem>

namespace rsc {

struct LibraryFile {
    std::filesystem::path path;
    std::string name; ///< as maps and manifests write it
    Bytes bytes;
};

/// Reads libraries in their order; files named as maps are passed over. A refusal names the file; a
/// library's name that maps and manifests cannot take is refused, as are two of one name.
[[nodiscard]] std::vector<LibraryFile>
readLibraryFiles(const std::vector<std::filesystem::path>& paths);

/// Runs `work` on a file; a refusal names it.
template <class Work>
auto onPath(const std::filesystem::path& path, Work&& work) {
    try {
        return work();
    } catch (const Refusal& refusal) {
        throw Refusal(path.string() + ": " + refusal.what());
    }
}

/// The text of the file of this name, in any case, in the folder of all the libraries; none when
/// there is no such file or they lie in several folders.
[[nodiscard]] std::optional<std::string> readBeside(const std::vector<LibraryFile>& libraries,
                                                    std::string_view name);

} // namespace rsc
