// The way of mouse and keys through a trinket window: which trinket has the mouse or the keyboard
// focus, which one the pointer is over, and what each of them is told.
//
// A handler may have any trinket retire, or take the mouse for another; what comes after a call
// into a trinket therefore asks again. What a trinket that goes has of the mouse, its group has
// from then on.
#pragma once

#include "omtrinket.h"

#include <cstdint>
#include <vector>

class OMTrinketInput {
  public:
    using MouseLink = OMTrinket::MouseLink;

    /// What the window's input hook is told.
    enum class Kind : std::uint8_t {
        Key = 0,
        MouseDown = 1,
        MouseUp = 2,
        MouseMove = 3,
        DoubleClick = 4,
    };

    /// Where input goes that neither trinkets nor the background take.
    struct Defaults {
        MouseLink mouseDown;
        MouseLink mouseUp;
        MouseLink mouseMove;
        MouseLink doubleClick;
        OMLinkTo<void(const platform::KeyPress&)> key;
    };

    /// Takes the clicks that go to `Defaults::mouseDown` from whoever has them, and leaves them to
    /// who had them before, or has taken over from that one. May outlive the window.
    class ClickTaker {
      public:
        /// A link to nobody swallows them, also from those that take them later.
        ClickTaker(OMTrinketWindow& window, MouseLink link);
        ~ClickTaker();
        ClickTaker& operator=(ClickTaker&&) = delete;

      private:
        friend class OMTrinketInput;

        OMTrinketInput* input_; ///< null once it is gone
        bool swallows_;
        MouseLink before_; ///< who had them
    };

    /// Part of the window.
    explicit OMTrinketInput(OMTrinketWindow& window) : window_(window) {}
    ~OMTrinketInput();
    OMTrinketInput& operator=(OMTrinketInput&&) = delete;

    [[nodiscard]] Defaults& defaults() { return defaults_; }

    void setDisabled(bool disabled) { disabled_ = disabled; }
    /// The trinket that the mouse means at a point, or null.
    [[nodiscard]] OMTrinket* hitTest(platform::Point point) const;
    /// The trinket that has the mouse, held or captured, or null.
    [[nodiscard]] OMTrinket* mouseTarget() const { return target_; }
    [[nodiscard]] OMTrinket* flyOverTrinket() const { return flyOver_; }
    [[nodiscard]] platform::Point lastMousePosition() const { return lastMouse_; }
    /// Finds out what the pointer is over now.
    void updateFlyOver() { updateFlyOver(lastMouse_); }

    /// While on, the window shows the cursors of the trinkets; on at first.
    void setCursorManagement(bool on) { cursorManagement_ = on; }
    /// Finds out what the pointer is over now, and shows the cursor that belongs there.
    void updateCursor();
    /// That of what the pointer holds or is over.
    [[nodiscard]] int wantedCursor() const;

    [[nodiscard]] OMTrinket* focus() const { return focus_; }
    void setFocus(OMTrinket& trinket);
    void clearFocus();

    // For the trinkets.

    void setTarget(OMTrinket& trinket);
    void releaseTarget(const OMTrinket& trinket);
    /// A trinket goes: what it holds, and that the pointer is over it, passes to its group.
    void handOver(const OMTrinket& trinket, OMTrinket& group);
    /// A trinket leaves the window.
    void trinketGoes(const OMTrinket& trinket);

    // From the application, by way of the window.

    void mouseDown(platform::Point point);
    void mouseUp(platform::Point point);
    /// Lets go of what is held. Who has the mouse hears of it in the next idle time.
    void mouseReleaseLost();
    void tellLostRelease();
    void mouseMove(platform::Point point);
    void doubleClick(platform::Point point);
    void key(const platform::KeyPress& press);

  private:
    bool accepts(Kind kind);
    bool pressTarget(platform::Point point);
    void beginHolding(OMTrinket& trinket, platform::Point point);
    void dropTarget(OMTrinket& trinket, platform::Point point);
    void moveTarget(OMTrinket& trinket, platform::Point point, int dx, int dy);
    void updateFlyOver(platform::Point point);
    void leave(OMTrinket& trinket);
    void enter(OMTrinket& trinket);
    [[nodiscard]] bool isHolding() const;
    /// The handlers of a press or a double click are at work, and nobody has captured the mouse.
    [[nodiscard]] bool isPressing() const;

    OMTrinketWindow& window_;
    Defaults defaults_;
    std::vector<ClickTaker*> clickTakers_; ///< the last one has the clicks
    bool disabled_ = false;
    bool cursorManagement_ = true;
    OMTrinket* target_ = nullptr;
    bool releaseLost_ = false; ///< since the last press
    OMSWatch letGo_;           ///< what had the mouse then, to be told
    OMTrinket* flyOver_ = nullptr;
    OMTrinket* focus_ = nullptr;
    platform::Point lastMouse_{};
};
