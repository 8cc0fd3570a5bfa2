// A file of what is given to others.
#pragma once

#include "filesystem.h"

#include <string>
#include <string_view>
#include <vector>

namespace rsc {

struct BundleFile {
    std::string name; ///< with "/" between folders
    Bytes data;
    bool isProgram = false;
};

inline Bytes asBytes(std::string_view text) { return {text.begin(), text.end()}; }

} // namespace rsc
