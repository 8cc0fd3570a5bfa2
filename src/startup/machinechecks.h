// What the machine must have before the game runs on it, and what its window is made of.
#pragma once

#include "omapp.h"
#include "startup/configuration.h"
#include "startup/warnings.h"

#include <optional>

class OMWaveEngine;

/// Looks at everything in turn, asks the person where it matters, and logs what it found. The mode
/// of the main window, for which surfaces or bitmaps are chosen then; none when the game must not
/// run, which the person was told. To be called before there is an application.
[[nodiscard]] std::optional<OMApp::DisplayMode> RCheckMachine(const RConfiguration& configuration,
                                                              OMWaveEngine& soundEngine,
                                                              const RWarningSwitches& switches);
