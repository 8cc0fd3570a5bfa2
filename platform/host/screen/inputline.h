// A line that a person types, with a caret and, where lines are given away, those before.
//
// Backspace and Delete take letters away, Left, Right, Home and End move the caret, Up and Down
// fetch earlier lines.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace platform {

class InputLine {
  public:
    static constexpr std::size_t kLongest = 1000; ///< letters
    static constexpr std::size_t kMostEarlier = 200;

    /// Latin-1.
    [[nodiscard]] const std::string& text() const { return text_; }
    /// Letters before the caret.
    [[nodiscard]] std::size_t caret() const { return caret_; }

    /// The code of a character or of a Key; others do nothing.
    void key(std::uint16_t code);
    /// Gives the line away, and is empty then.
    [[nodiscard]] std::string take();

  private:
    void insert(char letter);
    void remove(std::size_t at);
    /// Up and down among the earlier lines; the one that is being typed is the last.
    void fetch(std::size_t which);

    std::string text_;
    std::size_t caret_ = 0;
    std::vector<std::string> earlier_;
    std::string typed_;     ///< while an earlier one is shown
    std::size_t shown_ = 0; ///< index of the earlier one; their number: the typed one
};

} // namespace platform
