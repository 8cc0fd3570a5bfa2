// What can be seen in the lines of a script without compiling it.
#pragma once

#include "zorbetmps/check/finding.h"

#include <functional>
#include <string>
#include <string_view>

namespace mps {

using TellLine = std::function<void(Rule, int line, int column, const std::string& text)>;

/// Lines end with CR, or with LF where there is no CR.
void checkLines(std::string_view text, const TellLine& tell);

} // namespace mps
