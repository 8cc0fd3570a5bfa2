#include "omsarea.h"

#include "omsarguments.h"

#include <algorithm>

OMSArea OMSArea::read(Lengths lengths) {
    constexpr int kFarthest = OMTrinket::kFarthest;
    OMSArguments& arguments = OMSArguments::global();
    const auto next = [&](int least) {
        return std::clamp(arguments.nextInteger(), least, kFarthest);
    };
    const int shortest = lengths == Lengths::Any ? -kFarthest : 0;
    OMSArea area;
    const int left = next(-kFarthest);
    const int top = next(-kFarthest);
    const int width = next(shortest);
    const int height = next(shortest);
    area.box = {left, top, left + width, top + height};
    if (arguments.hasNext()) area.z = arguments.nextInteger();
    return area;
}
