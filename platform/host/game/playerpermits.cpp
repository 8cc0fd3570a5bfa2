#include "platform/host/game/playerpermits.h"

#include "platform/host/files/userfolders.h"
#include "platform/initext.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace platform {

namespace {

constexpr std::streamsize kMaxPermitsSize = 65536;

std::string realName(const std::string& folder) {
    std::error_code error;
    return std::filesystem::weakly_canonical(folder.empty() ? "." : folder, error).string();
}

} // namespace

std::string permitsFile() { return userConfigurationFolder() + "/games.ini"; }

bool permitsComponents(const std::string& content) {
    std::ifstream file(permitsFile(), std::ios::binary);
    std::string text(static_cast<std::size_t>(kMaxPermitsSize), '\0');
    file.read(text.data(), kMaxPermitsSize);
    text.resize(static_cast<std::size_t>(file.gcount()));
    const std::string game = realName(content);
    bool permitted = false;
    for (const IniEntry& entry : readIniText(text))
        if (sameIniName(entry.key, "components") && entry.section.starts_with('/') &&
            realName(std::string(entry.section)) == game)
            permitted = sameIniName(entry.value, "yes");
    return permitted;
}

} // namespace platform
