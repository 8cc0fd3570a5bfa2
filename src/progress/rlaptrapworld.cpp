#include "progress/rlaptrapworld.h"

#include "omsarguments.h"
#include "progress/rlaptraprule.h"
#include "world/locations.h"
#include "world/rworldport.h"
#include "world/worldmemory.h"

namespace {

void fillArguments(std::initializer_list<std::string_view> arguments) {
    OMSArguments& list = OMSArguments::global();
    list.clear();
    for (const std::string_view argument : arguments) list.push(argument);
}

} // namespace

LapTrapWorld::LapTrapWorld() {
    world::WorldMemory* memory = world::WorldMemory::current();
    if (!memory) return;
    port_ = std::make_unique<RWorldPort>(*memory);
    port_->declareProperties();
}

LapTrapWorld::~LapTrapWorld() = default;

bool LapTrapWorld::hasPlayer() const { return port_ && port_->hasProperty("playerName"); }

std::string LapTrapWorld::read(std::string_view property, Words arguments) {
    if (!port_) return {};
    fillArguments(arguments);
    return port_->getProperty(property).value_or("");
}

void LapTrapWorld::write(std::string_view property, Words arguments, int value) {
    if (!port_) return;
    fillArguments(arguments);
    port_->setProperty(property, oms::toText(value));
}

std::string LapTrapWorld::readAt(int location, std::string_view property) {
    const std::string_view name = world::locationName(location);
    return name.empty() ? std::string() : read(property, {name});
}

void LapTrapWorld::writeAt(int location, std::string_view property, int value) {
    const std::string_view name = world::locationName(location);
    if (!name.empty()) write(property, {name}, value);
}

// Of the player

std::string LapTrapWorld::playerName() { return read("playerName", {}); }

bool LapTrapWorld::isInGame() { return isSet("inGame"); }

int LapTrapWorld::currentLocation() { return world::locationNamed(read("currentLocation", {})); }

bool LapTrapWorld::isMusicOff() { return isSet("isBackgroundMusicOff"); }

void LapTrapWorld::setMusicOff(bool off) { write("isBackgroundMusicOff", {}, off ? 1 : 0); }

bool LapTrapWorld::isSet(std::string_view flag) { return OMSToInteger(read(flag, {})) != 0; }

void LapTrapWorld::set(std::string_view flag) { write(flag, {}, 1); }

// Of a location

std::optional<int> LapTrapWorld::currentLevel(int location) {
    const std::string level = readAt(location, "currentLevel");
    return level.empty() ? std::nullopt : std::optional(OMSToInteger(level));
}

void LapTrapWorld::setCurrentLevel(int location, int level) {
    writeAt(location, "currentLevel", level);
}

int LapTrapWorld::levelColor(int location, int level) {
    const std::string_view name = world::locationName(location);
    return name.empty() ? 0 : OMSToInteger(read("levelColor", {oms::toText(level), name}));
}

bool LapTrapWorld::isAutoLeveling(int location) {
    return OMSToInteger(readAt(location, "isAutoLevelingEnabled")) != 0;
}

void LapTrapWorld::setAutoLeveling(int location, bool on) {
    writeAt(location, "isAutoLevelingEnabled", on ? 1 : 0);
}

int LapTrapWorld::visits(int location) { return OMSToInteger(readAt(location, "visitedCount")); }

bool LapTrapWorld::isSolved(int location) {
    const std::string_view name = world::locationName(location);
    return RHasSolvedFlag(name) && isSet(std::string(name) + "Solved");
}
