#include "library/map.h"

#include "filesystem.h"
#include "library/maps.h"
#include "manifest/givenfiles.h"

#include <ostream>
#include <set>

namespace rsc {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kMapExtension = ".map";

OutputFile textFile(const std::string& name, const std::string& text) {
    return {name, Bytes(text.begin(), text.end())};
}

/// What the map says of a library; empty when it stands in no map.
MapLibrary describe(const LibraryFile& file, const NeLibrary& library) {
    MapLibrary described{file.name, {}};
    std::set<std::pair<std::string, int>> known;
    for (const ResourceEntry& entry : library.entries()) {
        checkMappable(file.name, entry.type);
        if (!isMapped(file.name)) continue;
        if (!isResourceType(entry.type) || !entry.name.empty() || entry.id == 0)
            throw Refusal(entry.title() + " cannot stand in a map");
        if (!known.insert({entry.type, entry.id}).second)
            throw Refusal(entry.title() + " is there twice");
        described.resources.push_back({entry.type, static_cast<std::int16_t>(entry.id)});
    }
    return described;
}

void addSounds(const NeLibrary& library, AudioMap& audio) {
    for (const ResourceEntry& entry : library.entries()) {
        if (entry.type != "ASEQ" || !entry.name.empty()) continue;
        try {
            audio.add(entry.id, library.data(entry));
        } catch (const Refusal& refusal) {
            throw Refusal(entry.title() + ": " + refusal.what());
        }
    }
}

void writeMaps(const MapOptions& options) {
    std::vector<MapLibrary> libraries;
    AudioMap audio;
    const std::vector<LibraryFile> files = readLibraryFiles(options.files);
    for (const LibraryFile& file : files) {
        onPath(file.path, [&] {
            const NeLibrary library(file.bytes);
            MapLibrary described = describe(file, library);
            if (!described.resources.empty()) libraries.push_back(std::move(described));
            if (options.audio) addSounds(library, audio);
        });
    }
    const std::string& first = files.front().name;
    const std::string name =
        options.name.empty() ? first.substr(0, first.rfind('.')) : options.name;
    checkMapIdentifier(name);
    std::error_code ignored;
    const bool isFile =
        options.output.extension() == kMapExtension && !fs::is_directory(options.output, ignored);
    const fs::path folder = isFile ? options.output.parent_path() : options.output;
    const std::string mapName =
        isFile ? options.output.filename().string() : std::string(kResourceMapName);
    std::vector<OutputFile> outputs = {textFile(mapName, buildResourceMap(name, libraries))};
    if (options.audio) outputs.push_back(textFile(std::string(kAudioMapName), audio.text()));
    writeFiles(folder.empty() ? fs::path(".") : folder, outputs);
}

} // namespace

int runMap(const MapOptions& options, std::ostream& errors) {
    try {
        writeMaps(options);
        return 0;
    } catch (const Refusal& refusal) {
        errors << refusal.what() << "\n";
        return 1;
    }
}

} // namespace rsc
