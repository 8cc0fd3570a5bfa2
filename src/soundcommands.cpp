#include "soundcommands.h"

#include "gamesounds.h"
#include "omsarguments.h"
#include "omscrptb.h"
#include "ykeyword.h"

namespace {

int nextHandle() { return OMSArguments::global().nextInteger(); }

/// RESULT gets the handle.
void playSound(RGameSounds& sounds) {
    const int id = OMSArguments::global().nextInteger();
    const bool loop = OMSArguments::global().nextInteger() != 0; // a missing one is 0
    OMScriptableObject::setResult(sounds.play(id, nullptr, loop));
}

} // namespace

void RRegisterSoundCommands(RGameSounds& sounds) {
    YCommands::add("KillSound", [&sounds] { sounds.kill(nextHandle()); });
    YCommands::add("PauseSound", [&sounds] { sounds.pause(nextHandle()); });
    YCommands::add("PlaySound", [&sounds] { playSound(sounds); });
    YCommands::add("ResumeSound", [&sounds] { sounds.resume(nextHandle()); });
}
