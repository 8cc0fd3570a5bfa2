// The maker of the sample game's sounds: what it reads, what it plays, and that it gives the same
// bytes everywhere.
#include "finish.h"
#include "formats/sound/wave.h"
#include "scorereader.h"
#include "synth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Samples = std::vector<std::uint8_t>;

Samples render(const std::string& text) {
    const Score score = readScore(text);
    return finishSamples(score, playScore(score));
}

int largestStep(const Samples& samples) {
    int step = 0;
    for (std::size_t i = 0; i + 1 < samples.size(); ++i)
        step = std::max(step, std::abs(samples[i + 1] - samples[i]));
    return step;
}

int peak(const Samples& samples, std::size_t from, std::size_t to) {
    int result = 0;
    for (std::size_t i = from; i < std::min(to, samples.size()); ++i)
        result = std::max(result, std::abs(samples[i] - 128));
    return result;
}

} // namespace

TEST(ScoreReader, TellsWhatIsWrongAndWhere) {
    struct Row {
        const char* text;
        int line;
        const char* fault;
    };
    const Row rows[] = {
        {"", 0, "there are no notes"},
        {"tempo 60\n\nmelody x\n", 3, "\"melody\" is no keyword, and there is no voice yet"},
        {"bar 4\ninstrument a\nvoice a 50\nc5:3.5 |", 4, "bar line after 3.50 beats of a bar"},
        {"instrument a\nvoice a 50\n( c5 )", 3, "behind \")\" stands how often, from 2 to 1000"},
        {"instrument a\nvoice a 50\n( c5\n\nvoice a 50", 5,
         "a \"(\" of the voice before is not closed"},
        {"instrument a\nvoice a 50\n( ( c5:0.01 )1000 )1000", 3,
         "a voice has more than 20000 notes"},
    };
    for (const Row& row : rows) {
        try {
            (void)readScore(row.text);
            ADD_FAILURE() << row.text << ": no fault";
        } catch (const ScoreFault& fault) {
            EXPECT_EQ(fault.line(), row.line) << row.text;
            EXPECT_STREQ(fault.what(), row.fault) << row.text;
        }
    }
}

TEST(Synth, GivesTheSameBytesEverywhere) {
    const auto file = formats::sound::writeRiff(
        render(
            "tempo 100\nbar 4\nloop 4\necho 150 30\nlowpass 4000\npeak 70\n"
            "instrument a\nwave 100 50 -20 10\nstrike 40 10 80\nvibrato 20 5.5 50\ndecay 300 20\n"
            "instrument b\nnoise 4\nenvelope 50 80\ntremolo 60 9\nslide 300 90\n"
            "voice a 70\nc4+e4:1 g4>c5:2 @60 -:1 |\nvoice b 40 1\n( c6:1/2 a5>f6:1 )2"),
        kSampleRate);
    std::uint32_t hash = 2166136261U; // FNV-1a
    for (const std::uint8_t byte : file) hash = (hash ^ byte) * 16777619U;
    EXPECT_EQ(hash, 858213642U);
    EXPECT_EQ(file.size(), 44 + 53248U);
}

// Waves, music and one effect never clip, though the loudest moments of all coincide.
TEST(SampleSounds, FitTogether) {
    int music = 0;
    int effect = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZORBET_SAMPLE_SOUNDS)) {
        if (entry.path().extension() != ".tune") continue;
        SCOPED_TRACE(entry.path().filename());
        std::ifstream file(entry.path(), std::ios::binary);
        const Score score = readScore(std::string(std::istreambuf_iterator<char>(file), {}));
        const Samples samples = finishSamples(score, playScore(score));
        int& loudest = score.loop > 0 ? music : effect;
        loudest = std::max(loudest, peak(samples, 0, samples.size()));
        if (score.loop == 0) continue;
        EXPECT_LE(std::abs(samples.front() - samples.back()), largestStep(samples));
    }
    EXPECT_GT(effect, music);
    EXPECT_GT(music, 0);
    EXPECT_LE(music + effect + 16, 127);
}
