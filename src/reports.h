// What the game's objects tell the authors of scripts: shown in a box, and reported to whoever
// listens to the script objects (the log).
#pragma once

#include <string_view>

/// A mistake in a script, in the application's alert box.
void RWarn(std::string_view text);

/// Something that could not be done, in a message box.
void RTell(std::string_view text);
