#include "commands/soundcommands.h"

#include "omscrptb.h"
#include "sound/gamesounds.h"

constexpr RCommandRow<RSoundCommands> RSoundCommands::kRows[] = {
    RCommand<&RSoundCommands::killSound>("KillSound", "handle"),
    RCommand<&RSoundCommands::pauseSound>("PauseSound", "handle"),
    RCommand<&RSoundCommands::playSound>("PlaySound", "id [loop]"),
    RCommand<&RSoundCommands::resumeSound>("ResumeSound", "handle"),
};

RSoundCommands::RSoundCommands(RGameSounds& sounds) : sounds_(sounds) {
    RRegisterCommands(*this, kRows);
}

std::vector<RCommandWords> RSoundCommands::words() { return RCommandWordsOf(kRows); }

void RSoundCommands::killSound(int handle) { sounds_.kill(handle); }

void RSoundCommands::pauseSound(int handle) { sounds_.pause(handle); }

/// RESULT gets the handle.
void RSoundCommands::playSound(int id, bool loop) {
    OMScriptableObject::setResult(sounds_.play(id, nullptr, loop));
}

void RSoundCommands::resumeSound(int handle) { sounds_.resume(handle); }
