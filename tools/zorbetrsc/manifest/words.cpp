#include "manifest/words.h"

#include "refusal.h"
#include "text.h"

namespace rsc {

namespace {

constexpr std::string_view kBlanks = " \t\r\v\f";

/// The word in front of `rest`, which is not empty and does not begin with a blank.
Word takeWord(std::string_view& rest) {
    if (rest.front() != '"') {
        const std::string_view text = rest.substr(0, rest.find_first_of(kBlanks));
        rest.remove_prefix(text.size());
        return {std::string(text), false};
    }
    const std::size_t end = rest.find('"', 1);
    if (end == std::string_view::npos) throw Refusal("a quotation mark (\") has no partner");
    const std::string_view text = rest.substr(1, end - 1);
    rest.remove_prefix(end + 1);
    return {std::string(text), true};
}

} // namespace

std::vector<Word> splitWords(std::string_view line) {
    std::vector<Word> words;
    for (;;) {
        const std::size_t start = line.find_first_not_of(kBlanks);
        if (start == std::string_view::npos || line[start] == '#') return words;
        line.remove_prefix(start);
        words.push_back(takeWord(line));
    }
}

std::optional<std::string> asName(std::string_view text) {
    if (text.find('"') != std::string_view::npos || text.find('\n') != std::string_view::npos)
        return std::nullopt;
    const bool plain = !text.empty() && text.front() != '#' && text != "none" &&
                       text.find_first_of(kBlanks) == std::string_view::npos;
    return plain ? std::string(text) : inQuotes(text);
}

const Word& WordReader::next(const char* what) {
    if (atEnd()) throw Refusal(std::string(what) + " is missing");
    return words_[at_++];
}

int WordReader::number(const char* what, int smallest, int largest) {
    return numberInRange(next(what).text, what, smallest, largest);
}

bool WordReader::skip(std::string_view keyword) {
    if (atEnd() || !words_[at_].is(keyword)) return false;
    ++at_;
    return true;
}

void WordReader::finish() const {
    if (!atEnd()) throw Refusal(inQuotes(words_[at_].text) + " is more than belongs on this line");
}

int numberInRange(std::string_view word, const char* what, int smallest, int largest) {
    const auto number = parseNumber(word);
    if (!number) throw Refusal(std::string(what) + ": " + inQuotes(word) + " is no number");
    if (*number < smallest || *number > largest) {
        throw Refusal(std::string(what) + " is " + std::to_string(*number) + ", allowed is " +
                      std::to_string(smallest) + " to " + std::to_string(largest));
    }
    return *number;
}

} // namespace rsc
