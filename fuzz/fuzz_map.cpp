// Damaged map files: "resource.map" in up to three places, "audio.map" and "progress.map",
// separated in the input by bytes 0xFF, each alone and then as the resource layer registers them.
// Whatever they say, names, ids and places keep their limits, no block has more resources than
// announced, the log stays in proportion, and the resource layer can be used and shut down.
#include "fuzzmachine.h"

#include "nebuilder.h"
#include "progress/progresslayout.h"
#include "resources/mapproblems.h"
#include "resources/resources.h"
#include "world/locations.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using fuzzing::expect;
using Blocks = std::vector<formats::map::Library>;

constexpr const char* kLog = "zorbelog.txt";
constexpr std::array kPaths = {"RSC\\resource.map", "..\\RSC\\resource.map",
                               "D:\\RSC\\resource.map", "RSC\\audio.map", "RSC\\progress.map"};
constexpr char kSeparator = '\xFF';
constexpr std::size_t kMostLoads = 8;
constexpr std::size_t kMostBuiltIn = 100; ///< parts and buttons of the layouts
constexpr std::size_t kMostLogByte = 200; ///< for each byte of a map
constexpr std::size_t kMostLogRest = 20000;

std::vector<std::string> split(std::string_view text) {
    std::vector<std::string> parts;
    while (parts.size() < kPaths.size()) {
        const auto end = std::min(text.find(kSeparator), text.size());
        parts.emplace_back(text.substr(0, end));
        if (end == text.size()) break;
        text.remove_prefix(end + 1);
    }
    return parts;
}

void addLibraries(fuzzing::MemoryFiles& files) {
    const auto library = [](std::string_view text) {
        return testing_support::NEBuilder().add("WAVE", 1, text).add("ASEQ", 2, text).build();
    };
    files.put("RSC\\a.rsc", library("one"));
    files.put("D:\\RSC\\b.rsc", library("two"));
}

Blocks readAlone(const std::string& text) {
    formats::map::ResourceMap map(text, MapProblems("m"));
    expect(map.identifier().size() <= formats::map::kMaxIdentifier, "identifiers are short");
    Blocks blocks;
    for (formats::map::Library block; map.next(block);) blocks.push_back(block);
    for (const formats::map::Library& block : blocks) {
        expect(!block.name.empty() && block.name.size() <= formats::map::kMaxFileName,
               "file names are short");
        for (const formats::map::Resource& resource : block.resources)
            expect(resource.type.size() == 4 && resource.id > 0, "resources can be named");
    }
    return blocks;
}

void checkPicture(const ProgressPicture& picture) {
    expect(picture.id > 0 && picture.id <= 32767, "pictures can be named");
    expect(std::abs(picture.x) <= 10'000 && std::abs(picture.y) <= 10'000,
           "pictures are near the panel");
}

void checkLocation(int location) {
    expect(location == kProgressHere || !world::locationName(location).empty(),
           "buttons have locations");
}

/// What lines of a layout have become.
std::size_t checkLayout(const ProgressLayout& layout) {
    std::size_t lines = layout.parts.size();
    for (const ProgressPart& part : layout.parts) {
        lines += part.mapButtons.size() + part.levels.size();
        for (const ProgressMapButton& button : part.mapButtons) {
            checkLocation(button.location);
            checkPicture(button.picture);
        }
        for (const ProgressLevels& levels : part.levels) {
            checkLocation(levels.location);
            std::ranges::for_each(levels.buttons, checkPicture);
            if (levels.checkBox) checkPicture(*levels.checkBox);
        }
    }
    return lines;
}

void readLayouts(const std::string& text) {
    const ProgressLayouts layouts = ProgressLayouts::read("m", text);
    expect(checkLayout(layouts.practice) + checkLayout(layouts.game) <= text.size() + kMostBuiltIn,
           "buttons come from lines");
}

/// As a script would go about it.
void use(RResources& resources, const Blocks& blocks) {
    std::size_t loads = 0;
    for (const formats::map::Library& block : blocks) {
        if (loads > kMostLoads) break;
        resources.activateDLL(block.name, loads % 2 == 0);
        resources.cacheDLL(block.name, false, false, loads % 3 == 0);
        for (const formats::map::Resource& resource : block.resources) {
            if (++loads > kMostLoads) break;
            const auto stream = resources.load(resource.id, resource.type, kOMIStreamCache);
            if (stream) stream->fill();
        }
        resources.deactivateDLL(block.name);
        resources.uncacheDLL(block.name);
    }
    for (const auto& [id, type] : {std::pair(1, "WAVE"), std::pair(2, "ASEQ")})
        if (const auto stream = resources.load(id, type, kOMIStreamBuffered)) stream->fill();
    resources.deactivateAllDLLs(true);
    resources.uncacheAllDLLs(true);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::World world;
    const auto parts = split({reinterpret_cast<const char*>(data), size});
    Blocks blocks;
    std::size_t sounds = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        world.files.put(kPaths[i], parts[i]);
        for (formats::map::Library& block : readAlone(parts[i])) blocks.push_back(std::move(block));
        sounds += formats::map::readAudioMap(parts[i], MapProblems("m")).size();
        readLayouts(parts[i]);
    }
    expect(sounds <= size, "sounds come from lines");
    addLibraries(world.files);

    RResources resources;
    resources.setHomeDirectory("C:\\HOME\\");
    resources.start("D:", [](const formats::map::SequenceSound&) {});
    expect(world.files.text(kLog).size() <= kMostLogByte * size + kMostLogRest,
           "the log stays in proportion");
    world.makeApp();
    use(resources, blocks);
    resources.shutDown();
    for (const formats::map::Library& block : blocks)
        for (const formats::map::Resource& resource : block.resources)
            expect(OMResMgrFindFile(resource.id, resource.type) == nullptr,
                   "nothing is left after the end");
    return 0;
}
