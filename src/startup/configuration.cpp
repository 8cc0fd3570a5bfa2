#include "startup/configuration.h"

#include "omlog.h"
#include "ompath.h"
#include "omplatform.h"
#include "omsarguments.h"
#include "startup/inifile.h"

namespace {

constexpr std::string_view kIniFile = "ZORBET.INI";
constexpr std::string_view kSection = "Zorbet Voyages - CD";
constexpr std::string_view kDefaultCdDrive = "D:\\";
constexpr std::size_t kMaxValue = 100;

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
    const auto value = [&](std::string_view key) {
        return RReadIni(configuration.iniFile, kSection, key, kMaxValue);
    };
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
