#include "startup/machinechecks.h"

#include "omformat.h"
#include "omlog.h"
#include "omplatform.h"
#include "omwaveengine.h"
#include "scene/efwindow.h"
#include "startup/programresources.h"

namespace {

using DisplayMode = OMApp::DisplayMode;
using Kind = OMLog::Kind;

constexpr std::uint64_t kLeastMemory = 8'388'608; ///< bytes
constexpr double kLeastSpace = 10'485'760;        ///< bytes
constexpr int kSpaceInText = 10;                  ///< megabytes
constexpr platform::ScreenMode kGameMode{EffectsWindow::kWidth, EffectsWindow::kHeight, 8};

bool fail(int textId) {
    RShowErrorBox(RWarningText(textId));
    return false;
}

class MachineChecks {
  public:
    MachineChecks(const RConfiguration& configuration, OMWaveEngine& soundEngine,
                  const RWarningSwitches& switches)
        : configuration_(configuration), soundEngine_(soundEngine), switches_(switches) {}

    std::optional<DisplayMode> run() {
        if (!checkProcessor() || !checkMemory() || !checkSound()) return std::nullopt;
        logScreen();
        const std::optional<DisplayMode> mode = chooseBackEnd();
        return mode && checkSpace() ? mode : std::nullopt;
    }

  private:
    static bool checkProcessor() {
        if (!OMPlatform().machine().hasIntel386()) return true;
        OMLog::write(Kind::Error, "x386 found, cannot run");
        return fail(warningtext::kOldProcessor);
    }

    static bool checkMemory() {
        const std::uint64_t free = OMPlatform().machine().availableMemory();
        OMLog::writef(Kind::Message, "Free memory: %ld", static_cast<long>(free));
        return free >= kLeastMemory || fail(warningtext::kLittleMemory);
    }

    /// The device stays open: opening it takes longer than a child waits for a sound. A silent one
    /// is good enough to play with.
    bool checkSound() {
        const bool opened = soundEngine_.testDevice(true);
        const bool heard = opened && !soundEngine_.isSilent();
        OMLog::writef(Kind::Message, "WAVE driver is%s available", heard ? "" : " not");
        return opened || fail(warningtext::kNoSound);
    }

    static void logScreen() {
        const platform::ScreenMode desktop = OMPlatform().display().mode();
        OMLog::writef(Kind::Message, "Current screen size is %d X %d", desktop.width,
                      desktop.height);
        OMLog::writef(Kind::Message, "Current screen bit depth: %d", desktop.depth);
        OMLog::writef(Kind::Message, "DirectDraw is%s available", canSwitch() ? "" : " not");
    }

    static bool canSwitch() {
        const platform::Display& display = OMPlatform().display();
        return display.hasDriver() && display.canBeExclusive(kGameMode);
    }

    [[nodiscard]] std::optional<DisplayMode> chooseBackEnd() const {
        if (!configuration_.useDirectDraw) {
            if (!checkDesktop()) return std::nullopt;
            return useBitmaps(Kind::Message, "Using GDI");
        }
        if (!OMPlatform().display().hasDriver()) {
            if (!RMayGoOn(warningtext::kNoDriver, "informDirectDrawNotFoundWarning", switches_))
                return std::nullopt;
            return useBitmaps(Kind::Warning,
                              "Trying to use DirectDraw, but unable to load DLL, using GDI");
        }
        if (!canSwitch()) {
            if (!RMayGoOn(warningtext::kCannotSwitch, "informDirectDrawSwitchFailedWarning",
                          switches_))
                return std::nullopt;
            return useBitmaps(Kind::Warning,
                              "Trying to use DirectDraw, but unable to switch to requested "
                              "resolution and color depth, using GDI");
        }
        OMApp::useDirectDraw();
        if (!configuration_.displayFullScreen) {
            OMLog::write(Kind::Message, "Displaying in upper left corner using DirectDraw");
            return DisplayMode::PopUp;
        }
        OMLog::write(Kind::Message, "Displaying Full Screen using DirectDraw");
        return DisplayMode::FullScreen;
    }

    static DisplayMode useBitmaps(Kind kind, const char* text) {
        OMApp::useGDI();
        OMLog::write(kind, text);
        return DisplayMode::PopUp;
    }

    /// A window of bitmaps takes the desktop as it is.
    [[nodiscard]] bool checkDesktop() const {
        const platform::ScreenMode desktop = OMPlatform().display().mode();
        if (desktop.width < kGameMode.width || desktop.height < kGameMode.height)
            return fail(warningtext::kSmallScreen);
        const bool same = desktop.width == kGameMode.width && desktop.height == kGameMode.height;
        if (!same && !RMayGoOn(warningtext::kLargeScreen, "informResolutionWarning", switches_))
            return false;
        if (desktop.depth < kGameMode.depth) return fail(warningtext::kFewColors);
        return desktop.depth == kGameMode.depth ||
               RMayGoOn(warningtext::kManyColors, "informColorsWarning", switches_);
    }

    [[nodiscard]] bool checkSpace() const {
        const char drive =
            configuration_.homeDirectory.empty() ? 'C' : configuration_.homeDirectory.front();
        const std::string name(1, drive);
        const auto free = static_cast<double>(
            OMPlatform().files().freeSpace(configuration_.homeDirectory).value_or(0));
        OMLog::writef(Kind::Message, "HD Free Space on Drive %s: %.0f", name.c_str(), free);
        if (free >= kLeastSpace) return true;
        RShowErrorBox(RWarningText(warningtext::kLittleSpace1) + name +
                      RWarningText(warningtext::kLittleSpace2) + OMFormat("%d", kSpaceInText) +
                      RWarningText(warningtext::kLittleSpace3) + name +
                      RWarningText(warningtext::kLittleSpace4));
        return false;
    }

    const RConfiguration& configuration_;
    OMWaveEngine& soundEngine_;
    const RWarningSwitches& switches_;
};

} // namespace

std::optional<DisplayMode> RCheckMachine(const RConfiguration& configuration,
                                         OMWaveEngine& soundEngine,
                                         const RWarningSwitches& switches) {
    return MachineChecks(configuration, soundEngine, switches).run();
}
