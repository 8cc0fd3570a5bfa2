// The canvas of a window: a rectangle of the screen, in the screen's depth. What is drawn on it is
// visible at once. Parts of the rectangle beyond the screen have no pixels.
#pragma once

#include "omcanvas.h"

#include <memory>

class OMCursor;
class OMMemCanvas;

class OMWndCanvas : public OMCanvas {
  public:
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

    /// Takes a screen back that another program had. True when it had been lost: all that was drawn
    /// there and behind it is gone.
    static bool restore();

    /// Installs entries 10 to 245 on the display.
    void applyPalette() override;

    /// The arrow at first; never null.
    [[nodiscard]] const std::shared_ptr<const OMCursor>& cursor() const { return cursor_; }
    /// Shows a cursor and keeps it as long as it is shown.
    void setCursor(std::shared_ptr<const OMCursor> cursor);

  protected:
    [[nodiscard]] platform::Rect visibleArea() const override { return visible_; }
    [[nodiscard]] bool isMemory() const override { return false; }
    void show(const OMRegion& region) override;

  private:
    platform::Rect rectangle_;
    platform::Rect visible_; ///< in canvas coordinates
    std::shared_ptr<const OMCursor> cursor_;
    int backBuffers_ = 0; ///< surfaces behind the screen
};
