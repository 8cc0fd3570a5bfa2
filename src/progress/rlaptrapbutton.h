// The buttons of the progress screen.
//
// Each is an animation that shows one of several states and is clicked as a push button is, where
// its picture is. State n is sequence n of the animation. One that has a single sequence shows
// frame n of it instead, standing still. A state that is not there leaves what is shown.
#pragma once

#include "omao.h"
#include "omlink.h"
#include "world/playerrecord.h"

#include <memory>
#include <utility>
#include <vector>

class LapTrapButton : public OMAnimation {
  public:
    LapTrapButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);

    /// Called when the mouse button goes up over the picture on which it went down. The button may
    /// be destroyed in it.
    void setPressedLink(OMLink link) { pressed_ = std::move(link); }

    [[nodiscard]] HandUse handUse() const override { return HandUse::Click; }
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

/// A location on the progress screen. Its state is the number of its Look.
class MapButton final : public LapTrapButton {
  public:
    enum class Look { Visited = 1, Here = 2, NeverVisited = 3 };

    MapButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y,
              int location);

    [[nodiscard]] int location() const { return location_; }
    /// `isHere`: the screen was opened for its location.
    void update(bool isHere, int visits);

  private:
    int location_;
};

/// The check box that says whether the level of a location changes by itself. State 1 is checked,
/// state 2 is not.
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

/// The buttons of which one at a time is selected: the four levels of an activity, and the music on
/// and off.
///
/// The states of a level's button, by what became of the level (world::LevelColor):
///
///                 plain   selected
///     nothing yet   1        2
///     advanced      3        4
///     went back     5        6
///
/// A picture without the states of a colour shows those of "nothing yet".
class BigOleButton final : public LapTrapButton {
  public:
    BigOleButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);

    void setColor(world::LevelColor color);
    void setSelected(bool selected);

  private:
    void showLook();

    world::LevelColor color_ = world::LevelColor::None;
    bool selected_ = false;
};

/// Its buttons have the numbers 1, 2, ... in the order in which they come; one whose picture is
/// missing keeps its number. They belong to somebody else and go with the group.
class BigOleButtonGroup {
  public:
    using PressedLink = OMLinkTo<void(int number)>;

    /// `pressed` is told of the button that was clicked, and decides what becomes of that. The
    /// group may be destroyed in it.
    explicit BigOleButtonGroup(PressedLink pressed) : pressed_(std::move(pressed)) {}
    BigOleButtonGroup& operator=(BigOleButtonGroup&&) = delete;

    /// Null for one that is missing.
    void add(BigOleButton* button);
    /// Null for one that is missing. The number must be one of the group's.
    [[nodiscard]] BigOleButton* button(int number) const {
        return buttons_.at(static_cast<std::size_t>(number - 1));
    }
    /// Every button is selected exactly when it has this number.
    void select(int number);

  private:
    PressedLink pressed_;
    std::vector<BigOleButton*> buttons_;
};
