#include "platform/initext.h"

#include "formats/base/latin1.h"

#include <algorithm>

namespace platform {

namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF"; // editors write it unasked

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

} // namespace

std::vector<IniEntry> readIniText(std::string_view text) {
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    std::vector<IniEntry> entries;
    std::string_view section;
    for (int number = 1; !text.empty(); ++number) {
        const auto end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == ';' || line.front() == '#') continue;
        if (line.front() == '[') {
            section = trimmed(line.substr(1, line.find(']') - 1));
            continue;
        }
        const auto equals = line.find('=');
        if (equals == std::string_view::npos)
            entries.push_back({number, section, {}, line});
        else
            entries.push_back({number, section, trimmed(line.substr(0, equals)),
                               trimmed(line.substr(equals + 1))});
    }
    return entries;
}

bool sameIniName(std::string_view a, std::string_view b) {
    return formats::lowerAscii(a) == formats::lowerAscii(b);
}

} // namespace platform
