#include "app.h"

#include "animationsounds.h"
#include "commands.h"
#include "configuration.h"
#include "cursors.h"
#include "fontfact.h"
#include "gamesounds.h"
#include "omapp.h"
#include "omdebugwindow.h"
#include "omistreamfile.h"
#include "omlog.h"
#include "ompath.h"
#include "omplatform.h"
#include "omrandom.h"
#include "omsexception.h"
#include "omsregistry.h"
#include "omwaveengine.h"
#include "palettehook.h"
#include "programresources.h"
#include "ranimation.h"
#include "resourcecommands.h"
#include "resources.h"
#include "rthread.h"
#include "scenes/efwindow.h"
#include "scriptclasses.h"
#include "soundcommands.h"
#include "startup/machinechecks.h"
#include "startup/memoryexhaustion.h"
#include "startup/warnings.h"
#include "yengine.h"

#include <algorithm>

namespace {

constexpr const char* kStartScript = "Startup.mps";
constexpr std::uint64_t kLargestScript = 1U << 24; ///< bytes; texts are much shorter
constexpr int kScreenDepth = 8;
constexpr int kFlashCommand = 59411;
constexpr int kMostFlashMs = 100;
constexpr int kMinimumDepth = 8;
constexpr int kExitOk = 0;

/// The reports of script objects go to the log.
void logReport(const OMSobException& report) {
    const auto kind = report.kind() == OMSobException::kMessage   ? OMLog::Kind::Message
                      : report.kind() == OMSobException::kWarning ? OMLog::Kind::Warning
                                                                  : OMLog::Kind::Error;
    OMLog::write(kind, report.text());
}

void startLogging() {
    OMLog::setFallbackDirectory(RConfiguration::findHomeDirectory());
    OMLog::start();
    OMSobException::setNotification(logReport);
}

/// Scripts that are no file of the current directory are looked for in the "scripts\" directories.
std::unique_ptr<OMIStream> locateScript(std::string_view name) {
    const auto path = OMPathResolveFilename(name);
    const auto file = path ? OMPlatform().files().open(*path, platform::OpenMode::Read) : nullptr;
    if (file && file->size() <= kLargestScript)
        return std::make_unique<OMIStreamFile>(*path, kOMIStreamCache);
    OMLog::writef(OMLog::Kind::Error, "Script %s not found!", std::string(name).c_str());
    return nullptr;
}

/// Windows of surfaces stand at the upper left of the screen, others in its middle.
platform::Point windowCorner() {
    if (OMApp::usingDirectDraw()) return {0, 0};
    const platform::ScreenMode screen = OMPlatform().display().mode();
    return {(screen.width - EffectsWindow::kWidth) / 2,
            (screen.height - EffectsWindow::kHeight) / 2};
}

void installLocators(RResources& resources) {
    const auto locator = [&resources](std::string_view type) {
        return [&resources, type](int id) { return resources.load(id, type, kOMIStreamCache); };
    };
    EffectsWindow::setBackgroundLocator(locator("ASEQ"));
    EffectsWindow::setPaletteLocator(locator("RRGB"));
    OMAnimation::setSourceLocator(locator("ASEQ"));
}

void removeLocators() {
    EffectsWindow::setBackgroundLocator(nullptr);
    EffectsWindow::setPaletteLocator(nullptr);
    EffectsWindow::setPaletteFilter(nullptr);
    OMAnimation::setSourceLocator(nullptr);
}

bool handleCommand(EffectsWindow& window, int command) {
    if (OMLog::handleCommand(command)) return true;
    if (command != kFlashCommand) return false;
    window.setFlashDelay(std::clamp(10 - window.flashDelay(), 0, kMostFlashMs));
    return true;
}

/// Application, window and scripts, from their making to their end. What is declared later goes
/// first.
void runApplication(OMApp::DisplayMode mode, RResources& resources, OMWaveEngine& soundEngine) {
    OMApp app(mode, OMColor(), {0, 0, EffectsWindow::kWidth, EffectsWindow::kHeight}, kScreenDepth);
    resources.setAlertLink([&app](std::string_view text) { app.alert(text); });
    const RCursors cursors; // asked for as long as there is the window
    EffectsWindow window(windowCorner(), app.productName());
    app.setCommandHandler([&window](int command) { return handleCommand(window, command); });
    app.setBackgroundLink([&soundEngine] { soundEngine.suspend(); });
    app.setForegroundLink([&soundEngine, &window] {
        soundEngine.resume();
        window.restoreScreen();
    });

    const RScriptClasses classes; // also those of components, whose commands go before their code
    RGameSounds sounds(resources);
    FontFactory fonts;
    fonts.setNFNTLocator(
        [&resources](int id) { return resources.load(id, "NFNT", kOMIStreamCache); });
    fonts.addGameSubstitutions();
    const RAnimationSounds animationSounds(resources);
    RCommands commands(window);
    RResourceCommands resourceCommands(resources);
    RSoundCommands soundCommands(sounds);
    OMDebugWindow debugWindow;
    YEngine engine;
    engine.setTraceWindow([&debugWindow](std::string_view text) { debugWindow.showText(text); });
    YThread thread(engine, kStartScript, locateScript);
    if (thread.isLoaded()) {
        thread.run();
        thread.fireStarted();
    }
    app.run();
    thread.unload();
    resources.setAlertLink(nullptr);
}

/// The resource layer, and all that needs it.
void runGame(const RConfiguration& configuration, OMApp::DisplayMode mode,
             OMWaveEngine& soundEngine) {
    RResources resources;
    resources.setHomeDirectory(configuration.homeDirectory);
    const auto ignoreSequenceSound = [](const SequenceSoundRecord&) {};
    if (resources.start(configuration.cdDrive, ignoreSequenceSound) ==
        RResources::StartUp::NoResourceFile) {
        RShowErrorBox(RWarningText(warningtext::kCannotReadCd));
        return;
    }
    installLocators(resources);
    runApplication(mode, resources, soundEngine);
    removeLocators();
    resources.shutDown();
}

} // namespace

int RGameMain(std::optional<std::uint32_t> seed) {
    OMDebug::require(OMPlatform().display().mode().depth >= kMinimumDepth, "OMSysNumColors() < 8",
                     "Video must be 256 colors or more!");
    RInstallMemoryHandler();
    EffectsWindow::setPaletteFilter(RLiftPalette);
    startLogging();
    const RConfiguration configuration = RConfiguration::read();
    {
        OMWaveEngine soundEngine;
        if (const auto mode = RCheckMachine(configuration, soundEngine, warningSwitches())) {
            OMSeedRandom(
                seed.value_or(static_cast<std::uint32_t>(OMPlatform().clock().calendarSeconds())));
            runGame(configuration, *mode, soundEngine);
        }
    }
    OMLog::close();
    OMSobException::setNotification(nullptr);
    RRemoveMemoryHandler();
    return kExitOk;
}
