// A part of the window that is pressed as a button is, where a picture has its button painted in.
#pragma once

#include "omlink.h"
#include "omtrinket.h"

class PressArea final : public OMTrinket {
  public:
    /// `pressed` is called when the mouse button goes up over the area on which it went down, while
    /// that is shown. The area may be destroyed in it.
    PressArea(OMTrinketWindow& window, const platform::Rect& area, OMLink pressed);

    void onMouseDown(platform::Point point) override;
    void onMouseUp(platform::Point point) override;
    void onReleaseLost() override;

  private:
    OMLink pressed_;
    bool held_ = false;
};
