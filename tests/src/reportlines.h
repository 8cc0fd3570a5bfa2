// The lines of the world's reports, as a test receives them.
#pragma once

#include "world/report.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace testing_support {

class ReportLines {
  public:
    world::Report report = [this](std::string_view line) { lines_.emplace_back(line); };

    [[nodiscard]] std::vector<std::string> take() { return std::exchange(lines_, {}); }

  private:
    std::vector<std::string> lines_;
};

} // namespace testing_support
