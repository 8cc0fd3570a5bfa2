// Another program that is run to its end.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace platform {

struct Subprocess {
    std::vector<std::string> arguments; ///< the first one is the program's path
    std::filesystem::path folder;       ///< in which it runs
    std::filesystem::path output;       ///< files that get what it prints
    std::filesystem::path errors;
    std::chrono::seconds mostTime{300}; ///< then it is killed
};

/// How it ended: "" in order, with the exit code 0; else what happened, such as "it ended with 2".
[[nodiscard]] std::string run(const Subprocess& process);

} // namespace platform
