// An action that runs the moves of a map game. Halting interrupts them.
#pragma once

#include "action.h"

#include <memory>

class RMap;

class MapAction final : public Action {
  public:
    MapAction(RMap& map, bool interruptible);
    ~MapAction() override { halt(); }
    [[nodiscard]] static std::unique_ptr<Action> create(bool interruptible);

  protected:
    void begin() override;
    void end(End how) override;
    void hold() override;
    void goOn() override;
    [[nodiscard]] bool hasLostObject() const override { return !map_; }

  private:
    [[nodiscard]] RMap* map() const;

    OMSWatch map_;
};
