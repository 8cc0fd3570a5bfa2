// zorbet-rsc: builds, unpacks and shows resource libraries, and makes movies.
#include "commands.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>

namespace {

constexpr int kFailed = 1;
constexpr int kWrongCommandLine = 2;

int run(int argc, char** argv) {
    int exitCode = 0;
    CLI::App app("Builds, unpacks and shows the resource libraries of zorbet, and makes its movies",
                 "zorbet-rsc");
    app.require_subcommand(1);
    rsc::addPackCommand(app, exitCode);
    rsc::addExtractCommand(app, exitCode);
    rsc::addListCommand(app, exitCode);
    rsc::addMapCommand(app, exitCode);
    rsc::addMovieCommand(app, exitCode);
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& wish) { // help
        return app.exit(wish);
    } catch (const CLI::ParseError& error) {
        std::cerr << error.what() << "\n\n" << app.help();
        return kWrongCommandLine;
    }
    return exitCode;
}

} // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) { // no memory, no terminal
        std::cerr << "zorbet-rsc: " << error.what() << "\n";
        return kFailed;
    }
}
