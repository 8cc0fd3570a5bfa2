// The arguments of classes that cover an area: "x y width height [z]".
#pragma once

#include "platform/geometry.h"

#include <optional>

/// The next arguments of a script as an area of the window. Missing ones are 0, lengths below 0 too
/// unless `anyLength` lets the caller give them a meaning; all are kept to what trinkets may have.
struct OMSArea {
    platform::Point corner;
    int width = 0;
    int height = 0;
    std::optional<int> z;

    [[nodiscard]] static OMSArea read(bool anyLength = false);
    [[nodiscard]] platform::Rect rectangle() const {
        return {corner.x, corner.y, corner.x + width, corner.y + height};
    }
};
