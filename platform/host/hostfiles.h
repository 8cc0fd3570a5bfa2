// The program's file names on a host that knows neither drives nor equal names of different case.
//
// A name is first worked out by its text alone into a drive and a list of folder names; only then
// the host is asked, one folder after the other: a name spelled exactly so wins, otherwise the
// first one in name order that differs in case only. "C:" is the host's root folder, "D:" the
// folder of the CD. The content or the home folder gets a drive of its own ("E:", "F:") when its
// host path has characters that the program's Latin-1 names lack.
//
// Nothing changes after construction, so several threads may use it.
#pragma once

#include "platform/files.h"
#include "platform/host/hostoptions.h"

#include <filesystem>

namespace platform {

class HostFiles final : public Files {
  public:
    explicit HostFiles(const HostOptions& options);

    [[nodiscard]] FolderClaim claimFolder(std::string_view folder) override;
    std::unique_ptr<File> open(std::string_view path, OpenMode mode) override;
    bool remove(std::string_view path) override;
    /// Within one folder a name that differs from the old one in case only changes its spelling.
    bool rename(std::string_view from, std::string_view to) override;
    bool flushFolder(std::string_view path) override;

    [[nodiscard]] bool exists(std::string_view path) const override;
    [[nodiscard]] bool isWritable(std::string_view path) const override;
    /// Leaves out the names that the program could not write.
    [[nodiscard]] std::vector<DirectoryEntry> list(std::string_view directory) const override;
    [[nodiscard]] std::string fullPath(std::string_view path) const override;
    [[nodiscard]] std::string hostName(std::string_view path) const override;
    [[nodiscard]] std::string currentDirectory() const override;
    [[nodiscard]] std::string homeDirectory() const override;
    /// Drive C: is measured where the home directory lies, as the program writes nowhere else.
    [[nodiscard]] std::optional<std::uint64_t> freeSpace(std::string_view folder) const override;
    [[nodiscard]] std::size_t sectorSize(char drive) const override;

    /// The host's name of a file or folder that is there.
    [[nodiscard]] std::optional<std::string> hostPath(std::string_view path) const;
    /// The program's full path for one of the host; none when no drive reaches it by Latin-1 names.
    [[nodiscard]] std::optional<std::string> programPath(std::string_view hostPath) const;

  private:
    struct Drive {
        char letter;
        std::string root; ///< host path without "/" at its end, so empty for the host's root
    };
    /// A name that is worked out: the parts below a drive. Network names have the drive kNetwork.
    struct Place {
        char drive;
        std::vector<std::string> parts;
    };

    static std::string textOf(const Place& place);
    static bool inSameFolder(const Place& one, const Place& other);
    /// The place of a host path that starts at the drive's root; none beyond Latin-1.
    static std::optional<Place> placeBelow(char drive, const std::string& hostPath);

    [[nodiscard]] Place placeOf(std::string_view path) const;
    [[nodiscard]] const Drive* driveOf(char letter) const;
    /// The home folder itself too.
    [[nodiscard]] bool isInHome(const Place& place) const;
    /// The host's path of a place; with `create` its last part need not be there. None, and why,
    /// when there is no such place.
    [[nodiscard]] std::optional<std::string> locate(const Place& place, bool create,
                                                    std::error_code& why) const;
    /// The same for an operation, whose refusal it tells.
    [[nodiscard]] std::optional<std::string> locateFor(const Place& place, bool create) const;
    /// Of a file that is there.
    [[nodiscard]] std::optional<std::string> locateFile(const Place& place) const;
    /// A folder of the host that tells of the disk that a place is or will be on.
    static std::string measuredFolder(std::filesystem::path folder);
    [[nodiscard]] std::string measuredFolder(const Drive& drive) const;
    Place anchor(const std::string& hostPath, char ownDrive);

    std::vector<Drive> drives_;
    std::string hostHome_;
    Place current_;
    Place home_;
    std::optional<std::uint64_t> claimedSpace_; ///< of every drive
};

} // namespace platform
