// zorbet-bench-scripts: how fast the script engine is. Six loops of a million rounds run side by
// side in our scripts, in Tcl and in Lua, then times of our engine alone.
//
// Exit code 1 when the languages do not agree on a result or one of them fails, 2 for a wrong
// command line.
#include "benchprogram.h"
#include "cputime.h"
#include "enginetimes.h"
#include "scriptlanguage.h"
#include "scriptloops.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace {

constexpr double kRounds = double{kLoopRounds} * kLoopRounds;
constexpr double kTolerance = 1e-12; ///< of reals, relative: our scripts keep fifteen digits
constexpr double kCompileAimMs = 5;

enum Language : std::size_t { kZorbet, kTcl, kLua, kLanguages };
using Languages = std::array<std::unique_ptr<ScriptLanguage>, kLanguages>;
/// Nanoseconds a round.
using LoopTimes = std::array<Samples, kLanguages>;

/// The geometric mean and the greatest of some ratios.
class Ratios {
  public:
    void add(double ratio) {
        logarithms_ += std::log(ratio);
        ++count_;
        greatest_ = std::max(greatest_, ratio);
    }
    [[nodiscard]] double mean() const { return std::exp(logarithms_ / count_); }
    [[nodiscard]] double greatest() const { return greatest_; }

  private:
    double logarithms_ = 0;
    int count_ = 0;
    double greatest_ = 0;
};

const LoopSource& sourceOf(const ScriptLoop& loop, std::size_t language) {
    return language == kZorbet ? loop.zorbet : language == kTcl ? loop.tcl : loop.lua;
}

bool isSameValue(const std::string& left, const std::string& right) {
    if (left == right) return true;
    char* leftEnd = nullptr;
    char* rightEnd = nullptr;
    const double l = std::strtod(left.c_str(), &leftEnd);
    const double r = std::strtod(right.c_str(), &rightEnd);
    const bool areNumbers = !left.empty() && !right.empty() && !*leftEnd && !*rightEnd;
    return areNumbers && std::fabs(l - r) <= kTolerance * std::fabs(r);
}

/// The languages take turns, so that whatever else the machine does meets them alike.
LoopTimes measureLoop(const ScriptLoop& loop, Languages& languages, int repetitions) {
    LoopTimes times;
    for (int i = 0; i < repetitions; ++i) {
        std::array<std::string, kLanguages> values;
        for (std::size_t which = 0; which < kLanguages; ++which) {
            const LoopSource& source = sourceOf(loop, which);
            ScriptLanguage& language = *languages[which];
            language.load(source);
            times[which].add(cpuNanoseconds([&] { language.run(); }) / kRounds);
            values[which] = language.value(source.result);
        }
        for (const std::size_t other : {kTcl, kLua})
            if (!isSameValue(values[kZorbet], values[other]))
                throw std::runtime_error(
                    std::string(loop.name) + ": zorbet gives \"" + values[kZorbet] + "\" and " +
                    std::string(languages[other]->name()) + " \"" + values[other] + "\"");
    }
    return times;
}

void printLoops(int repetitions) {
    Languages languages{makeZorbetLanguage(), makeTclLanguage(), makeLuaLanguage()};
    Ratios toTcl;
    Ratios toLua;
    std::printf("Nanoseconds a round on the processor: the least (and the median) of %d\n\n"
                "%-10s %16s %16s %16s %8s %8s\n",
                repetitions, "loop", "zorbet", "Tcl", "Lua", "to Tcl", "to Lua");
    for (const ScriptLoop& loop : scriptLoops()) {
        const LoopTimes times = measureLoop(loop, languages, repetitions);
        std::printf("%-10s", loop.name.data());
        for (const Samples& samples : times)
            std::printf(" %7.1f (%6.1f)", samples.least(), samples.median());
        const double ours = times[kZorbet].least();
        toTcl.add(ours / times[kTcl].least());
        toLua.add(ours / times[kLua].least());
        std::printf(" %8.2f %8.2f\n", ours / times[kTcl].least(), ours / times[kLua].least());
        std::fflush(stdout);
    }
    std::printf("%-61s %8.2f %8.2f\n\n", "geometric mean", toTcl.mean(), toLua.mean());
    std::printf("%-46s %s\n", "no loop slower than Tcl:", toTcl.greatest() <= 1 ? "yes" : "no");
    std::printf("%-46s %s\n\n",
                "no slower than Lua in the mean:", toLua.mean() <= 1 ? "yes" : "no");
}

void printEngineTimes(int repetitions) {
    const CompileTimes compiling = measureCompiling(repetitions);
    constexpr double kMs = 1e6;
    std::printf("compiling %zu bytes, %d lines, %zu instructions: %.2f ms (%.2f), aim %.0f ms\n",
                compiling.script.text.size(), compiling.script.lines, compiling.instructions,
                compiling.nanoseconds.least() / kMs, compiling.nanoseconds.median() / kMs,
                kCompileAimMs);
    const Samples events = measureEvents(repetitions);
    std::printf("an event with a handler of two statements: %.0f ns (%.0f)\n", events.least(),
                events.median());
}

} // namespace

int main(int argc, char** argv) {
    BenchProgram program("Measures the script engine of zorbet beside Tcl and Lua",
                         "zorbet-bench-scripts");
    return program.run(argc, argv, [](int repetitions) {
        printLoops(repetitions);
        printEngineTimes(repetitions);
    });
}
