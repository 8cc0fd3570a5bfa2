#include "commands/menucommands.h"

#include "movie/rsmackermovie.h"
#include "omapp.h"
#include "omlog.h"
#include "scene/efwindow.h"
#include "scene/rscenprt.h"
#include "startup/programresources.h"

#include <algorithm>

namespace {

constexpr int kExitCommand = 59396;
constexpr int kFlashCommand = 59411;
constexpr int kFlashMs = 10; ///< the command turns a delay d into this less d
constexpr int kMostFlashMs = 100;
constexpr std::uint16_t kControlQ = 'Q' - 0x40;

const std::vector<OMAccelerator> kAccelerators{
    {{' ', false}, RScenePort::kSpaceCommand},
    {{static_cast<std::uint16_t>(platform::Key::Enter), false}, RScenePort::kReturnCommand},
    {{kControlQ, true}, kExitCommand},
};

} // namespace

RMenuCommands::RMenuCommands(OMApp& app, EffectsWindow& window) : app_(app), window_(window) {
    app.setCommandHandler([this](int command) { return handle(command); });
    // A name that is typed may have a blank in it.
    app.setAccelerators(kAccelerators, [&window] { return window.input().focus() != nullptr; });
}

bool RMenuCommands::handle(int command) {
    if (OMLog::handleCommand(command) || RScenePort::handleCommand(command)) return true;
    switch (command) {
    case kExitCommand: openExitScreen(); return true;
    case kFlashCommand: toggleFlash(); return true;
    default: return false;
    }
}

void RMenuCommands::openExitScreen() {
    if (RSmackerMovie* movie = RSmackerMovie::current()) movie->setCollecting(true);
    RScenePort::tellPaused();
    if (!app_.isRunning()) return; // a handler has ended the game
    if (app_.ask(RWarningText(warningtext::kReallyLeave), app_.productName()))
        app_.stop();
    else
        RScenePort::tellResumed();
}

void RMenuCommands::toggleFlash() {
    window_.setFlashDelay(std::clamp(kFlashMs - window_.flashDelay(), 0, kMostFlashMs));
}
