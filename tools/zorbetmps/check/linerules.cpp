#include "zorbetmps/check/linerules.h"

#include "rvar.h"

#include <algorithm>
#include <vector>

namespace mps {

namespace {

constexpr std::string_view kLineBlanks = " \t\n";
constexpr std::size_t kTab = 8;

bool isBeyondAscii(char c) { return static_cast<unsigned char>(c) >= 0x7F; }

class LineCheck {
  public:
    LineCheck(std::string_view text, const TellLine& tell)
        : tell_(tell), hasReturns_(text.find('\r') != text.npos) {
        for (; !text.empty(); ++number_) {
            const std::size_t end = std::min(text.find(hasReturns_ ? '\r' : '\n'), text.size());
            check(text.substr(0, end), text.substr(std::min(end + 1, text.size())));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }

  private:
    void check(std::string_view line, std::string_view rest) {
        if (hasReturns_ && line.starts_with('\n')) line.remove_prefix(1); // of the end before
        const std::size_t first = line.find_first_not_of(kLineBlanks);
        if (first == line.npos || line[first] == ';') return;
        const std::string_view statement = line.substr(first);
        checkLetters(line, rest);
        checkBrackets(statement, first);
        checkIndent(line.substr(0, first), statement);
    }

    /// Those outside of quotes.
    void checkLetters(std::string_view line, std::string_view rest) {
        char quote = 0;
        bool isTold = false;
        for (std::size_t i = 0; i < line.size(); ++i) {
            const char c = line[i];
            if (quote) {
                if (c == quote) quote = 0;
            } else if (YVariable::isQuote(c)) {
                quote = c;
            } else if (isBeyondAscii(c) && !isTold) {
                isTold = true;
                tell_(Rule::Accent, number_, static_cast<int>(i) + 1,
                      std::string(1, c) + " outside of quotes counts as a blank");
            } else if (c == '\n' && !isToldOfEnds_ &&
                       (line.find_first_not_of(kLineBlanks, i) != line.npos ||
                        rest.find_first_not_of(" \t\r\n") != rest.npos)) {
                isToldOfEnds_ = true;
                tell_(Rule::LineEnds, number_, 0,
                      "lines of this file end with CR, and LF alone ends none, so this one and the "
                      "next are one; save the file with one kind of line ends");
            }
        }
    }

    void checkBrackets(std::string_view statement, std::size_t first) {
        const std::string_view word = statement.substr(0, statement.find_first_of(kLineBlanks));
        const std::size_t last = statement.find_last_not_of(kLineBlanks);
        const auto tell = [&](const char* text) {
            tell_(Rule::Bracket, number_, static_cast<int>(first + last) + 1, text);
        };
        constexpr std::string_view kWithBody[] = {"if", "for", "else", "procedure"};
        const bool hasBody = std::ranges::find(kWithBody, word) != std::end(kWithBody);
        if (hasBody && statement[last] == '[' && last > 0 &&
            kLineBlanks.find(statement[last - 1]) != kLineBlanks.npos)
            tell("\"[\" stands on a line of its own; here it is one of the statement's words");
        const std::size_t list = word.find("=[");
        if (list != word.npos && list > 0 && statement[last] == ']')
            tell("a list ends with its line; \"]\" becomes a part of its last word");
    }

    /// A second line below an "if" that stands like its body.
    void checkIndent(std::string_view blanks, std::string_view statement) {
        std::size_t indent = 0;
        for (const char blank : blanks)
            indent = blank == '\t' ? indent / kTab * kTab + kTab : indent + 1;
        if (expects_ == Expects::Body) {
            expects_ =
                indent > owner_ && statement.front() != '[' ? Expects::Next : Expects::Nothing;
            body_ = indent;
        } else if (expects_ == Expects::Next) {
            if (indent == body_ && !statement.starts_with("else"))
                tell_(
                    Rule::Indent, number_, static_cast<int>(indent) + 1,
                    "only the line above belongs to the statement before; a body of several lines "
                    "stands between \"[\" and \"]\"");
            expects_ = Expects::Nothing;
        }
        const std::string_view word = statement.substr(0, statement.find_first_of(kLineBlanks));
        if (word == "if" || word == "else" || word == "for" || word == "procedure") {
            expects_ = Expects::Body;
            owner_ = indent;
        }
    }

    const TellLine& tell_;
    bool hasReturns_;
    bool isToldOfEnds_ = false;
    int number_ = 1;
    enum class Expects { Nothing, Body, Next } expects_ = Expects::Nothing;
    std::size_t owner_ = 0; ///< the indent of the statement that has a body
    std::size_t body_ = 0;
};

} // namespace

void checkLines(std::string_view text, const TellLine& tell) { const LineCheck check(text, tell); }

} // namespace mps
