#include "startup/visitdata.h"

#include "ompath.h"
#include "omplatform.h"
#include "startup/configuration.h"
#include "world/safefile.h"
#include "world/savedworld.h"

#include <span>

namespace {

std::string dataFile() { return RConfiguration::findHomeDirectory() + SavedWorld::kDataFile; }

} // namespace

std::string RDataFileBytes() {
    return platform::readFile(OMPlatform().files(), dataFile(), RSafeFile::kLimit).value_or("");
}

std::optional<std::string> RBringDataFile(const std::string& bytes) {
    platform::Files& files = OMPlatform().files();
    const std::string path = dataFile();
    if (files.exists(path) ? RDataFileBytes() == bytes : bytes.empty()) return std::nullopt;
    const std::string own = OMPathWithBackslash(files.currentDirectory());
    if (files.exists(path) && RConfiguration::findHomeDirectory() == own)
        return files.hostName(path) +
               " holds other saved games than those that the visit begins with. The game keeps "
               "them in its own folder, as its ZORBET.INI can be written to: play the visit in a "
               "copy of the game that has neither of these files";
    if (files.exists(path))
        return files.hostName(path) +
               " holds other saved games than those that the visit begins with. They stay as they "
               "are: name an empty folder by --home";
    const auto home = files.claimFolder(RConfiguration::findHomeDirectory()); // makes it
    const auto file = files.open(path, platform::OpenMode::WriteThrough);
    if (file && file->write(std::as_bytes(std::span(bytes)))) return std::nullopt;
    return files.hostName(path) + " cannot be written (" +
           platform::Files::lastRefusal().message() + "); see who may write there";
}
