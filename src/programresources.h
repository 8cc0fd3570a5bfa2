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
inline constexpr int kCannotSwitch = 1001;
inline constexpr int kNoDriver = 1002;
inline constexpr int kOldProcessor = 1010;
inline constexpr int kLargeScreen = 1015;
inline constexpr int kSmallScreen = 1016;
inline constexpr int kManyColors = 1017;
inline constexpr int kFewColors = 1018;
inline constexpr int kNoSound = 1019;
inline constexpr int kLittleMemory = 1020;
inline constexpr int kNoMoreMemory = 1021;
inline constexpr int kLittleSpace1 = 1022; ///< in front of the drive
inline constexpr int kLittleSpace2 = 1023; ///< in front of the megabytes
inline constexpr int kLittleSpace3 = 1024; ///< in front of the drive again
inline constexpr int kLittleSpace4 = 1025;
inline constexpr int kCannotReadCd = 1026;
inline constexpr int kDoNotShowAgain = 1027;
inline constexpr int kReallyLeave = 1100; ///< of the exit screen, which is no warning
} // namespace warningtext
