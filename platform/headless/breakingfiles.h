// Files that fail once, on purpose: what a full disk, a broken one or a sudden end of the process
// does in the middle of storing can be tried at each single step.
//
// The operations that write are counted: opening for writing, each write and flush of such a file,
// renaming, removing, flushing a folder. Only what lies in the home directory counts, as nothing
// else is stored for long. All operations before and after the chosen one are those of the files
// behind, and so is reading.
#pragma once

#include "platform/files.h"

#include <atomic>
#include <cstdint>
#include <utility>

namespace platform {

/// What the chosen operation does. One that is no write does nothing and fails, or ends the
/// process.
enum class BreakHow : std::uint8_t {
    Error, ///< a write stores nothing
    Full,  ///< a write stores all but the last byte
    Short, ///< a write stores the first half
    Kill,  ///< a write stores the first half; then the process ends at once, and nothing is tidied
};

struct BreakPoint {
    std::uint32_t operation = 0; ///< the number of the chosen one; the first is 1
    BreakHow how = BreakHow::Error;
    std::string spared{}; ///< name of a file whose operations do not count
};

/// The exit code after BreakHow::Kill, which is what a shell reports of a killed process.
inline constexpr int kKilledExit = 137;

class BreakingFiles final : public Files {
  public:
    /// `files` must outlive this and the files that are opened.
    BreakingFiles(Files& files, BreakPoint point);

    void setFenceLink(FenceLink link) override { files_.setFenceLink(std::move(link)); }
    [[nodiscard]] FolderClaim claimFolder(std::string_view folder) override {
        return files_.claimFolder(folder);
    }
    std::unique_ptr<File> open(std::string_view path, OpenMode mode) override;
    bool remove(std::string_view path) override;
    bool rename(std::string_view from, std::string_view to) override;
    bool flushFolder(std::string_view path) override;

    [[nodiscard]] bool exists(std::string_view path) const override { return files_.exists(path); }
    [[nodiscard]] bool isWritable(std::string_view path) const override {
        return files_.isWritable(path);
    }
    [[nodiscard]] std::vector<DirectoryEntry> list(std::string_view directory) const override {
        return files_.list(directory);
    }
    [[nodiscard]] std::string fullPath(std::string_view path) const override {
        return files_.fullPath(path);
    }
    [[nodiscard]] std::string hostName(std::string_view path) const override {
        return files_.hostName(path);
    }
    [[nodiscard]] std::string currentDirectory() const override {
        return files_.currentDirectory();
    }
    [[nodiscard]] std::string homeDirectory() const override { return files_.homeDirectory(); }
    [[nodiscard]] std::optional<std::uint64_t> freeSpace(std::string_view folder) const override {
        return files_.freeSpace(folder);
    }
    [[nodiscard]] std::size_t sectorSize(char drive) const override {
        return files_.sectorSize(drive);
    }

  private:
    class BreakingFile;

    [[nodiscard]] bool counts(std::string_view path) const;
    /// Counts one operation; whether it is the chosen one.
    bool isChosen() { return ++count_ == point_.operation; }
    /// As isChosen, for an operation that is no write.
    bool fails();
    /// What the chosen one does besides what it stores: it ends the process, or it is refused.
    /// True.
    bool breaks() const;
    [[nodiscard]] std::size_t storedBytes(std::size_t size) const;

    Files& files_;
    BreakPoint point_;
    std::atomic<std::uint32_t> count_ = 0;
};

} // namespace platform
