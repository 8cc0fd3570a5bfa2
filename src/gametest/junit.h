// Results of tests in the XML that build servers read, as the JUnit tasks of Ant began it.
#pragma once

#include "gametest/gametests.h"

namespace gametest {

/// False when the file cannot be written.
[[nodiscard]] bool writeJUnit(const std::filesystem::path& file, const std::string& game,
                              const std::vector<Result>& results);

} // namespace gametest
