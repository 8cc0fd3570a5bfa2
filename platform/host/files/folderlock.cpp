#include "platform/host/files/folderlock.h"

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

class FolderLock final : public Hold {
  public:
    explicit FolderLock(const Descriptor& folder)
        : descriptor_(::openat(folder.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

    [[nodiscard]] bool isOpen() const { return descriptor_.isOpen(); }
    /// False only when somebody else has it: a file system without locks gives one to everybody.
    [[nodiscard]] bool take() const {
        return ::flock(descriptor_.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    }
    /// `errno` tells why not. The host's answer counts, which knows of disks that can only be read.
    [[nodiscard]] bool isWritable() const {
        return ::faccessat(descriptor_.number(), ".", W_OK | X_OK, AT_EACCESS) == 0;
    }
    [[nodiscard]] std::string holder() const;

  private:
    Descriptor descriptor_;
};

/// "process 812 (zorbet)" by the host's list of locks; some file systems have other numbers there.
std::string FolderLock::holder() const {
    struct stat status {};
    if (::fstat(descriptor_.number(), &status) != 0) return {};
    std::ifstream list("/proc/locks");
    for (std::string line; std::getline(list, line);) {
        std::istringstream fields(line);
        std::string number, kind, mode, access, process, file;
        fields >> number >> kind >> mode >> access >> process >> file;
        unsigned major = 0;
        unsigned minor = 0;
        unsigned long node = 0;
        char colon = 0;
        std::istringstream parts(file);
        parts >> std::hex >> major >> colon >> minor >> colon >> std::dec >> node;
        if (kind != "FLOCK" || !parts || gnu_dev_makedev(major, minor) != status.st_dev ||
            node != status.st_ino)
            continue;
        std::string name;
        std::getline(std::ifstream("/proc/" + process + "/comm"), name);
        return "process " + process + (name.empty() ? "" : " (" + name + ")");
    }
    return {};
}

std::error_code lastError() { return {errno, std::generic_category()}; }

} // namespace

FolderClaim claimHostFolder(const Descriptor& folder) {
    auto lock = std::make_unique<FolderLock>(folder);
    if (!lock->isOpen()) return {.refusal = lastError()};
    if (!lock->take())
        return {.refusal = std::make_error_code(std::errc::device_or_resource_busy),
                .holder = lock->holder()};
    FolderClaim claim;
    if (!lock->isWritable()) claim.refusal = lastError();
    claim.hold = std::move(lock);
    return claim;
}

} // namespace platform
