// A location on the progress screen. Its state is the number of its Look.
#pragma once

#include "progress/rlaptrapbutton.h"

class MapButton final : public LapTrapButton {
  public:
    enum class Look { Visited = 1, Here = 2, NeverVisited = 3 };

    MapButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y,
              int location);

    [[nodiscard]] int location() const { return location_; }
    [[nodiscard]] Look look() const { return look_; }
    /// `isHere`: the screen was opened for its location.
    void update(bool isHere, int visits);

  private:
    int location_;
    Look look_ = Look::NeverVisited;
};
