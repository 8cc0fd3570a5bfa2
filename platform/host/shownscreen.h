// The screen in two copies, for every back end: the one that the program draws on, and the one that
// a person sees, which follows only where it was told to. The palette belongs to what is seen.
#pragma once

#include "platform/display.h"

#include <array>
#include <span>

namespace platform {

class ShownScreen {
  public:
    /// Starts black, with the fixed colours in its palette. Sizes below 1 count as 1, depths
    /// between those that surfaces have are rounded up.
    explicit ShownScreen(const ScreenMode& mode);

    [[nodiscard]] const ScreenMode& mode() const { return mode_; }
    [[nodiscard]] Surface& drawn() { return drawn_; }
    [[nodiscard]] const Surface& shown() const { return shown_; }
    [[nodiscard]] const std::array<Rgb, kPaletteSize>& palette() const { return palette_; }

    /// Copies `area` to what is seen and gives the part of it that lies on the screen.
    Rect present(const Rect& area);

    /// As `Display::setPalette`; true when a colour changed.
    bool setPalette(int first, std::span<const Rgb> colours);

  private:
    ScreenMode mode_;
    Surface drawn_;
    Surface shown_;
    std::array<Rgb, kPaletteSize> palette_;
};

} // namespace platform
