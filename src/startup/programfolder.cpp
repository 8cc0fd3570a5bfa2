#include "startup/programfolder.h"

#include <filesystem>
#include <system_error>

namespace {

/// Empty when the host does not tell.
std::filesystem::path programFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : program.parent_path();
}

} // namespace

std::string besideProgram(std::string_view name) {
    const auto folder = programFolder();
    return folder.empty() ? std::string() : (folder.parent_path() / name).string();
}

std::string programBeside(std::string_view name) {
    const auto folder = programFolder();
    return folder.empty() ? std::string() : (folder / name).string();
}
