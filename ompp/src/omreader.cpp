#include "omreader.h"

#include <algorithm>
#include <charconv>

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kLineEnds = "\r\n";

bool isControl(char c) { return static_cast<unsigned char>(c) < ' '; }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

} // namespace

void OMReader::seek(std::size_t position) {
    if (position > bytes_.size()) ok_ = false;
    position_ = std::min(position, bytes_.size());
}

std::span<const std::byte> OMReader::bytes(std::size_t count) {
    if (!ok_ || count > remaining()) {
        ok_ = false;
        position_ = bytes_.size();
        return {};
    }
    const auto result = bytes_.subspan(position_, count);
    position_ += count;
    return result;
}

std::string_view OMReader::text(std::size_t count) {
    const auto characters = bytes(count);
    return {reinterpret_cast<const char*>(characters.data()), characters.size()};
}

std::uint32_t OMReader::number(std::size_t count) {
    const auto source = bytes(count);
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < source.size(); ++i) {
        const std::size_t place = order_ == std::endian::little ? i : source.size() - 1 - i;
        value |= std::to_integer<std::uint32_t>(source[i]) << (8 * place);
    }
    return value;
}

std::string_view OMScanner::line(std::size_t limit) {
    while (!rest_.empty()) {
        const std::string_view whole = takeLine();
        if (whole.find_first_not_of(kBlanks) != std::string_view::npos)
            return whole.substr(0, limit);
    }
    return {};
}

std::string_view OMScanner::takeLine() {
    const std::string_view whole = rest_.substr(0, rest_.find_first_of(kLineEnds));
    rest_.remove_prefix(whole.size());
    if (rest_.starts_with("\r\n"))
        rest_.remove_prefix(2);
    else if (!rest_.empty())
        rest_.remove_prefix(1);
    ++lineNumber_;
    return whole;
}

void OMScanner::skipBlanks() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
}

void OMScanner::skipControls() {
    while (!rest_.empty() && isControl(rest_.front())) rest_.remove_prefix(1);
}

bool OMScanner::literal(std::string_view text) {
    skipBlanks();
    if (!rest_.starts_with(text)) return false;
    rest_.remove_prefix(text.size());
    return true;
}

std::optional<int> OMScanner::number() {
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

std::string_view OMScanner::take(std::size_t count) {
    const std::string_view result = rest_.substr(0, count);
    rest_.remove_prefix(result.size());
    return result;
}

std::string_view OMScanner::word() {
    skipBlanks();
    const auto stop =
        std::find_if(rest_.begin(), rest_.end(), [](char c) { return c == ' ' || isControl(c); });
    const std::string_view result = rest_.substr(0, static_cast<std::size_t>(stop - rest_.begin()));
    rest_.remove_prefix(result.size());
    return result;
}
