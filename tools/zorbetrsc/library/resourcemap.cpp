#include "library/resourcemap.h"

#include "refusal.h"
#include "text.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace rsc {

namespace {

constexpr std::size_t kMapTypeLength = 4;
constexpr std::string_view kExtension = ".rsc";
constexpr std::string_view kUnmappedLibrary = "cursors.rsc";

constexpr std::string_view kEnd = "ENDFILE";

bool isPlainText(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

/// The next line that is not empty, without the blanks around it.
bool nextLine(std::istream& in, std::string& line) {
    constexpr std::string_view kBlanks = " \t\r";
    while (std::getline(in, line)) {
        line.erase(line.find_last_not_of(kBlanks) + 1);
        line.erase(0, line.find_first_not_of(kBlanks));
        if (!line.empty()) return true;
    }
    return false;
}

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

std::string checkedLibraryName(std::string_view text) {
    const std::string name = lowerCase(text);
    if (!name.ends_with(kExtension) || name.size() == kExtension.size())
        throw Refusal("a library's name ends in \".rsc\"");
    if (name.size() > kLongestLibraryName)
        throw Refusal("a library's name has at most " + std::to_string(kLongestLibraryName) +
                      " characters");
    if (!isPlainText(name) || name.find_first_of(" /\\:*?\"<>|") != std::string::npos)
        throw Refusal("a library's name is a file's name without a folder and without blanks");
    return name;
}

void checkMapIdentifier(std::string_view text) {
    const bool fits = !text.empty() && text.size() <= kLongestMapIdentifier;
    if (!fits || !isPlainText(text) || text.front() == ' ' || text.back() == ' ')
        throw Refusal("a map's identifier is a text of 1 to " +
                      std::to_string(kLongestMapIdentifier) + " characters");
}

bool fitsMap(std::string_view type) { return type.size() == kMapTypeLength && type[0] != '#'; }

bool isMapped(std::string_view library) { return library != kUnmappedLibrary; }

void checkMappable(std::string_view library, std::string_view type) {
    if (fitsMap(type) == isMapped(library)) return;
    if (!isMapped(library))
        throw Refusal(printable(type) + " cannot be found in \"cursors.rsc\", which is not in the "
                                        "map: put it into another library");
    throw Refusal(printable(type) +
                  " cannot stand in a map: put it into \"cursors.rsc\", or do without a map");
}

ResourceMapText readResourceMap(std::string_view text) {
    ResourceMapText map;
    std::istringstream lines{std::string(text)};
    std::string line;
    bool inLibrary = false;
    for (int number = 0; nextLine(lines, line); ++number) {
        std::istringstream words(line);
        MapResource resource;
        if (number == 0) {
            map.identifier = line;
        } else if (number > 1 && line.find(kEnd) != std::string::npos) {
            inLibrary = false;
        } else if (number > 1 && !inLibrary) {
            std::string name;
            words >> name;
            map.libraries.push_back({lowerCase(name), {}});
            inLibrary = true;
        } else if (number > 1 && line.size() > kMapTypeLength) {
            resource.type = line.substr(0, kMapTypeLength);
            if (words.ignore(kMapTypeLength) >> resource.id)
                map.libraries.back().resources.push_back(std::move(resource));
        }
    }
    return map;
}

std::string buildResourceMap(std::string_view identifier, std::span<const MapLibrary> libraries) {
    checkTypeCounts(libraries);
    std::size_t most = 0;
    for (const MapLibrary& library : libraries) most = std::max(most, library.resources.size());
    std::string map = std::string(identifier) + "\n" + std::to_string(most) + "\n";
    for (const MapLibrary& library : libraries) {
        map += library.name + "\n";
        for (const MapResource& resource : library.resources)
            map += resource.type + " " + std::to_string(resource.id) + "\n";
        map.append(kEnd).append("\n");
    }
    return map;
}

} // namespace rsc
