#include "world/safefile.h"

#include "formats/base/latin1.h"
#include "omlog.h"
#include "ompath.h"
#include "omresourcelog.h"

#include <algorithm>
#include <cerrno>
#include <memory>
#include <span>
#include <utility>

using platform::OpenMode;

namespace {

constexpr int kMoreKept = 9; ///< under the same name with a number

constexpr const char* kNotMade = "cannot be made";
constexpr const char* kNotWritten = "cannot be written";
constexpr const char* kNotFlushed = "cannot be brought to the disk";
constexpr const char* kNotRenamed = "cannot get its name";
constexpr const char* kNotRead = "cannot be read";
constexpr const char* kProtected = "is protected";
constexpr const char* kTooLarge = "would get larger than what can be read";
constexpr const char* kNoFreeName =
    "and .1 to .9 of it are taken, so that the file cannot be kept: take some of them away";
constexpr const char* kLeftAlone =
    "could not be read, and is left alone until the game is started anew";

std::error_code lastRefusal() { return platform::Files::lastRefusal(); }

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
    Draft& operator=(Draft&&) = delete;

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

RSafeFile::Trouble RSafeFile::troubleOf(std::error_code why) {
    const std::error_code quotaIsUsedUp(EDQUOT, std::generic_category());
    if (why == std::errc::no_space_on_device || why == quotaIsUsedUp) return Trouble::Full;
    if (why == std::errc::permission_denied || why == std::errc::operation_not_permitted ||
        why == std::errc::read_only_file_system)
        return Trouble::Forbidden;
    if (why == std::errc::device_or_resource_busy) return Trouble::InUse;
    if (why == std::errc::is_a_directory) return Trouble::IsFolder;
    return Trouble::Other;
}

const char* RSafeFile::remedyFor(std::error_code why) {
    switch (troubleOf(why)) {
    case Trouble::Full: return " Make room on that disk.";
    case Trouble::Forbidden: return " Let this user read and write there.";
    case Trouble::InUse: return " Is the game running twice?";
    case Trouble::IsFolder: return " Take the folder of that name away.";
    case Trouble::Other: break;
    }
    return "";
}

RSafeFile::Contents RSafeFile::read() {
    Contents contents = readWhole(path_);
    if (contents.state != State::Unreadable) {
        known_.reset();
        if (contents.state == State::Whole) known_ = contents.bytes;
        isStored_ = false;
        return contents;
    }
    const std::error_code why = lastRefusal();
    if (std::exchange(unreadable_, why) != why)
        OMLogUnreadable(path_, std::string("What it holds is missing from this run, but not lost: "
                                           "it is left alone, and nothing is stored in its place.")
                                   .append(remedyFor(why)));
    return contents;
}

void RSafeFile::keepBeside() {
    notUnderstood_ = true;
    isStored_ = false;
}

bool RSafeFile::store(const std::string& bytes) {
    if (unreadable_) return failed(kLeftAlone, path_, *unreadable_);
    const bool isThere = files_.exists(path_);
    if (isThere && isStored_ && known_ == bytes) return true;
    isStored_ = false;
    if (bytes.size() > limit_) // it could never be read again
        return failed(kTooLarge, path_, std::make_error_code(std::errc::file_too_large));
    if (isThere && !files_.isWritable(path_))
        return failed(kProtected, path_, std::make_error_code(std::errc::permission_denied));
    Draft draft(*this, beside(".NEW"));
    if (!draft.isOpen() || !draft.write(std::as_bytes(std::span(bytes))) || !draft.flush())
        return false;
    if (!keepOld(bytes) || !draft.rename(path_)) return false;
    known_ = bytes;
    notUnderstood_ = false;
    isStored_ = flushNames();
    return isStored_;
}

std::string RSafeFile::beside(const std::string& extension) const {
    const std::size_t dot = path_.find_last_of('.');
    const bool hasExtension = dot != std::string::npos && dot > folder_.size();
    return path_.substr(0, hasExtension ? dot : path_.size()) + extension;
}

RSafeFile::Contents RSafeFile::readWhole(const std::string& path) const {
    const auto file = files_.open(path, OpenMode::Read);
    if (!file) {
        const std::error_code why = lastRefusal();
        const bool isMissing =
            why == std::errc::no_such_file_or_directory || why == std::errc::not_a_directory;
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
    const Contents old = readWhole(path_);
    if (old.state == State::Missing) return true;
    if (old.state == State::Unreadable) return failed(kNotRead, path_);
    if (old.bytes != known_ && old.bytes != bytes) return keepForGood(old.bytes, ".OTHER");
    if (notUnderstood_) return keepForGood(old.bytes, ".BAD");
    // After a store whose last step failed the new bytes are there already, and .BAK is the one
    // before them.
    return old.bytes == bytes || copyTo(beside(".BAK"), old.bytes);
}

/// .BAK stays as it is: it may be the last one that could be used.
bool RSafeFile::keepForGood(const std::string& old, const std::string& extension) {
    const auto entries = files_.list(folder_);
    for (int i = 0; i <= kMoreKept; ++i) {
        const std::string name = beside(i == 0 ? extension : extension + "." + std::to_string(i));
        const bool isTaken = std::ranges::any_of(entries, [&](const auto& entry) {
            return formats::equalIgnoringCase(folder_ + entry.name, name);
        });
        if (isTaken && readWhole(name).bytes != old) continue;
        if (!isTaken && !copyTo(name, old)) return false;
        OMLog::writef(OMLog::Kind::Warning, "What %s held is kept as %s", path_.c_str(),
                      name.c_str());
        return flushNames();
    }
    return failed(kNoFreeName, beside(extension), {});
}

/// The target is there as a whole or not at all.
bool RSafeFile::copyTo(const std::string& target, const std::string& old) {
    Draft draft(*this, beside(".TMP"));
    return draft.isOpen() && draft.write(std::as_bytes(std::span(old))) && draft.flush() &&
           draft.rename(target);
}

bool RSafeFile::flushNames() { return files_.flushFolder(folder_) || failed(kNotFlushed, folder_); }

bool RSafeFile::failed(const char* problem, const std::string& path, std::error_code why) {
    whyNotStored_ = why;
    OMLog::writef(OMLog::Kind::Error, "%s is not stored: %s %s%s.%s%s", path_.c_str(), path.c_str(),
                  problem, reasonText(why).c_str(), remedyFor(why),
                  unreadable_ ? "" : " The next save tries it again");
    return false;
}
