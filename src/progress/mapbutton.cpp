#include "progress/mapbutton.h"

#include <utility>

MapButton::MapButton(OMTrinketWindow& window, std::shared_ptr<AOImage> image, int id, int x, int y,
                     int location)
    : LapTrapButton(window, std::move(image), id, x, y), location_(location) {}

void MapButton::update(bool isHere, int visits) {
    look_ = isHere ? Look::Here : visits >= 1 ? Look::Visited : Look::NeverVisited;
    showState(static_cast<int>(look_));
}
