// The maker of the sample game's sounds: what it reads, what it plays, and that it gives the same
// bytes everywhere.
#include "finish.h"
#include "fixedmath.h"
#include "scorereader.h"
#include "synth.h"
#include "wavefile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
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

/// Upward ways through silence in samples `from` to `to`, as a frequency.
double frequency(const Samples& samples, std::size_t from, std::size_t to) {
    double first = -1;
    double last = -1;
    int count = 0;
    for (std::size_t i = from; i + 1 < to; ++i) {
        if (samples[i] >= 128 || samples[i + 1] < 128) continue;
        const double low = samples[i];
        last = static_cast<double>(i) + (128 - low) / (samples[i + 1] - low);
        if (count++ == 0) first = last;
    }
    return (count - 1) * kSampleRate / (last - first);
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

TEST(FixedMath, AgreesWithRealNumbers) {
    for (std::uint32_t phase = 0; phase < 0xFF000000; phase += 0x00ABCDEF)
        ASSERT_NEAR(fixedmath::sine(phase), 32768 * std::sin(phase / 4294967296.0 * 2 * M_PI), 1.5);
    for (std::int64_t octaves = -20 * fixedmath::kOctave; octaves < 5 * fixedmath::kOctave;
         octaves += 77777) {
        const double exact = std::exp2(static_cast<double>(octaves) / fixedmath::kOctave + 31);
        ASSERT_NEAR(fixedmath::power(octaves) / exact, 1, 1e-6 + 1 / exact) << octaves;
    }
}

TEST(ScoreReader, PlacesNotesInTime) {
    const Score score = readScore("tempo 90\nbar 3\ninstrument a # comment\n voice a 50 3\n"
                                  "c5:1 a4+b4:1.5 - # rest\n ( bb3:1/2 @70 g#4>d5 )2 | -:3 | -:2");
    ASSERT_EQ(score.voices.size(), 1U) << "and an instrument";
    // start, length, semitone, semitone at the end, volume
    std::vector<std::vector<std::int64_t>> rows;
    for (const Note& note : score.voices[0].notes)
        rows.push_back({note.start * 100 / kTicksPerBeat, note.length * 100 / kTicksPerBeat,
                        note.pitch * 12 / fixedmath::kOctave,
                        note.endPitch * 12 / fixedmath::kOctave, note.volume});
    const std::vector<std::vector<std::int64_t>> expected = {
        {300, 100, 3, 3, 100},    {400, 150, 0, 0, 100}, {400, 150, 2, 2, 100},
        {700, 50, -11, -11, 100}, {750, 50, -1, 5, 70},  {800, 50, -11, -11, 100},
        {850, 50, -1, 5, 70},
    };
    EXPECT_EQ(rows, expected);
}

TEST(ScoreReader, TellsWhatIsWrongAndWhere) {
    struct Row {
        const char* text;
        int line;
        const char* fault;
    };
    const Row rows[] = {
        {"", 0, "there are no notes"},
        {"tempo 60\n\nmelody x\n", 3, "\"melody\" is no keyword, and there is no voice yet"},
        {"tempo 99999999999", 1, "\"99999999999\": a number from 20 to 400 stands here"},
        {"instrument a\nwave 0 0", 2, "one harmonic must not be 0"},
        {"voice a 50", 1, "there is no instrument \"a\""},
        {"instrument a\ninstrument a", 2, "there is an instrument \"a\" already"},
        {"instrument a\nvoice a 50\nc5 h5", 3, "\"h5\" is no note"},
        {"instrument a\nvoice a 50\nc5:1/0", 3, "\"c5:1/0\": the length is no number of beats"},
        {"instrument a\nvoice a 50\n@0 c5", 3, "\"@0\": a volume is @1 to @200"},
        {"bar 4\ninstrument a\nvoice a 50\nc5:3.5 |", 4, "bar line after 3.50 beats of a bar"},
        {"instrument a\nvoice a 50\n( c5 )", 3, "behind \")\" stands how often, from 2 to 1000"},
        {"instrument a\nvoice a 50\n( c5\n\nvoice a 50", 5,
         "a \"(\" of the voice before is not closed"},
        {"instrument a\nvoice a 50\n( ( c5:0.01 )1000 )1000", 3,
         "a voice has more than 20000 notes"},
        {"instrument a\nvoice a 50\n( -:4000 )2", 3, "the voice is too long"},
        {"loop 4\ninstrument a\nvoice a 50\nc5:5", 4, "the voice before is longer than the loop"},
        {"tempo 60\ninstrument a\nvoice a 50\nc5:121", 4, "the score is longer than two minutes"},
        {"tempo 60\ninstrument a\nvoice a 50\nc5:1\ntempo 70", 5,
         "\"tempo\" stands before the voices"},
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

TEST(Synth, PitchesAreThoseOfTheScore) {
    for (const auto& [note, hz] : {std::pair("c3", 130.813), std::pair("f#3", 184.997),
                                   std::pair("bb4", 466.164), std::pair("g7", 3135.963)}) {
        const Samples samples =
            render(std::string("tempo 60\nlowpass 9000\ninstrument a\nvoice a 100\n") + note);
        EXPECT_NEAR(frequency(samples, 2000, 20000) / hz, 1, 0.0005) << note;
    }
    const Samples glide = render("tempo 60\ninstrument a\nenvelope 5 900\nvoice a 100\na4>e5:1");
    EXPECT_NEAR(frequency(glide, 10000, 12000), 440 * std::exp2(3.5 / 12), 15) << "halfway";
    EXPECT_NEAR(frequency(glide, 23000, 30000), 659.255, 1) << "at its end and in the release";
    const Samples slide = render("tempo 60\ninstrument a\nslide -1200 500\nvoice a 100\na4:1");
    EXPECT_NEAR(frequency(slide, 100, 1500), 220, 8);
    EXPECT_NEAR(frequency(slide, 12000, 20000), 440, 0.5);
}

TEST(Synth, EnvelopesAreSmoothAndAsLongAsWritten) {
    const Samples tone =
        render("tempo 60\npeak 100\ninstrument a\nenvelope 0 0\nvoice a 100\na3:1");
    EXPECT_LE(std::abs(tone.front() - 128), 1);
    EXPECT_LE(std::abs(tone.back() - 128), 1);
    EXPECT_LE(largestStep(tone), 11) << "a3 at this level has 10; more is a click";
    EXPECT_NEAR(static_cast<double>(tone.size()), kSampleRate * 1.008, 100);

    const Samples decay =
        render("tempo 60\npeak 60\ninstrument a\ndecay 200 25\nvoice a 100\na4:2");
    // Levels are one and a half times as high before the loudest are bent down.
    EXPECT_NEAR(peak(decay, 4500, 4600), 51, 3) << "200 ms: half of the way";
    EXPECT_NEAR(peak(decay, 38000, 40000), 23, 3);
    EXPECT_EQ(peak(decay, 0, decay.size()), 60);

    // Equal noises would sound like a machine gun.
    const Samples noise = render("tempo 60\ninstrument a\nnoise 1\nenvelope 2 20\nvoice a 100\n"
                                 "a6:1 a6:1");
    EXPECT_NE(Samples(noise.begin() + 1000, noise.begin() + 9000),
              Samples(noise.begin() + 1000 + kSampleRate, noise.begin() + 9000 + kSampleRate));
}

TEST(Synth, LoopsJoin) {
    // The same note early and at the end of the loop, over which it rings on: only turned round.
    const std::string head = "tempo 100\nloop 8\necho 200 40\ninstrument a\nenvelope 5 600\n";
    const Samples early = render(head + "voice a 100 2\na4>b4:1");
    const Samples late = render(head + "voice a 100 7\na4>b4:1");
    ASSERT_EQ(early.size() % 1024, 0U);
    EXPECT_NEAR(static_cast<double>(early.size()), 8 * 0.6 * kSampleRate, 512);
    ASSERT_EQ(early.size(), late.size());
    const std::size_t turn = early.size() * 5 / 8;
    int difference = 0;
    for (std::size_t i = 0; i < early.size(); ++i)
        difference = std::max(difference, std::abs(early[i] - late[(i + turn) % late.size()]));
    EXPECT_LE(difference, 1);
    EXPECT_GT(peak(late, 0, 3000), 10) << "nothing rings over the join";
}

TEST(Synth, GivesTheSameBytesEverywhere) {
    const std::string file = waveFile(render(
        "tempo 100\nbar 4\nloop 4\necho 150 30\nlowpass 4000\npeak 70\n"
        "instrument a\nwave 100 50 -20 10\nstrike 40 10 80\nvibrato 20 5.5 50\ndecay 300 20\n"
        "instrument b\nnoise 4\nenvelope 50 80\ntremolo 60 9\nslide 300 90\n"
        "voice a 70\nc4+e4:1 g4>c5:2 @60 -:1 |\nvoice b 40 1\n( c6:1/2 a5>f6:1 )2"));
    std::uint32_t hash = 2166136261U; // FNV-1a
    for (const char byte : file) hash = (hash ^ static_cast<unsigned char>(byte)) * 16777619U;
    EXPECT_EQ(hash, 858213642U);
    EXPECT_EQ(file.substr(0, 4), "RIFF");
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
