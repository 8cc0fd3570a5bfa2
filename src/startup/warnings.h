// The boxes of the program itself: errors, after which it ends, and warnings, which a person may
// answer by going on, and switch off for good. What the player is told in the middle of the game.
#pragma once

#include "omlink.h"

#include <span>
#include <string>
#include <string_view>

/// Where the switches are kept: named values as texts, "0" for a warning that is not wanted.
struct RWarningSwitches {
    OMLinkTo<std::string(std::string_view name)> read;
    OMLinkTo<void(std::string_view name, std::string_view value)> write;
};

/// A box with the stop icon, of no window.
void RShowErrorBox(const std::string& text);

/// What the player is to know and need not answer, in a box where somebody plays; the game goes on.
void RTellPlayer(const std::string& text);

/// Whether the player wants something tried again; a box that nobody answers means that they do
/// not.
[[nodiscard]] bool RAskToRetry(const std::string& text);

/// Shows the warning `textId` unless its switch is off. False when the person wants to stop.
[[nodiscard]] bool RMayGoOn(int textId, std::string_view switchName,
                            const RWarningSwitches& switches);

// What of a game was looked for and is not there, told to whoever started the program. `roots` are
// the folders that were searched (RResources::roots).
void RTellNoLibrary(std::span<const std::string> roots);
void RTellNoStartScript(std::span<const std::string> roots, const std::string& script);
