// Folders of the host that one program has for itself, by a lock of the folder itself: it leaves no
// file behind, and ends with the process, however that ends.
#pragma once

#include "platform/files.h"
#include "platform/host/files/descriptor.h"

namespace platform {

/// Locks the folder; see Files::claimFolder.
[[nodiscard]] FolderClaim claimHostFolder(const Descriptor& folder);

} // namespace platform
