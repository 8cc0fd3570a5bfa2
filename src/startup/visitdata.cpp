#include "startup/visitdata.h"

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
