#include "startup/inifile.h"

#include "omplatform.h"

#include "platform/initext.h"

namespace {

constexpr std::size_t kMaxIniSize = 65536;

std::string_view withoutQuotes(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

} // namespace

std::string RReadIni(std::string_view path, std::string_view section, std::string_view key,
                     std::size_t limit) {
    const auto text = platform::readFile(OMPlatform().files(), path, kMaxIniSize);
    if (!text) return {};
    for (const platform::IniEntry& entry : platform::readIniText(*text))
        if (platform::sameIniName(entry.section, section) && platform::sameIniName(entry.key, key))
            return std::string(withoutQuotes(entry.value).substr(0, limit));
    return {};
}
