#include "inifile.h"

#include "omplatform.h"

#include <algorithm>

namespace {

constexpr std::size_t kMaxFileSize = 65536;
constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; ///< editors write it unasked

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool sameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

std::string_view withoutQuotes(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

} // namespace

std::string RReadIni(std::string_view path, std::string_view section, std::string_view key,
                     std::size_t limit) {
    const auto text = platform::readFile(OMPlatform().files(), path, kMaxFileSize);
    if (!text) return {};
    std::string_view rest = *text;
    if (rest.starts_with(kByteOrderMark)) rest.remove_prefix(kByteOrderMark.size());
    bool inSection = false;
    while (!rest.empty()) {
        const auto end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = trimmed(rest.substr(0, end));
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.empty() || line.front() == ';') continue;
        if (line.front() == '[') {
            inSection = sameName(trimmed(line.substr(1, line.find(']') - 1)), section);
            continue;
        }
        const auto equals = line.find('=');
        if (!inSection || equals == std::string_view::npos) continue;
        if (sameName(trimmed(line.substr(0, equals)), key))
            return std::string(withoutQuotes(trimmed(line.substr(equals + 1))).substr(0, limit));
    }
    return {};
}
