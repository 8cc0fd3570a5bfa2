#include "platform/host/files/hostfile.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>
#include <utility>

namespace platform {

namespace {

constexpr mode_t kNewFileMode = 0666;

/// What can be asked of a descriptor of a file.
class OpenedFile : public Descriptor {
  public:
    using Descriptor::Descriptor;

    /// Bypasses the host's cache, or no longer; false when the file system cannot do it.
    [[nodiscard]] bool setDirect(bool direct) const {
#ifdef O_DIRECT
        const int flags = ::fcntl(number(), F_GETFL);
        if (flags < 0) return false;
        return ::fcntl(number(), F_SETFL, direct ? flags | O_DIRECT : flags & ~O_DIRECT) == 0;
#else
        return !direct;
#endif
    }
    /// A lock of all who share this file (LOCK_SH) or of one alone (LOCK_EX); false, and `errno`
    /// says EBUSY, when somebody else's lock is in the way. Ends when the file is closed. Where the
    /// file system has no locks, everybody gets one.
    [[nodiscard]] bool lock(int kind) const {
        if (::flock(number(), kind | LOCK_NB) == 0 || errno != EWOULDBLOCK) return true;
        errno = EBUSY;
        return false;
    }
    /// False, and `errno` says EBUSY, when its last name was removed.
    [[nodiscard]] bool hasName() const {
        struct stat status {};
        if (::fstat(number(), &status) == 0 && status.st_nlink > 0) return true;
        errno = EBUSY;
        return false;
    }
    /// Brings everything to the disk; `errno` tells why not.
    [[nodiscard]] bool flush() const {
        int result = -1;
        do {
            result = ::fsync(number());
        } while (result != 0 && errno == EINTR);
        return result == 0;
    }
};

class HostFile final : public File {
  public:
    HostFile(OpenedFile descriptor, OpenMode mode)
        : descriptor_(std::move(descriptor)), sequential_(mode == OpenMode::ReadSequential) {
        if (!sequential_) return;
        ::posix_fadvise(descriptor_.number(), 0, 0, POSIX_FADV_SEQUENTIAL);
        direct_ = descriptor_.setDirect(true);
    }

    std::size_t read(std::span<std::byte> buffer) override;
    bool write(std::span<const std::byte> bytes) override;
    bool flush() override { return tellDone(descriptor_.flush()); }
    bool seek(std::uint64_t position) override;
    [[nodiscard]] std::uint64_t size() const override;

  private:
    [[nodiscard]] ssize_t readSome(std::span<std::byte> buffer);

    OpenedFile descriptor_;
    bool sequential_;
    bool direct_ = false; ///< the host's cache is bypassed
    off_t position_ = 0;  ///< of the next read
};

std::size_t HostFile::read(std::span<std::byte> buffer) {
    const off_t start = position_;
    std::size_t done = 0;
    ssize_t count = 0;
    while (done < buffer.size()) {
        count = readSome(buffer.subspan(done));
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
        position_ += count;
    }
    tellDone(count >= 0);
    // The host need not keep what is read once only.
    if (sequential_ && !direct_ && done > 0) {
        ::posix_fadvise(descriptor_.number(), start, position_ - start, POSIX_FADV_DONTNEED);
    }
    return done;
}

ssize_t HostFile::readSome(std::span<std::byte> buffer) {
    for (;;) {
        const ssize_t count =
            ::pread(descriptor_.number(), buffer.data(), buffer.size(), position_);
        if (count >= 0) return count;
        if (errno == EINTR) continue;
        // What does not fit the file system's sectors is read through the cache.
        if (errno != EINVAL || !direct_ || !descriptor_.setDirect(false)) return count;
        direct_ = false;
    }
}

bool HostFile::write(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor_.number(), bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count == 0) errno = ENOSPC;
        if (count <= 0) return tellDone(false);
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return tellDone(true);
}

bool HostFile::seek(std::uint64_t position) {
    if (position > std::uint64_t{std::numeric_limits<off_t>::max()}) return false;
    position_ = static_cast<off_t>(position);
    return true;
}

std::uint64_t HostFile::size() const {
    struct stat status {};
    if (::fstat(descriptor_.number(), &status) != 0) return 0;
    return static_cast<std::uint64_t>(status.st_size);
}

/// A file that exists is emptied only when it is known to be one that may be written to.
int flagsOf(OpenMode mode) {
    switch (mode) {
    case OpenMode::Read:
    case OpenMode::ReadSequential: return O_RDONLY;
    case OpenMode::Write: return O_WRONLY | O_CREAT;
    case OpenMode::Append: return O_WRONLY | O_CREAT | O_APPEND;
    case OpenMode::WriteThrough: return O_WRONLY | O_CREAT | O_EXCL | O_DSYNC;
    }
    return O_RDONLY;
}

OpenedFile openIn(const Descriptor& folder, const std::string& name, int flags) {
    int number = -1;
    do {
        number = ::openat(folder.number(), name.c_str(),
                          flags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY, kNewFileMode);
    } while (number < 0 && errno == EINTR);
    return OpenedFile(number);
}

/// Makes way for a new file. Whoever has the old one open keeps its bytes; one that is being
/// written or copied stays and stops the newcomer.
bool removeUnlessInUse(const Descriptor& folder, const std::string& name) {
    const OpenedFile old = openIn(folder, name, O_WRONLY);
    if (!old.isOpen() && errno != ELOOP) return errno == ENOENT;
    if (old.isOpen() && !old.lock(LOCK_EX)) return false;
    return ::unlinkat(folder.number(), name.c_str(), 0) == 0;
}

/// False, and `errno` says why, for what is no plain file.
bool isPlain(const struct stat& status) {
    if (S_ISREG(status.st_mode)) return true;
    errno = S_ISDIR(status.st_mode) ? EISDIR : S_ISLNK(status.st_mode) ? ELOOP : EOPNOTSUPP;
    return false;
}

bool becomesWritten(const OpenedFile& file, OpenMode mode, bool shared) {
    struct stat status {};
    if (::fstat(file.number(), &status) != 0 || !isPlain(status)) return false;
    if (mode != OpenMode::Write && mode != OpenMode::Append) return true;
    if (status.st_nlink > 1 && !shared) {
        errno = EMLINK;
        return false;
    }
    return mode == OpenMode::Append || ::ftruncate(file.number(), 0) == 0;
}

} // namespace

bool tellDone(bool done) {
    Files::setLastRefusal(done ? std::error_code()
                               : std::error_code(errno, std::generic_category()));
    return done;
}

std::unique_ptr<File> openHostFile(const Descriptor& folder, const std::string& name, OpenMode mode,
                                   bool shared) {
    const auto refused = [] {
        tellDone(false);
        return nullptr;
    };
    // Devices and pipes could stop the program for ever, so they are not even opened.
    struct stat status {};
    const bool isThere =
        ::fstatat(folder.number(), name.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    const bool isReplaced = mode == OpenMode::WriteThrough;
    if (isThere && !(isReplaced && S_ISLNK(status.st_mode)) && !isPlain(status)) return refused();
    if (isReplaced && !removeUnlessInUse(folder, name)) return refused();
    OpenedFile descriptor = openIn(folder, name, flagsOf(mode));
    if (!descriptor.isOpen() || !becomesWritten(descriptor, mode, shared)) return refused();
    // Somebody else may have made way for a file of theirs before this one was locked.
    if (isReplaced && (!descriptor.lock(LOCK_EX) || !descriptor.hasName())) return refused();
    if (mode == OpenMode::ReadSequential && !descriptor.lock(LOCK_SH)) return refused();
    tellDone(true);
    return std::make_unique<HostFile>(std::move(descriptor), mode);
}

bool flushHostFolder(const Descriptor& folder) {
    const OpenedFile names = openIn(folder, ".", O_RDONLY | O_DIRECTORY);
    // A file system that cannot be asked for it (EINVAL) keeps names in its own way.
    return tellDone(names.isOpen() && (names.flush() || errno == EINVAL));
}

} // namespace platform
