#include "zorbetmps/commandline.h"

#include "zorbetmps/check.h"
#include "zorbetmps/words.h"

#include "vocabulary.h"
#include "ykeyword.h"

#include <CLI/CLI.hpp>

#include <ostream>
#include <string>
#include <vector>

namespace mps {

namespace {

constexpr int kSound = 0;
constexpr int kErrors = 1;
constexpr int kWrongCommandLine = 2;

int checkAll(const std::vector<std::string>& files, std::ostream& out) {
    for (const RCommandWords& command : RGameCommands()) YCommands::add(command.name, nullptr);
    bool sound = true;
    for (const std::string& file : files) sound &= checkScript(file, out);
    YCommands::clear();
    return sound ? kSound : kErrors;
}

} // namespace

int run(int argc, const char* const* argv, std::ostream& out, std::ostream& errors) {
    int exitCode = kSound;
    std::vector<std::string> files;
    CLI::App app("For the authors of scripts of zorbet", "zorbet-mps");
    app.require_subcommand(1);
    CLI::App* check = app.add_subcommand("check", "Compile scripts and tell every error");
    check->add_option("FILE", files, "Scripts, as texts or precompiled")->required();
    check->callback([&] { exitCode = checkAll(files, out); });
    std::vector<std::string> classes;
    CLI::App* words = app.add_subcommand("words", "Tell the words of classes, and the commands");
    words->add_option("CLASS", classes, "Classes; without any, all of them and the commands");
    words->callback([&] { exitCode = tellWords(classes, out, errors) ? kSound : kErrors; });
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& wish) { // help
        return app.exit(wish, out, errors);
    } catch (const CLI::ParseError& error) {
        errors << error.what() << "\n\n" << app.help();
        return kWrongCommandLine;
    }
    return exitCode;
}

} // namespace mps
