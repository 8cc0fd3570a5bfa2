#include "startup/configuration.h"

#include "omlog.h"
#include "ompath.h"
#include "omplatform.h"
#include "omsarguments.h"

#include "platform/initext.h"

namespace {

constexpr std::string_view kIniFile = "ZORBET.INI";
constexpr std::string_view kSection = "Zorbet Voyages - CD";
constexpr std::string_view kDefaultCdDrive = "D:\\";
constexpr std::size_t kMaxValue = 100;
constexpr std::size_t kMaxIniSize = 65536;

std::string_view withoutQuotes(std::string_view value) {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

/// Empty when the file, the section or the key is missing. Blanks around the value and one pair of
/// quotes around all of it do not count.
std::string valueOf(std::string_view key, const std::string& file) {
    const auto text = platform::readFile(OMPlatform().files(), file, kMaxIniSize);
    if (!text) return {};
    for (const platform::IniEntry& entry : platform::readIniText(*text))
        if (platform::sameIniName(entry.section, kSection) && platform::sameIniName(entry.key, key))
            return std::string(withoutQuotes(entry.value).substr(0, kMaxValue));
    return {};
}

} // namespace

std::string RConfiguration::findHomeDirectory() {
    platform::Files& files = OMPlatform().files();
    const std::string current = OMPathWithBackslash(files.currentDirectory());
    const std::string ini = current + std::string(kIniFile);
    if (files.exists(ini) && files.isWritable(ini)) return current;
    return OMPathWithBackslash(files.homeDirectory());
}

RConfiguration RConfiguration::read(std::string homeDirectory) {
    RConfiguration configuration;
    configuration.iniFile =
        OMPathWithBackslash(OMPlatform().files().currentDirectory()) + std::string(kIniFile);
    configuration.homeDirectory = std::move(homeDirectory);
    OMLog::writef(OMLog::Kind::Message, "Using for .INI file: %s", configuration.iniFile.c_str());
    const auto value = [&](std::string_view key) { return valueOf(key, configuration.iniFile); };
    configuration.useDirectDraw = OMSToInteger(value("UseDirectDraw")) != 0;
    configuration.displayFullScreen = OMSToInteger(value("DisplayFullScreen")) != 0;
    configuration.cdDrive = value("CDDrive");
    if (configuration.cdDrive.empty()) {
        configuration.cdDrive = kDefaultCdDrive;
        OMLog::write(OMLog::Kind::Message, "CD Drive not found");
    }
    OMLog::writef(OMLog::Kind::Message, "Using CD Drive: %s", configuration.cdDrive.c_str());
    return configuration;
}
