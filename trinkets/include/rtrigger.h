// An animation that is turned by hand: dragging it sideways shows one frame after the other.
//
//     t=RTrigger id z
//     t=RTrigger id x y z
#pragma once

#include "omao.h"

class RTrigger final : public OMSCopied<RTrigger, OMAnimation> {
  public:
    static const OMSClass kClass;
    static constexpr int kNoSound = -1;
    static constexpr int kDefaultDelta = 10;

    /// Is not movable, and stays on its first frame.
    RTrigger(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);
    RTrigger(const RTrigger& other);

    /// With the arguments of the script; null without a main window or such a resource.
    [[nodiscard]] static std::unique_ptr<OMScriptableObject> createFromScript();

    /// Pixels of the pointer for each frame, to the left when negative; 0 shows always the same.
    [[nodiscard]] int framePixelDelta() const { return framePixelDelta_; }
    void setFramePixelDelta(int pixels) { framePixelDelta_ = pixels; }
    [[nodiscard]] int sfxID() const { return sfxId_; }
    void setSfxID(int id) { sfxId_ = id; }
    [[nodiscard]] int userData() const { return userData_; }
    void setUserData(int value) { userData_ = value; }

    [[nodiscard]] HandUse handUse() const override { return HandUse::Drag; }
    /// One for each frame, as far to the side as the pointer goes for it.
    [[nodiscard]] std::optional<std::vector<platform::Rect>> dropPlaces() const override;
    void onMouseDown(platform::Point point) override;
    void onMouseMove(platform::Point point) override;
    void onMouseUp(platform::Point point) override;
    void onReleaseLost() override;

  private:
    void playSound();
    void letGo();

    int framePixelDelta_ = kDefaultDelta;
    int sfxId_ = kNoSound;
    int userData_ = 0;

    bool turning_ = false;
    bool soundPlayed_ = false; ///< in this drag
    int startFrame_ = 0;
    int startX_ = 0;
};
