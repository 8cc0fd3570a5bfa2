// What makes a game easier to play for one person, as a picture over the screen in large letters,
// and what mouse and keys do in it. A row is one thing that can be chosen, with all choices side by
// side. What is chosen takes effect at once; nothing is kept here.
//
// Up, Down and Tab go from row to row, and to the button below them. Left and Right choose in a
// row, Enter and the space bar take its next choice, or press the button. A click chooses what it
// is on, beside the choices the next one. Esc closes the panel.
#pragma once

#include "platform/events.h"
#include "platform/host/screen/screenpanel.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// All texts are Latin-1.
struct ComfortSetting {
    std::string label;
    std::vector<std::string> choices;    ///< from left to right, at least one
    std::function<std::size_t()> chosen; ///< index of the choice that is in effect
    std::function<void(std::size_t)> choose;
};

class ComfortPanel final : public ScreenPanel {
  public:
    /// In the middle of the screen, in the largest letters that there is room for; `button` closes
    /// it. What the settings call must outlive the panel.
    ComfortPanel(std::string title, std::vector<ComfortSetting> settings, std::string button,
                 const Rect& screen);

    [[nodiscard]] Rect place() const override;
    [[nodiscard]] const Surface& picture() const override { return picture_; }
    [[nodiscard]] const std::array<Rgb, kPaletteSize>& palette() const override;

    /// Input in screen pixels. What it changes is in the picture.
    void handle(const Message& message);
    /// Draws what is in effect by now, which may have been changed elsewhere.
    void draw();
    void close() { isClosed_ = true; }

    [[nodiscard]] bool isClosed() const { return isClosed_; }
    [[nodiscard]] const std::string& title() const { return title_; }
    /// What the keys are on: a row with what is chosen in it, or the button.
    [[nodiscard]] std::string focusText() const;

  private:
    /// Where a press does something: on a choice, on the rest of its row, or on the button, whose
    /// row is behind the last one.
    struct Target {
        std::size_t row;
        std::optional<std::size_t> choice;
        bool operator==(const Target&) const = default;
    };
    /// Places in the picture.
    struct Row {
        Rect area;
        std::vector<Rect> choices;
    };

    [[nodiscard]] int widthAt(int times) const;
    [[nodiscard]] int heightAt(int times) const;
    void layOut(const Rect& screen);
    void drawRow(std::size_t index);
    void drawPill(const Rect& area, std::string_view label, bool isChosen, bool isDown);
    void write(const Rect& area, int left, std::string_view text, std::uint8_t colour);

    void key(const KeyPress& key);
    void step(int by);
    void press(const Target& target);
    [[nodiscard]] bool isButton(std::size_t row) const { return row == settings_.size(); }
    [[nodiscard]] std::optional<Target> targetAt(Point point) const;

    std::string title_;
    std::vector<ComfortSetting> settings_;
    std::string button_;
    int times_ = 1; ///< as large as the system's font
    std::vector<Row> rows_;
    Rect buttonArea_{};
    Surface picture_;
    Point corner_{};
    std::size_t focus_ = 0;       ///< row
    std::optional<Target> armed_; ///< what the pointer holds down
    bool isClosed_ = false;
};

} // namespace platform
