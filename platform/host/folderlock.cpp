#include "platform/host/folderlock.h"

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <sstream>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace platform {

namespace {

class FolderLock final : public Hold {
  public:
    explicit FolderLock(const std::string& hostPath)
        : descriptor_(::open(hostPath.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}
    ~FolderLock() override {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    /// False only when somebody else has it: a file system without locks gives one to everybody.
    [[nodiscard]] bool take() const {
        return ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    }
    /// `errno` tells why not. The host's answer counts, which knows of disks that can only be read.
    [[nodiscard]] bool isWritable() const {
        return ::faccessat(descriptor_, ".", W_OK | X_OK, AT_EACCESS) == 0;
    }
    [[nodiscard]] std::string holder() const;

  private:
    int descriptor_;
};

/// "process 812 (zorbet)" by the host's list of locks; some file systems have other numbers there.
std::string FolderLock::holder() const {
    struct stat status {};
    if (::fstat(descriptor_, &status) != 0) return {};
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

FolderClaim claimHostFolder(const std::string& hostPath) {
    auto lock = std::make_unique<FolderLock>(hostPath);
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
