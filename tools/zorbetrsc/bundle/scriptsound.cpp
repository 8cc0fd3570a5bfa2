#include "bundle/scriptsound.h"

#include "filesystem.h"

#include "platform/host/files/scratchfolder.h"
#include "platform/host/machine/installation.h"
#include "platform/host/machine/subprocess.h"

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace rsc {

namespace {

namespace fs = std::filesystem;

std::string textOf(const fs::path& file) {
    const Bytes bytes = readWholeFile(file);
    return {bytes.begin(), bytes.end()};
}

void tell(const nlohmann::json& finding, const std::string& severity, std::ostream& errors) {
    errors << finding.at("file").get<std::string>();
    for (const char* place : {"line", "column"})
        if (const int number = finding.at(place).get<int>(); number > 0) errors << ":" << number;
    errors << ": " << severity << ": " << finding.at("text").get<std::string>() << " ["
           << finding.at("name").get<std::string>() << "]\n";
}

} // namespace

bool areScriptsSound(const fs::path& game, std::ostream& errors) {
    const platform::ScratchFolder scratch;
    const fs::path output = scratch.path() / "findings";
    const fs::path problems = scratch.path() / "problems";
    const fs::path checker = platform::programNamed("zorbet-mps");
    const std::string end =
        platform::run({.arguments = {checker.string(), "check", "--json", "--", game.string()},
                       .folder = fs::current_path(),
                       .output = output,
                       .errors = problems});
    const auto findings = end.empty() || fs::exists(output)
                              ? nlohmann::json::parse(textOf(output), nullptr, false)
                              : nlohmann::json();
    if (!findings.is_array())
        throw Refusal("the scripts cannot be checked, for " + checker.string() +
                      " did not do it: " + end + " " +
                      (fs::exists(problems) ? textOf(problems) : "") +
                      "; install zorbet anew, all its programs together");
    bool isSound = true;
    for (const nlohmann::json& finding : findings) {
        const auto severity = finding.at("severity").get<std::string>();
        if (severity != "note") tell(finding, severity, errors);
        isSound = isSound && severity != "error";
    }
    return isSound;
}

} // namespace rsc
