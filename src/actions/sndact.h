// An action that plays a sound.
#pragma once

#include "action.h"

#include <memory>

class RStreamSound;

class SoundAction final : public OMSCopied<SoundAction, Action> {
  public:
    static constexpr int kNoSound = -1; ///< an id

    SoundAction(int id, bool streamed, bool interruptible);
    SoundAction(const SoundAction& other);
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

  protected:
    void begin() override;
    void end(End) override;
    void hold() override;
    void goOn() override;

  private:
    int id_;
    bool streamed_;                       ///< read piece by piece while it plays
    std::unique_ptr<RStreamSound> sound_; ///< while active
};
