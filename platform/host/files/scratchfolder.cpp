#include "platform/host/files/scratchfolder.h"

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>

namespace platform {

ScratchFolder::ScratchFolder() {
    const std::filesystem::path place = std::filesystem::temp_directory_path();
    std::string name = (place / "zorbet-XXXXXX").string();
    if (!::mkdtemp(name.data()))
        throw std::filesystem::filesystem_error("no temporary folder can be made", place,
                                                std::error_code(errno, std::generic_category()));
    path_ = std::filesystem::canonical(name);
}

ScratchFolder::~ScratchFolder() {
    std::error_code error;
    std::filesystem::remove_all(path_, error);
}

} // namespace platform
