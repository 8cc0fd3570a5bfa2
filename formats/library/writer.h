// Writes libraries.
#pragma once

#include "formats/base/bytes.h"
#include "formats/base/result.h"
#include "formats/library/layout.h"

namespace formats::library {

struct Resource {
    std::string type;     ///< see typeNumber
    std::uint16_t id = 0; ///< 1 to kLargestId
    Bytes data;
};

/// A library with these resources, grouped by type in the order in which the types first appear.
/// The shift is the smallest, from kSmallestShift on, that reaches all of them. Refused when there
/// are more or larger ones than the format can point to.
[[nodiscard]] Result<Bytes> write(std::string_view moduleName, std::span<const Resource> resources);

} // namespace formats::library
