#include "world/safefile.h"

#include "omlog.h"
#include "ompath.h"
#include "omresourcelog.h"

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
constexpr const char* kNoFreeName =
    "cannot be kept, as all names for it are taken: take some of .BAD to .BAD.9 away";

std::error_code lastRefusal() { return platform::Files::lastRefusal(); }

/// What a person can do about it; nothing is known for all other reasons.
const char* remedyFor(std::error_code why) {
    if (why == std::errc::no_space_on_device) return " Make room on that disk.";
    if (why == std::errc::permission_denied || why == std::errc::operation_not_permitted ||
        why == std::errc::read_only_file_system)
        return " Let this user read and write there.";
    if (why == std::errc::device_or_resource_busy) return " Is the game running twice?";
    if (why == std::errc::is_a_directory) return " Take the folder of that name away.";
    return "";
}

/// ": Permission denied", or nothing.
std::string reasonText(std::error_code why) { return why ? ": " + why.message() : std::string(); }

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
    if (contents.state != State::Unreadable) return contents;
    const std::error_code why = lastRefusal();
    keepBeside();
    if (std::exchange(told_, why) != why)
        OMLogUnreadable(path_, std::string("What it holds is missing from this run, but not lost: "
                                           "a save keeps it beside, or leaves it alone.")
                                   .append(remedyFor(why)));
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
    if (isThere && !files_.isWritable(path_))
        return failed(kProtected, path_, std::make_error_code(std::errc::permission_denied));
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
    if (!file) {
        const bool isMissing = lastRefusal() == std::errc::no_such_file_or_directory;
        return {isMissing ? State::Missing : State::Unreadable};
    }
    const auto refuse = [](std::errc why) {
        platform::Files::setLastRefusal(std::make_error_code(why));
        return Contents{State::Unreadable};
    };
    const std::uint64_t size = file->size();
    if (size > limit_) return refuse(std::errc::file_too_large);
    Contents contents{State::Whole, std::string(static_cast<std::size_t>(size), '\0')};
    if (file->read(std::as_writable_bytes(std::span(contents.bytes))) == size) return contents;
    return lastRefusal() ? Contents{State::Unreadable} : refuse(std::errc::io_error);
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
    return failed(kNoFreeName, path_, {});
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

bool RSafeFile::failed(const char* problem, const std::string& path, std::error_code why) const {
    OMLog::writef(OMLog::Kind::Error, "%s is not stored: %s %s%s.%s The next save tries it again",
                  path_.c_str(), path.c_str(), problem, reasonText(why).c_str(), remedyFor(why));
    return false;
}
