// The types of actions that scripts name when they add one to a container.
#include "animact.h"
#include "charact.h"
#include "delayact.h"
#include "mapact.h"
#include "moveact.h"
#include "movieact.h"
#include "objectact.h"
#include "sndact.h"

#include <algorithm>
#include <iterator>

namespace {

using Factory = std::unique_ptr<Action> (*)(bool interruptible);

struct Type {
    std::string_view name;
    Factory factory;
};

constexpr Type kTypes[] = {
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

} // namespace

std::unique_ptr<Action> Action::ofType(std::string_view type, bool interruptible) {
    const auto* found = std::ranges::find(kTypes, type, &Type::name);
    return found == std::end(kTypes) ? nullptr : found->factory(interruptible);
}
