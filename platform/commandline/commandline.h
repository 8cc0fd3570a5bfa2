// The command line of a program: options, and commands that have options of their own. Help, usage
// and errors read alike for all programs.
#pragma once

#include "platform/commandline/programtext.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <variant>
#include <vector>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace commandline {

inline constexpr int kFailed = 1; ///< exit codes
inline constexpr int kWrong = 2;  ///< of a command line

/// What is wrong with a command line; its work may throw it.
class Mistake : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Takes the value of an option; what is wrong with it, or nothing.
using Reader = std::function<std::string(const std::string&)>;

/// Where the value of an option goes; it must outlive the run. Options of a bool have no value,
/// those of a vector may be given many times.
using Target =
    std::variant<bool*, int*, std::uint32_t*, std::optional<int>*, std::optional<std::uint32_t>*,
                 std::optional<double>*, std::string*, std::optional<std::string>*,
                 std::filesystem::path*, std::optional<std::filesystem::path>*, std::vector<int>*,
                 std::vector<std::string>*, std::vector<std::filesystem::path>*, Reader>;

/// An option or argument that a program or command has.
class Option {
  public:
    explicit Option(CLI::Option& option) : option_(option) {}
    [[nodiscard]] std::string name() const;
    [[nodiscard]] bool isGiven() const;
    const Option& required() const;
    /// Takes only numbers in this range.
    const Option& within(double smallest, double largest) const;
    /// Its value names a folder that is there.
    const Option& folder() const;
    /// Its value may be left out, and is empty then.
    const Option& mayLackValue() const;
    /// Stands below this title in the help.
    const Option& under(const std::string& title) const;
    const Option& excludes(const Option& other) const;
    const Option& needs(const Option& other) const;
    /// Each value has the option's name in front.
    const Option& named() const;

  private:
    CLI::Option& option_;
};

/// The program itself, or one of its commands.
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

class Program {
  public:
    /// `summary` says in a line what the program does; `description` goes on with it.
    Program(const std::string& name, const std::string& summary, const std::string& description);
    ~Program();
    Program& operator=(Program&&) = delete;

    /// --version prints this.
    void setVersion(const std::string& text);

    void setManual(const Manual& manual);

    /// What the program does when no command is named, as with `add`; without it one must be.
    /// The sections stand at the end of the help.
    Command byItself(const std::string& arguments, std::vector<Section> sections,
                     std::function<int()> work);

    /// `arguments` follow the command's name in its usage; `more` stands at the end of its help.
    /// `work` is what the command does; it returns the exit code.
    Command add(const std::string& name, const std::string& description,
                const std::string& arguments, const std::string& more, std::function<int()> work);

    /// Runs the command that the arguments name; its exit code. A wrong command line is told on
    /// `errors`, with the usage. For who builds and installs the program, "--describe-as FORM"
    /// prints its manual ("man"), or its completions for a shell ("bash", "fish", "zsh"); no help
    /// tells that.
    int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors);

  private:
    class Form;
    struct Parser;

    [[nodiscard]] ProgramText text() const;
    [[nodiscard]] int describe(const std::string& form, std::ostream& out,
                               std::ostream& errors) const;
    [[nodiscard]] int refuse(const std::string& problem, std::ostream& errors) const;

    std::unique_ptr<Parser> parser_;
};

/// The exit code of `work`; what stops the whole program is told with its name.
int runProgram(const std::string& name, const std::function<int()>& work);

} // namespace commandline
