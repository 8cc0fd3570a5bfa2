// A mouse that keys move: what it does reaches the program as what a hand does, message by message
// and in a hand's time.
#pragma once

#include "omapp.h"
#include "omwindow.h"

#include <cstdint>
#include <deque>

class KeyHand {
  public:
    /// Positions are pixels of the window. Both must outlive the hand.
    KeyHand(OMApp& app, const OMWindow& window) : app_(app), window_(window) {}
    KeyHand& operator=(KeyHand&&) = delete;

    /// Where the pointer will be when all is done.
    [[nodiscard]] platform::Point pointer() const { return pointer_; }
    /// Whether something is still to be done.
    [[nodiscard]] bool isBusy() const { return !waiting_.empty(); }
    /// Whether the button will be down then.
    [[nodiscard]] bool isPressed() const { return pressed_; }

    // What is to be done, after what was said before.
    void moveTo(platform::Point point);
    void press();
    void release();
    void click();
    void clickTwice();

    /// A person's own mouse was moved, or its button released, which is a release of this one.
    void mouseMoved(platform::Point screen);
    void mouseReleased();

    /// Once in a pass: does what is due.
    void step();

  private:
    struct Deed {
        platform::Message::Kind kind;
        platform::Point point;
        std::uint32_t restMs; ///< after the deed before
    };

    void add(platform::Message::Kind kind, std::uint32_t restMs = 0) {
        waiting_.push_back({kind, pointer_, restMs});
    }

    OMApp& app_;
    const OMWindow& window_;
    std::deque<Deed> waiting_;
    platform::Point pointer_{};
    bool pressed_ = false;
    std::uint32_t lastMs_ = 0; ///< when the last one was done
};
