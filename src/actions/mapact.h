// An action that runs the moves of a map game. Halting interrupts them.
#pragma once

#include "actionof.h"
#include "activities/rmap.h"

#include <memory>

class MapAction final : public OMSCopied<MapAction, ActionOf<RMap>> {
  public:
    using OMSCopied::OMSCopied;
    [[nodiscard]] static std::unique_ptr<Action> create(bool interruptible);

  protected:
    void perform(RMap& map, OMLink done) override { map.move(std::move(done)); }
    void interrupt(RMap& map) override { map.interruptMove(); }
};
