// Files that commands read and write.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace mps {

/// The scripts in a folder and in all that are in it, in the order of their names.
[[nodiscard]] std::vector<std::string> scriptsIn(const std::string& folder);

struct WrittenFile {
    std::filesystem::path path;
    std::string bytes;
};

/// Writes all of them beside their names, and renames them when all are there; a link stays one, a
/// file that was there keeps its permissions. Makes folders that are missing. What failed, or
/// nothing; then no file is changed, or only those that were renamed before.
[[nodiscard]] std::string writeFiles(const std::vector<WrittenFile>& files);

} // namespace mps
