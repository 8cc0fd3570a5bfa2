// The commands of the program: each adds itself to the command line and, when it was asked for,
// runs and stores its exit code. One source file a command.
#pragma once

namespace tools {
class CommandLine;
}

namespace rsc {

/// `line` must outlive the run.
void addPackCommand(tools::CommandLine& line);
void addExtractCommand(tools::CommandLine& line);
void addListCommand(tools::CommandLine& line);
void addMapCommand(tools::CommandLine& line);
void addMovieCommand(tools::CommandLine& line);

} // namespace rsc
