// What the benchmark programs have in common: the option "--repetitions", usage and exit codes. A
// program adds options of its own before it runs.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <string>

class BenchProgram {
  public:
    BenchProgram(const std::string& purpose, const std::string& name);

    [[nodiscard]] CLI::App& options() { return app_; }

    /// Reads the command line and calls `measure` with the number of repetitions. The exit code: 1
    /// when it threw an exception, whose text is told, 2 for a wrong command line.
    [[nodiscard]] int run(int argc, char** argv, const std::function<void(int)>& measure);

  private:
    CLI::App app_;
    int repetitions_ = 9;
};
