#include "starttimes.h"

#include "mediamachine.h"
#include "nelibrary.h"
#include "resourcemap.h"

#include "aopack.h"
#include "ommemcanvas.h"

#include <array>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <random>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace {

constexpr std::size_t kLibraries = 40;
constexpr int kScene = 100;
constexpr std::size_t kPaletteBytes = 1536;
constexpr std::size_t kSoundBytes = 64;
constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr double kNano = 1e9;
constexpr double kNanoPerMicro = 1e3;
constexpr std::string_view kScript = "StartTransition\nScene 100\nEndTransition 0\nquit\n";

std::span<const std::byte> bytesOf(std::string_view text) { return std::as_bytes(std::span(text)); }

/// A picture of blobs, as a painted background has them.
rsc::Bytes scenePicture() {
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

std::vector<rsc::Resource> resourcesOf(std::size_t library) {
    constexpr std::size_t kEach = kStartResources / kLibraries;
    std::vector<rsc::Resource> resources;
    for (std::size_t i = 0; i < kEach; ++i) {
        const auto id = static_cast<std::uint16_t>(1000 + library * kEach + i);
        resources.push_back({"WAVE", id, rsc::Bytes(kSoundBytes)});
    }
    if (library > 0) return resources;
    resources[0] = {"ASEQ", kScene, scenePicture()};
    resources[1] = {"RRGB", kScene, rsc::Bytes(kPaletteBytes, 99)};
    return resources;
}

/// A game of many libraries and a start script that shows its only scene.
void makeGame(const MediaMachine& machine) {
    std::filesystem::create_directory(machine.hostPath("RSC"));
    std::vector<rsc::MapLibrary> map;
    for (std::size_t library = 0; library < kLibraries; ++library) {
        const std::string name = "lib" + std::to_string(library) + ".rsc";
        const std::vector<rsc::Resource> resources = resourcesOf(library);
        const rsc::Bytes bytes = rsc::buildNeLibrary("LIB", resources);
        machine.put("RSC/" + name, std::as_bytes(std::span(bytes)));
        rsc::MapLibrary& listed = map.emplace_back(rsc::MapLibrary{name, {}});
        for (const rsc::Resource& resource : resources)
            listed.resources.push_back({resource.type, resource.id});
    }
    machine.put("RSC/resource.map", bytesOf(rsc::buildResourceMap("BENCH", map)));
    // Only libraries that are active are searched.
    machine.put("Startup.mps", bytesOf("ActivateDLL lib0.rsc\n" + std::string(kScript)));
}

double nanoseconds(const std::timespec& time) {
    return static_cast<double>(time.tv_sec) * kNano + static_cast<double>(time.tv_nsec);
}

double now() {
    std::timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return nanoseconds(time);
}

double nanoseconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) * kNano +
           static_cast<double>(time.tv_usec) * kNanoPerMicro;
}

std::string textOf(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Plays the game once.
void play(const std::string& program, const std::string& game, StartTimes& times) {
    std::array<std::string, 6> words{program, "--headless", "--content", game, "--home", game};
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    const std::string report = game + "/report.txt";
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, report.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const double start = now();
    pid_t child = 0;
    const int failed =
        posix_spawn(&child, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) throw std::runtime_error(program + " cannot be started");
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(program + " did not end well");
    const double end = now();
    if (textOf(report).find("\tbox\t") != std::string::npos)
        throw std::runtime_error(program + " showed a box instead of the scene");
    times.clock.add(end - start);
    times.processor.add(nanoseconds(usage.ru_utime) + nanoseconds(usage.ru_stime));
}

} // namespace

StartTimes measureStart(int repetitions) {
    const MediaMachine machine;
    makeGame(machine);
    const std::filesystem::path here = std::filesystem::read_symlink("/proc/self/exe");
    StartTimes times;
    for (int i = 0; i < repetitions; ++i)
        play((here.parent_path() / "zorbet").string(), machine.hostPath("").string(), times);
    return times;
}
