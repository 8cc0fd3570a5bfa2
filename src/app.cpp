#include "app.h"

#include "access/keyplayer.h"
#include "access/spokentexts.h"
#include "character/speechrecords.h"
#include "commands/commands.h"
#include "commands/menucommands.h"
#include "commands/vocabulary.h"
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
#include "reload.h"
#include "resources/cursors.h"
#include "resources/fontfact.h"
#include "resources/resources.h"
#include "rthread.h"
#include "scene/backgroundmusic.h"
#include "scene/efwindow.h"
#include "scene/rscenprt.h"
#include "sound/animationsounds.h"
#include "sound/gamesounds.h"
#include "sound/streamsound.h"
#include "startup/configuration.h"
#include "startup/machinechecks.h"
#include "startup/memoryexhaustion.h"
#include "startup/programresources.h"
#include "startup/warnings.h"
#include "texts/gametexts.h"
#include "world/savedworld.h"
#include "yengine.h"
#include "yinspection.h"
#include "yprecompiled.h"

#include <utility>

namespace {

constexpr const char* kStartScript = "Startup.mps";
constexpr const char* kPlayerScript =
    "tests\\player.mps"; ///< prepares the player of a single scene
constexpr const char* kScriptExtension = ".mps";
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

/// Does something at its end, in its place among the members of its owner.
class AtEnd {
  public:
    explicit AtEnd(OMLink end) : end_(std::move(end)) {}
    ~AtEnd() { end_(); }
    AtEnd& operator=(AtEnd&&) = delete;

  private:
    OMLink end_;
};

/// What parts of the program do before the game and after it.
struct OtherParts {
    OtherParts() { OMAppInitTerm::initializeAll(); }
    ~OtherParts() { OMAppInitTerm::terminateAll(); }
    OtherParts& operator=(OtherParts&&) = delete;
};

/// The log, and who writes into it from elsewhere.
struct GameLog {
    explicit GameLog(const std::string& homeDirectory) {
        OMLog::setFallbackDirectory(homeDirectory);
        OMLog::start();
        OMSobException::setNotification(logReport);
        OMPlatform().files().setFenceLink([](const std::string& path) {
            OMLog::writef(OMLog::Kind::Error,
                          "%s is not for this game, which may open its own folder, RSC and scripts "
                          "beside it, the CD and its data folder. If the game is your own work, "
                          "start zorbet with --trust",
                          path.c_str());
        });
        OMPlatform().keepSettings(homeDirectory + kSettingsFile);
    }
    ~GameLog() {
        OMPlatform().files().setFenceLink(nullptr);
        OMLog::close();
        OMSobException::setNotification(nullptr);
    }
    GameLog& operator=(GameLog&&) = delete;
};

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

/// Window, sounds, commands and scripts: what plays, on a machine that will do, what lies in the
/// resource layer.
class Stage {
  public:
    Stage(OMApp::DisplayMode mode, RResources& resources, OMWaveEngine& soundEngine,
          SavedWorld& savedWorld, const std::string& language);
    Stage& operator=(Stage&&) = delete;

    /// From the start script, or another one, to the end of the game.
    void run(std::string scene);

  private:
    void linkApplication(OMWaveEngine& soundEngine);
    void linkScenes();

    // In the order of their making.
    RResources& resources_;
    RGameTexts texts_;
    RMovies movies_;
    OMApp app_;
    RCursors cursors_; ///< asked for as long as there is the window
    ScenePause scenePause_{[] { return RSmackerMovie::current() != nullptr; }};
    EffectsWindow window_;
    RMenuCommands menu_;
    KeyPlayer keys_;
    SpokenTexts spoken_;
    BackgroundMusic music_;
    RScriptClasses classes_; ///< also those of components, whose commands go before their code
    RGameSounds sounds_;
    FontFactory fonts_;
    RAnimationSounds animationSounds_;
    RCommands commands_;
    OMDebugWindow debugWindow_;
    YEngine engine_;
    YInspection inspection_;
};

Stage::Stage(OMApp::DisplayMode mode, RResources& resources, OMWaveEngine& soundEngine,
             SavedWorld& savedWorld, const std::string& language)
    : resources_(resources), texts_(language),
      app_(mode, OMColor(), {0, 0, EffectsWindow::kWidth, EffectsWindow::kHeight}, kScreenDepth),
      window_(windowCorner(), app_.productName(), &scenePause_), menu_(app_, window_),
      keys_(app_, window_, &RScenePort::hearsClicks), spoken_(app_, window_, keys_, texts_),
      music_(scenePause_), sounds_(resources), animationSounds_(resources),
      commands_(window_, resources, sounds_, movies_, texts_) {
    linkApplication(soundEngine);
    linkScenes();
    engine_.setTraceWindow([this](std::string_view text) { debugWindow_.showText(text); });
    engine_.setLastLink([&savedWorld] { savedWorld.saveAtOnce(); });
}

/// What is done when a box is opened and closed, when another program comes to the foreground, when
/// this one is back there, and when it is about to end.
void Stage::linkApplication(OMWaveEngine& soundEngine) {
    app_.setBoxLink(OMLinkToObj(&movies_, &RMovies::hold));
    app_.setBackgroundLink([this, &soundEngine] {
        movies_.holdInBackground(true);
        spoken_.setInBackground(true);
        RScenePort::tellPaused();
        soundEngine.suspend();
    });
    app_.setForegroundLink([this, &soundEngine] {
        soundEngine.resume();
        window_.restoreScreen();
        RScenePort::tellResumed();
        movies_.holdInBackground(false);
        spoken_.setInBackground(false);
    });
    app_.setStopLink(&RScenePort::tellExitting);
}

void Stage::linkScenes() {
    const auto locator = [this](std::string_view type) {
        return [this, type](int id) { return resources_.load(id, type, kOMIStreamCache); };
    };
    window_.setBackgroundLocator(locator("ASEQ"));
    window_.setPaletteLocator(locator("RRGB"));
    window_.setPaletteFilter(RLiftPalette);
    fonts_.setNFNTLocator(locator("NFNT"));
    fonts_.addGameSubstitutions();
}

void Stage::run(std::string scene) {
    if (!scene.empty() && !scene.ends_with(kScriptExtension)) scene += kScriptExtension;
    const bool isPrepared = !scene.empty() && OMPlatform().files().exists(kPlayerScript);
    const std::string first = isPrepared ? kPlayerScript : scene.empty() ? kStartScript : scene;
    YThread thread(engine_, first.c_str(), [this](std::string_view name) {
        auto stream = locateScript(name);
        if (!stream && name == kStartScript) RTellNoStartScript(resources_.roots(), kStartScript);
        return stream;
    });
    if (isPrepared)
        thread.setEndReachedLink([&] {
            if (!scene.empty()) thread.switchToScript(std::exchange(scene, {}));
        });
    if (thread.isLoaded()) {
        thread.run();
        thread.fireStarted();
    }
    const RReload reload(engine_, thread,
                         {resources_, cursors_, fonts_, sounds_, music_, window_, texts_, spoken_},
                         kStartScript, locateScript);
    app_.run();
    thread.unload();
}

RConfiguration readConfiguration(const std::string& homeDirectory) {
    OMPlatform().closeIn(); // the home is there by now
    return RConfiguration::read(homeDirectory);
}

/// The game in progress, from the start of the program to its end. Whoever is found by name
/// (OMApp::getApp, YEngine::current, WorldMemory::current, ...) is one of its members or a part of
/// one.
class RGame {
  public:
    RGame() = default;
    RGame& operator=(RGame&&) = delete;

    void run(const RGameStart& start);

  private:
    [[nodiscard]] bool startResources();

    // In the order of their making. What is declared later goes first.
    OtherParts otherParts_;
    RMemoryHandler memoryHandler_;
    const std::string homeDirectory_ = RConfiguration::findHomeDirectory();
    GameLog log_{homeDirectory_};
    SavedWorld savedWorld_{homeDirectory_};
    const RConfiguration configuration_ = readConfiguration(homeDirectory_);
    OMWaveEngine soundEngine_;
    RResources resources_;
    RSpeechRecords speeches_{[this](int sound) { resources_.addStreamedSound(sound); },
                             [this](int sound) { resources_.removeStreamedSound(sound); }};
    RSoundStreams sounds_{[this](int id, int mode) { return resources_.load(id, "WAVE", mode); }};
    AtEnd locator_{[] { AOImage::setSourceLocator(nullptr); }}; ///< set by startResources
    std::optional<LapTrapLayouts> progressLayouts_;
    AtEnd saving_{[this] { savedWorld_.shutDown(); }}; ///< before the resources go
    std::optional<Stage> stage_;
};

bool RGame::startResources() {
    resources_.setHomeDirectory(configuration_.homeDirectory);
    AOImage::setSourceLocator(
        [this](int id) { return resources_.load(id, "ASEQ", kOMIStreamCache); });
    const auto toldSound = OMLinkToObj(&speeches_, &RSpeechRecords::addSequenceSound);
    if (resources_.start(configuration_.cdDrive, toldSound) == RResources::StartUp::Ready)
        return true;
    RTellNoLibrary(resources_.roots());
    RShowErrorBox(RWarningText(warningtext::kCannotReadCd));
    return false;
}

void RGame::run(const RGameStart& start) {
    const auto mode = RCheckMachine(configuration_, soundEngine_, savedWorld_.switches());
    if (!mode) return;
    OMSeedRandom(
        start.seed.value_or(static_cast<std::uint32_t>(OMPlatform().clock().calendarSeconds())));
    if (!startResources()) return;
    progressLayouts_.emplace(ProgressLayouts::find());
    stage_.emplace(*mode, resources_, soundEngine_, savedWorld_, start.language);
    stage_->run(start.scene);
}

} // namespace

int RGameMain(const RGameStart& start) {
    OMDebug::require(OMPlatform().display().mode().depth >= kMinimumDepth, "OMSysNumColors() < 8",
                     "Video must be 256 colors or more!");
    do {
        RGame().run(start);
    } while (OMPlatform().beginsAgain());
    return kExitOk;
}
