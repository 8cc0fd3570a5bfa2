// A box with a text and buttons as a picture in the program's own window, and what mouse and keys
// do in it. Being part of the window, it needs no helper, is there in a full screen too, and goes
// with the program however that ends.
//
// The pointer presses buttons, and carries the box about by its caption. Enter and the space bar
// press the button that has the focus, at first the left one; Tab and the arrows move the focus.
// Esc closes the box. A text that is too long for the screen is scrolled by Up, Down, PageUp and
// PageDown.
#pragma once

#include "platform/events.h"
#include "platform/host/screen/screenpanel.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// All texts are Latin-1.
struct BoxContents {
    std::string caption;
    std::string text;
    std::vector<std::string> buttons; ///< from left to right, at least one
    int closing = 0;                  ///< index of the button that closing the box means
    std::string checkBox;             ///< its label; without one there is no check box
    bool isError = false;
};

class BoxPanel final : public ScreenPanel {
  public:
    /// In the middle of the screen, no larger than it. A text that is too long stays inside.
    BoxPanel(BoxContents contents, const Rect& screen);

    [[nodiscard]] Rect place() const override;
    [[nodiscard]] const Surface& picture() const override { return picture_; }
    [[nodiscard]] const std::array<Rgb, kPaletteSize>& palette() const override;

    /// Input in screen pixels. What it changes is in the picture and its place.
    void handle(const Message& message);
    /// As if the box were closed.
    void close() { answer_ = contents_.closing; }

    /// Index of the button that was pressed; none before.
    [[nodiscard]] std::optional<int> answer() const { return answer_; }
    [[nodiscard]] bool isChecked() const { return checked_; }
    /// The label of what the keys are on.
    [[nodiscard]] const std::string& focusLabel() const { return controls_[focus_].label; }

  private:
    /// What can have the focus; their places are in the picture.
    struct Control {
        std::string label;
        Rect area;
    };

    void layOut(int width);
    void draw();
    void drawScrollMark();
    void drawControl(const Control& control, bool focused, bool down);
    void press(std::size_t control);
    void pointerDown(Point point);
    void pointerUp(Point point);
    void pointerMoved(Point point);
    void key(std::uint16_t code);
    void scroll(int lines);
    [[nodiscard]] bool isCheckBox(std::size_t control) const {
        return control == contents_.buttons.size();
    }
    [[nodiscard]] std::optional<std::size_t> controlAt(Point point) const;
    [[nodiscard]] Point inside(Point point) const {
        return {point.x - corner_.x, point.y - corner_.y};
    }

    BoxContents contents_;
    Rect screen_;
    std::vector<std::string> lines_;
    Rect textArea_{};
    int visibleLines_ = 0;
    int firstLine_ = 0;
    std::vector<Control> controls_; ///< the buttons, then the check box
    Surface picture_;
    Point corner_{};
    std::size_t focus_ = 0;
    std::optional<std::size_t> armed_; ///< the control that the pointer holds down
    std::optional<Point> carried_;     ///< where the pointer holds the caption
    std::optional<int> answer_;
    bool checked_ = false;
};

} // namespace platform
