// The check box that says whether the level of a location changes by itself. State 1 is checked,
// state 2 is not.
#pragma once

#include "progress/rlaptrapbutton.h"

class AutoLevelCheckBox final : public LapTrapButton {
  public:
    /// Checked at first.
    AutoLevelCheckBox(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y,
                      int location);

    [[nodiscard]] int location() const { return location_; }
    [[nodiscard]] bool isChecked() const { return checked_; }
    void setChecked(bool checked);

  private:
    int location_;
    bool checked_ = true;
};
