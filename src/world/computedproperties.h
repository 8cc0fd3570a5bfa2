// What scripts read and write of a player's numbers. The words that say which number is meant, a
// location, a level or a place in a row, come before.
//
// An empty location is the current one, an empty level the one that is current there. What is none
// reads as an empty text, and writing it changes nothing.
#pragma once

#include "omsarguments.h"
#include "playerrecord.h"

#include <span>
#include <string>
#include <string_view>

namespace world {

struct ComputedProperty {
    std::string_view name;
    std::string (*read)(PlayerRecord&, OMSArguments& words);
    void (*write)(PlayerRecord&, OMSArguments& words,
                  std::string_view); ///< null for what is only read
};

/// In the order in which every player has them.
[[nodiscard]] std::span<const ComputedProperty> computedProperties();

/// The location that a script names; kNowhere for a name that is none.
[[nodiscard]] int locationOf(const PlayerRecord& record, std::string_view name);

} // namespace world
