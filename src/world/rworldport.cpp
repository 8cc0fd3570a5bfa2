#include "rworldport.h"

#include "omsclass.h"
#include "rules.h"

using world::IntProperty;
using world::PlayerRecord;
using world::StringProperty;
using world::Thresholds;
using world::WorldMemory;

namespace {

constexpr OMSEntry kRWorldPortVocabulary[] = {
    oms::readOnly<&RWorldPort::playersCount>("playersCount", "how many players there are"),
    oms::data<&RWorldPort::threshold<&Thresholds::a>, &RWorldPort::setThreshold<&Thresholds::a>>(
        "wsAutoLevelingA", "[activity]"),
    oms::data<&RWorldPort::threshold<&Thresholds::b>, &RWorldPort::setThreshold<&Thresholds::b>>(
        "wsAutoLevelingB", "[activity]"),
    oms::data<&RWorldPort::threshold<&Thresholds::x>, &RWorldPort::setThreshold<&Thresholds::x>>(
        "wsAutoLevelingX", "[activity]"),
    oms::data<&RWorldPort::threshold<&Thresholds::y>, &RWorldPort::setThreshold<&Thresholds::y>>(
        "wsAutoLevelingY", "[activity]"),
    oms::method<&RWorldPort::addGlobal<IntProperty>>("addGlobalIntProperty", "name [stored]"),
    oms::method<&RWorldPort::addGlobal<StringProperty>>("addGlobalStringProperty", "name [stored]"),
    oms::method<&RWorldPort::addTemplate<IntProperty>>("addIntProperty", "name [stored]"),
    oms::method<&RWorldPort::addTemplate<StringProperty>>("addStringProperty", "name [stored]"),
    oms::method<&RWorldPort::activateDataFile>("activateDataFile"),
    oms::method<&RWorldPort::activatePlayer>("activatePlayer", "name"),
    oms::method<&RWorldPort::removePlayer>("removePlayer", "name"),
};

/// There while a player is shown.
constexpr OMSEntry kPlayerVocabulary[] = {
    oms::method<&RWorldPort::addObject>("addObject", "item location"),
    oms::method<&RWorldPort::autoLevel>("autoLevel", "location"),
    oms::method<&RWorldPort::backpackAddObject>("backpackAddObject", "item"),
    oms::method<&RWorldPort::backpackRemoveObject>("backpackRemoveObject", "slot"),
    oms::method<&RWorldPort::correctGuess>("correctGuess", "location"),
    oms::method<&RWorldPort::distributeItems>("distributeItems"),
    oms::method<&RWorldPort::incorrectGuess>("incorrectGuess", "location"),
    oms::method<&RWorldPort::newGame>("newGame"),
    oms::method<&RWorldPort::removeNextObjectFromQueue>("removeNextObjectFromQueue", "location"),
    oms::method<&RWorldPort::removeObjectFromLocation>("removeObjectFromLocation", "item location"),
};

} // namespace

const OMSClass RWorldPort::kClass{"RWorldPort",
                                  &OMScriptableObject::kClass,
                                  kRWorldPortVocabulary,
                                  &RWorldPort::createFromScript,
                                  "[0]",
                                  kPlayerVocabulary};

// ---------------------------------------------------------------------------- life

RWorldPort::RWorldPort(WorldMemory& memory) : memory_(&memory) { memory.addView(*this); }

void RWorldPort::onRetire() {
    if (memory_) memory_->removeView(*this);
}

std::unique_ptr<OMScriptableObject> RWorldPort::createFromScript() {
    WorldMemory* memory = WorldMemory::current();
    return memory ? std::make_unique<RWorldPort>(*memory) : nullptr;
}

std::unique_ptr<OMScriptableObject> RWorldPort::duplicate() {
    return memory_ ? std::make_unique<RWorldPort>(*memory_) : nullptr;
}

void RWorldPort::declareProperties() {
    for (const auto& property : memory_->globals()) show(*property);
    showCurrentPlayer();
}

// ---------------------------------------------------------------------------- what is shown

void RWorldPort::show(world::Property& property) {
    addDataProperty(
        property.name(), [&property](std::string_view text) { property.setText(text); },
        [&property] { return property.text(); });
}

void RWorldPort::show(const world::ComputedProperty& row) {
    PlayerRecord& record = player_->record();
    OMSSetter setter;
    if (row.write)
        setter = [&row, &record](std::string_view text) {
            row.write(record, OMSArguments::global(), text);
        };
    addDataProperty(row.name, std::move(setter),
                    [&row, &record] { return row.read(record, OMSArguments::global()); });
}

void RWorldPort::showCurrentPlayer() {
    if (player_ == memory_->currentPlayer()) return;
    withdrawPlayer();
    player_ = memory_->currentPlayer();
    if (!player_) return;
    for (const auto& property : player_->stored()) show(*property);
    for (const world::ComputedProperty& row : world::computedProperties()) show(row);
    for (const OMSEntry& row : kClass.passing) addEntry(row);
}

void RWorldPort::withdrawPlayer() {
    if (!player_) return;
    for (const auto& property : player_->stored()) removeProperty(property->name());
    for (const world::ComputedProperty& row : world::computedProperties()) removeProperty(row.name);
    for (const OMSEntry& row : kClass.passing) removeProperty(row.name);
    player_ = nullptr;
    if (!memory_) return;
    // A global that stood behind a property of the player is seen again.
    for (const auto& property : memory_->globals())
        if (!hasProperty(property->name())) show(*memory_->global(property->name()));
}

void RWorldPort::playerGoes(const world::Player& player) {
    if (player_ == &player) withdrawPlayer();
}

void RWorldPort::memoryGoes() {
    withdrawPlayer();
    for (const auto& property : memory_->globals()) removeProperty(property->name());
    memory_ = nullptr;
}

// ---------------------------------------------------------------------------- the memory

int RWorldPort::playersCount() const {
    return memory_ ? static_cast<int>(memory_->playersCount()) : 0;
}

Thresholds* RWorldPort::namedThresholds() const {
    const int location = world::locationNamed(OMSArguments::global().next());
    return memory_ ? memory_->thresholds(location) : nullptr;
}

template <int Thresholds::*Threshold>
std::string RWorldPort::threshold() {
    const Thresholds* thresholds = namedThresholds();
    return thresholds ? oms::toText(thresholds->*Threshold) : std::string();
}

template <int Thresholds::*Threshold>
void RWorldPort::setThreshold(int value) {
    if (Thresholds* thresholds = namedThresholds()) thresholds->*Threshold = value;
}

template <class Property>
void RWorldPort::addGlobal(const std::string& name, std::optional<int> persistent) {
    if (!memory_) return;
    show(memory_->addGlobal(std::make_unique<Property>(name, persistent.value_or(1) != 0)));
}

template <class Property>
void RWorldPort::addTemplate(const std::string& name, std::optional<int> persistent) {
    if (memory_)
        memory_->addTemplate(std::make_unique<Property>(name, persistent.value_or(1) != 0));
}

void RWorldPort::activateDataFile() {
    if (memory_) memory_->activateDataFile();
}

void RWorldPort::activatePlayer(const std::string& name) {
    if (!memory_) return;
    memory_->activatePlayer(name);
    showCurrentPlayer();
}

void RWorldPort::removePlayer(const std::string& name) {
    if (!memory_) return;
    memory_->removePlayer(name);
    showCurrentPlayer();
}

// ---------------------------------------------------------------------------- the player

void RWorldPort::addObject(int item, const std::string& location) {
    PlayerRecord& record = player_->record();
    world::addItem(record.items(world::locationOf(record, location)), item);
}

void RWorldPort::autoLevel(const std::string& location) {
    PlayerRecord& record = player_->record();
    const int place = world::locationOf(record, location);
    const Thresholds* thresholds = memory_->thresholds(place);
    world::autoLevel(record, place, thresholds ? *thresholds : Thresholds(), world::reportMessage);
}

void RWorldPort::backpackAddObject(int item) { world::addItem(player_->record().backpack, item); }

void RWorldPort::backpackRemoveObject(int slot) {
    auto& backpack = player_->record().backpack;
    if (slot >= 0 && slot < std::ssize(backpack))
        backpack[static_cast<std::size_t>(slot)] = world::kNoItem;
}

void RWorldPort::recordGuess(const std::string& location, bool correct) {
    PlayerRecord& record = player_->record();
    if (auto* activity = record.activity(world::locationOf(record, location)))
        world::recordGuess(*activity, correct);
}

void RWorldPort::correctGuess(const std::string& location) { recordGuess(location, true); }

void RWorldPort::incorrectGuess(const std::string& location) { recordGuess(location, false); }

void RWorldPort::distributeItems() {
    world::distributeItems(player_->record(), world::reportMessage);
}

void RWorldPort::newGame() { world::newGame(player_->record(), world::reportMessage); }

void RWorldPort::removeNextObjectFromQueue(const std::string& location) {
    PlayerRecord& record = player_->record();
    if (auto* activity = record.activity(world::locationOf(record, location)))
        world::removeNextFromQueue(*activity);
}

void RWorldPort::removeObjectFromLocation(int item, const std::string& location) {
    PlayerRecord& record = player_->record();
    world::removeItem(record.items(world::locationOf(record, location)), item);
}
