#include "platform/host/hostfile.h"

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

/// An open file of the host, closed by destruction.
class Descriptor {
  public:
    explicit Descriptor(int number) : number_(number) {}
    ~Descriptor() {
        if (number_ >= 0) ::close(number_);
    }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&&) = delete;

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }

    /// Bypasses the host's cache, or no longer; false when the file system cannot do it.
    [[nodiscard]] bool setDirect(bool direct) const {
#ifdef O_DIRECT
        const int flags = ::fcntl(number_, F_GETFL);
        if (flags < 0) return false;
        return ::fcntl(number_, F_SETFL, direct ? flags | O_DIRECT : flags & ~O_DIRECT) == 0;
#else
        return !direct;
#endif
    }
    /// A lock of all who share this file (LOCK_SH) or of one alone (LOCK_EX); false, and `errno`
    /// says EBUSY, when somebody else's lock is in the way. Ends when the file is closed. Where the
    /// file system has no locks, everybody gets one.
    [[nodiscard]] bool lock(int kind) const {
        if (::flock(number_, kind | LOCK_NB) == 0 || errno != EWOULDBLOCK) return true;
        errno = EBUSY;
        return false;
    }
    /// False, and `errno` says EBUSY, when its last name was removed.
    [[nodiscard]] bool hasName() const {
        struct stat status {};
        if (::fstat(number_, &status) == 0 && status.st_nlink > 0) return true;
        errno = EBUSY;
        return false;
    }
    /// Brings everything to the disk; `errno` tells why not.
    [[nodiscard]] bool flush() const {
        int result = -1;
        do {
            result = ::fsync(number_);
        } while (result != 0 && errno == EINTR);
        return result == 0;
    }

  private:
    int number_;
};

class HostFile final : public File {
  public:
    HostFile(Descriptor descriptor, OpenMode mode)
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

    Descriptor descriptor_;
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

int flagsOf(OpenMode mode) {
    switch (mode) {
    case OpenMode::Read:
    case OpenMode::ReadSequential: return O_RDONLY;
    case OpenMode::Write: return O_WRONLY | O_CREAT | O_TRUNC;
    case OpenMode::Append: return O_WRONLY | O_CREAT | O_APPEND;
    case OpenMode::WriteThrough: return O_WRONLY | O_CREAT | O_EXCL | O_DSYNC;
    }
    return O_RDONLY;
}

Descriptor openDescriptor(const std::string& hostPath, int flags) {
    int number = -1;
    do {
        number = ::open(hostPath.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, kNewFileMode);
    } while (number < 0 && errno == EINTR);
    return Descriptor(number);
}

/// Makes way for a new file. Whoever has the old one open keeps its bytes; one that is being
/// written or copied stays and stops the newcomer.
bool removeUnlessInUse(const std::string& hostPath) {
    const Descriptor old = openDescriptor(hostPath, O_WRONLY);
    if (!old.isOpen()) return errno == ENOENT;
    return old.lock(LOCK_EX) && ::unlink(hostPath.c_str()) == 0;
}

} // namespace

bool tellDone(bool done) {
    Files::setLastRefusal(done ? std::error_code()
                               : std::error_code(errno, std::generic_category()));
    return done;
}

std::unique_ptr<File> openHostFile(const std::string& hostPath, OpenMode mode) {
    const auto refused = [] {
        tellDone(false);
        return nullptr;
    };
    // Devices and pipes could stop the program for ever, so only plain files are opened at all.
    struct stat status {};
    if (::stat(hostPath.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) {
        errno = S_ISDIR(status.st_mode) ? EISDIR : EOPNOTSUPP;
        return refused();
    }
    if (mode == OpenMode::WriteThrough && !removeUnlessInUse(hostPath)) return refused();
    Descriptor descriptor = openDescriptor(hostPath, flagsOf(mode));
    if (!descriptor.isOpen()) return refused();
    // Somebody else may have made way for a file of theirs before this one was locked.
    if (mode == OpenMode::WriteThrough && (!descriptor.lock(LOCK_EX) || !descriptor.hasName()))
        return refused();
    if (mode == OpenMode::ReadSequential && !descriptor.lock(LOCK_SH)) return refused();
    tellDone(true);
    return std::make_unique<HostFile>(std::move(descriptor), mode);
}

bool flushHostFolder(const std::string& hostPath) {
    const Descriptor folder = openDescriptor(hostPath, O_RDONLY | O_DIRECTORY);
    // A file system that cannot be asked for it (EINVAL) keeps names in its own way.
    return tellDone(folder.isOpen() && (folder.flush() || errno == EINVAL));
}

} // namespace platform
