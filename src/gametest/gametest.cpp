#include "gametest/gametest.h"

#include "gametest/picturedifference.h"
#include "omlog.h"

#include "platform/host/machine/installation.h"
#include "platform/host/machine/subprocess.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <system_error>
#include <utility>

namespace gametest {

namespace {

namespace fs = std::filesystem;

constexpr int kMostPictureSide = 8192;
constexpr const char* kReport = "report.txt";
constexpr const char* kErrors = "errors.txt";

/// What a game leaves in its folder when it is played.
constexpr std::string_view kLeft[] = {OMLog::kFileName, "debug.txt", "ZORBET.DAT", "ZORBET.BAK"};

std::vector<std::string> fields(const std::string& line) {
    std::vector<std::string> parts;
    for (std::size_t at = 0; at <= line.size();) {
        const std::size_t end = std::min(line.find('\t', at), line.size());
        parts.push_back(line.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

/// A name without folders, or of folders below.
bool liesBelow(const fs::path& name) {
    return name.is_relative() && std::ranges::find(name, fs::path("..")) == name.end();
}

/// Behind the last line, unless the turns of a recorded visit tell.
std::vector<std::string> endOf(const platform::Visit& visit) {
    if (!visit.turns.empty()) return {};
    const std::uint32_t end = visit.timeline.empty() ? 0 : visit.timeline.back().timeMs + 1;
    return {"--until", std::to_string(end)};
}

} // namespace

GameTest::GameTest(const fs::path& input, const Options& options)
    : input_(input), options_(options) {
    result_.name = input.stem().string();
}

Result GameTest::run() {
    const auto begun = std::chrono::steady_clock::now();
    std::ifstream file(input_, std::ios::binary);
    auto visit = platform::parseVisit(file);
    if (!file.is_open()) {
        fail(input_.string() + " cannot be read");
    } else if (const auto* error = std::get_if<platform::TimelineError>(&visit)) {
        fail(input_.string() + ":" + std::to_string(error->line) + ": " + error->text);
    } else if (std::get<platform::Visit>(visit).timeline.empty()) {
        fail(input_.string() + " has no line with a time, so that nothing would happen");
    } else {
        play(std::get<platform::Visit>(visit));
        readReport();
        comparePictures(std::get<platform::Visit>(visit));
    }
    if (!result_.faults.empty()) keepWhatIsLeft();
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begun;
    result_.seconds = time.count();
    return std::move(result_);
}

void GameTest::play(const platform::Visit& visit) {
    fs::copy(options_.game, place("content"), fs::copy_options::recursive);
    for (const std::string_view name : kLeft) fs::remove(place("content") / name);
    for (const char* folder : {"home", "pictures"}) fs::create_directory(place(folder));
    for (const platform::TimelineEvent& event : visit.timeline)
        if (const auto* shot = std::get_if<platform::TimelineScreenshot>(&event.what);
            shot && liesBelow(shot->file))
            fs::create_directories(place("pictures") / fs::path(shot->file).parent_path());
    platform::Subprocess game{{platform::thisProgram().string(), "--headless", "--content",
                               place("content").string(), "--home", place("home").string(),
                               "--input", fs::absolute(input_).string()},
                              place("pictures"),
                              place(kReport),
                              place(kErrors)};
    const std::vector<std::string> end = endOf(visit);
    game.arguments.insert(game.arguments.end(), end.begin(), end.end());
    if (!visit.seed) game.arguments.insert(game.arguments.end(), {"--seed", "1"});
    if (const std::string why = platform::run(game); !why.empty())
        fail("the game did not end: " + why);
}

void GameTest::readReport() {
    std::ifstream report(place(kReport));
    for (std::string line; std::getline(report, line);) {
        const std::vector<std::string> parts = fields(line);
        if (parts.size() < 4 || parts[1] != "expect") continue;
        ++result_.expectations;
        if (parts[2] == "failed" && parts.size() > 4)
            fail("at " + parts[0] + " expected " + parts[3] + ", but there is: " + parts[4]);
    }
}

void GameTest::comparePictures(const platform::Visit& visit) {
    for (const platform::TimelineEvent& event : visit.timeline)
        if (const auto* shot = std::get_if<platform::TimelineScreenshot>(&event.what))
            comparePicture(shot->file);
}

void GameTest::comparePicture(const std::string& name) {
    ++result_.pictures;
    if (!liesBelow(name)) return fail(name + ": a test's pictures lie beside it, without \"..\"");
    const fs::path shown = place("pictures") / name;
    const fs::path stored = input_.parent_path() / name;
    if (options_.renew && fs::exists(shown)) {
        fs::create_directories(stored.parent_path());
        fs::copy_file(shown, stored, fs::copy_options::overwrite_existing);
        return;
    }
    const auto is = platform::readPng(shown.string(), kMostPictureSide);
    const auto was = platform::readPng(stored.string(), kMostPictureSide);
    if (!is) return fail(name + ": the game has not come to this screenshot");
    if (!was)
        return fail(stored.string() + " is no picture; --renew stores what was on the screen");
    const auto difference = differenceOf(*is, *was);
    if (!difference) return;
    fs::create_directories((results() / name).parent_path());
    const fs::path marked = (results() / name).replace_extension(".difference.png");
    if (!platform::writePng(marked.string(), difference->marked))
        fail(marked.string() + " cannot be written");
    fail(name + ": " + difference->text + "; see " + marked.string());
}

/// For whoever looks for the fault.
void GameTest::keepWhatIsLeft() const {
    std::error_code error;
    fs::create_directories(results(), error);
    constexpr auto kOver = fs::copy_options::overwrite_existing;
    fs::copy(place("pictures"), results(), kOver | fs::copy_options::recursive, error);
    for (const char* name : {kReport, kErrors})
        fs::copy_file(place(name), results() / name, kOver, error);
    for (const std::string_view name : kLeft)
        fs::copy_file(place("content") / name, results() / name, kOver, error);
}

} // namespace gametest
