// The manual of a program, for man(1).
#pragma once

#include "platform/commandline/programtext.h"

#include <string>

namespace commandline {

/// `date` is that of the release, "2026-11-27".
[[nodiscard]] std::string manualOf(const ProgramText& program, const std::string& date);

} // namespace commandline
