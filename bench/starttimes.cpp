#include "starttimes.h"

#include "formats/library/writer.h"
#include "formats/map/resourcemap.h"
#include "mediamachine.h"

#include "aoimage.h"
#include "ommemcanvas.h"

#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t kLibraries = 40;
constexpr int kScene = 100;
constexpr std::size_t kPaletteBytes = 1536;
constexpr std::size_t kSoundBytes = 64;
constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr std::string_view kScript = "StartTransition\nScene 100\nEndTransition 0\nquit\n";

std::span<const std::byte> bytesOf(std::string_view text) { return std::as_bytes(std::span(text)); }

/// A picture of blobs, as a painted background has them.
formats::Bytes scenePicture() {
    OMMemCanvas canvas(kWidth, kHeight, 8);
    std::mt19937 random(1);
    for (int y = 0; y < kHeight; ++y) {
        std::uint8_t* row = canvas.pixels().at(0, y);
        for (int x = 0; x < kWidth;) {
            const auto colour = static_cast<std::uint8_t>(10 + random() % 230);
            for (auto run = 1 + random() % 12; run > 0 && x < kWidth; --run) row[x++] = colour;
        }
    }
    const std::vector<std::byte> packed = AOPack(canvas, {}, 0);
    const auto* first = reinterpret_cast<const std::uint8_t*>(packed.data());
    return {first, first + packed.size()};
}

std::vector<formats::library::Resource> resourcesOf(std::size_t library) {
    constexpr std::size_t kEach = kStartResources / kLibraries;
    std::vector<formats::library::Resource> resources;
    for (std::size_t i = 0; i < kEach; ++i) {
        const auto id = static_cast<std::uint16_t>(1000 + library * kEach + i);
        resources.push_back({"WAVE", id, formats::Bytes(kSoundBytes)});
    }
    if (library > 0) return resources;
    resources[0] = {"ASEQ", kScene, scenePicture()};
    resources[1] = {"RRGB", kScene, formats::Bytes(kPaletteBytes, 99)};
    return resources;
}

/// A game of many libraries and a start script that shows its only scene.
void makeGame(const MediaMachine& machine) {
    std::filesystem::create_directory(machine.hostPath("RSC"));
    std::vector<formats::map::Library> map;
    for (std::size_t library = 0; library < kLibraries; ++library) {
        const std::string name = "lib" + std::to_string(library) + ".rsc";
        const std::vector<formats::library::Resource> resources = resourcesOf(library);
        const formats::Bytes bytes = formats::library::write("LIB", resources).value;
        machine.put("RSC/" + name, std::as_bytes(std::span(bytes)));
        formats::map::Library& listed = map.emplace_back(formats::map::Library{name, {}});
        for (const formats::library::Resource& resource : resources)
            listed.resources.push_back({resource.type, static_cast<std::int16_t>(resource.id)});
    }
    machine.put("RSC/resource.map", bytesOf(formats::map::writeResourceMap("BENCH", map)));
    // Only libraries that are active are searched.
    machine.put("Startup.mps", bytesOf("ActivateDLL lib0.rsc\n" + std::string(kScript)));
}

} // namespace

ProcessTimes measureStart(int repetitions) {
    const MediaMachine machine;
    makeGame(machine);
    return playGame(machine.hostPath("").string(), repetitions);
}
