#include "fidgetgroup.h"

#include "omrandom.h"
#include "omticks.h"

#include <algorithm>

FidgetGroup::FidgetGroup(int id, const Interval& interval, bool noRepeat)
    : id_(id), interval_(interval), noRepeat_(noRepeat) {}

void FidgetGroup::schedule(std::int64_t now) {
    const auto minimum = static_cast<std::uint32_t>(std::max(interval_.minimum, 0));
    const auto maximum = static_cast<std::uint32_t>(std::max(interval_.maximum, 0));
    std::int64_t seconds = minimum;
    if (maximum > minimum) seconds += OMRandomBelow(maximum - minimum);
    // One that was due at once would never let the groups behind it have their turn.
    nextTime_ = now + std::max<std::int64_t>(seconds * kOMTicksPerSecond, 1);
}

std::optional<Fidget> FidgetGroup::pick() {
    std::vector<Fidget*> remaining;
    for (Fidget& fidget : all_)
        if (!fidget.isPlayed) remaining.push_back(&fidget);
    if (remaining.empty()) return std::nullopt;
    Fidget& picked = *remaining[OMRandomBelow(static_cast<std::uint32_t>(remaining.size()))];
    if (noRepeat_) picked.isPlayed = true;
    if (noRepeat_ && remaining.size() == 1)
        for (Fidget& fidget : all_) fidget.isPlayed = false;
    return picked;
}
