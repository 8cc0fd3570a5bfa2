// The canvas of a window: a rectangle of the screen, in the screen's depth. What is drawn on it is
// visible at once. Parts of the rectangle beyond the screen have no pixels.
#pragma once

#include "omcanvas.h"

class OMMemCanvas;

class OMWndCanvas : public OMCanvas {
  public:
    static constexpr int kArrowCursor = -1;

    /// `rectangle` in screen pixels.
    explicit OMWndCanvas(const platform::Rect& rectangle);

    [[nodiscard]] int width() const override { return rectangle_.width(); }
    [[nodiscard]] int height() const override { return rectangle_.height(); }
    [[nodiscard]] OMPixels pixels() override;

    // Page flipping, in exclusive mode; outside of it a failed check and no effect.

    /// Puts a flippable canvas behind the screen: what is drawn on it is shown by `flip`, which
    /// then gives it the pixels of the screen before. False when it cannot be put there.
    bool attachToFlipChain(OMMemCanvas& back);
    /// The canvas keeps its picture in its own memory again.
    void detachFromFlipChain(OMMemCanvas& back);
    bool flip();
    [[nodiscard]] int backBuffers() const { return backBuffers_; }

    /// Takes a screen back that another program had. True when it had been lost: all that was drawn
    /// there and behind it is gone.
    static bool restore();

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
    int backBuffers_ = 0; ///< surfaces behind the screen
};
