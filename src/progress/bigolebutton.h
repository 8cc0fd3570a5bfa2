// The buttons of which one at a time is selected: the four levels of an activity, and the music on
// and off.
//
// The states of a level's button, by what became of the level (world::LevelColor):
//
//                 plain   selected
//     nothing yet   1        2
//     advanced      3        4
//     went back     5        6
//
// A picture without the states of a colour shows those of "nothing yet".
#pragma once

#include "progress/rlaptrapbutton.h"
#include "world/playerrecord.h"

#include <vector>

class BigOleButton final : public LapTrapButton {
  public:
    BigOleButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y);

    [[nodiscard]] world::LevelColor color() const { return color_; }
    [[nodiscard]] bool isSelected() const { return selected_; }
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
    BigOleButtonGroup(const BigOleButtonGroup&) = delete;
    BigOleButtonGroup& operator=(const BigOleButtonGroup&) = delete;

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
