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
#include "yengine.h"

namespace {

constexpr const char* kStartScript = "Startup.mps";
constexpr std::string_view kErrorCaption = "Error";
constexpr std::uint64_t kLargestScript = 1U << 24; ///< bytes; texts are much shorter
constexpr int kScreenDepth = 8;
constexpr int kMinimumDepth = 8;
constexpr int kExitOk = 0;

void showErrorBox(const std::string& text) {
    OMPlatform().dialogs().messageBox(text, kErrorCaption, platform::boxstyle::kIconStop);
}

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

/// The device stays open: opening it takes longer than a child waits for a sound.
void testSoundDevice(OMWaveEngine& soundEngine) {
    if (soundEngine.testDevice(true))
        OMLog::write(OMLog::Kind::Message, "WAVE driver is available");
    else
        OMLog::write(OMLog::Kind::Error, "WAVE driver is not available");
}

/// Surfaces when the configuration asks for them and the machine can switch its screen for them,
/// else bitmaps. To be called before there is an application.
OMApp::DisplayMode chooseBackEnd(const RConfiguration& configuration) {
    constexpr platform::ScreenMode kMode{EffectsWindow::kWidth, EffectsWindow::kHeight,
                                         kScreenDepth};
    const bool possible = OMPlatform().display().canBeExclusive(kMode);
    if (!configuration.useDirectDraw || !possible) {
        OMApp::useGDI();
        if (configuration.useDirectDraw)
            OMLog::write(OMLog::Kind::Warning,
                         "Trying to use DirectDraw, but unable to switch to requested resolution "
                         "and color depth, using GDI");
        else
            OMLog::write(OMLog::Kind::Message, "Using GDI");
        return OMApp::DisplayMode::PopUp;
    }
    OMApp::useDirectDraw();
    if (configuration.displayFullScreen) {
        OMLog::write(OMLog::Kind::Message, "Displaying Full Screen using DirectDraw");
        return OMApp::DisplayMode::FullScreen;
    }
    OMLog::write(OMLog::Kind::Message, "Displaying in upper left corner using DirectDraw");
    return OMApp::DisplayMode::PopUp;
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

/// Application, window and scripts, from their making to their end. What is declared later goes
/// first.
void runApplication(OMApp::DisplayMode mode, RResources& resources, OMWaveEngine& soundEngine) {
    OMApp app(mode, OMColor(), {0, 0, EffectsWindow::kWidth, EffectsWindow::kHeight}, kScreenDepth);
    resources.setAlertLink([&app](std::string_view text) { app.alert(text); });
    const RCursors cursors; // asked for as long as there is the window
    EffectsWindow window(windowCorner(), app.productName());
    app.setCommandHandler([](int command) { return OMLog::handleCommand(command); });
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

} // namespace

int RGameMain(std::optional<std::uint32_t> seed) {
    OMDebug::require(OMPlatform().display().mode().depth >= kMinimumDepth, "OMSysNumColors() < 8",
                     "Video must be 256 colors or more!");
    EffectsWindow::setPaletteFilter(RLiftPalette);
    startLogging();
    const RConfiguration configuration = RConfiguration::read();
    OMSeedRandom(seed.value_or(static_cast<std::uint32_t>(OMPlatform().clock().calendarSeconds())));

    RResources resources;
    resources.setHomeDirectory(configuration.homeDirectory);
    const auto ignoreSequenceSound = [](const SequenceSoundRecord&) {};
    if (resources.start(configuration.cdDrive, ignoreSequenceSound) ==
        RResources::StartUp::NoResourceFile) {
        showErrorBox(RWarningText(warningtext::kCannotReadCd));
        return kExitOk;
    }
    installLocators(resources);
    OMWaveEngine soundEngine;
    testSoundDevice(soundEngine);
    runApplication(chooseBackEnd(configuration), resources, soundEngine);
    removeLocators();
    resources.shutDown();
    OMLog::close();
    OMSobException::setNotification(nullptr);
    return kExitOk;
}
