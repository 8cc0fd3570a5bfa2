// The words of a manifest's line: separated by blanks, "quoted" when they hold blanks, up to a "#".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rsc {

/// What fields of resources hold.
inline constexpr int kLargestByte = 255;
inline constexpr int kLargestInt16 = 32767;
inline constexpr int kSmallestInt16 = -32768;

struct Word {
    std::string text;
    bool quoted = false;
    /// A quoted word is a name, whatever it says.
    [[nodiscard]] bool is(std::string_view keyword) const { return !quoted && text == keyword; }
};

/// Refuses a quotation mark without its partner.
[[nodiscard]] std::vector<Word> splitWords(std::string_view line);

/// A text as a word that is read as a name; none when it cannot be one.
[[nodiscard]] std::optional<std::string> asName(std::string_view text);

/// The words of a line, taken one after the other. Each getter refuses a missing word, or one that
/// is not what it asks for, with a text that names `what`.
class WordReader {
  public:
    explicit WordReader(std::vector<Word> words) : words_(std::move(words)) {}

    [[nodiscard]] bool atEnd() const { return at_ == words_.size(); }
    [[nodiscard]] const Word* peek() const { return atEnd() ? nullptr : &words_[at_]; }

    const Word& next(const char* what);
    std::string text(const char* what) { return next(what).text; }
    int number(const char* what, int smallest, int largest);
    /// Takes the next word when it is this one.
    bool skip(std::string_view keyword);
    /// Refuses words that are left over.
    void finish() const;

  private:
    std::vector<Word> words_;
    std::size_t at_ = 0;
};

/// `word` as a number in the range; refused with a text that names `what`.
[[nodiscard]] int numberInRange(std::string_view word, const char* what, int smallest, int largest);

} // namespace rsc
