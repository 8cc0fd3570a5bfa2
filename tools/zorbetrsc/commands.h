// The sub-commands of the program: each adds itself to the command line and, when it was asked for,
// runs and stores its exit code. One source file a command.
#pragma once

namespace CLI {
class App;
}

namespace rsc {

/// `exitCode` must outlive `app`.
void addPackCommand(CLI::App& app, int& exitCode);
void addExtractCommand(CLI::App& app, int& exitCode);
void addListCommand(CLI::App& app, int& exitCode);
void addMapCommand(CLI::App& app, int& exitCode);
void addMovieCommand(CLI::App& app, int& exitCode);

} // namespace rsc
