#include "zorbetmps/check/vocabulary.h"

#include "zorbetmps/check/nearest.h"
#include "zorbetmps/words.h"

#include "commands/commands.h"
#include "omsclass.h"
#include "world/computedproperties.h"
#include "world/player.h"
#include "world/rworldport.h"

#include <algorithm>

namespace mps {

namespace {

/// Of the language itself.
constexpr std::string_view kStatements[] = {
    "if",   "else", "for",   "procedure", "call", "break", "continue", "yield",
    "play", "set",  "get",   "suspend",   "drop", "say",   "resume",   "schedule",
    "idle", "wait", "pause", "relay",     "exit", "debug", "quit",     "include"};

} // namespace

Vocabulary::Vocabulary() {
    for (const OMSClass* known : allClasses())
        if (!known->name.empty()) classes_[known->name] = known;
    for (const RCommandWords& command : RCommands::words())
        commands_[command.name] = command.arguments;
    const world::Player player;
    for (const auto& property : player.stored()) playerProperties_.emplace_back(property->name());
    for (const world::ComputedProperty& row : world::computedProperties())
        playerProperties_.emplace_back(row.name);
}

const OMSClass* Vocabulary::classNamed(std::string_view name) const {
    const auto found = classes_.find(name);
    return found == classes_.end() ? nullptr : found->second;
}

const OMSEntry* Vocabulary::find(const OMSClass& known, std::string_view name) {
    if (const OMSEntry* row = known.find(name)) return row;
    for (const OMSClass* from = &known; from; from = from->base)
        for (const OMSEntry& row : from->passing)
            if (row.name == name) return &row;
    return nullptr;
}

bool Vocabulary::isOpen(const OMSClass& known) { return &known == &RWorldPort::kClass; }

bool Vocabulary::isOfPlayers(std::string_view name) const {
    return std::ranges::find(playerProperties_, name) != playerProperties_.end();
}

const std::string_view* Vocabulary::command(std::string_view name) const {
    const auto found = commands_.find(name);
    return found == commands_.end() ? nullptr : &found->second;
}

std::string Vocabulary::nearClass(std::string_view word) const {
    std::vector<std::string_view> names;
    for (const auto& [name, known] : classes_)
        if (known->create) names.push_back(name);
    return didYouMean(word, names);
}

std::string Vocabulary::nearCommand(std::string_view word) const {
    std::vector<std::string_view> names(std::begin(kStatements), std::end(kStatements));
    for (const auto& [name, arguments] : commands_) names.push_back(name);
    return didYouMean(word, names);
}

std::string Vocabulary::nearEntry(const Classes& classes, Kind kind, std::string_view word) const {
    std::vector<std::string_view> names;
    for (const OMSClass* known : classes) {
        for (const OMSClass* from = known; from; from = from->base)
            for (const auto& rows : {from->vocabulary, from->passing})
                for (const OMSEntry& row : rows)
                    if (row.kind == kind) names.push_back(row.name);
        if (isOpen(*known) && kind == Kind::Data)
            names.insert(names.end(), playerProperties_.begin(), playerProperties_.end());
    }
    return didYouMean(word, names);
}

} // namespace mps
