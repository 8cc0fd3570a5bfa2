// An area of the window that can be clicked and is not seen.
//
//     h=RHotSpot x y width height [z]
#pragma once

#include "omtrinket.h"

#include <optional>

class RHotSpot final : public OMSCopied<RHotSpot, OMTrinket> {
  public:
    static const OMSClass kClass;

    RHotSpot(OMTrinketWindow& window, const platform::Rect& area);

    /// While on, its outline is drawn in black and white, for authors.
    [[nodiscard]] int outlined() const { return outlined_ ? 1 : 0; }
    void setOutlined(int on);
    [[nodiscard]] int userData() const { return userData_; }
    void setUserData(int value) { userData_ = value; }

    /// See OMSetCursors.
    void setAOCursor(std::optional<int> normal, std::optional<int> grab);

    void paint(OMMemCanvas& canvas, const OMRegion& clip) override;

  private:
    bool outlined_ = false;
    int userData_ = 0;
};
