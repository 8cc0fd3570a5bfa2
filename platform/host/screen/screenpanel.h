// What can lie over the screen in the program's own window, with colours of its own.
#pragma once

#include "platform/display.h"

#include <array>

namespace platform {

class ScreenPanel {
  public:
    virtual ~ScreenPanel() = default;

    /// Where it is on the screen.
    [[nodiscard]] virtual Rect place() const = 0;
    /// As large as the place, with the colours of `palette`.
    [[nodiscard]] virtual const Surface& picture() const = 0;
    [[nodiscard]] virtual const std::array<Rgb, kPaletteSize>& palette() const = 0;
};

} // namespace platform
