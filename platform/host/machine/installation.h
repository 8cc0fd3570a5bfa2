// Where the programs lie, and what came with them. They find each other and their data from where
// the one that runs lies, so that an installation may be moved as a whole: in a build the data lies
// beside the programs' folder, below a prefix in its folder for data.
#pragma once

#include <filesystem>
#include <string_view>

namespace platform {

/// The program that runs. Throws std::filesystem::filesystem_error when the host does not tell.
[[nodiscard]] std::filesystem::path thisProgram();

/// Another one of ours: beside this one, or where a prefix keeps programs of its kind. When it is
/// nowhere, the place beside this one. Throws as `thisProgram`.
[[nodiscard]] std::filesystem::path programNamed(std::string_view name);

/// What came with the programs under this name. When it is nowhere, the place below a prefix; empty
/// when the host does not tell where the program lies.
[[nodiscard]] std::filesystem::path dataNamed(std::string_view name);

} // namespace platform
