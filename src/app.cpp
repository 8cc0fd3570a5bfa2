#include "app.h"

#include "actions/actiontypes.h"
#include "actions/sndact.h"
#include "character/speechrecords.h"
#include "commands/commands.h"
#include "commands/menucommands.h"
#include "commands/resourcecommands.h"
#include "commands/scriptclasses.h"
#include "commands/soundcommands.h"
#include "movie/rsmackermovie.h"
#include "omapp.h"
#include "omappinitterm.h"
#include "omdebugwindow.h"
#include "omistreamfile.h"
#include "omlog.h"
#include "ompath.h"
#include "omplatform.h"
#include "omrandom.h"
#include "omresourcelog.h"
#include "omsexception.h"
#include "omsregistry.h"
#include "omwaveengine.h"
#include "progress/rlaptrap.h"
#include "ranimation.h"
#include "resources/cursors.h"
#include "resources/fontfact.h"
#include "resources/palettehook.h"
#include "resources/resources.h"
#include "rthread.h"
#include "scene/efwindow.h"
#include "scene/rscenprt.h"
#include "sound/animationsounds.h"
#include "sound/backgroundmusic.h"
#include "sound/gamesounds.h"
#include "startup/configuration.h"
#include "startup/machinechecks.h"
#include "startup/memoryexhaustion.h"
#include "startup/missingparts.h"
#include "startup/programresources.h"
#include "startup/warnings.h"
#include "world/savedworld.h"
#include "yengine.h"
#include "yprecompiled.h"

#include <utility>

namespace {

constexpr const char* kStartScript = "Startup.mps";
constexpr const char* kSettingsFile = "settings.ini";
constexpr int kScreenDepth = 8;
constexpr int kMinimumDepth = 8;
constexpr int kExitOk = 0;

/// The reports of script objects go to the log.
void logReport(const OMSobException& report) {
    const auto kind = report.kind() == OMSobException::kMessage   ? OMLog::Kind::Message
                      : report.kind() == OMSobException::kWarning ? OMLog::Kind::Warning
                                                                  : OMLog::Kind::Error;
    OMLog::write(kind, report.text());
}

void startLogging(const std::string& homeDirectory) {
    OMLog::setFallbackDirectory(homeDirectory);
    OMLog::start();
    OMSobException::setNotification(logReport);
    OMPlatform().files().setFenceLink([](const std::string& path) {
        OMLog::writef(OMLog::Kind::Error,
                      "%s is not for this game, which may open its own folder, RSC and scripts "
                      "beside it, the CD and its data folder. If the game is your own work, start "
                      "zorbet with --trust",
                      path.c_str());
    });
}

/// Scripts that are no file of the current directory are looked for in the "scripts\" directories.
std::unique_ptr<OMIStream> locateScript(std::string_view name) {
    const auto path = OMPathResolveFilename(name);
    const auto file = path ? OMPlatform().files().open(*path, platform::OpenMode::Read) : nullptr;
    // Nobody reads a larger one to its end.
    const bool whole = file && file->size() <= kYMaxPrecompiledSize;
    if (file)
        return std::make_unique<OMIStreamFile>(*path, whole ? kOMIStreamCache : kOMIStreamBuffered);
    if (path) OMLogUnreadable(*path, "See who may read it");
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
    SoundAction::setStreamLocator(
        [&resources](int id, int bufferMode) { return resources.load(id, "WAVE", bufferMode); });
    RSpeechRecords::setStreamLinks(
        [&resources](int sound) { resources.addStreamedSound(sound); },
        [&resources](int sound) { resources.removeStreamedSound(sound); });
}

void removeLocators() {
    EffectsWindow::setBackgroundLocator(nullptr);
    EffectsWindow::setPaletteLocator(nullptr);
    OMAnimation::setSourceLocator(nullptr);
    SoundAction::setStreamLocator(nullptr);
    RSpeechRecords::clear();
}

/// Holds all movies while the game is in the background. Hosts may tell twice that one comes or
/// goes.
class BackgroundHold {
  public:
    BackgroundHold() = default;
    ~BackgroundHold() { set(false); }
    BackgroundHold(const BackgroundHold&) = delete;
    BackgroundHold& operator=(const BackgroundHold&) = delete;

    void set(bool on) {
        if (std::exchange(on_, on) != on) RSmackerMovie::holdAll(on);
    }

  private:
    bool on_ = false;
};

/// What is done when a box is opened and closed, when another program comes to the foreground, when
/// this one is back there, and when it is about to end.
void installLinks(OMApp& app, OMWaveEngine& soundEngine, EffectsWindow& window,
                  BackgroundHold& movies) {
    app.setBoxLink(&RSmackerMovie::holdAll);
    app.setBackgroundLink([&soundEngine, &movies] {
        movies.set(true);
        RScenePort::tellPaused();
        soundEngine.suspend();
    });
    app.setForegroundLink([&soundEngine, &window, &movies] {
        soundEngine.resume();
        window.restoreScreen();
        RScenePort::tellResumed();
        movies.set(false);
    });
    app.setStopLink(&RScenePort::tellExitting);
}

/// Application, window and scripts, from their making to their end. What is declared later goes
/// first.
void runApplication(OMApp::DisplayMode mode, RResources& resources, OMWaveEngine& soundEngine,
                    SavedWorld& savedWorld) {
    BackgroundHold backgroundHold;
    OMApp app(mode, OMColor(), {0, 0, EffectsWindow::kWidth, EffectsWindow::kHeight}, kScreenDepth);
    resources.setAlertLink([&app](std::string_view text) { app.alert(text); });
    const RCursors cursors; // asked for as long as there is the window
    ScenePause scenePause;
    EffectsWindow window(windowCorner(), app.productName());
    window.setTransitionStart([&scenePause] { scenePause.raise(RScenePort::exists()); });
    window.setTransitionEnd([&scenePause] { scenePause.lower(); });
    scenePause.setMovieIsCurrent([] { return RSmackerMovie::current() != nullptr; });
    RMenuCommands menu(app, window);
    menu.setMovieCollector([] {
        if (RSmackerMovie* movie = RSmackerMovie::current()) movie->setCollecting(true);
    });
    installLinks(app, soundEngine, window, backgroundHold);
    BackgroundMusic music(scenePause);
    music.setStreamSource(
        [&resources](int id, int bufferMode) { return resources.load(id, "WAVE", bufferMode); });

    const RScriptClasses classes; // also those of components, whose commands go before their code
    RGameSounds sounds(resources);
    FontFactory fonts;
    fonts.setNFNTLocator(
        [&resources](int id) { return resources.load(id, "NFNT", kOMIStreamCache); });
    fonts.addGameSubstitutions();
    const RAnimationSounds animationSounds(resources);
    const RActionTypes actionTypes;
    RCommands commands(window);
    commands.setPaletteRestorer(RSmackerMovie::restoreWindowPalette);
    RResourceCommands resourceCommands(resources);
    RSoundCommands soundCommands(sounds);
    OMDebugWindow debugWindow;
    YEngine engine;
    engine.setTraceWindow([&debugWindow](std::string_view text) { debugWindow.showText(text); });
    engine.setLastLink([&savedWorld] { savedWorld.saveAtOnce(); });
    YThread thread(engine, kStartScript, [&resources](std::string_view name) {
        auto stream = locateScript(name);
        if (!stream && name == kStartScript) RTellNoStartScript(resources.roots(), kStartScript);
        return stream;
    });
    if (thread.isLoaded()) {
        thread.run();
        thread.fireStarted();
    }
    app.run();
    thread.unload();
    resources.setAlertLink(nullptr);
}

/// The resource layer, and all that needs it. The world is saved before the resources go.
void runGame(const RConfiguration& configuration, OMApp::DisplayMode mode,
             OMWaveEngine& soundEngine, SavedWorld& savedWorld) {
    RResources resources;
    resources.setHomeDirectory(configuration.homeDirectory);
    if (resources.start(configuration.cdDrive, RSpeechRecords::addSequenceSound) ==
        RResources::StartUp::NoResourceFile) {
        RTellNoLibrary(resources.roots());
        RShowErrorBox(RWarningText(warningtext::kCannotReadCd));
        return;
    }
    installLocators(resources);
    RLapTrap::setLayouts(ProgressLayouts::find());
    runApplication(mode, resources, soundEngine, savedWorld);
    savedWorld.shutDown();
    removeLocators();
    resources.shutDown();
}

} // namespace

int RGameMain(std::optional<std::uint32_t> seed) {
    OMDebug::require(OMPlatform().display().mode().depth >= kMinimumDepth, "OMSysNumColors() < 8",
                     "Video must be 256 colors or more!");
    OMAppInitTerm::initializeAll();
    RInstallMemoryHandler();
    EffectsWindow::setPaletteFilter(RLiftPalette);
    const std::string homeDirectory = RConfiguration::findHomeDirectory();
    startLogging(homeDirectory);
    OMPlatform().keepSettings(homeDirectory + kSettingsFile);
    {
        SavedWorld savedWorld(homeDirectory);
        OMPlatform().closeIn(); // the home is there by now
        const RConfiguration configuration = RConfiguration::read(homeDirectory);
        OMWaveEngine soundEngine;
        if (const auto mode = RCheckMachine(configuration, soundEngine, savedWorld.switches())) {
            OMSeedRandom(
                seed.value_or(static_cast<std::uint32_t>(OMPlatform().clock().calendarSeconds())));
            runGame(configuration, *mode, soundEngine, savedWorld);
        }
        savedWorld.shutDown();
    }
    EffectsWindow::setPaletteFilter(nullptr);
    OMPlatform().files().setFenceLink(nullptr);
    OMLog::close();
    OMSobException::setNotification(nullptr);
    RRemoveMemoryHandler();
    OMAppInitTerm::terminateAll();
    return kExitOk;
}
