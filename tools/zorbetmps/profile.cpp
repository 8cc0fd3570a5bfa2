#include "zorbetmps/profile.h"

#include "platform/host/files/scratchfolder.h"
#include "platform/host/machine/installation.h"
#include "platform/host/machine/subprocess.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <iomanip>
#include <map>
#include <ostream>
#include <set>
#include <sstream>
#include <utility>
#include <vector>

namespace mps {

namespace {

namespace fs = std::filesystem;

constexpr std::chrono::hours kMostTime{24};
constexpr const char* kMainPart = "(the script itself)";

/// What a stack of calls took by itself.
struct ProfiledStack {
    std::uint64_t times = 0;
    std::uint64_t nanoseconds = 0;
    std::vector<std::string> parts; ///< procedures, outermost first, and the statement's place
};

struct Share {
    std::uint64_t times = 0;
    std::uint64_t own = 0;   ///< nanoseconds
    std::uint64_t whole = 0; ///< with what was called
};
using Shares = std::map<std::string, Share>;

std::vector<ProfiledStack> readStacks(const fs::path& file) {
    std::vector<ProfiledStack> stacks;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        ProfiledStack stack;
        words >> stack.times >> stack.nanoseconds >> std::ws;
        for (std::string part; std::getline(words, part, ';');) stack.parts.push_back(part);
        if (!stack.parts.empty()) stacks.push_back(std::move(stack));
    }
    return stacks;
}

Shares byLines(const std::vector<ProfiledStack>& stacks) {
    Shares shares;
    for (const ProfiledStack& stack : stacks) {
        Share& share = shares[stack.parts.back()];
        share.times += stack.times;
        share.own += stack.nanoseconds;
    }
    return shares;
}

Shares byProcedures(const std::vector<ProfiledStack>& stacks) {
    Shares shares;
    for (const ProfiledStack& stack : stacks) {
        std::vector<std::string> procedures(stack.parts.begin(), stack.parts.end() - 1);
        if (procedures.empty()) procedures.emplace_back(kMainPart);
        Share& innermost = shares[procedures.back()];
        innermost.times += stack.times;
        innermost.own += stack.nanoseconds;
        for (const std::string& name : std::set(procedures.begin(), procedures.end()))
            shares[name].whole += stack.nanoseconds;
    }
    return shares;
}

std::string milliseconds(std::uint64_t nanoseconds) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(3) << static_cast<double>(nanoseconds) / 1e6;
    return text.str();
}

template <class Print>
void printLargest(const Shares& shares, std::uint64_t Share::*order, int most, Print print) {
    std::vector<const Shares::value_type*> rows;
    for (const auto& row : shares) rows.push_back(&row);
    std::ranges::stable_sort(rows, [order](const auto* a, const auto* b) {
        return a->second.*order > b->second.*order;
    });
    rows.resize(std::min(rows.size(), static_cast<std::size_t>(most)));
    for (const auto* row : rows) print(row->first, row->second);
}

void printTables(const std::vector<ProfiledStack>& stacks, int most, std::ostream& out) {
    constexpr int kWidth = 12;
    const auto cell = [&](const std::string& text) -> std::ostream& {
        return out << std::setw(kWidth) << text;
    };
    cell("ms"), cell("times") << "  line\n";
    printLargest(byLines(stacks), &Share::own, most,
                 [&](const std::string& line, const Share& share) {
                     cell(milliseconds(share.own)), cell(std::to_string(share.times))
                                                        << "  " << line << '\n';
                 });
    out << '\n';
    cell("ms"), cell("its own"), cell("statements") << "  procedure\n";
    printLargest(byProcedures(stacks), &Share::whole, most,
                 [&](const std::string& name, const Share& share) {
                     cell(milliseconds(share.whole)), cell(milliseconds(share.own)),
                         cell(std::to_string(share.times)) << "  " << name << '\n';
                 });
}

bool writeFolded(const fs::path& file, const std::vector<ProfiledStack>& stacks) {
    constexpr std::uint64_t kMicrosecond = 1000;
    std::ofstream folded(file, std::ios::binary);
    for (const ProfiledStack& stack : stacks) {
        for (const std::string& part : stack.parts)
            folded << (&part == &stack.parts[0] ? "" : ";") << part;
        folded << ' ' << stack.nanoseconds / kMicrosecond << '\n';
    }
    folded.close();
    return folded.good();
}

platform::Subprocess gameFor(const ProfiledRun& run, const fs::path& work) {
    const fs::path program = platform::programNamed("zorbet");
    platform::Subprocess game{{program.string(), "--content", fs::absolute(run.game).string(),
                               "--home", (work / "home").string(), "--profile",
                               (work / "profile").string()},
                              fs::current_path(),
                              work / "report",
                              work / "errors",
                              kMostTime};
    const auto add = [&](std::initializer_list<std::string> words) {
        game.arguments.insert(game.arguments.end(), words);
    };
    if (!run.isInWindow) add({"--headless", "--until", std::to_string(run.untilMs)});
    if (!run.isInWindow && run.input) add({"--input", run.input->string()});
    return game;
}

} // namespace

bool profile(const ProfiledRun& run, std::ostream& out, std::ostream& errors) {
    const platform::ScratchFolder work;
    fs::create_directory(work.path() / "home");
    const std::string end = platform::run(gameFor(run, work.path()));
    if (!end.empty()) {
        errors << "the game was not played: " << end << '\n'
               << std::ifstream(work.path() / "errors").rdbuf();
        return false;
    }
    const std::vector<ProfiledStack> stacks = readStacks(work.path() / "profile");
    printTables(stacks, run.mostLines, out);
    if (!run.folded || writeFolded(*run.folded, stacks)) return true;
    errors << run.folded->string() << " cannot be written; see where you may write\n";
    return false;
}

} // namespace mps
