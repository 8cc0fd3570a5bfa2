// Files by the names that the program uses: drive letters, "\" between folders (a "/" counts as
// one), letter case ignored. "C:" is the root of the host's files, "D:" the folder given for the
// CD. A name without a drive starts from the current directory.
//
// All of it may be used by several threads at once, an open file by one thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace platform {

enum class OpenMode : std::uint8_t {
    Read,           ///< the file must exist
    ReadSequential, ///< as Read, without caching by the host where it can be asked for; see below
    Write,          ///< made anew or emptied
    Append,         ///< made if missing, written at its end
    WriteThrough,   ///< made anew, on the disk when a write returns, shared with nobody
};

/// Files read by ReadSequential are shared with others that read so, but not with WriteThrough:
/// whichever comes second is refused. The host caches nothing where it can read straight into the
/// caller's memory, for which the buffer begins at a multiple of kPageSize and the reads begin and
/// end at sectors; other reads work all the same.
inline constexpr std::size_t kPageSize = 4096;

/// An open file; closed by destruction.
class File {
  public:
    virtual ~File() = default;

    /// Bytes read, less than asked for only at the end of the file or after an error.
    virtual std::size_t read(std::span<std::byte> buffer) = 0;
    /// False when not all bytes could be written.
    virtual bool write(std::span<const std::byte> bytes) = 0;
    /// True when all that was written is on the disk, and would be there after a power cut. The
    /// file's name is only after Files::flushFolder.
    virtual bool flush() = 0;
    /// Sets the place of the next read, counted from the start of the file.
    virtual bool seek(std::uint64_t position) = 0;
    [[nodiscard]] virtual std::uint64_t size() const = 0;
};

struct DirectoryEntry {
    std::string name;
    bool isDirectory = false;
};

/// Keeps what was taken until it is destroyed.
class Hold {
  public:
    virtual ~Hold() = default;
};

/// What came of Files::claimFolder.
struct FolderClaim {
    std::unique_ptr<Hold> hold{}; ///< null when there is nothing to hold, or nothing to be had
    /// Why nothing can be stored there: device_or_resource_busy when another program has the
    /// folder, else why it cannot be made or written to. It may be held all the same.
    std::error_code refusal{};
    std::string holder{}; ///< the program that has it, as far as known, for people
};

class Files {
  public:
    virtual ~Files() = default;

    /// Takes a folder for this program alone, for what it stores there, as long as the hold and the
    /// process last. The home directory is made when it is missing. Where folders cannot be held,
    /// everybody gets them.
    [[nodiscard]] virtual FolderClaim claimFolder(std::string_view) { return {}; }

    /// Why the calling thread's last opening, removing, renaming or flushing of a folder, or its
    /// last reading, writing or flushing of an open file, was refused or came short: an errc, whose
    /// message() is for people ("Permission denied"). No error when it was done. Of all files of
    /// the process; questions do not count.
    [[nodiscard]] static std::error_code lastRefusal();
    /// For those who implement files, or stand before others and refuse by themselves.
    static void setLastRefusal(std::error_code refusal);

    /// Told of a full path outside of what the game may open, when it is asked for; of each only
    /// once. By whichever thread asks. The path is as if it were missing.
    using FenceLink = std::function<void(const std::string& path)>;
    virtual void setFenceLink(FenceLink link) { static_cast<void>(link); }

    /// Null when the file cannot be opened (missing, a folder, no permission).
    virtual std::unique_ptr<File> open(std::string_view path, OpenMode mode) = 0;

    /// Deletes a file; false when it is not there or cannot be deleted.
    virtual bool remove(std::string_view path) = 0;

    /// Gives a file another name in the same folder, in one step: whoever opens `to` meanwhile has
    /// the one file or the other whole. A file that has the name `to` is replaced, and keeps its
    /// spelling if that differs in case; a link there is replaced and not followed. False, and
    /// nothing changed, when there is no such file, the folders differ or the host refuses.
    virtual bool rename(std::string_view from, std::string_view to) = 0;
    /// True when the names of the files in a folder are on the disk: what was made, renamed and
    /// removed there stays so after a power cut.
    virtual bool flushFolder(std::string_view path) = 0;

    [[nodiscard]] virtual bool exists(std::string_view path) const = 0; ///< a file, not a folder
    [[nodiscard]] virtual bool isWritable(std::string_view path) const = 0;

    /// Entries of a folder in ascending order of their names without regard to case; empty when
    /// there is no such folder.
    [[nodiscard]] virtual std::vector<DirectoryEntry> list(std::string_view directory) const = 0;

    /// `path` with its drive letter and every "." and ".." worked out.
    [[nodiscard]] virtual std::string fullPath(std::string_view path) const = 0;

    /// What people call `path` outside of the program: the host's name of it, there or not.
    /// Latin-1.
    [[nodiscard]] virtual std::string hostName(std::string_view path) const {
        return fullPath(path);
    }

    /// Full paths without a "\" at the end (except a drive's root, "D:\").
    [[nodiscard]] virtual std::string currentDirectory() const = 0;
    [[nodiscard]] virtual std::string homeDirectory() const = 0; ///< the "Windows directory"

    /// Bytes that can still be written on a drive ('C'); none when there is no such drive.
    [[nodiscard]] virtual std::optional<std::uint64_t> freeSpace(std::string_view folder) const = 0;
    /// Unit in which ReadSequential files are read best, in bytes.
    [[nodiscard]] virtual std::size_t sectorSize(char drive) const = 0;
};

/// Reads a whole file of at most `limit` bytes; none when it cannot be opened or read, or is
/// larger, which Files::lastRefusal tells (errc::file_too_large).
[[nodiscard]] std::optional<std::string> readFile(Files& files, std::string_view path,
                                                  std::size_t limit);

} // namespace platform
