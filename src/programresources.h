// What the program carries itself: its texts and its version strings. All texts that a translator
// has to know are in the table of programresources.cpp.
#pragma once

#include "platform/host/hostmodules.h"

#include <span>
#include <string>

/// Tables for the platform's modules; they live as long as the program.
[[nodiscard]] std::span<const platform::ProgramResource> RProgramResources();
[[nodiscard]] std::span<const platform::VersionString> RVersionStrings();

/// A warning text by its number, Latin-1. One that is missing is replaced by a text that says so,
/// and logged as an error.
[[nodiscard]] std::string RWarningText(int id);

namespace warningtext {
inline constexpr int kCannotReadCd = 1026;
}
