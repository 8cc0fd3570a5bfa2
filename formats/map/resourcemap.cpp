#include "formats/map/resourcemap.h"

#include "formats/base/latin1.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace formats::map {

namespace {

constexpr std::string_view kEndFile = "ENDFILE";
constexpr int kLargestId = std::numeric_limits<std::int16_t>::max();

bool endsBlock(std::string_view line) { return line.find(kEndFile) != std::string_view::npos; }

} // namespace

ResourceMap::ResourceMap(std::string_view text, Problem problem)
    : problem_(std::move(problem)), scanner_(text) {
    readHeader();
}

void ResourceMap::readHeader() {
    identifier_ = line();
    if (identifier_.size() > kMaxIdentifier) {
        identifier_.clear();
        reject("the identifier has more than 39 characters, the folder is scanned instead");
        return;
    }
    const std::optional<int> count = TextScanner(line()).number();
    if (count && *count >= 0)
        maxResources_ = static_cast<std::size_t>(*count);
    else
        reject("must be the largest number of resources of a file, the folder is scanned "
               "instead");
}

void ResourceMap::reject(const char* problem) {
    tell(problem);
    scanner_ = TextScanner("");
    usable_ = false;
}

bool ResourceMap::next(Library& library) {
    for (std::string_view first = line(); !first.empty(); first = line()) {
        library = {fileName(first), {}};
        if (endsBlock(first)) continue;
        const bool fits = readResources(library.resources);
        if (fits && !library.name.empty()) return true;
    }
    return false;
}

std::string ResourceMap::fileName(std::string_view line) {
    const std::string_view name = TextScanner(line).word();
    if (endsBlock(line))
        tell("ENDFILE without a file before it, passed over");
    else if (name.empty())
        tell("no file name, the resources below are left out");
    else if (name.size() > kMaxFileName)
        tell("the file name has more than 15 characters, the resources below are left out");
    else
        return lowerLatin1(name);
    return {};
}

bool ResourceMap::readResources(std::vector<Resource>& resources) {
    bool surplus = false;
    std::string_view entry = line();
    for (; !entry.empty() && !endsBlock(entry); entry = line()) {
        Resource resource;
        if (surplus || !parseResource(entry, resource)) continue;
        surplus = resources.size() == maxResources_;
        if (!surplus) resources.push_back(std::move(resource));
    }
    if (surplus) tell("more resources than line 2 says, the file is left out: correct it");
    if (entry.empty()) tell("the map ends without ENDFILE: write one behind the last file");
    return !surplus;
}

bool ResourceMap::parseResource(std::string_view line, Resource& resource) {
    TextScanner fields(line);
    fields.skipBlanks();
    const std::string_view type = fields.take(kTypeLength);
    const std::optional<int> id = fields.number();
    if (type.size() != kTypeLength) {
        tell("a type must have four characters, the line is left out");
        return false;
    }
    if (!id || *id < 1 || *id > kLargestId) {
        tell("an id must be a number from 1 to 32767, the line is left out");
        return false;
    }
    resource = {std::string(type), static_cast<std::int16_t>(*id)};
    return true;
}

std::string writeResourceMap(std::string_view identifier, std::span<const Library> libraries) {
    std::size_t most = 0;
    for (const Library& library : libraries) most = std::max(most, library.resources.size());
    std::string text = std::string(identifier) + "\n" + std::to_string(most) + "\n";
    for (const Library& library : libraries) {
        text += library.name + "\n";
        for (const Resource& resource : library.resources)
            text += resource.type + " " + std::to_string(resource.id) + "\n";
        text.append(kEndFile).append("\n");
    }
    return text;
}

} // namespace formats::map
