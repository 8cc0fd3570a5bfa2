// The usage and options of a program as a page in Markdown, for the site of the documents.
#pragma once

#include "platform/commandline/programtext.h"

#include <string>

namespace commandline {

/// A heading for each command, and tables of options.
[[nodiscard]] std::string optionsPageOf(const ProgramText& program);

} // namespace commandline
