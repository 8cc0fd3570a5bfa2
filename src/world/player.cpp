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

const ComputedProperty* computedNamed(std::string_view name) {
    const auto all = computedProperties();
    const auto found = std::ranges::find(all, name, &ComputedProperty::name);
    return found == all.end() ? nullptr : &*found;
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
}

void Player::addStranger(std::string_view name, std::string_view value) {
    if (!name.empty() && strangers_.size() < kMostStrangers) strangers_.emplace_back(name, value);
}

std::optional<std::string> Player::value(std::string_view name) {
    if (const Property* own = lastNamed(stored_, name)) return own->text();
    const ComputedProperty* computed = computedNamed(name);
    OMSArguments none;
    return computed ? std::optional(computed->read(record_, none)) : std::nullopt;
}

bool Player::setValue(std::string_view name, std::string_view value) {
    if (Property* own = lastNamed(stored_, name)) {
        own->setText(value);
        return true;
    }
    const ComputedProperty* computed = computedNamed(name);
    OMSArguments none;
    if (computed && computed->write) computed->write(record_, none, value);
    return computed != nullptr;
}

} // namespace world
