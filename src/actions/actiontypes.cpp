// The types of actions that scripts name when they add one to a container.
#include "actionparameters.h"
#include "animact.h"
#include "delayact.h"
#include "moveact.h"
#include "movieact.h"
#include "objectact.h"
#include "sndact.h"

#include <algorithm>
#include <iterator>

namespace {

using Direction = MoveAction::Direction;

struct Type {
    std::string_view name;
    std::size_t least; ///< parameters
    std::unique_ptr<Action> (*create)(ActionParameters& parameters);
    std::string_view separator = ", "; ///< in the report, before the first parameter
};

constexpr Type kTypes[] = {
    {"AnimAction", 3, &AnimAction::create},
    {"PlayAnimAction", 1, &PlayAnimAction::create},
    {"CharacterAnimAction", 2, &CharacterAnimAction::create},
    {"CharacterSpeechAction", 2, &CharacterSpeechAction::create},
    {"DelayAction", 1, &DelayAction::create},
    {"RandomDelayAction", 2, &RandomDelayAction::create},
    {"EmptyAction", 0, &EmptyAction::create, " - "},
    {"MapAction", 1, &MapAction::create, " - "},
    {"MoveXAction", 6, &MoveAction::createAlong<Direction::X>, " - "},
    {"MoveYAction", 6, &MoveAction::createAlong<Direction::Y>, " - "},
    {"MoveXYAction", 10, &MoveAction::createAlong<Direction::X, Direction::Y>, " - "},
    {"MovieAction", 1, &MovieAction::create},
    {"SoundAction", 1, &SoundAction::create},
    {"VerbAction", 3, &VerbAction::create},
    {"PropertyAction", 3, &PropertyAction::create},
};

} // namespace

std::unique_ptr<Action> Action::ofType(std::string_view type, bool interruptible) {
    const auto* found = std::ranges::find(kTypes, type, &Type::name);
    if (found == std::end(kTypes)) return nullptr;
    ActionParameters parameters(type, interruptible, found->separator);
    if (!parameters.areAtLeast(found->least)) return nullptr;
    std::unique_ptr<Action> action = found->create(parameters);
    if (action) parameters.report();
    return action;
}
