// Where two pictures differ.
#pragma once

#include "platform/host/screen/png.h"

#include <optional>
#include <string>

namespace gametest {

struct PictureDifference {
    std::string text;         ///< for people
    platform::Picture marked; ///< what is shown, pale, with the pixels that differ in red
};

/// None when they are equal, pixel by pixel.
[[nodiscard]] std::optional<PictureDifference> differenceOf(const platform::Picture& is,
                                                            const platform::Picture& was);

} // namespace gametest
