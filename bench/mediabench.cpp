// zorbet-bench-media: how fast resources are found and read, sounds are mixed, and how little a
// copy in the background disturbs the main loop. SDL2_mixer mixes the same sounds in the same run.
//
// Exit code 1 when something cannot be measured, 2 for a wrong command line.
#include "benchprogram.h"
#include "copytimes.h"
#include "resourcetimes.h"
#include "soundtimes.h"

#include <cstdio>

namespace {

constexpr double kMicro = 1e3;  ///< nanoseconds
constexpr double kSecond = 1e9; ///< nanoseconds
constexpr double kPassAimMs = 5;
constexpr double kHalf = 0.5;
constexpr double kCoreAimPercent = 1;

void printResources(int repetitions) {
    const LookupTimes lookups = measureLookups(repetitions);
    std::printf("A look-up among %zu ids: %.1f ns (%.1f), %.1f million a second\n"
                "The first one after a change, with the sort: %.0f us (%.0f)\n\n",
                lookups.resources, lookups.nanoseconds.least(), lookups.nanoseconds.median(),
                kMicro / lookups.nanoseconds.least(), lookups.firstNanoseconds.least() / kMicro,
                lookups.firstNanoseconds.median() / kMicro);
    const ReadTimes reads = measureReads(repetitions);
    std::printf("Opening and reading a resource of %zu bytes:\n", reads.bytes);
    const auto row = [](const char* name, const Samples& samples) {
        std::printf("  %-28s %8.2f us (%.2f)\n", name, samples.least() / kMicro,
                    samples.median() / kMicro);
    };
    row("from the disk", reads.disk);
    row("from the memory cache", reads.memory);
    row("a plain file of that size", reads.plain);
}

void printSounds(int repetitions) {
    std::printf("\nMixing 8-bit mono at %d Hz and volume %d, nanoseconds a sample of output\n"
                "%8s %16s %16s %8s %18s\n",
                kMixRate, kMixVolume, "sounds", "zorbet", "SDL2_mixer", "ratio", "of a core");
    for (const int sounds : {1, 8, 32}) {
        Samples ours;
        Samples theirs;
        for (int i = 0; i < repetitions; ++i) {
            ours.add(measureOurMixing(sounds));
            theirs.add(measureSdlMixer(sounds));
        }
        const double ratio = ours.least() / theirs.least();
        const double percent = ours.least() * kMixRate / kSecond * 100;
        std::printf("%8d %8.2f (%5.2f) %8.2f (%5.2f) %8.2f %17.4f%%%s\n", sounds, ours.least(),
                    ours.median(), theirs.least(), theirs.median(), ratio, percent,
                    ratio <= kHalf && percent < kCoreAimPercent ? "" : "  aim missed");
    }
}

void printCopy(const char* name, CopyTarget target) {
    const CopyTimes times = measureBackgroundCopy(target);
    const std::vector<double>& ms = times.passMs;
    std::printf("  %-10s %5.1f s, %zu passes: median %.4f ms, 999 of 1,000 below %.3f ms, longest "
                "%.3f ms%s\n",
                name, times.seconds, ms.size(), ms[ms.size() / 2], ms[ms.size() * 999 / 1000],
                ms.back(), ms.back() < kPassAimMs ? "" : "  aim missed");
}

} // namespace

int main(int argc, char** argv) {
    BenchProgram program("Measures the resources and sounds of zorbet", "zorbet-bench-media");
    bool copies = true;
    program.options().add_flag("!--no-copies", copies, "Leave the copies of 100 MB out");
    return program.run(argc, argv, [&copies](int repetitions) {
        printResources(repetitions);
        printSounds(repetitions);
        if (!copies) return;
        std::printf("\nThe main loop during a copy of 100 MB in the background:\n");
        printCopy("to memory", CopyTarget::Memory);
        printCopy("to disk", CopyTarget::Disk);
    });
}
