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
    std::string_view forms;            ///< of the parameters, as in the tables of classes
    std::string_view separator = ", "; ///< in the report, before the first parameter
};

constexpr Type kTypes[] = {
    {"AnimAction", 3, &AnimAction::create,
     "animation z repeatCount [interruptible] (-1: none) | "
     "animation x y z repeatCount [interruptible] (-1: none)"},
    {"PlayAnimAction", 1, &PlayAnimAction::create, "mover [interruptible]"},
    {"CharacterAnimAction", 2, &CharacterAnimAction::create,
     "character animation [repeatCount] [showSettleWhenDone] [interruptible]"},
    {"CharacterSpeechAction", 2, &CharacterSpeechAction::create, "character sound [interruptible]"},
    {"DelayAction", 1, &DelayAction::create, "ms [interruptible]"},
    {"RandomDelayAction", 2, &RandomDelayAction::create, "min max [interruptible]"},
    {"EmptyAction", 0, &EmptyAction::create, "[interruptible]", " - "},
    {"MapAction", 1, &MapAction::create, "map [interruptible]", " - "},
    {"MoveXAction", 6, &MoveAction::createAlong<Direction::X>,
     "mover trinket initial velocity acceleration final [interruptible]", " - "},
    {"MoveYAction", 6, &MoveAction::createAlong<Direction::Y>,
     "mover trinket initial velocity acceleration final [interruptible]", " - "},
    {"MoveXYAction", 10, &MoveAction::createAlong<Direction::X, Direction::Y>,
     "mover trinket initial velocity acceleration final initial velocity acceleration final "
     "[interruptible]",
     " - "},
    {"MovieAction", 1, &MovieAction::create,
     "file [extraBufferMemory] [useMoviePalette] [cache] [interruptible]"},
    {"SoundAction", 1, &SoundAction::create, "sound [streamed] [interruptible]"},
    {"VerbAction", 3, &VerbAction::create, "object interruptible method [parameters]"},
    {"PropertyAction", 3, &PropertyAction::create, "object property value [interruptible]"},
};

const Type* typeNamed(std::string_view name) {
    const auto* found = std::ranges::find(kTypes, name, &Type::name);
    return found == std::end(kTypes) ? nullptr : found;
}

} // namespace

std::optional<std::string_view> Action::parametersOf(std::string_view type) {
    const Type* found = typeNamed(type);
    return found ? std::optional(found->forms) : std::nullopt;
}

std::vector<std::string_view> Action::types() {
    std::vector<std::string_view> names;
    for (const Type& type : kTypes) names.push_back(type.name);
    return names;
}

std::unique_ptr<Action> Action::ofType(std::string_view type, bool interruptible) {
    const Type* found = typeNamed(type);
    if (!found) return nullptr;
    ActionParameters parameters(type, interruptible, found->separator);
    if (!parameters.areAtLeast(found->least)) return nullptr;
    std::unique_ptr<Action> action = found->create(parameters);
    if (action) parameters.report();
    return action;
}
