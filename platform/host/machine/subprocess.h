// Another program that is run to its end, or beside this one.
#pragma once

#include "platform/host/files/descriptor.h"

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
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

/// A program that runs while this one goes on. It is killed when this object goes before its end.
class ProgramBeside {
  public:
    /// The first argument is the program's path; `folder` is where it runs.
    ProgramBeside(const std::vector<std::string>& arguments, const std::filesystem::path& folder,
                  std::chrono::seconds mostTime = std::chrono::seconds{300});
    ~ProgramBeside();
    ProgramBeside& operator=(ProgramBeside&&) = delete;

    /// As `run` tells it; none while the program runs. Does not wait.
    [[nodiscard]] std::optional<std::string> ended();
    /// What it has printed so far, on standard output and error.
    [[nodiscard]] std::string printed() const;

  private:
    static constexpr pid_t kNone = 0;

    std::chrono::seconds mostTime_;
    std::chrono::steady_clock::time_point lastMoment_;
    Descriptor output_; ///< a file without a name
    pid_t child_ = kNone;
    std::optional<std::string> end_;
};

} // namespace platform
