// What a movie file says of itself, for "list".
#pragma once

#include "filesystem.h"

namespace rsc {

[[nodiscard]] bool isMovieFile(ByteSpan file);

/// A line about its pictures and sounds. Refused when the file is shorter than it says.
[[nodiscard]] std::string describeMovie(ByteSpan file);

} // namespace rsc
