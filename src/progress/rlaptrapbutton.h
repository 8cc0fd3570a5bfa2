// A button of the progress screen: an animation that shows one of several states and is clicked as
// a push button is, where its picture is.
//
// State n is sequence n of the animation. One that has a single sequence shows frame n of it
// instead, standing still. A state that is not there leaves what is shown.
#pragma once

#include "omao.h"
#include "omlink.h"

class LapTrapButton : public OMAnimation {
  public:
    LapTrapButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);

    /// Called when the mouse button goes up over the picture on which it went down. The button may
    /// be destroyed in it.
    void setPressedLink(OMLink link) { pressed_ = std::move(link); }

    void onMouseDown(platform::Point point) override;
    void onMouseMove(platform::Point point) override;
    void onMouseUp(platform::Point point) override;
    void onReleaseLost() override;
    /// One whose state has ended is not shown before it has another.
    void setAttribute(Attribute which, int value, int second = 0) override;

  protected:
    [[nodiscard]] bool hasState(int state) const;
    /// What is shown already goes on.
    void showState(int state);

  private:
    static constexpr int kNone = 0; ///< instead of a state

    void track(platform::Point point);
    void letGo();

    OMLink pressed_;
    int state_ = kNone;
    bool held_ = false;
};
