// Words and numbers out of a text that comes from outside. The scanner knows where its text ends
// and always moves forward, so that broken data cannot stall a parser.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace formats {

/// Blanks are spaces and tabs; lines end with LF, CR or CR LF.
class TextScanner {
  public:
    /// The text must outlive the scanner.
    explicit TextScanner(std::string_view text) : rest_(text) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }

    /// The first `limit` characters of the next line that holds more than blanks; the rest of that
    /// line is passed over. Empty only at the end of the text.
    std::string_view line(std::size_t limit);
    /// Number of the line that `line` gave last; the first is 1.
    [[nodiscard]] int lineNumber() const { return lineNumber_; }

    void skipBlanks();
    /// Skips characters below the blank, line ends among them.
    void skipControls();

    /// Passes over leading blanks and `text`; false, and nothing else passed over, when the text
    /// that follows is another.
    bool literal(std::string_view text);
    /// A decimal number with an optional sign after leading blanks; none when there is no digit or
    /// the number does not fit.
    std::optional<int> number();
    /// The characters up to the next blank or control character after leading blanks; empty at the
    /// end.
    std::string_view word();
    /// The next `count` characters, whatever they are; fewer at the end.
    std::string_view take(std::size_t count);

  private:
    /// Everything up to the line end, which is passed over as well.
    std::string_view takeLine();

    std::string_view rest_;
    int lineNumber_ = 0;
};

/// In double quotes, for messages.
[[nodiscard]] inline std::string inQuotes(std::string_view text) {
    return std::string(1, '"').append(text).append(1, '"');
}

} // namespace formats
