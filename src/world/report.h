// Where the lines of the world's reports go.
// A line may be empty, and may hold line feeds of its own.
#pragma once

#include "omlink.h"

#include <string_view>

namespace world {

using Report = OMLinkTo<void(std::string_view)>;

} // namespace world
