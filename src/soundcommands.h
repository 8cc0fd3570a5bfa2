// The commands of the script language that play sounds.
#pragma once

class RGameSounds;

/// Registers `PlaySound`, `KillSound`, `PauseSound` and `ResumeSound`. The sounds must outlive the
/// registration, which ends with that of all commands.
void RRegisterSoundCommands(RGameSounds& sounds);
