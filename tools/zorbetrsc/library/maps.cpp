#include "library/maps.h"

#include "formats/animation/animation.h"
#include "formats/base/latin1.h"
#include "refusal.h"
#include "text.h"

#include <algorithm>
#include <map>
#include <utility>

namespace rsc {

using formats::map::kMaxFileName;
using formats::map::kMaxIdentifier;
using formats::map::kMostOfOneType;

namespace {

constexpr std::string_view kExtension = ".rsc";
constexpr std::string_view kUnmappedLibrary = "cursors.rsc";

bool isPlainText(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

void checkTypeCounts(std::span<const MapLibrary> libraries) {
    std::map<std::string_view, std::size_t> counts;
    for (const MapLibrary& library : libraries)
        for (const formats::map::Resource& resource : library.resources) ++counts[resource.type];
    for (const auto& [type, count] : counts) {
        if (count > kMostOfOneType) {
            throw Refusal(std::to_string(count) + " resources of type " + std::string(type) +
                          ", but the program takes at most " + std::to_string(kMostOfOneType));
        }
    }
}

} // namespace

std::string checkedLibraryName(std::string_view text) {
    const std::string name = formats::lowerAscii(text);
    if (!name.ends_with(kExtension) || name.size() == kExtension.size())
        throw Refusal("a library's name ends in \".rsc\"");
    if (name.size() > kMaxFileName)
        throw Refusal("a library's name has at most " + std::to_string(kMaxFileName) +
                      " characters");
    if (!isPlainText(name) || name.find_first_of(" /\\:*?\"<>|") != std::string::npos)
        throw Refusal("a library's name is a file's name without a folder and without blanks");
    return name;
}

void checkMapIdentifier(std::string_view text) {
    const bool fits = !text.empty() && text.size() <= kMaxIdentifier;
    if (!fits || !isPlainText(text) || text.front() == ' ' || text.back() == ' ')
        throw Refusal("a map's identifier is a text of 1 to " + std::to_string(kMaxIdentifier) +
                      " characters");
}

bool fitsMap(std::string_view type) {
    return type.size() == formats::map::kTypeLength && type[0] != '#';
}

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
    formats::map::ResourceMap map(text, [](int, const char*) {});
    ResourceMapText result{map.identifier(), {}};
    constexpr std::string_view kBlanks = " \t";
    result.identifier.erase(result.identifier.find_last_not_of(kBlanks) + 1);
    result.identifier.erase(0, result.identifier.find_first_not_of(kBlanks));
    for (MapLibrary library; map.next(library);) result.libraries.push_back(std::move(library));
    return result;
}

std::string buildResourceMap(std::string_view identifier, std::span<const MapLibrary> libraries) {
    checkTypeCounts(libraries);
    return formats::map::writeResourceMap(identifier, libraries);
}

void AudioMap::add(int id, ByteSpan animation) {
    int sequence = 0;
    for (const formats::animation::Sequence& entries :
         valueOf(formats::animation::readWhole(animation)).sequences) {
        ++sequence;
        for (const formats::animation::Entry& entry : entries) {
            if (entry.code != formats::animation::Entry::kSound) continue;
            const formats::map::SequenceSound sound{id, sequence, entry.argument};
            if (known_.insert(sound).second) sounds_.push_back(sound);
        }
    }
}

} // namespace rsc
