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
