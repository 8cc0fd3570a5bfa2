// Where the lines of the world's reports go.
#pragma once

#include "omlink.h"

#include <string_view>

namespace world {

using Report = OMLinkTo<void(std::string_view)>;

} // namespace world
