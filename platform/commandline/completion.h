// What shells are to know of a program to complete its command lines.
#pragma once

#include "platform/commandline/programtext.h"

#include <string>

namespace commandline {

/// For the folders in which the shells look for completions.
[[nodiscard]] std::string bashCompletionOf(const ProgramText& program);
[[nodiscard]] std::string fishCompletionOf(const ProgramText& program);
[[nodiscard]] std::string zshCompletionOf(const ProgramText& program);

} // namespace commandline
