// zorbet-bench-display: how fast animations and texts are drawn, beside SDL2 on the same
// pictures, how little the window's idle cycles take, and how soon the program shows its first
// picture.
//
// Exit code 1 when something cannot be measured, 2 for a wrong command line.
#include "actiontimes.h"
#include "benchprogram.h"
#include "mediamachine.h"
#include "movietimes.h"
#include "spritetimes.h"
#include "starttimes.h"
#include "texttimes.h"
#include "windowtimes.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr double kMicro = 1e3; ///< nanoseconds
constexpr double kMilli = 1e6; ///< nanoseconds
constexpr double kQuarter = 4; ///< as fast as this many times the plain blit
constexpr double kIdleAimUs = 20;
constexpr double kMovingAimMs = 3;
constexpr double kActionsAimMs = 1;
constexpr double kStartAimMs = 100;
constexpr double kMovieAim = 0.2; ///< of a core

const char* missed(bool reached) { return reached ? "" : "  aim missed"; }

void printSprites(int repetitions) {
    std::printf("Sprites of %d x %d, 8 bits, microseconds each: least (median)\n"
                "%-34s %14s %14s %14s %14s %10s %10s\n",
                kSpriteSide, kSpriteSide, "", "zorbet", "SDL2 RLE", "SDL2 key", "memcpy", "of RLE",
                "of key");
    for (const SpriteCase& what : spriteCases()) {
        const SpriteTimes times = measureSprites(what, repetitions);
        std::printf("%-34s", what.name.c_str());
        for (const Samples* samples : {&times.ours, &times.rle, &times.plain, &times.copy})
            std::printf(" %6.2f (%5.2f)", samples->least() / kMicro, samples->median() / kMicro);
        const double ofRle = times.ours.least() / times.rle.least();
        const double ofPlain = times.ours.least() / times.plain.least();
        std::printf(" %10.2f %10.2f%s\n", ofRle, ofPlain,
                    missed(ofRle <= 1 && ofPlain * kQuarter <= 1));
    }
}

void printExpansion(int repetitions) {
    const ExpansionTimes times = measureExpansion(repetitions);
    std::printf("\n640 x 480 pixels from 8 to 32 bits: %.0f us (%.0f), SDL2 %.0f us (%.0f)%s\n",
                times.ours.least() / kMicro, times.ours.median() / kMicro,
                times.sdl.least() / kMicro, times.sdl.median() / kMicro,
                missed(times.ours.least() <= times.sdl.least()));
}

void printText(int repetitions) {
    const TextTimes text = measureText(ZORBET_BENCH_FONT, repetitions);
    const double fastest = std::min(text.plain.least(), text.rle.least());
    std::printf("Characters of a bitmap font: %.1f million a second (%.1f), SDL2 RLE %.1f (%.1f), "
                "SDL2 key %.1f (%.1f)%s\n",
                kMicro / text.ours.least(), kMicro / text.ours.median(), kMicro / text.rle.least(),
                kMicro / text.rle.median(), kMicro / text.plain.least(),
                kMicro / text.plain.median(), missed(text.ours.least() <= fastest));
    const FontTimes fonts = measureFonts(ZORBET_BENCH_FONT, repetitions);
    std::printf("A font read %zu times: %.1f ms (%.1f); used as often while it is shared: %.1f ms "
                "(%.1f)\n",
                kFontOpenings, fonts.reading.least() / kMilli, fonts.reading.median() / kMilli,
                fonts.sharing.least() / kMilli, fonts.sharing.median() / kMilli);
}

void printWindow(int repetitions) {
    const WindowTimes times = measureWindow(repetitions);
    const double idle = times.idleNanoseconds.least() / kMicro;
    const double moving = times.movingNanoseconds.least() / kMilli;
    std::printf("An idle cycle with nothing to do, %zu trinkets: %.2f us (%.2f)%s\n", kIdleTrinkets,
                idle, times.idleNanoseconds.median() / kMicro, missed(idle < kIdleAimUs));
    std::printf("A frame of %zu moving animations, %.1f over each pixel: %.2f ms (%.2f)%s\n",
                kMovingAnimations, times.coverage, moving,
                times.movingNanoseconds.median() / kMilli, missed(moving < kMovingAimMs));
    std::printf("Hit tests: %.1f million a second of one animation, %.2f million of a window with "
                "%zu\n",
                kMicro / times.pixelNanoseconds.least(), kMicro / times.windowNanoseconds.least(),
                kMovingAnimations);
}

void printActions(int repetitions) {
    const ActionTimes times = measureActions(repetitions);
    const double delays = times.delayNanoseconds.least() / kMilli;
    const double moves = times.moveNanoseconds.least() / kMilli;
    std::printf("A pass with %zu delays: %.3f ms (%.3f)%s; with %zu moves: %.3f ms (%.3f)%s\n",
                kActions, delays, times.delayNanoseconds.median() / kMilli,
                missed(delays < kActionsAimMs), kActions, moves,
                times.moveNanoseconds.median() / kMilli, missed(moves < kActionsAimMs));
}

void printStart(int repetitions) {
    const ProcessTimes times = measureStart(repetitions);
    const double taken = times.clock.least() / kMilli;
    std::printf("From the start to the first picture and to the end, %zu resources in the map: "
                "%.1f ms (%.1f), %.1f ms of processor time%s\n",
                kStartResources, taken, times.clock.median() / kMilli,
                times.processor.least() / kMilli, missed(taken < kStartAimMs));
}

void printMovie(int repetitions) {
    const ProcessTimes times = measureMovie(repetitions);
    constexpr double kHundredthsPerMs = 100;
    constexpr double kMovieMs = kMovieFrames * kMovieFrameTime / kHundredthsPerMs;
    const double share = times.processor.least() / kMilli / kMovieMs;
    std::printf("A movie of 640 x 480, 15 frames a second: %.1f %% of a core (%.1f)%s\n",
                share * 100, times.processor.median() / kMilli / kMovieMs * 100,
                missed(share < kMovieAim));
}

} // namespace

int main(int argc, char** argv) {
    BenchProgram program("Measures the drawing of zorbet", "zorbet-bench-display");
    return program.run(argc, argv, [](int repetitions) {
        {
            const MediaMachine machine; // canvases need an application
            printSprites(repetitions);
            printExpansion(repetitions);
            printText(repetitions);
        }
        printWindow(repetitions);
        printActions(repetitions);
        printStart(repetitions);
        printMovie(repetitions);
    });
}
