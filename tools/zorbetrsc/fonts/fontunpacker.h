// Turns a font resource into a BDF file and the lines of a manifest that name it.
#pragma once

#include "library/unpacked.h"

#include <optional>
#include <string>

namespace rsc {

/// `name` begins the file's name. None when a manifest cannot say the same; otherwise the caller
/// compares what packing gives. Refuses a damaged font.
[[nodiscard]] std::optional<UnpackedResource> unpackFont(ByteSpan resource, int id,
                                                         const std::string& name);

} // namespace rsc
