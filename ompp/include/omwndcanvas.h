// The canvas of a window: a rectangle of the screen, in the screen's depth. What is drawn on it is
// visible at once. Parts of the rectangle beyond the screen have no pixels.
#pragma once

#include "omcanvas.h"

class OMWndCanvas : public OMCanvas {
  public:
    static constexpr int kArrowCursor = -1;

    /// `rectangle` in screen pixels.
    explicit OMWndCanvas(const platform::Rect& rectangle);

    [[nodiscard]] int width() const override { return rectangle_.width(); }
    [[nodiscard]] int height() const override { return rectangle_.height(); }
    [[nodiscard]] OMPixels pixels() override;

    /// Installs entries 10 to 245 on the display.
    void applyPalette() override;

    /// By number, see platform::Display. The arrow at first.
    [[nodiscard]] int cursor() const { return cursor_; }
    void setCursor(int id);

  protected:
    [[nodiscard]] platform::Rect visibleArea() const override { return visible_; }
    [[nodiscard]] bool isMemory() const override { return false; }
    void show(const OMRegion& region) override;

  private:
    platform::Rect rectangle_;
    platform::Rect visible_; ///< in canvas coordinates
    int cursor_ = kArrowCursor;
};
