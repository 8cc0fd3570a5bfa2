#include "gametest/gametests.h"

#include "formats/base/scanner.h"
#include "gametest/gametest.h"
#include "gametest/junit.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace gametest {

namespace {

namespace fs = std::filesystem;

constexpr int kPassed = 0;
constexpr int kFailed = 1;
constexpr int kNothingToPlay = 2;

std::vector<fs::path> inputsOf(const fs::path& folder) {
    std::vector<fs::path> inputs;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator();
         entry.increment(error))
        if (entry->path().extension() == ".input") inputs.push_back(entry->path());
    std::ranges::sort(inputs);
    return inputs;
}

std::string counted(int count, const char* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

void tell(const Result& result, std::ostream& out) {
    out << (result.faults.empty() ? "ok      " : "FAILED  ") << result.name << "  "
        << counted(result.expectations, "expectation") << ", "
        << counted(result.pictures, "picture") << "  " << std::fixed << std::setprecision(1)
        << result.seconds << " s\n";
    for (const std::string& fault : result.faults) out << "        " << fault << '\n';
    out.flush();
}

} // namespace

std::optional<std::vector<Result>> play(const Options& options, std::ostream& out,
                                        std::ostream& errors) {
    const fs::path folder = options.game / "tests";
    std::vector<fs::path> inputs = inputsOf(folder);
    for (const std::string& name : options.names) {
        const auto isIt = [&](const fs::path& input) { return input.stem() == name; };
        if (std::ranges::any_of(inputs, isIt)) continue;
        errors << "zorbet: there is no test " << formats::inQuotes(name) << " in "
               << folder.string() << "; a test is an input file, " << name << ".input\n";
        return std::nullopt;
    }
    if (!options.names.empty())
        std::erase_if(inputs, [&](const fs::path& input) {
            return std::ranges::find(options.names, input.stem().string()) == options.names.end();
        });
    if (inputs.empty()) {
        errors << "zorbet: there is no test in " << folder.string()
               << "; a test is an input file, NAME.input\n";
        return std::nullopt;
    }
    std::vector<Result> results;
    for (const fs::path& input : inputs) {
        try {
            results.push_back(GameTest(input, options).run());
        } catch (const fs::filesystem_error& error) { // the game cannot be copied, a disk is full
            results.push_back({.name = input.stem().string(), .faults = {error.what()}});
        }
        tell(results.back(), out);
    }
    return results;
}

int run(const Options& options, std::ostream& out, std::ostream& errors) {
    const auto results = play(options, out, errors);
    if (!results) return kNothingToPlay;
    const auto failed = std::ranges::count_if(
        *results, [](const Result& result) { return !result.faults.empty(); });
    out << counted(static_cast<int>(results->size()), "test") << ", " << failed << " failed\n";
    if (options.junit && !writeJUnit(*options.junit, options.game.filename().string(), *results)) {
        errors << "zorbet: " << options.junit->string() << " cannot be written\n";
        return kFailed;
    }
    return failed == 0 ? kPassed : kFailed;
}

} // namespace gametest
