// What a resource is unpacked to.
#pragma once

#include "filesystem.h"

#include <string>
#include <vector>

namespace rsc {

struct UnpackedResource {
    std::string lines;             ///< of the manifest, below a library
    std::vector<OutputFile> files; ///< that the lines name
    Bytes packed;                  ///< what packing them gives
};

} // namespace rsc
