#include "omsarea.h"

#include "omsarguments.h"
#include "omtrinket.h"

#include <algorithm>

OMSArea OMSArea::read(bool anyLength) {
    constexpr int kFarthest = OMTrinket::kFarthest;
    OMSArguments& arguments = OMSArguments::global();
    const auto next = [&](int least) {
        return std::clamp(arguments.nextInteger(), least, kFarthest);
    };
    const int leastLength = anyLength ? -kFarthest : 0;
    OMSArea area;
    area.corner.x = next(-kFarthest);
    area.corner.y = next(-kFarthest);
    area.width = next(leastLength);
    area.height = next(leastLength);
    if (arguments.hasNext()) area.z = arguments.nextInteger();
    return area;
}
