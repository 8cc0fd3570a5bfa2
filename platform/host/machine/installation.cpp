#include "platform/host/machine/installation.h"

#include <initializer_list>
#include <system_error>

namespace platform {

namespace {

namespace fs = std::filesystem;

/// The first that is there, else the first.
fs::path firstThere(std::initializer_list<fs::path> places) {
    std::error_code error;
    for (const fs::path& place : places)
        if (fs::exists(place, error)) return place;
    return *places.begin();
}

} // namespace

fs::path thisProgram() { return fs::read_symlink("/proc/self/exe"); }

fs::path programNamed(std::string_view name) {
    const fs::path folder = thisProgram().parent_path();
    const fs::path prefix = folder.parent_path();
    return firstThere({folder / name, prefix / "bin" / name, prefix / "games" / name});
}

fs::path dataNamed(std::string_view name) {
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (error) return {};
    const fs::path folder = program.parent_path();
    return firstThere(
        {(folder / ZORBET_DATA / name).lexically_normal(), folder.parent_path() / name});
}

} // namespace platform
