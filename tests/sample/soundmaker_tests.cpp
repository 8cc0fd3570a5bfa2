#include "finish.h"
#include "formats/sound/wave.h"
#include "scorereader.h"
#include "synth.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

TEST(ScoreReader, TellsWhatIsWrongAndWhere) {
    const std::pair<std::string, std::string> rows[] = {
        {"", "0 there are no notes"},
        {"tempo 60\n\nmelody x\n", "3 \"melody\" is no keyword, and there is no voice yet"},
        {"bar 4\ninstrument a\nvoice a 50\nc5:3.5 |", "4 bar line after 3.50 beats of a bar"},
        {"instrument a\nvoice a 50\n( c5 )", "3 behind \")\" stands how often, from 2 to 1000"},
        {"instrument a\nvoice a 50\n( c5\n\nvoice a 50",
         "5 a \"(\" of the voice before is not closed"},
        {"instrument a\nvoice a 50\n( ( c5:0.01 )1000 )1000",
         "3 a voice has more than 20000 notes"}};
    for (const auto& [text, expected] : rows) {
        std::string told;
        try {
            (void)readScore(text);
        } catch (const ScoreFault& fault) {
            told = std::to_string(fault.line()) + " " + fault.what();
        }
        EXPECT_EQ(told, expected);
    }
}

TEST(Synth, GivesTheSameBytesEverywhere) {
    const Score score = readScore(
        "tempo 100\nbar 4\nloop 4\necho 150 30\nlowpass 4000\npeak 70\n"
        "instrument a\nwave 100 50 -20 10\nstrike 40 10 80\nvibrato 20 5.5 50\ndecay 300 20\n"
        "instrument b\nnoise 4\nenvelope 50 80\ntremolo 60 9\nslide 300 90\n"
        "voice a 70\nc4+e4:1 g4>c5:2 @60 -:1 |\nvoice b 40 1\n( c6:1/2 a5>f6:1 )2");
    const auto file =
        formats::sound::writeRiff(finishSamples(score, playScore(score)), kSampleRate);
    std::uint32_t hash = 2166136261U; // FNV-1a
    for (const std::uint8_t byte : file) hash = (hash ^ byte) * 16777619U;
    EXPECT_EQ(hash, 858213642U);
    EXPECT_EQ(file.size(), 44 + 53248U);
}

// Waves, music and one effect never clip, though the loudest moments of all coincide.
TEST(SampleSounds, FitTogether) {
    int music = 0, effect = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZORBET_SAMPLE_SOUNDS)) {
        if (entry.path().extension() != ".tune") continue;
        std::ifstream file(entry.path(), std::ios::binary);
        const Score score = readScore(std::string(std::istreambuf_iterator<char>(file), {}));
        const auto samples = finishSamples(score, playScore(score));
        int& loudest = score.loop > 0 ? music : effect;
        int largestStep = 0;
        for (std::size_t i = 1; i < samples.size(); ++i) {
            largestStep = std::max(largestStep, std::abs(samples[i] - samples[i - 1]));
            loudest = std::max(loudest, std::abs(samples[i] - 128));
        }
        const int seam = score.loop > 0 ? std::abs(samples.front() - samples.back()) : 0;
        EXPECT_LE(seam, largestStep) << entry.path();
    }
    EXPECT_GT(effect, music);
    EXPECT_GT(music, 0);
    EXPECT_LE(music + effect + 16, 127);
}

} // namespace
