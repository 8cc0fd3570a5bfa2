// The author's console over half of the screen, as a picture, and what keys and mouse do in it. The
// game goes on behind it and is asked for what is shown.
//
// It has three views, which Tab and clicks on their names switch: messages of the game; its
// variables, of which those are shown whose name or class contains what is typed; and the
// properties of the object that was chosen among these with Enter or a double click. In the first
// and the last one a line to run is typed, and given away with Enter. PageUp and PageDown scroll.
// Ctrl+Up puts the console over the upper half, Ctrl+Down back over the lower one. Esc closes it.
#pragma once

#include "platform/authordesk.h"
#include "platform/events.h"
#include "platform/host/screen/inputline.h"
#include "platform/host/screen/screenpanel.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform {

class ConsolePanel final : public ScreenPanel {
  public:
    enum class Told : std::uint8_t { Warning, Said, Run, Result };
    static constexpr std::size_t kMostLines = 2000; ///< of messages; the oldest go

    /// Closed at first.
    explicit ConsolePanel(const Rect& screen);

    [[nodiscard]] Rect place() const override { return place_; }
    [[nodiscard]] const Surface& picture() const override { return picture_; }
    [[nodiscard]] const std::array<Rgb, kPaletteSize>& palette() const override;

    [[nodiscard]] bool isOpen() const { return open_; }
    void toggle();
    /// Opens it, if it is closed, and shows the last messages.
    void openMessages();
    /// The screen may have another size by now.
    void fit(const Rect& screen);

    /// Adds a message, Latin-1, also while it is closed.
    void tell(Told kind, std::string_view text);
    /// Asks for what the view shows; null while there is no game.
    void look(const Inspection* game);

    /// Whether input, in screen pixels, is for the console alone: while it is open all keys, and
    /// the mouse inside; and what belongs to a press inside. It has been dealt with then.
    bool take(const Message& message);
    /// The line to run, once.
    [[nodiscard]] std::optional<std::string> takeLine() { return std::exchange(wanted_, {}); }

    /// Whether the picture, or what else is to be seen of it, has changed since the last time.
    bool draw();

  private:
    enum class View : std::uint8_t { Messages, Variables, Properties };
    struct MessageLine {
        Told kind;
        std::string text;
    };
    struct Tab {
        View view;
        std::string label;
        Rect area;
    };

    void layOut();
    [[nodiscard]] std::vector<Tab> tabs() const;
    /// Those that the filter leaves.
    [[nodiscard]] std::vector<const InspectedVariable*> found() const;
    [[nodiscard]] int rows() const; ///< of text that fit
    [[nodiscard]] Rect list() const;
    [[nodiscard]] Rect field() const;
    [[nodiscard]] bool isInside(Point point) const;

    void key(const KeyPress& press);
    void keyInVariables(std::uint16_t code);
    void keyBesideLine(std::uint16_t code);
    void pointerDown(Point point, bool isDouble);
    void show(View view);
    void choose(std::size_t row);
    void moveTo(std::ptrdiff_t row);
    void scroll(int lines);

    void drawBar();
    void drawMessages();
    void drawVariables();
    void drawProperties();
    void drawField();
    void drawMark(std::size_t first, std::size_t all);

    Rect screen_;
    Rect place_{};
    Surface picture_{1, 1, 8};
    bool atTop_ = false;
    bool open_ = false;
    bool changed_ = false;
    View view_ = View::Messages;

    std::deque<MessageLine> lines_; ///< broken for the width
    std::size_t below_ = 0;         ///< of these, that lie below what is seen

    std::vector<InspectedVariable> variables_;
    InputLine filter_;
    std::size_t selected_ = 0; ///< among those found
    std::size_t firstVariable_ = 0;

    std::string chosen_; ///< variable whose object's properties are shown; or empty
    std::vector<InspectedProperty> properties_;
    std::size_t firstProperty_ = 0;

    InputLine line_;
    std::optional<std::string> wanted_;
    bool holdsPress_ = false; ///< a press inside is not yet released
    bool gameHasPress_ = false;
};

} // namespace platform
