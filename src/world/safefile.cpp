#include "world/safefile.h"

#include "omlog.h"
#include "ompath.h"

#include <algorithm>
#include <memory>
#include <span>
#include <utility>
#include <vector>

using platform::OpenMode;

namespace {

constexpr std::size_t kPiece = 1024 * 1024; // each write goes to the disk by itself
constexpr int kMoreBad = 9;

constexpr const char* kNotMade = "cannot be made";
constexpr const char* kNotWritten = "cannot be written";
constexpr const char* kNotFlushed = "cannot be brought to the disk";
constexpr const char* kNotRenamed = "cannot get its name";
constexpr const char* kNotRead = "cannot be read";
constexpr const char* kProtected = "is protected";
constexpr const char* kNoFreeName = "cannot be kept, as all names for it are taken";

std::size_t endOfFolder(const std::string& path) { return path.find_last_of("\\/:") + 1; }

} // namespace

/// A file that is being made. It goes away again unless it gets another name.
class RSafeFile::Draft {
  public:
    Draft(RSafeFile& owner, std::string path)
        : owner_(owner), path_(std::move(path)),
          file_(owner.files_.open(path_, OpenMode::WriteThrough)) {
        if (!file_) owner_.failed(kNotMade, path_);
    }
    ~Draft() {
        if (!file_) return; // somebody else's, perhaps
        file_.reset();
        if (!renamed_) owner_.files_.remove(path_);
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;

    [[nodiscard]] bool isOpen() const { return file_ != nullptr; }
    [[nodiscard]] bool write(std::span<const std::byte> bytes) {
        return file_->write(bytes) || owner_.failed(kNotWritten, path_);
    }
    [[nodiscard]] bool flush() { return file_->flush() || owner_.failed(kNotFlushed, path_); }
    [[nodiscard]] bool rename(const std::string& name) {
        renamed_ = owner_.files_.rename(path_, name);
        return renamed_ || owner_.failed(kNotRenamed, name);
    }

  private:
    RSafeFile& owner_;
    std::string path_;
    std::unique_ptr<platform::File> file_;
    bool renamed_ = false;
};

RSafeFile::RSafeFile(platform::Files& files, std::string path, std::size_t limit)
    : files_(files), path_(std::move(path)), folder_(path_, 0, endOfFolder(path_)), limit_(limit) {}

RSafeFile::Contents RSafeFile::read() {
    Contents contents = readWhole(path_);
    if (contents.state == State::Unreadable) keepBeside();
    return contents;
}

void RSafeFile::keepBeside() {
    old_ = Old::KeepBeside;
    stored_.reset();
}

bool RSafeFile::store(const std::string& bytes) {
    const bool isThere = files_.exists(path_);
    if (isThere && stored_ == bytes) return true;
    stored_.reset();
    if (isThere && !files_.isWritable(path_)) return failed(kProtected, path_);
    Draft draft(*this, beside(".NEW"));
    if (!draft.isOpen() || !draft.write(std::as_bytes(std::span(bytes))) || !draft.flush())
        return false;
    if (!keepOld(bytes) || !draft.rename(path_)) return false;
    old_ = Old::Backup;
    if (!flushNames()) return false;
    stored_ = bytes;
    return true;
}

std::string RSafeFile::beside(const std::string& extension) const {
    const std::size_t dot = path_.find_last_of('.');
    const bool hasExtension = dot != std::string::npos && dot > folder_.size();
    return path_.substr(0, hasExtension ? dot : path_.size()) + extension;
}

RSafeFile::Contents RSafeFile::readWhole(const std::string& path) const {
    const auto file = files_.open(path, OpenMode::Read);
    if (!file) return {files_.exists(path) ? State::Unreadable : State::Missing};
    const std::uint64_t size = file->size();
    if (size > limit_) return {State::Unreadable};
    Contents contents{State::Whole, std::string(static_cast<std::size_t>(size), '\0')};
    if (file->read(std::as_writable_bytes(std::span(contents.bytes))) != size)
        return {State::Unreadable};
    return contents;
}

bool RSafeFile::keepOld(const std::string& bytes) {
    if (old_ == Old::IsKept) return true;
    const Contents old = read();
    if (old.state == State::Missing) return true;
    if (old_ == Old::KeepBeside) return keepBad(old);
    // After a store whose last step failed the new bytes are there already, and .BAK is the one
    // before them.
    return old.bytes == bytes || copyTo(beside(".BAK"));
}

/// .BAK stays as it is: it may be the last one that could be used.
bool RSafeFile::keepBad(const Contents& old) {
    const auto entries = files_.list(folder_);
    for (int i = 0; i <= kMoreBad; ++i) {
        const std::string name = beside(i == 0 ? ".BAD" : ".BAD." + std::to_string(i));
        const bool isTaken = std::ranges::any_of(
            entries, [&](const auto& entry) { return OMPathSameName(folder_ + entry.name, name); });
        const auto holdsTheSame = [&] {
            const Contents other = readWhole(name);
            return other.state == State::Whole && old.state == State::Whole &&
                   other.bytes == old.bytes;
        };
        if (isTaken && !holdsTheSame()) continue;
        if (!isTaken && !copyTo(name)) return false;
        if (!flushNames()) return false;
        old_ = Old::IsKept;
        return true;
    }
    return failed(kNoFreeName, path_);
}

/// Copies the file, of any size; the target is there as a whole or not at all.
bool RSafeFile::copyTo(const std::string& target) {
    const auto source = files_.open(path_, OpenMode::Read);
    if (!source) return failed(kNotRead, path_);
    Draft draft(*this, beside(".TMP"));
    if (!draft.isOpen()) return false;
    const std::uint64_t size = source->size();
    std::vector<std::byte> piece(static_cast<std::size_t>(std::min<std::uint64_t>(size, kPiece)));
    for (std::uint64_t done = 0; done < size;) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(size - done, kPiece));
        const std::span<std::byte> part = std::span(piece).first(wanted);
        if (source->read(part) != wanted) return failed(kNotRead, path_);
        if (!draft.write(part)) return false;
        done += wanted;
    }
    return draft.flush() && draft.rename(target);
}

bool RSafeFile::flushNames() { return files_.flushFolder(folder_) || failed(kNotFlushed, folder_); }

bool RSafeFile::failed(const char* problem, const std::string& path) const {
    OMLog::writef(OMLog::Kind::Error, "%s is not stored: %s %s", path_.c_str(), path.c_str(),
                  problem);
    return false;
}
