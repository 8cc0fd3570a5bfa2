// The command line of a tool: a program with commands, each with options of its own. Help, usage
// and errors read alike for all tools.
#pragma once

#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace tools {

inline constexpr int kFailed = 1; ///< exit codes
inline constexpr int kWrongCommandLine = 2;

/// Where the value of an option goes; it must outlive the run. Options of a bool have no value,
/// those of a vector may be given many times.
using Target = std::variant<bool*, int*, std::optional<int>*, std::optional<double>*, std::string*,
                            std::optional<std::string>*, std::filesystem::path*,
                            std::optional<std::filesystem::path>*, std::vector<int>*,
                            std::vector<std::string>*, std::vector<std::filesystem::path>*>;

/// An option or argument that a command has.
class Option {
  public:
    explicit Option(CLI::Option& option) : option_(option) {}
    const Option& required() const;
    /// Takes only numbers in this range.
    const Option& within(double smallest, double largest) const;
    const Option& excludes(const Option& other) const;
    const Option& needs(const Option& other) const;
    /// Each value has the option's name in front.
    const Option& named() const;

  private:
    CLI::Option& option_;
};

class Command {
  public:
    explicit Command(CLI::App& app) : app_(app) {}
    /// `name` is "--name", "-n,--name", or, of an argument, "NAME"; `value` names the value in the
    /// help and in errors.
    Option add(const std::string& name, Target target, const std::string& description,
               const std::string& value = {});

  private:
    CLI::App& app_;
};

class CommandLine {
  public:
    /// `version` is what --version prints.
    CommandLine(const std::string& name, const std::string& description,
                const std::string& version);
    ~CommandLine();
    CommandLine& operator=(CommandLine&&) = delete;

    /// `arguments` follow the command's name in its usage; `more` stands at the end of its help.
    /// `work` is what the command does; it returns the exit code.
    Command add(const std::string& name, const std::string& description,
                const std::string& arguments, const std::string& more, std::function<int()> work);

    /// Runs the command that the arguments name; its exit code. A wrong command line is told on
    /// `errors`, with the usage.
    int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors);

  private:
    class Form;
    struct Parser;

    std::unique_ptr<Parser> parser_;
};

/// The exit code of `work`; what stops the whole program is told with its name.
int runProgram(const std::string& name, const std::function<int()>& work);

} // namespace tools
