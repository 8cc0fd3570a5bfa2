#include "platform/host/files/scratchfolder.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace platform {

ScratchFolder::ScratchFolder() {
    std::error_code error;
    const std::filesystem::path place = std::filesystem::temp_directory_path(error);
    std::string name = (place / "zorbet-XXXXXX").string();
    if (!error && !::mkdtemp(name.data())) error = {errno, std::generic_category()};
    if (error)
        throw std::filesystem::filesystem_error(
            "no temporary folder can be made; TMPDIR in the environment may name another place",
            place, error);
    path_ = std::filesystem::canonical(name);
}

ScratchFolder::~ScratchFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

} // namespace platform
