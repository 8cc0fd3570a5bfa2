// Turns a cursor resource into a picture and the line of a manifest that names it.
#pragma once

#include "formats/base/bytes.h"
#include "library/unpacked.h"

#include <optional>
#include <string>

namespace rsc {

/// `name` begins the picture's name. None when a manifest cannot say the same; otherwise the caller
/// compares what packing gives. Refuses a damaged cursor.
[[nodiscard]] std::optional<UnpackedResource> unpackCursor(formats::ByteSpan resource, int id,
                                                           const std::string& name);

} // namespace rsc
