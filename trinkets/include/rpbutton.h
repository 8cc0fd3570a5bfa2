// A push button: an animation whose first frame shows it up and whose second one shows it pressed.
//
//     b=RPButton id z
//     b=RPButton id x y z
#pragma once

#include "omao.h"

#include <optional>

class RPButton final : public OMSCopied<RPButton, OMAnimation> {
  public:
    static const OMSClass kClass;
    static constexpr int kNoSound = -1;
    static constexpr int kDefaultPlayDelay = 250; ///< ms

    /// Is not movable.
    RPButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);
    RPButton(const RPButton& other);
    ~RPButton() override { retire(); }

    /// With the arguments of the script; null without a main window or such a resource.
    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    /// A disabled button is not pressed by the mouse, and not hit when it is disabled while held.
    [[nodiscard]] bool isEnabled() const { return enabled_; }
    void setEnabled(bool enabled) { enabled_ = enabled; }
    /// Played while it is pressed; the hit waits for its end.
    [[nodiscard]] int clickSoundID() const { return clickSoundId_; }
    void setClickSoundID(int id) { clickSoundId_ = id; }
    /// How long it looks pressed when a script presses it, in ms.
    [[nodiscard]] int playDelay() const { return playDelayMs_; }
    void setPlayDelay(int ms) { playDelayMs_ = ms; }
    /// Called instead of the event "hit". An owner that goes before the button takes it back.
    void setHitLink(OMLink link) { hitLink_ = std::move(link); }

    /// Looks pressed for a while and clicks; nothing is hit. Without effect while the mouse has it.
    void press();

    [[nodiscard]] HandUse handUse() const override {
        return enabled_ ? HandUse::Click : HandUse::None;
    }
    void step(std::uint32_t clock) override;
    void onMouseDown(platform::Point point) override;
    void onMouseMove(platform::Point point) override;
    void onMouseUp(platform::Point point) override;
    void onReleaseLost() override;

  private:
    void onRetire() override;

    void track(platform::Point point);
    void letGo();
    void look(bool pressed);
    void playClick();
    void endClick();
    void clickEnded(unsigned click);
    void hit();

    bool enabled_ = true;
    int clickSoundId_ = kNoSound;
    int playDelayMs_ = kDefaultPlayDelay;
    OMLink hitLink_;

    bool tracking_ = false;
    bool looksPressed_ = false;
    std::optional<std::uint32_t> pressedMs_; ///< by a script; window clock
    unsigned click_ = 0;                     ///< number of the last click sound
    int clickHandle_;
    bool hitPending_ = false; ///< until the click sound ends
};
