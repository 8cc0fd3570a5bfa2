#include "actiontypes.h"

#include "animact.h"
#include "charact.h"
#include "delayact.h"
#include "mapact.h"
#include "moveact.h"
#include "movieact.h"
#include "objectact.h"
#include "sndact.h"

#include <algorithm>
#include <vector>

namespace {

struct Type {
    std::string_view name;
    ActionTypes::Factory factory;
};

constexpr Type kGameTypes[] = {
    {"AnimAction", &AnimAction::create},
    {"PlayAnimAction", &PlayAnimAction::create},
    {"CharacterAnimAction", &CharacterAnimAction::create},
    {"CharacterSpeechAction", &CharacterSpeechAction::create},
    {"DelayAction", &DelayAction::create},
    {"RandomDelayAction", &RandomDelayAction::create},
    {"EmptyAction", &EmptyAction::create},
    {"MapAction", &MapAction::create},
    {"MoveXAction", &MoveAction::createX},
    {"MoveYAction", &MoveAction::createY},
    {"MoveXYAction", &MoveAction::createXY},
    {"MovieAction", &MovieAction::create},
    {"SoundAction", &SoundAction::create},
    {"VerbAction", &VerbAction::create},
    {"PropertyAction", &PropertyAction::create},
};

std::vector<Type>& types() {
    static std::vector<Type> all;
    return all;
}

} // namespace

void ActionTypes::add(std::string_view name, Factory factory) {
    if (!name.empty() && factory) types().push_back({name, factory});
}

void ActionTypes::clear() { types().clear(); }

std::unique_ptr<Action> ActionTypes::create(std::string_view name, bool interruptible) {
    const auto found = std::ranges::find(types(), name, &Type::name);
    return found == types().end() ? nullptr : found->factory(interruptible);
}

RActionTypes::RActionTypes() {
    for (const Type& type : kGameTypes) ActionTypes::add(type.name, type.factory);
}
