// Folders of the host that one program has for itself, by a lock of the folder itself: it leaves no
// file behind, and ends with the process, however that ends.
#pragma once

#include "platform/files.h"

#include <string>

namespace platform {

/// Locks a folder by the host's path name; see Files::claimFolder.
[[nodiscard]] FolderClaim claimHostFolder(const std::string& hostPath);

} // namespace platform
