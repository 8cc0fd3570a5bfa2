#include "resourcemap.h"

#include "refusal.h"

#include <algorithm>
#include <map>

namespace rsc {

namespace {

constexpr std::size_t kMapTypeLength = 4;

void checkTypeCounts(std::span<const MapLibrary> libraries) {
    std::map<std::string_view, std::size_t> counts;
    for (const MapLibrary& library : libraries)
        for (const MapResource& resource : library.resources) ++counts[resource.type];
    for (const auto& [type, count] : counts) {
        if (count > kMostOfOneType) {
            throw Refusal(std::to_string(count) + " resources of type " + std::string(type) +
                          ", but the program takes at most " + std::to_string(kMostOfOneType));
        }
    }
}

} // namespace

bool fitsMap(std::string_view type) { return type.size() == kMapTypeLength && type[0] != '#'; }

std::string buildResourceMap(std::string_view identifier, std::span<const MapLibrary> libraries) {
    checkTypeCounts(libraries);
    std::size_t most = 0;
    for (const MapLibrary& library : libraries) most = std::max(most, library.resources.size());
    std::string map = std::string(identifier) + "\n" + std::to_string(most) + "\n";
    for (const MapLibrary& library : libraries) {
        map += library.name + "\n";
        for (const MapResource& resource : library.resources)
            map += resource.type + " " + std::to_string(resource.id) + "\n";
        map += "ENDFILE\n";
    }
    return map;
}

} // namespace rsc
