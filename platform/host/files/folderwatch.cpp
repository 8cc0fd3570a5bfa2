#include "platform/host/files/folderwatch.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <sys/inotify.h>
#include <system_error>
#include <vector>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr std::uint32_t kMoved = IN_MOVED_FROM | IN_MOVED_TO;
constexpr std::uint32_t kWatched = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | kMoved | IN_ONLYDIR;
constexpr std::size_t kMostTaken = 65536; ///< bytes of events that are read at a time

bool isHidden(const fs::path& path) { return path.filename().string().starts_with('.'); }

/// A file that came as a whole, by a new name for one that is there; others are closed later.
bool isComplete(const fs::path& file) {
    std::error_code error;
    return fs::is_symlink(file, error) || fs::hard_link_count(file, error) > 1;
}

} // namespace

bool isInFolder(const fs::path& path, const fs::path& folder) {
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first ==
           folder.end();
}

FolderWatch::FolderWatch() : queue_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    if (queue_.isOpen()) return;
    isBlind_ = true;
    problem_ =
        "the system does not tell which files are saved: " + std::generic_category().message(errno);
}

std::string FolderWatch::takeProblem() { return std::exchange(problem_, {}); }

void FolderWatch::add(const fs::path& folder, Depth depth) {
    if (depth == Depth::Folder) {
        watch(folder, depth);
        return;
    }
    trees_.insert(folder);
    addTree(folder, nullptr);
}

/// Whether there is such a folder and it is watched now. One that is known keeps its first path,
/// and a tree stays one.
bool FolderWatch::watch(const fs::path& folder, Depth depth) {
    if (!queue_.isOpen()) return false;
    const int number = ::inotify_add_watch(queue_.number(), folder.c_str(), kWatched);
    if (number < 0) {
        noteRefusal(folder, errno);
        return false;
    }
    Watched& watched = watched_.try_emplace(number, Watched{folder, depth}).first->second;
    watched.depth = std::max(watched.depth, depth);
    return true;
}

/// What is gone by now, or no folder, is no problem.
void FolderWatch::noteRefusal(const fs::path& folder, int error) {
    if (error == ENOENT || error == ENOTDIR) return;
    if (std::exchange(isBlind_, true)) return;
    problem_ = folder.string() + ": it is not seen when files are saved there: " +
               (error == ENOSPC ? "the system's limit of watched folders is reached "
                                  "(fs.inotify.max_user_watches)"
                                : std::generic_category().message(error));
}

/// `found` gets what lies there: it may have come before the folder was watched.
void FolderWatch::addTree(const fs::path& folder, Changes* found) {
    if (!watch(folder, Depth::Tree)) return;
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code unknown;
        if (isHidden(entry->path())) continue;
        if (fs::is_directory(entry->symlink_status(unknown)))
            addTree(entry->path(), found);
        else if (found)
            found->paths.insert(entry->path());
    }
}

FolderWatch::Changes FolderWatch::take() {
    Changes changes;
    alignas(inotify_event) std::array<char, kMostTaken> buffer;
    for (;;) {
        const ssize_t size = ::read(queue_.number(), buffer.data(), buffer.size());
        if (size <= 0) return changes;
        for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
            inotify_event event;
            std::memcpy(&event, buffer.data() + at, sizeof event);
            take(event, event.len > 0 ? buffer.data() + at + sizeof event : "", changes);
            at += sizeof event + event.len;
        }
    }
}

void FolderWatch::take(const inotify_event& event, std::string_view name, Changes& changes) {
    if ((event.mask & IN_Q_OVERFLOW) != 0) {
        changes.anything = true;
        for (const fs::path& tree : trees_) addTree(tree, nullptr);
        return;
    }
    const auto found = watched_.find(event.wd);
    if (found == watched_.end()) return;
    if ((event.mask & IN_IGNORED) != 0) {
        watched_.erase(found);
        return;
    }
    if (name.empty() || name.starts_with('.')) return;
    const Watched parent = found->second;
    const fs::path path = parent.folder / name;
    if ((event.mask & IN_ISDIR) != 0)
        takeFolder(parent, path, event.mask, changes);
    else if ((event.mask & IN_CREATE) == 0 || isComplete(path))
        changes.paths.insert(path);
}

void FolderWatch::takeFolder(const Watched& parent, const fs::path& folder, std::uint32_t what,
                             Changes& changes) {
    changes.paths.insert(folder);
    if ((what & IN_MOVED_FROM) != 0) forgetBelow(folder);
    if ((what & (IN_CREATE | IN_MOVED_TO)) != 0 && parent.depth == Depth::Tree)
        addTree(folder, &changes);
}

/// They are elsewhere now, by other paths.
void FolderWatch::forgetBelow(const fs::path& folder) {
    std::vector<int> gone;
    for (const auto& [number, watched] : watched_)
        if (isInFolder(watched.folder, folder)) gone.push_back(number);
    for (const int number : gone) {
        ::inotify_rm_watch(queue_.number(), number);
        watched_.erase(number);
    }
}

} // namespace platform
