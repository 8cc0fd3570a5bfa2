// Tells which files of some folders were saved, made, moved or removed, by what the host's kernel
// notes of them (inotify): nobody looks into the folders again and again. No thread; nothing waits.
//
// Names that begin with "." are left out: they are those of tools and of editors, not the author's.
// Links to folders are not followed.
#pragma once

#include "platform/host/files/descriptor.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>

struct inotify_event;

namespace platform {

/// Whether that is the path of the folder itself or begins with it.
[[nodiscard]] bool isInFolder(const std::filesystem::path& path,
                              const std::filesystem::path& folder);

class FolderWatch {
  public:
    enum class Depth : std::uint8_t {
        Folder, ///< what lies in the folder itself
        Tree,   ///< and in all folders below, also in those that come later
    };
    struct Changes {
        std::set<std::filesystem::path> paths; ///< also of folders that came or went
        bool anything = false;                 ///< more has changed than is known
        [[nodiscard]] bool empty() const { return paths.empty() && !anything; }
    };

    FolderWatch();

    /// `folder` is absolute and without links; changes are told by paths that begin with it. One
    /// that is not there, or is watched already, does no harm.
    void add(const std::filesystem::path& folder, Depth depth);

    /// What has changed since the last call. A file that is written to counts when it is closed.
    [[nodiscard]] Changes take();

    /// Whether the host has refused to watch a folder, so that changes go unseen.
    [[nodiscard]] bool isBlind() const { return isBlind_; }
    /// Why, for people; once, empty afterwards.
    [[nodiscard]] std::string takeProblem();

  private:
    struct Watched {
        std::filesystem::path folder;
        Depth depth = Depth::Folder;
    };

    bool watch(const std::filesystem::path& folder, Depth depth);
    void addTree(const std::filesystem::path& folder, Changes* found);
    void take(const inotify_event& event, std::string_view name, Changes& changes);
    void takeFolder(const Watched& parent, const std::filesystem::path& folder, std::uint32_t what,
                    Changes& changes);
    void forgetBelow(const std::filesystem::path& folder);
    void noteRefusal(const std::filesystem::path& folder, int error);

    Descriptor queue_;
    std::map<int, Watched> watched_; ///< by the kernel's numbers
    std::set<std::filesystem::path> trees_;
    bool isBlind_ = false;
    std::string problem_;
};

} // namespace platform
