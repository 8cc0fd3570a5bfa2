// The icon of a game in the sizes that desktops want.
#pragma once

#include "filesystem.h"
#include "pictures/picture.h"

#include <array>

namespace rsc {

/// Sides, in pixels. Software centres show the last one, and want at least 64.
inline constexpr std::array<int, 3> kIconSides{48, 64, 128};

/// A PNG file of a square with this side, in whose middle the whole picture is.
[[nodiscard]] Bytes makeIcon(const Picture& picture, int side);

} // namespace rsc
