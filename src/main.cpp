// The entry of the program: command line, platform, game.
#include "app.h"
#include "commandline.h"
#include "omplatform.h"
#include "programresources.h"

#include "platform/headless/headlessplatform.h"
#include "platform/host/termination.h"
#if ZORBET_HAVE_SDL
#include "platform/sdl/sdlplatform.h"
#endif

#include <cstdio>
#include <filesystem>
#include <memory>

namespace {

constexpr int kNoWindow = 2;

/// The sample game lies beside the program's folder.
std::string sampleFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return {};
    return (program.parent_path().parent_path() / "sample").string();
}

platform::HostOptions hostOptions(const CommandLine& line) {
    return {line.content.empty() ? sampleFolder() : line.content, line.cd, line.home};
}

std::unique_ptr<platform::Platform> makeHeadless(const CommandLine& line) {
    platform::HeadlessOptions options;
    options.host = hostOptions(line);
    options.host.freeSpace = line.machine.freeSpace;
    options.machine = line.machine;
    options.timeline = line.timeline;
    options.untilMs = line.untilMs;
    options.stepMs = line.stepMs;
    options.screen = line.screen;
    options.recordSound = line.recordSound;
    options.breakPoint = line.breakPoint;
    options.resources = RProgramResources();
    options.versionStrings = RVersionStrings();
    return std::make_unique<platform::HeadlessPlatform>(options);
}

std::unique_ptr<platform::Platform> makeWindow(const CommandLine& line) {
#if ZORBET_HAVE_SDL
    auto made = platform::makeSdlPlatform(
        {hostOptions(line), line.screen, RProgramResources(), RVersionStrings()});
    if (auto* ready = std::get_if<std::unique_ptr<platform::Platform>>(&made))
        return std::move(*ready);
    std::fprintf(stderr, "No window: %s\n", std::get<std::string>(made).c_str());
#else
    static_cast<void>(line);
    std::fputs("No window: the program was built without SDL2; use --headless\n", stderr);
#endif
    return nullptr;
}

} // namespace

int main(int argc, char** argv) {
    const auto parsed = parseCommandLine(argc, argv);
    if (const int* exitCode = std::get_if<int>(&parsed)) return *exitCode;
    const auto& line = std::get<CommandLine>(parsed);

    platform::catchTermination();
    const auto machine = line.headless ? makeHeadless(line) : makeWindow(line);
    if (!machine) return kNoWindow;
    OMSetPlatform(machine.get());
    const int exitCode = RGameMain(line.seed);
    machine->programEnds(exitCode);
    OMSetPlatform(nullptr);
    return exitCode;
}
