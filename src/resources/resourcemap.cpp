#include "resources/resourcemap.h"

#include "omlog.h"
#include "ompath.h"

#include <algorithm>
#include <limits>
#include <optional>

namespace {

constexpr std::size_t kMapLineLength = 79;
constexpr std::size_t kTypeLength = 4;
constexpr std::string_view kEndFile = "ENDFILE";
constexpr int kMaxInt16 = std::numeric_limits<std::int16_t>::max();

bool endsBlock(std::string_view line) { return line.find(kEndFile) != std::string_view::npos; }

bool fitsInt16(int value) {
    return value >= std::numeric_limits<std::int16_t>::min() && value <= kMaxInt16;
}

std::optional<SequenceSoundRecord> parseSequenceSound(formats::TextScanner line) {
    const auto field = [&](std::string_view name) -> std::optional<int> {
        return line.literal(name) ? line.number() : std::nullopt;
    };
    const auto object = field("AO:");
    const auto sequence = field("Sequence:");
    const auto sound = field("Sound:");
    if (!object || !sequence || !sound || !fitsInt16(*object) || !fitsInt16(*sequence))
        return std::nullopt;
    return SequenceSoundRecord{static_cast<std::int16_t>(*object),
                               static_cast<std::int16_t>(*sequence), *sound};
}

} // namespace

void MapProblems::log(int line, const char* problem) {
    if (count_ > kMaxLogged) return;
    if (++count_ > kMaxLogged) problem = "further problems of this map are not logged";
    OMLog::writef(OMLog::Kind::Error, "%s line %d: %s", path_.c_str(), line, problem);
}

ResourceMap::ResourceMap(std::string_view path, std::string_view text)
    : problems_(path), scanner_(text) {
    readHeader();
}

void ResourceMap::readHeader() {
    identifier_ = line();
    if (identifier_.size() > kMaxIdentifier) {
        identifier_.clear();
        reject("the identifier has more than 39 characters, the folder is scanned instead");
        return;
    }
    const std::optional<int> count = formats::TextScanner(line()).number();
    if (count && *count >= 0)
        maxResources_ = static_cast<std::size_t>(*count);
    else
        reject("must be the largest number of resources of a file, the folder is scanned "
               "instead");
}

void ResourceMap::reject(const char* problem) {
    logLine(problem);
    scanner_ = formats::TextScanner("");
    usable_ = false;
}

bool ResourceMap::nextBlock(MapFileBlock& block) {
    for (std::string_view first = line(); !first.empty(); first = line()) {
        block = {fileName(first), {}};
        if (endsBlock(first)) continue;
        const bool fits = readResources(block.resources);
        if (fits && !block.name.empty()) return true;
    }
    return false;
}

std::string ResourceMap::fileName(std::string_view line) {
    const std::string_view name = formats::TextScanner(line).word();
    if (endsBlock(line))
        logLine("ENDFILE without a file before it, passed over");
    else if (name.empty())
        logLine("no file name, the resources below are left out");
    else if (name.size() > kMaxFileName)
        logLine("the file name has more than 15 characters, the resources below are left out");
    else
        return OMPathLowerCase(name);
    return {};
}

bool ResourceMap::readResources(std::vector<MapResource>& resources) {
    bool surplus = false;
    std::string_view next = line();
    for (; !next.empty() && !endsBlock(next); next = line()) {
        MapResource resource;
        if (surplus || !parseResource(next, resource)) continue;
        surplus = resources.size() == maxResources_;
        if (!surplus) resources.push_back(std::move(resource));
    }
    if (surplus) logLine("more resources than line 2 says, the file is left out: correct it");
    if (next.empty()) logLine("the map ends without ENDFILE: write one behind the last file");
    return !surplus;
}

bool ResourceMap::parseResource(std::string_view line, MapResource& resource) {
    formats::TextScanner fields(line);
    fields.skipBlanks();
    const std::string_view type = fields.take(kTypeLength);
    const std::optional<int> id = fields.number();
    if (type.size() != kTypeLength) {
        logLine("a type must have four characters, the line is left out");
        return false;
    }
    if (!id || *id < 1 || *id > kMaxInt16) {
        logLine("an id must be a number from 1 to 32767, the line is left out");
        return false;
    }
    resource = {std::string(type), static_cast<std::int16_t>(*id)};
    return true;
}

std::string_view ResourceMap::line() { return scanner_.line(kMapLineLength); }

void ResourceMap::logLine(const char* problem) { problems_.log(scanner_.lineNumber(), problem); }

std::vector<SequenceSoundRecord> readAudioMap(const std::string& path, std::string_view text) {
    std::vector<SequenceSoundRecord> records;
    MapProblems problems(path);
    formats::TextScanner scanner(text);
    for (std::string_view line = scanner.line(kMapLineLength); !line.empty();
         line = scanner.line(kMapLineLength)) {
        if (const auto record = parseSequenceSound(formats::TextScanner(line)))
            records.push_back(*record);
        else
            problems.log(scanner.lineNumber(), "not of the form AO: n  Sequence: n  Sound: n");
    }
    return records;
}
