#include "platform/host/files/secondwall.h"

#include "platform/host/files/descriptor.h"
#include "platform/host/files/userfolders.h"

#include <algorithm>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <system_error>

namespace platform {

namespace {

namespace fs = std::filesystem;

// landlock(7). The headers of older kernels lack some of it, and the C library has none.
constexpr long kCreateRuleset = 444; // on all architectures, as the next two
constexpr long kAddRule = 445;
constexpr long kRestrictSelf = 446;
constexpr std::uint32_t kAskVersion = 1;
constexpr int kPathBeneath = 1;

using Access = std::uint64_t;
constexpr Access kExecute = 1 << 0;
constexpr Access kWriteFile = 1 << 1;
constexpr Access kRemoveFolder = 1 << 4;
constexpr Access kRemoveFile = 1 << 5;
constexpr Access kMakeFolder = 1 << 7;
constexpr Access kMakeFile = 1 << 8;
constexpr Access kMakeAnything = 0x1FC0; ///< devices, folders, files, sockets, pipes, links
constexpr Access kTruncate = 1 << 14;
constexpr int kVersionWithTruncate = 3;

constexpr Access kChange =
    kWriteFile | kRemoveFolder | kRemoveFile | kMakeFolder | kMakeFile | kTruncate;

struct Ruleset {
    std::uint64_t handledFiles;
};
struct [[gnu::packed]] PathRule {
    std::uint64_t allowed;
    std::int32_t folder;
};

class Wall {
  public:
    explicit Wall(int version)
        : handled_(kExecute | kWriteFile | kRemoveFolder | kRemoveFile | kMakeAnything |
                   (version >= kVersionWithTruncate ? kTruncate : 0)) {
        const Ruleset rules{handled_};
        rules_ = Descriptor(static_cast<int>(::syscall(kCreateRuleset, &rules, sizeof rules, 0U)));
    }

    /// What is not there needs no leave.
    void allow(const std::string& path, Access access) const {
        const Descriptor opened(::open(path.c_str(), O_PATH | O_CLOEXEC));
        if (!opened.isOpen()) return;
        std::error_code error;
        constexpr Access kOfFiles = kExecute | kWriteFile | kTruncate;
        if (!fs::is_directory(path, error)) access &= kOfFiles;
        const PathRule rule{access & handled_, opened.number()};
        ::syscall(kAddRule, rules_.number(), kPathBeneath, &rule, 0U);
    }
    [[nodiscard]] bool raise() const {
        return rules_.isOpen() && ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
               ::syscall(kRestrictSelf, rules_.number(), 0U) == 0;
    }

  private:
    Access handled_;
    Descriptor rules_;
};

std::string userCaches() {
    const std::string caches = environment("XDG_CACHE_HOME");
    return caches.starts_with('/') ? caches : environment("HOME") + "/.cache";
}

} // namespace

int secondWallVersion() {
    const auto version =
        static_cast<int>(::syscall(kCreateRuleset, nullptr, std::size_t{0}, kAskVersion));
    return std::max(version, 0);
}

bool raiseSecondWall(const std::vector<std::string>& writable,
                     const std::vector<std::string>& programs) {
    const int version = secondWallVersion();
    if (version == 0) return false;
    const Wall wall(version);
    for (const std::string& folder : writable) wall.allow(folder, kChange);
    wall.allow("/dev", kChange);
    for (const char* cache : {"/fontconfig", "/mesa_shader_cache", "/mesa_shader_cache_db"})
        wall.allow(userCaches() + cache, kChange);
    if (const std::string sockets = environment("XDG_RUNTIME_DIR"); !sockets.empty())
        wall.allow(sockets, kChange | kMakeAnything);
    for (const char* installed : {"/usr", "/bin", "/sbin", "/lib", "/lib32", "/lib64", "/opt",
                                  "/nix/store", "/gnu/store", "/proc/self/exe"})
        wall.allow(installed, kExecute);
    for (const std::string& program : programs) wall.allow(program, kExecute);
    return wall.raise();
}

} // namespace platform
