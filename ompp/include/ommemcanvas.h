// An off-screen canvas. It owns its pixels, unless it is attached to the flip chain of a window
// canvas: then they are the surface behind the screen.
#pragma once

#include "omcanvas.h"

#include "platform/display.h"

class OMMemCanvas : public OMCanvas {
  public:
    static constexpr int kMaxSide = 0x7FFF; ///< pixels
    static constexpr int kMaxPixels = 1 << 26;

    /// Whether the canvas may be attached to a flip chain.
    enum class Kind : std::uint8_t { Fixed, Flippable };

    /// All pixels start at 0. A width or height below 1, or a size beyond the limits, makes a
    /// canvas of 1 x 1 after a failed check.
    OMMemCanvas(int width, int height, int depth, Kind kind = Kind::Fixed);

    [[nodiscard]] int width() const override { return surface_.width(); }
    [[nodiscard]] int height() const override { return surface_.height(); }
    [[nodiscard]] OMPixels pixels() override;
    [[nodiscard]] bool isFlippable() const { return kind_ == Kind::Flippable; }

  protected:
    [[nodiscard]] platform::Rect visibleArea() const override;
    [[nodiscard]] bool isMemory() const override { return true; }

  private:
    friend class OMWndCanvas; // attaches and detaches

    [[nodiscard]] platform::Surface* behindScreen() const;

    platform::Surface surface_;
    Kind kind_;
    bool attached_ = false;
};
