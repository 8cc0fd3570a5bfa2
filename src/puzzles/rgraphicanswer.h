// An answer that is a picture. See ranswer.h for what all answers have.
#pragma once

#include "ranswer.h"

class RGraphicAnswer final : public OMSCopied<RGraphicAnswer, RAnswer> {
  public:
    static const OMSClass kClass;

    using OMSCopied::OMSCopied;

    // For scripts.

    /// The point that decides instead of the rectangle whether it is on a container, measured from
    /// its left upper corner in pixels.
    [[nodiscard]] int hotPointX() const { return hotPoint_.x; }
    void setHotPointX(int x) { hotPoint_.x = x; }
    [[nodiscard]] int hotPointY() const { return hotPoint_.y; }
    void setHotPointY(int y) { hotPoint_.y = y; }
    [[nodiscard]] bool isUsingHotPoint() const { return usesHotPoint_; }
    void setUsingHotPoint(bool uses) { usesHotPoint_ = uses; }

  private:
    bool usesHotPoint_ = false;
    platform::Point hotPoint_{};
};
