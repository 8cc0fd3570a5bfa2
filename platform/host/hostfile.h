// An open file of the host. Not buffered: what was written is with the host, so nothing is lost
// when the process ends at once.
#pragma once

#include "platform/files.h"

#include <string>

namespace platform {

/// What Files::lastRefusal tells: nothing when it is `done`, else what `errno` says. Returns
/// `done`.
bool tellDone(bool done);

/// Opens by the host's path name; null when that is no regular file or cannot be opened.
[[nodiscard]] std::unique_ptr<File> openHostFile(const std::string& hostPath, OpenMode mode);

/// Brings the names in a folder to the disk; see Files::flushFolder.
[[nodiscard]] bool flushHostFolder(const std::string& hostPath);

} // namespace platform
