// The program's file names on a host that knows neither drives nor equal names of different case.
//
// A name is first worked out by its text alone into a drive and a list of folder names; only then
// the host is asked, one folder after the other: a name spelled exactly so wins, otherwise the
// first one in name order that differs in case only. "C:" is the host's root folder, "D:" the
// folder of the CD. The content or the home folder gets a drive of its own ("E:", "F:") when its
// host path has characters that the program's Latin-1 names lack.
//
// A game is a guest on the host: unless it is trusted, only what lies in its own folder, in RSC and
// scripts beside it, on the CD and in the home folder exists, and only its own and the home folder
// can be written to. Links are followed as long as they lead to where that holds, and farther only
// from RSC to resource libraries and their maps, which authors share among games. What is written
// is no link.
//
// Several threads may use it.
#pragma once

#include "platform/files.h"
#include "platform/host/files/fence.h"

#include <cstdint>
#include <filesystem>
#include <mutex>
#include <set>

namespace platform {

/// Where the program's files lie on the host. Host path names; relative ones start from the working
/// folder of the process.
struct HostOptions {
    std::string content;     ///< current directory of the program; the working folder when empty
    std::string cd;          ///< drive D:; no such drive when empty
    std::string home;        ///< home directory; a folder of the user's data folder when empty
    bool trusted = false;    ///< the game may open all of the host's files
    bool components = false; ///< and bring native code
    std::optional<std::uint64_t> freeSpace{}; ///< bytes that every drive claims; else the host's
};

/// The folder of the host or the next one above it that is there; `otherwise` when no name is left.
[[nodiscard]] std::string nearestFolder(std::filesystem::path folder, const std::string& otherwise);

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

    void setFenceLink(FenceLink link) override;

    /// The player chose this file: it may be read wherever it lies.
    void admit(std::string_view path);
    /// The folders of the host that may be written to; of one that is not there the next above.
    [[nodiscard]] std::vector<std::string> writableFolders() const;

    /// The host's name of a file or folder that is there, without links.
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
    struct Ground {
        Place place;
        bool writable;
    };
    /// A file or folder of the host.
    struct Spot {
        std::string path; ///< real; empty for the root
        bool isLink = false;

        [[nodiscard]] std::string folder() const { return path.substr(0, path.rfind('/')); }
        [[nodiscard]] std::string name() const;
    };
    /// What is looked for.
    struct Wanted {
        Fence::Use use = Fence::Use::Read;
        bool mayBeMissing = false; ///< the last part
        bool followsLast = true;   ///< or it is taken as it is when it is a link
        bool isListed = false;     ///< the folder itself, for the names in it
    };

    static std::string textOf(const Place& place);
    static bool inSameFolder(const Place& one, const Place& other);
    /// The place of a host path that starts at the drive's root; none beyond Latin-1.
    static std::optional<Place> placeBelow(char drive, const std::string& hostPath);

    [[nodiscard]] Place placeOf(std::string_view path) const;
    [[nodiscard]] const Drive* driveOf(char letter) const;
    [[nodiscard]] static bool isBelow(const Place& place, const Place& folder);
    /// Whether it may exist for the game, as far as its text tells.
    [[nodiscard]] bool mayBe(const Place& place, Fence::Use use) const;
    [[nodiscard]] bool isAdmitted(const Place& place) const;
    /// The host's name of a place; none, and why, when there is no such place.
    [[nodiscard]] std::optional<Spot> locate(const Place& place, Wanted wanted,
                                             std::error_code& why) const;
    /// The same without regard to the fence.
    [[nodiscard]] std::optional<Spot> find(const Place& place, Wanted wanted,
                                           std::error_code& why) const;
    /// The same as locate for an operation, whose refusal it tells.
    [[nodiscard]] std::optional<Spot> locateFor(const Place& place, Wanted wanted) const;
    /// Of a file that is there, to be removed or renamed.
    [[nodiscard]] std::optional<Spot> locateFile(const Place& place) const;
    /// Tells whom it may concern, and why.
    void refuseFenced(const Place& place, std::error_code& why) const;
    /// A folder of the host that tells of the disk that a place is or will be on.
    [[nodiscard]] std::string measuredFolder(const Drive& drive) const;
    Place anchor(const std::string& hostPath, char ownDrive);
    /// A folder beside the content that the game may read.
    void addNeighbour(const std::string& name, std::vector<Fence::Ground>& fence);

    bool trusted_;
    std::vector<Drive> drives_;
    std::string hostHome_;
    std::string hostContent_;
    Place current_;
    Place home_;
    std::vector<Ground> grounds_; ///< those of the fence, as the program names them
    Place libraries_{};           ///< RSC of the content, which may be a link
    std::string permits_; ///< of the host: where the player's permits lie, which no game writes
    std::optional<Fence> fence_;
    mutable std::mutex mutex_; ///< of what follows
    std::set<std::string> admitted_;
    mutable std::set<std::string> told_;
    FenceLink fenceLink_;
    std::optional<std::uint64_t> claimedSpace_; ///< of every drive
};

} // namespace platform
