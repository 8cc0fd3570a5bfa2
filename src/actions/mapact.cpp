#include "mapact.h"

#include "actionparameters.h"

std::unique_ptr<Action> MapAction::create(bool byDefault) {
    ActionParameters parameters("MapAction", byDefault, " - ");
    if (!parameters.areAtLeast(1)) return nullptr;
    const std::string name = parameters.text("RMap variable name");
    const bool interruptible = parameters.interruptible();
    auto* map = parameters.object<RMap>(name, "map");
    if (!map) return nullptr;
    parameters.report();
    return std::make_unique<MapAction>(*map, interruptible);
}
