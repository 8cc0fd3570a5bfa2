#include "player.h"

#include "computedproperties.h"

#include <algorithm>

namespace world {

namespace {

struct StoredNumber {
    std::string_view name;
    bool persistent = true;
};

constexpr StoredNumber kStoredNumbers[] = {
    {"playerLevel"},
    {"playerScore"},
    {"inGame", false}, // about this run of the program
    {"CMASolved"},
    {"OMASolved"},
    {"PWS1Solved"},
    {"PWS2Solved"},
    {"seenCairoMap"},
    {"seenOasisMap"},
    {"seenChooseActivity"},
    {"seenProgressLevels"},
    {"seenLapTrapInGame"},
    {"seenLapTrapInPractice"},
    {"isBackgroundMusicOff"},
};

OMSSetter setterOf(const ComputedProperty& row, PlayerRecord& record) {
    if (!row.write) return nullptr;
    return [&row, &record](std::string_view text) { row.write(record, text); };
}

} // namespace

Property* lastNamed(const Properties& properties, std::string_view name) {
    const auto found = std::find_if(properties.rbegin(), properties.rend(),
                                    [&](const auto& listed) { return listed->name() == name; });
    return found == properties.rend() ? nullptr : found->get();
}

Player::Player(const Properties& templates) {
    stored_.reserve(1 + std::size(kStoredNumbers) + templates.size());
    auto name = std::make_unique<StringProperty>(kPlayerName);
    name_ = name.get();
    stored_.push_back(std::move(name));
    for (const StoredNumber& row : kStoredNumbers)
        stored_.push_back(std::make_unique<IntProperty>(row.name, row.persistent));
    for (const auto& listed : templates) stored_.push_back(listed->clone());

    computed_.reserve(computedProperties().size());
    for (const ComputedProperty& row : computedProperties())
        computed_.push_back(std::make_unique<LinkedProperty>(
            row.name, false, [&row, this] { return row.read(record_); }, setterOf(row, record_)));
}

void Player::addStranger(std::string_view name, std::string_view value) {
    if (!name.empty() && strangers_.size() < kMostStrangers) strangers_.emplace_back(name, value);
}

Property* Player::property(std::string_view name) const {
    Property* found = lastNamed(stored_, name);
    return found ? found : lastNamed(computed_, name);
}

} // namespace world
