#include "formats/base/scanner.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace formats {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kLineEnds = "\r\n";

bool isControl(char c) { return static_cast<unsigned char>(c) < ' '; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

} // namespace

std::string_view TextScanner::line(std::size_t limit) {
    while (!rest_.empty()) {
        const std::string_view whole = takeLine();
        if (whole.find_first_not_of(kBlanks) != std::string_view::npos)
            return whole.substr(0, limit);
    }
    return {};
}

std::string_view TextScanner::takeLine() {
    const std::string_view whole = rest_.substr(0, rest_.find_first_of(kLineEnds));
    rest_.remove_prefix(whole.size());
    if (rest_.starts_with("\r\n"))
        rest_.remove_prefix(2);
    else if (!rest_.empty())
        rest_.remove_prefix(1);
    ++lineNumber_;
    return whole;
}

void TextScanner::skipBlanks() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
}

void TextScanner::skipControls() {
    while (!rest_.empty() && isControl(rest_.front())) rest_.remove_prefix(1);
}

bool TextScanner::literal(std::string_view text) {
    skipBlanks();
    if (!rest_.starts_with(text)) return false;
    rest_.remove_prefix(text.size());
    return true;
}

std::optional<int> TextScanner::number() {
    skipBlanks();
    const bool plus = rest_.size() > 1 && rest_[0] == '+' && isDigit(rest_[1]);
    if (plus) rest_.remove_prefix(1);
    int value = 0;
    const char* end = rest_.data() + rest_.size();
    const auto [stop, error] = std::from_chars(rest_.data(), end, value);
    rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
    if (error != std::errc()) return std::nullopt;
    return value;
}

std::string_view TextScanner::take(std::size_t count) {
    const std::string_view result = rest_.substr(0, count);
    rest_.remove_prefix(result.size());
    return result;
}

std::string_view TextScanner::word() {
    skipBlanks();
    const auto stop =
        std::find_if(rest_.begin(), rest_.end(), [](char c) { return c == ' ' || isControl(c); });
    const std::string_view result = rest_.substr(0, static_cast<std::size_t>(stop - rest_.begin()));
    rest_.remove_prefix(result.size());
    return result;
}

} // namespace formats
