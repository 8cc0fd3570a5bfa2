#include "platform/host/hostfile.h"

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr mode_t kNewFileMode = 0666;

class HostFile final : public File {
  public:
    HostFile(int descriptor, OpenMode mode)
        : descriptor_(descriptor), sequential_(mode == OpenMode::ReadSequential) {
        if (sequential_) ::posix_fadvise(descriptor_, 0, 0, POSIX_FADV_SEQUENTIAL);
    }
    ~HostFile() override { ::close(descriptor_); }
    HostFile(const HostFile&) = delete;
    HostFile& operator=(const HostFile&) = delete;

    std::size_t read(std::span<std::byte> buffer) override;
    bool write(std::span<const std::byte> bytes) override;
    bool seek(std::uint64_t position) override;
    [[nodiscard]] std::uint64_t size() const override;

  private:
    int descriptor_;
    bool sequential_;
    off_t position_ = 0; ///< of the next read
};

std::size_t HostFile::read(std::span<std::byte> buffer) {
    const off_t start = position_;
    std::size_t done = 0;
    while (done < buffer.size()) {
        const ssize_t count =
            ::pread(descriptor_, buffer.data() + done, buffer.size() - done, position_);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        done += static_cast<std::size_t>(count);
        position_ += count;
    }
    // The host need not keep what is read once only.
    if (sequential_ && done > 0) {
        ::posix_fadvise(descriptor_, start, position_ - start, POSIX_FADV_DONTNEED);
    }
    return done;
}

bool HostFile::write(std::span<const std::byte> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor_, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) return false;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
    return true;
}

bool HostFile::seek(std::uint64_t position) {
    if (position > std::uint64_t{std::numeric_limits<off_t>::max()}) return false;
    position_ = static_cast<off_t>(position);
    return true;
}

std::uint64_t HostFile::size() const {
    struct stat status {};
    if (::fstat(descriptor_, &status) != 0) return 0;
    return static_cast<std::uint64_t>(status.st_size);
}

int flagsOf(OpenMode mode) {
    switch (mode) {
    case OpenMode::Read:
    case OpenMode::ReadSequential: return O_RDONLY;
    case OpenMode::Write: return O_WRONLY | O_CREAT | O_TRUNC;
    case OpenMode::Append: return O_WRONLY | O_CREAT | O_APPEND;
    }
    return O_RDONLY;
}

} // namespace

std::unique_ptr<File> openHostFile(const std::string& hostPath, OpenMode mode) {
    // Devices and pipes could stop the program for ever, so only plain files are opened at all.
    struct stat status {};
    if (::stat(hostPath.c_str(), &status) == 0 && !S_ISREG(status.st_mode)) return nullptr;
    int descriptor = -1;
    do {
        descriptor = ::open(hostPath.c_str(), flagsOf(mode) | O_CLOEXEC | O_NONBLOCK | O_NOCTTY,
                            kNewFileMode);
    } while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0) return nullptr;
    return std::make_unique<HostFile>(descriptor, mode);
}

} // namespace platform
