#include "progress/rlaptrapworld.h"

#include "omsarguments.h"

LapTrapWorld::LapTrapWorld()
    : memory_(world::WorldMemory::current()),
      player_(memory_ ? memory_->currentPlayer() : nullptr) {
    if (memory_) memory_->addView(*this);
}

LapTrapWorld::~LapTrapWorld() {
    if (memory_) memory_->removeView(*this);
}

void LapTrapWorld::playerGoes(const world::Player& player) {
    if (player_ == &player) player_ = nullptr;
}

void LapTrapWorld::memoryGoes() {
    memory_ = nullptr;
    player_ = nullptr;
}

// Of the player

std::string LapTrapWorld::playerName() const { return player_ ? player_->name() : std::string(); }

int LapTrapWorld::currentLocation() const {
    const int location = player_ ? player_->record().currentLocation : world::kNowhere;
    return world::locationName(location).empty() ? world::kNowhere : location;
}

bool LapTrapWorld::isSet(std::string_view flag) const {
    auto value = player_ ? player_->value(flag) : std::nullopt;
    if (!value && memory_)
        if (const world::Property* global = memory_->global(flag)) value = global->text();
    return OMSToInteger(value.value_or("")) != 0;
}

void LapTrapWorld::set(std::string_view flag, bool on) {
    const std::string_view value = on ? "1" : "0";
    if (player_ && player_->setValue(flag, value)) return;
    if (world::Property* global = memory_ ? memory_->global(flag) : nullptr) global->setText(value);
}

// Of a location

std::optional<world::Leveled> LapTrapWorld::at(int location) const {
    return player_ ? player_->record().leveled(location) : std::nullopt;
}

std::optional<int> LapTrapWorld::currentLevel(int location) const {
    const auto place = at(location);
    return place ? std::optional(place->currentLevel) : std::nullopt;
}

void LapTrapWorld::setCurrentLevel(int location, int level) {
    if (player_) player_->record().setCurrentLevel(location, level);
}

int LapTrapWorld::levelColor(int location, int level) const {
    const auto place = at(location);
    const std::int32_t* color = place ? world::ofLevel(place->color, level) : nullptr;
    return color ? *color : 0;
}

bool LapTrapWorld::isAutoLeveling(int location) const {
    const auto place = at(location);
    return place && place->autoLeveling != 0;
}

void LapTrapWorld::setAutoLeveling(int location, bool on) {
    if (const auto place = at(location)) place->autoLeveling = on ? 1 : 0;
}

int LapTrapWorld::visits(int location) const {
    const std::int32_t* visits = player_ ? player_->record().visited(location) : nullptr;
    return visits ? *visits : 0;
}

bool LapTrapWorld::isSolved(int location) const {
    const std::string_view name = world::locationName(location);
    return RHasSolvedFlag(name) && isSet(std::string(name) + "Solved");
}
