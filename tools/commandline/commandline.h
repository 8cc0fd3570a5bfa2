// The command line of a tool: a program with commands, each with options of its own. Help, usage
// and errors read alike for all tools.
#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <iosfwd>
#include <map>
#include <string>

namespace tools {

inline constexpr int kFailed = 1; ///< exit codes
inline constexpr int kWrongCommandLine = 2;

class CommandLine {
  public:
    /// `version` is what --version prints.
    CommandLine(const std::string& name, const std::string& description,
                const std::string& version);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    /// `arguments` follow the command's name in its usage; `more` stands at the end of its help.
    CLI::App& add(const std::string& name, const std::string& description,
                  const std::string& arguments, const std::string& more);
    /// What a command's callback stores its exit code in.
    [[nodiscard]] int& exitCode() { return exitCode_; }

    /// Runs the command that the arguments name; its exit code. A wrong command line is told on
    /// `errors`, with the usage.
    int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors);

  private:
    class Form;

    void checkCommand(int argc, const char* const* argv) const;
    [[nodiscard]] const CLI::App& current() const;
    [[nodiscard]] std::string nameOf(const CLI::App& app) const;
    [[nodiscard]] std::string usageOf(const CLI::App& app) const;

    CLI::App app_;
    std::map<const CLI::App*, std::string> arguments_; ///< of the commands
    int exitCode_ = 0;
};

/// The exit code of `work`; what stops the whole program is told with its name.
int runProgram(const std::string& name, const std::function<int()>& work);

/// Names an option's value in the help and in errors.
inline CLI::Option* named(CLI::Option* option, const std::string& value) {
    return option->option_text(value)->type_name(value);
}

/// Takes only numbers in this range.
[[nodiscard]] CLI::Validator within(double smallest, double largest);

} // namespace tools
