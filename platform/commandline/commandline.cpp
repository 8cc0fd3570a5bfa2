#include "platform/commandline/commandline.h"

#include "platform/commandline/completion.h"
#include "platform/commandline/manual.h"
#include "platform/commandline/optionspage.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <iomanip>
#include <iostream>
#include <limits>
#include <map>
#include <new>
#include <ostream>
#include <sstream>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>

namespace commandline {

namespace {

constexpr std::size_t kColumn = 24;            ///< where descriptions begin
constexpr const char* kPlainTitle = "Options"; ///< above options that stand below no other
constexpr const char* kDescribeAs = "--describe-as";

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
    if (error.get_name() == "ConversionError" && text.starts_with("Could not convert: ")) {
        replace("Could not convert: ", "");
        text += ": this cannot be read";
    }
    replace("The following argument was not expected: ", "this does not belong here: ");
    replace("The following arguments were not expected: ", "these do not belong here: ");
    return text;
}

/// The end of a program's help.
std::string footer(const std::vector<Section>& sections) {
    std::string text;
    for (const Section& section : sections) {
        text += (text.empty() ? "" : "\n") + section.title + ":\n  ";
        for (const char letter : section.text) {
            if (text.ends_with('\n') && letter != '\n') text += "  ";
            text += letter;
        }
        text += '\n';
    }
    if (!text.empty()) text.pop_back();
    return text;
}

OptionText textOf(const CLI::Option& option) {
    OptionText text;
    text.isArgument = option.get_positional();
    if (text.isArgument) text.names.push_back(option.get_name(true));
    for (const std::string& name : option.get_snames()) text.names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) text.names.push_back("--" + name);
    text.value = text.isArgument ? option.get_name(true) : option.get_option_text();
    text.description = option.get_description();
    if (option.get_group() != kPlainTitle) text.title = option.get_group();
    text.isVersatile = option.get_expected_max() > 1;
    return text;
}

std::vector<OptionText> optionTextsOf(const CLI::App& command) {
    std::vector<OptionText> texts;
    for (const CLI::Option* option : command.get_options()) texts.push_back(textOf(*option));
    return texts;
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

std::string Option::name() const { return option_.get_name(); }

bool Option::isGiven() const { return option_.count() > 0; }

const Option& Option::required() const {
    option_.required();
    return *this;
}

const Option& Option::within(double smallest, double largest) const {
    const auto check = [=](const std::string& word) -> std::string {
        double value = 0;
        if (!CLI::detail::lexical_cast(word, value)) return "\"" + word + "\" is no number";
        if (value >= smallest && value <= largest) return {};
        return word + " is out of range, allowed is " + shown(smallest) + " to " + shown(largest);
    };
    option_.check(CLI::Validator(check, ""));
    return *this;
}

const Option& Option::folder() const {
    const auto check = [](const std::string& name) -> std::string {
        std::error_code error;
        const auto status = std::filesystem::status(name, error);
        const std::string quoted = "\"" + name + "\"";
        if (!std::filesystem::exists(status))
            return "there is no folder " + quoted + "; give the name of one that is there";
        if (!std::filesystem::is_directory(status))
            return quoted + " is a file; give the name of the folder that it lies in";
        return {};
    };
    option_.check(CLI::Validator(check, ""));
    return *this;
}

const Option& Option::mayLackValue() const {
    option_.expected(0, 1);
    return *this;
}

const Option& Option::under(const std::string& title) const {
    option_.group(title);
    return *this;
}

const Option& Option::excludes(const Option& other) const {
    option_.excludes(&other.option_);
    return *this;
}

const Option& Option::needs(const Option& other) const {
    option_.needs(&other.option_);
    return *this;
}

const Option& Option::named() const {
    option_.allow_extra_args(false);
    return *this;
}

Option Command::add(const std::string& name, Target target, const std::string& description,
                    const std::string& value) {
    CLI::Option* option = std::visit(
        [&](const auto& place) {
            using Place = std::decay_t<decltype(place)>;
            if constexpr (std::is_same_v<Place, bool*>)
                return app_.add_flag(name, *place, description);
            else if constexpr (std::is_same_v<Place, Reader>)
                return app_.add_option_function<std::string>(
                    name,
                    [place, name](const std::string& word) {
                        if (const std::string problem = place(word); !problem.empty())
                            throw CLI::ValidationError(name, problem);
                    },
                    description);
            else
                return app_.add_option(name, *place, description);
        },
        target);
    if (!value.empty()) option->option_text(value)->type_name(value);
    return Option(*option);
}

struct Program::Parser {
    Parser(const std::string& description, const std::string& name) : app(description, name) {}

    CLI::App app;
    ProgramText text; ///< but for options and commands, which `app` has
    std::map<const CLI::App*, std::string> arguments; ///< of the commands
    int exitCode = 0;

    void checkCommand(int argc, const char* const* argv) const;
    [[nodiscard]] const CLI::App& current() const;
    [[nodiscard]] std::string nameOf(const CLI::App& command) const;
    [[nodiscard]] std::string usageOf(const CLI::App& command) const;
};

/// How help reads.
class Program::Form final : public CLI::Formatter {
  public:
    explicit Form(const Parser& parser) : parser_(parser) {
        column_width(kColumn);
        label("Positionals", "Arguments");
        label("Subcommands", "Commands");
    }

    std::string make_usage(const CLI::App* app, std::string) const override {
        return "\n" + parser_.usageOf(*app);
    }
    std::string make_option_opts(const CLI::Option* option) const override {
        const std::string& value = option->get_option_text();
        if (option->get_positional() || value.empty()) return {};
        return " " + value;
    }

  private:
    const Parser& parser_;
};

Program::Program(const std::string& name, const std::string& summary,
                 const std::string& description)
    : parser_(std::make_unique<Parser>(summary + ".\n" + description, name)) {
    CLI::App& app = parser_->app;
    parser_->text.name = name;
    parser_->text.version = ZORBET_VERSION;
    parser_->text.summary = summary;
    parser_->text.description = description;
    app.formatter(std::make_shared<Form>(*parser_));
    app.set_help_flag("-h,--help", "Print this text, and that of a command behind its name");
    app.require_subcommand(1);
    app.footer("\"" + name + " COMMAND --help\" tells more of a command.");
}

Program::~Program() = default;

void Program::setVersion(const std::string& text) {
    parser_->app.set_version_flag("--version", text, "Print the version");
}

void Program::setManual(const Manual& manual) { parser_->text.manual = manual; }

Command Program::byItself(const std::string& arguments, std::vector<Section> sections,
                          std::function<int()> work) {
    CLI::App& app = parser_->app;
    app.require_subcommand(0, 1);
    app.footer(footer(sections));
    parser_->text.sections = std::move(sections);
    parser_->text.isCommand = true;
    app.callback([this, &app, work = std::move(work)] {
        if (app.get_subcommands().empty()) parser_->exitCode = work();
    });
    parser_->arguments[&app] = arguments;
    return Command(app);
}

Command Program::add(const std::string& name, const std::string& description,
                     const std::string& arguments, const std::string& more,
                     std::function<int()> work) {
    CLI::App* command = parser_->app.add_subcommand(name, description);
    command->group("Commands");
    command->set_help_flag("-h,--help", "Print this text");
    command->footer(more);
    command->callback([this, work = std::move(work)] { parser_->exitCode = work(); });
    parser_->arguments[command] = arguments;
    return Command(*command);
}

int Program::run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors) {
    constexpr int kWordsToDescribe = 3;
    if (argc == kWordsToDescribe && std::string_view(argv[1]) == kDescribeAs)
        return describe(argv[2], out, errors);
    try {
        parser_->checkCommand(argc, argv);
        parser_->app.parse(argc, argv);
        return parser_->exitCode;
    } catch (const CLI::Success& wish) { // help, version
        return parser_->app.exit(wish, out, errors);
    } catch (const CLI::ParseError& error) {
        return refuse(plainText(error), errors);
    } catch (const Mistake& mistake) {
        return refuse(mistake.what(), errors);
    }
}

ProgramText Program::text() const {
    ProgramText text = parser_->text;
    const auto argumentsOf = [this](const CLI::App& command) {
        const auto found = parser_->arguments.find(&command);
        return found == parser_->arguments.end() ? std::string() : found->second;
    };
    text.itself = {{}, {}, argumentsOf(parser_->app), {}, optionTextsOf(parser_->app)};
    for (const CLI::App* command : parser_->app.get_subcommands(nullptr))
        text.commands.push_back({command->get_name(), command->get_description(),
                                 argumentsOf(*command), command->get_footer(),
                                 optionTextsOf(*command)});
    return text;
}

int Program::describe(const std::string& form, std::ostream& out, std::ostream& errors) const {
    if (form == "man")
        out << manualOf(text(), ZORBET_RELEASED);
    else if (form == "bash")
        out << bashCompletionOf(text());
    else if (form == "fish")
        out << fishCompletionOf(text());
    else if (form == "zsh")
        out << zshCompletionOf(text());
    else if (form == "markdown")
        out << optionsPageOf(text());
    else
        return refuse(
            std::string(kDescribeAs) + ": the forms are man, markdown, bash, fish and zsh", errors);
    return 0;
}

int Program::refuse(const std::string& problem, std::ostream& errors) const {
    const CLI::App& command = parser_->current();
    const std::string name = parser_->nameOf(command);
    errors << name << ": " << problem << "\n"
           << parser_->usageOf(command) << "\"" << name << " --help\" tells more.\n";
    return kWrong;
}

void Program::Parser::checkCommand(int argc, const char* const* argv) const {
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands(nullptr))
        names.push_back(command->get_name());
    const std::string known = "the commands are " + joined(names);
    const std::string first = argc > 1 ? argv[1] : "";
    if (app.get_require_subcommand_min() == 0) return;
    if (first.empty()) throw CLI::ArgumentMismatch("a command is missing: " + known);
    if (first[0] != '-' && std::ranges::find(names, first) == names.end())
        throw CLI::ArgumentMismatch("there is no command \"" + first + "\": " + known);
}

/// The command that was named, or else the program.
const CLI::App& Program::Parser::current() const {
    const std::vector<CLI::App*> commands = app.get_subcommands();
    return commands.empty() ? app : *commands.front();
}

std::string Program::Parser::nameOf(const CLI::App& command) const {
    return app.get_name() + (&command == &app ? "" : " " + command.get_name());
}

std::string Program::Parser::usageOf(const CLI::App& command) const {
    const auto found = arguments.find(&command);
    std::string usage = "Usage: " + nameOf(command) + " " +
                        (found == arguments.end() ? "COMMAND ..." : found->second) + "\n";
    if (&command == &app && found != arguments.end())
        for (const CLI::App* other : app.get_subcommands(nullptr))
            usage += "       " + nameOf(*other) + " " + arguments.at(other) + "\n";
    return usage;
}

} // namespace commandline
