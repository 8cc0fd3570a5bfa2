// The machine that the framework runs on, installed once before anything else of the framework is
// used and removed after everything is gone.
#pragma once

#include "platform/platform.h"

/// Not owned. Null removes it.
void OMSetPlatform(platform::Platform* platform);

[[nodiscard]] bool OMHasPlatform();

/// Fatal error of the process when none is installed.
[[nodiscard]] platform::Platform& OMPlatform();

/// The millisecond clock of the whole program; wraps.
[[nodiscard]] inline std::uint32_t OMMilliseconds() { return OMPlatform().clock().milliseconds(); }

/// Ends the process at once, wherever it is. What was handed to OMAtSuddenEnd is done before.
[[noreturn]] void OMEndProcess(int exitCode);

/// For what must not be left behind on the machine when the program ends in the middle: a function
/// that waits for nothing and trusts nothing. May be given several times, is called once.
void OMAtSuddenEnd(void (*clean)());
