// An open file of the host. Not buffered: what was written is with the host, so nothing is lost
// when the process ends at once.
#pragma once

#include "platform/files.h"
#include "platform/host/files/descriptor.h"

#include <string>

namespace platform {

/// What Files::lastRefusal tells: nothing when it is `done`, else what `errno` says. Returns
/// `done`.
bool tellDone(bool done);

/// Opens the file `name` of a folder; null when that is no regular file or cannot be opened. A link
/// is not followed. Only what has no other name is written to, unless `shared`.
[[nodiscard]] std::unique_ptr<File> openHostFile(const Descriptor& folder, const std::string& name,
                                                 OpenMode mode, bool shared);

/// Brings the names in a folder to the disk; see Files::flushFolder.
[[nodiscard]] bool flushHostFolder(const Descriptor& folder);

} // namespace platform
