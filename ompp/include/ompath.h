// The search path: an ordered list of directories in which a file that is known only by its name is
// looked for. Directories may keep their listing, so that a slow drive is asked once and not at
// every look-up; a file that is added to such a directory later is not seen before it is listed
// again.
//
// Process-wide. Only the main thread changes it, and holds the I/O section meanwhile; another
// thread resolves names under the same section.
#pragma once

#include "platform/files.h"

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The process-wide critical section of file input and output. A worker thread holds it while it
/// resolves names through the search path and opens files; the main thread holds it while it
/// changes the search path.
[[nodiscard]] std::mutex& OMIOSection();

/// A directory's path as names are appended to it: it ends in a separator.
[[nodiscard]] std::string OMPathWithBackslash(std::string_view path);

class OMPathDirectory {
  public:
    /// A "\" is added to a path that does not end with one. With `cacheListing` the directory is
    /// listed here, once.
    OMPathDirectory(std::string_view path, bool cacheListing);

    [[nodiscard]] const std::string& path() const { return path_; }
    [[nodiscard]] bool isListingCached() const { return listingCached_; }
    /// Whether the directory holds a file of this name, letter case ignored.
    [[nodiscard]] bool holds(std::string_view name) const;

  private:
    std::string path_;
    bool listingCached_;
    std::vector<std::string> names_; ///< of files, lower case, ascending
};

/// Adds a directory behind those that are there.
void OMPathAddDirectory(std::string_view path, bool cacheListing);
/// Takes the names that are in the directories now, where they are remembered.
void OMPathListAgain();

/// Strict: a name that no directory holds is not found. Otherwise the last directory stands for all
/// names that the others do not hold, and is not searched. Not strict at the beginning.
void OMPathSetStrict(bool strict);

/// Forgets all directories; not strict again.
void OMPathClear();

/// The path of the first directory that holds the file, with the name as given. A name with a ":"
/// or a "\" and any name while there are no directories is returned as it is. None when strict and
/// not found, and for an empty name (after a failed check).
[[nodiscard]] std::optional<std::string> OMPathResolveFilename(std::string_view name);

/// Opens for reading what a name stands for; null when that is nothing. For files that may be
/// cached see OMCachedFile::open.
[[nodiscard]] std::unique_ptr<platform::File> OMPathOpen(std::string_view name);
