#include "soundcommands.h"

#include "gamesounds.h"
#include "omsarguments.h"
#include "omscrptb.h"

namespace {

int nextNumber() { return OMSArguments::global().nextInteger(); }

} // namespace

constexpr RCommandRow<RSoundCommands> RSoundCommands::kRows[] = {
    {"KillSound", &RSoundCommands::killSound},
    {"PauseSound", &RSoundCommands::pauseSound},
    {"PlaySound", &RSoundCommands::playSound},
    {"ResumeSound", &RSoundCommands::resumeSound},
};

RSoundCommands::RSoundCommands(RGameSounds& sounds) : sounds_(sounds) {
    RRegisterCommands(*this, kRows);
}

void RSoundCommands::registerNames() { RRegisterCommandNames(kRows); }

void RSoundCommands::killSound() { sounds_.kill(nextNumber()); }

void RSoundCommands::pauseSound() { sounds_.pause(nextNumber()); }

/// RESULT gets the handle.
void RSoundCommands::playSound() {
    const int id = nextNumber();
    const bool loop = nextNumber() != 0; // a missing one is 0
    OMScriptableObject::setResult(sounds_.play(id, nullptr, loop));
}

void RSoundCommands::resumeSound() { sounds_.resume(nextNumber()); }
