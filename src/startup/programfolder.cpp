#include "startup/programfolder.h"

#include <filesystem>
#include <system_error>

std::string besideProgram(std::string_view name) {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return {};
    return (program.parent_path().parent_path() / name).string();
}
