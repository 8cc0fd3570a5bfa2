// The text file "resource.map": tells the program which resources each library of a folder holds,
// so that it opens none of them at start-up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace rsc {

inline constexpr std::size_t kLongestMapIdentifier = 39;
inline constexpr std::size_t kLongestLibraryName = 15;
/// Most resources of one type that the program can keep track of, over all libraries.
inline constexpr std::size_t kMostOfOneType = 8192;

struct MapResource {
    std::string type;
    std::uint16_t id = 0;
};

struct MapLibrary {
    std::string name; ///< of the file, lower case
    std::vector<MapResource> resources;
};

/// A map's lines hold types of exactly four characters.
[[nodiscard]] bool fitsMap(std::string_view type);

/// The text of a map. All types must fit; refused when there are too many resources of one type.
[[nodiscard]] std::string buildResourceMap(std::string_view identifier,
                                           std::span<const MapLibrary> libraries);

} // namespace rsc
