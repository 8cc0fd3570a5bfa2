#include "commandline/commandline.h"

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <limits>
#include <memory>
#include <new>
#include <ostream>
#include <sstream>
#include <string_view>
#include <vector>

namespace tools {

namespace {

constexpr std::size_t kColumn = 24; ///< where descriptions begin

/// "a, b and c".
std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
        text += names[i];
    }
    return text;
}

std::string shown(double value) {
    std::ostringstream text;
    text << std::setprecision(std::numeric_limits<int>::digits10) << value;
    return text.str();
}

/// The library's texts of what is wrong, where they would puzzle somebody.
std::string plainText(const CLI::ParseError& error) {
    std::string text = error.what();
    const auto replace = [&](std::string_view old, std::string_view now) {
        if (const auto at = text.find(old); at != std::string::npos)
            text.replace(at, old.size(), now);
    };
    if (error.get_name() == "ArgumentMismatch" && text.ends_with(" missing")) {
        replace("1 required ", "");
        replace(" missing", " is missing");
    }
    replace("The following argument was not expected: ", "this does not belong here: ");
    replace("The following arguments were not expected: ", "these do not belong here: ");
    return text;
}

} // namespace

int runProgram(const std::string& name, const std::function<int()>& work) {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        std::cerr << name << ": there is not enough memory for this\n";
    } catch (const std::exception& error) { // no terminal
        std::cerr << name << ": " << error.what() << "\n";
    }
    return kFailed;
}

CLI::Validator within(double smallest, double largest) {
    const auto check = [=](const std::string& word) -> std::string {
        double value = 0;
        if (!CLI::detail::lexical_cast(word, value)) return "\"" + word + "\" is no number";
        if (value >= smallest && value <= largest) return {};
        return word + " is out of range, allowed is " + shown(smallest) + " to " + shown(largest);
    };
    return CLI::Validator(check, "");
}

/// How help reads.
class CommandLine::Form final : public CLI::Formatter {
  public:
    explicit Form(const CommandLine& line) : line_(line) {
        column_width(kColumn);
        label("Positionals", "Arguments");
        label("Subcommands", "Commands");
    }

    std::string make_usage(const CLI::App* app, std::string) const override {
        return "\n" + line_.usageOf(*app);
    }
    std::string make_option_opts(const CLI::Option* option) const override {
        const std::string& value = option->get_option_text();
        if (option->get_positional() || value.empty()) return {};
        return " " + value;
    }

  private:
    const CommandLine& line_;
};

CommandLine::CommandLine(const std::string& name, const std::string& description,
                         const std::string& version)
    : app_(description, name) {
    app_.formatter(std::make_shared<Form>(*this));
    app_.set_help_flag("-h,--help", "Print this text, and that of a command behind its name");
    app_.set_version_flag("--version", version, "Print the version");
    app_.require_subcommand(1);
    app_.footer("\"" + name + " COMMAND --help\" tells more of a command.");
}

CLI::App& CommandLine::add(const std::string& name, const std::string& description,
                           const std::string& arguments, const std::string& more) {
    CLI::App* command = app_.add_subcommand(name, description);
    command->group("Commands");
    command->set_help_flag("-h,--help", "Print this text");
    command->footer(more);
    arguments_[command] = arguments;
    return *command;
}

int CommandLine::run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors) {
    try {
        checkCommand(argc, argv);
        app_.parse(argc, argv);
        return exitCode_;
    } catch (const CLI::Success& wish) { // help, version
        return app_.exit(wish, out, errors);
    } catch (const CLI::ParseError& error) {
        const CLI::App& app = current();
        errors << nameOf(app) << ": " << plainText(error) << "\n"
               << usageOf(app) << "\"" << nameOf(app) << " --help\" tells more.\n";
        return kWrongCommandLine;
    }
}

void CommandLine::checkCommand(int argc, const char* const* argv) const {
    std::vector<std::string> names;
    for (const CLI::App* command : app_.get_subcommands(nullptr))
        names.push_back(command->get_name());
    const std::string known = "the commands are " + joined(names);
    const std::string first = argc > 1 ? argv[1] : "";
    if (first.empty()) throw CLI::ArgumentMismatch("a command is missing: " + known);
    if (first[0] != '-' && std::ranges::find(names, first) == names.end())
        throw CLI::ArgumentMismatch("there is no command \"" + first + "\": " + known);
}

/// The command that was named, or else the program.
const CLI::App& CommandLine::current() const {
    const std::vector<CLI::App*> commands = app_.get_subcommands();
    return commands.empty() ? app_ : *commands.front();
}

std::string CommandLine::nameOf(const CLI::App& app) const {
    return app_.get_name() + (&app == &app_ ? "" : " " + app.get_name());
}

std::string CommandLine::usageOf(const CLI::App& app) const {
    const auto arguments = arguments_.find(&app);
    return "Usage: " + nameOf(app) + " " +
           (arguments == arguments_.end() ? "COMMAND ..." : arguments->second) + "\n";
}

} // namespace tools
