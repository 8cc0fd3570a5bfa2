#include "platform/host/files/fence.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <string_view>
#include <sys/syscall.h>

namespace platform {

namespace {

constexpr int kFolderFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

// openat2(2), which the C library does not have; older kernel headers lack it too.
#ifdef SYS_openat2
constexpr long kOpenat2 = SYS_openat2;
#else
constexpr long kOpenat2 = 437; // on all architectures
#endif
struct OpenHow {
    std::uint64_t flags;
    std::uint64_t mode;
    std::uint64_t resolve;
};
constexpr std::uint64_t kNoMagicLinks = 0x02;
constexpr std::uint64_t kNoLinks = 0x04;
constexpr std::uint64_t kBeneath = 0x08;

bool isBelow(std::string_view name, std::string_view folder) {
    return name.starts_with(folder) && (name.size() == folder.size() || name[folder.size()] == '/');
}

/// The same without the kernel's help.
Descriptor walkDown(const Descriptor& ground, std::string_view parts) {
    Descriptor folder(::fcntl(ground.number(), F_DUPFD_CLOEXEC, 0));
    while (folder.isOpen() && !parts.empty()) {
        const std::size_t end = std::min(parts.find('/'), parts.size());
        const std::string part(parts.substr(0, end));
        parts.remove_prefix(std::min(end + 1, parts.size()));
        folder = Descriptor(::openat(folder.number(), part.c_str(), kFolderFlags | O_NOFOLLOW));
    }
    return folder;
}

/// `parts` are names with "/" between them.
Descriptor openBeneath(const Descriptor& ground, const std::string& parts) {
    OpenHow how{kFolderFlags, 0, kBeneath | kNoLinks | kNoMagicLinks};
    int number = -1;
    do {
        number =
            static_cast<int>(::syscall(kOpenat2, ground.number(), parts.c_str(), &how, sizeof how));
    } while (number < 0 && (errno == EINTR || errno == EAGAIN));
    // Sandboxes that do not know the call refuse it with EPERM.
    if (number < 0 && (errno == ENOSYS || errno == EPERM)) return walkDown(ground, parts);
    return Descriptor(number);
}

} // namespace

void Fence::admit(const std::string& file) {
    const std::scoped_lock lock(mutex_);
    admitted_.insert(file);
}

const Fence::Ground* Fence::groundOf(const std::string& name, Use use) const {
    const auto found = std::ranges::find_if(grounds_, [&](const Ground& ground) {
        return (ground.writable || use == Use::Read) && isBelow(name, ground.folder);
    });
    return found == grounds_.end() ? nullptr : &*found;
}

bool Fence::encloses(const std::string& name, Use use) const {
    if (groundOf(name, use)) return true;
    const std::scoped_lock lock(mutex_);
    return use == Use::Read && admitted_.contains(name);
}

Descriptor Fence::openFolder(const std::string& folder) const {
    const Ground* ground = groundOf(folder, Use::Read);
    // The folder of an admitted file is the player's, as those that the grounds lie in are.
    const std::string& start = ground ? ground->folder : folder;
    Descriptor opened(::open(start.empty() ? "/" : start.c_str(), kFolderFlags));
    const std::size_t rest = start.size() + 1;
    if (!opened.isOpen() || folder.size() <= rest) return opened;
    return openBeneath(opened, folder.substr(rest));
}

} // namespace platform
