#include "commands.h"

#include "list.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>

namespace rsc {

void addListCommand(CLI::App& app, int& exitCode) {
    const auto files = std::make_shared<std::vector<std::filesystem::path>>();
    CLI::App* command =
        app.add_subcommand("list", "Show what lies in resource libraries and movies");
    command->add_option("files", *files, "Resource libraries and movies")->required();
    command->callback([files, &exitCode] { exitCode = runList(*files, std::cout, std::cerr); });
}

} // namespace rsc
