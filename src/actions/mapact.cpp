#include "mapact.h"

#include "actionparameters.h"
#include "activities/rmap.h"

MapAction::MapAction(RMap& map, bool interruptible) : Action(interruptible), map_(&map) {}

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

RMap* MapAction::map() const { return static_cast<RMap*>(map_.object()); }

void MapAction::begin() {
    if (map_)
        map()->move(doneLink());
    else
        finish();
}

void MapAction::end(End how) {
    if (how == End::Halted && map_) map()->interruptMove();
}

void MapAction::hold() {
    if (map_) map()->pause();
}

void MapAction::goOn() {
    if (map_) map()->resume();
}
