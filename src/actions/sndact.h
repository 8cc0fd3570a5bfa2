// An action that plays a sound.
#pragma once

#include "action.h"

#include <memory>

class OMIStream;
class RStreamSound;

class SoundAction final : public OMSCopied<SoundAction, Action> {
  public:
    using StreamLocator = OMLinkTo<std::unique_ptr<OMIStream>(int id, int bufferMode)>;
    static constexpr int kNoSound = -1; ///< an id

    SoundAction(int id, bool streamed, bool interruptible);
    SoundAction(const SoundAction& other);
    [[nodiscard]] static std::unique_ptr<Action> create(ActionParameters& parameters);

    /// Where sounds come from, installed by the game at start-up.
    static void setStreamLocator(StreamLocator locator) { locator_ = std::move(locator); }

  protected:
    void begin() override;
    void end(End) override;
    void hold() override;
    void goOn() override;

  private:
    [[nodiscard]] std::unique_ptr<RStreamSound> load() const;

    static inline StreamLocator locator_;

    int id_;
    bool streamed_;                       ///< read piece by piece while it plays
    std::unique_ptr<RStreamSound> sound_; ///< while active
};
