// An off-screen canvas that owns its pixels.
#pragma once

#include "omcanvas.h"

#include "platform/display.h"

class OMMemCanvas : public OMCanvas {
  public:
    static constexpr int kMaxSide = 0x7FFF; ///< pixels
    static constexpr int kMaxPixels = 1 << 26;

    /// All pixels start at 0. A width or height below 1, or a size beyond the limits, makes a
    /// canvas of 1 x 1 after a failed check.
    OMMemCanvas(int width, int height, int depth);

    [[nodiscard]] int width() const override { return surface_.width(); }
    [[nodiscard]] int height() const override { return surface_.height(); }
    [[nodiscard]] OMPixels pixels() override;
    [[nodiscard]] const platform::Surface& surface() const { return surface_; }

  protected:
    [[nodiscard]] bool isMemory() const override { return true; }

  private:
    platform::Surface surface_;
};
