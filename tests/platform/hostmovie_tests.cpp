// Movies: a random play against a model of their clock, pictures, colours and sound; their files,
// read ahead, cut off, damaged and refused.
#include "moviebuilder.h"
#include "recording.h"
#include "temporaryfolder.h"

#include "platform/headless/headlessplatform.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <sstream>

namespace platform {
namespace {

using testing_support::MovieBuilder;
using testing_support::recordingOf;
using Pixels = formats::Bytes;

constexpr int kFrames = 30;
constexpr int kFrameTime = 6250;
constexpr int kRate = 8016;
constexpr int kPerFrame = 501; ///< samples in this time

/// Blocks of all kinds, of which each frame leaves some as they were. Colours change at 2, 5 and 9.
MovieBuilder colourful(int frames) {
    MovieBuilder movie{.width = 24, .height = 16, .frameTime = kFrameTime};
    std::mt19937 random(7);
    Pixels pixels(24 * 16);
    for (int frame = 0; frame < frames; ++frame) {
        for (std::size_t block = 0; block < 24; ++block) {
            if (random() % 3 == 0) continue;
            const auto colours = static_cast<std::uint8_t>(1 + random() % 5);
            for (std::size_t i = 0; i < 16; ++i)
                pixels[(block / 6 * 4 + i / 4) * 24 + block % 6 * 4 + i % 4] =
                    static_cast<std::uint8_t>(37 * (random() % colours));
        }
        movie.frames.push_back({pixels});
        if (frame != 2 && frame != 5 && frame != 6 && frame != 9) continue;
        movie.frames.back().palette.emplace().fill(
            {static_cast<std::uint8_t>(frame == 6 ? 20 : frame << 2), 160, 255});
    }
    return movie;
}
Rgb colourOf(int frame) { // of the palettes above, in 6 bits
    return frame < 2 ? Rgb() : Rgb(frame < 5 ? 8 : frame < 9 ? 20 : 36, 162, 255);
}

/// Up to which sample the sound has come with a frame, so many frames ahead of it.
int soundUntil(int frame, int ahead) {
    return frame < 0 ? 0 : kPerFrame * std::min(frame + ahead + 1, kFrames);
}
/// Gives a movie sound; its whole is the result.
Pixels addSound(MovieBuilder& movie, const formats::MovieSoundFormat& track, int ahead) {
    std::mt19937 random(5);
    const int block = track.bits / 8 * track.channels;
    Pixels all(static_cast<std::size_t>(block * kPerFrame * kFrames));
    for (std::uint8_t& sample : all) sample = static_cast<std::uint8_t>(random());
    for (int i = 0; i < kFrames; ++i) {
        const auto at = [&](int frame) { return all.begin() + block * soundUntil(frame, ahead); };
        if (at(i) > at(i - 1)) movie.frames[std::size_t(i)].sounds[0] = {at(i - 1), at(i)};
    }
    movie.tracks[0] = track;
    return all;
}

/// What a movie has to do.
struct Model {
    // The samples that wait for the speaker are those from `at` to `end`.
    void pass(int ms) {
        if (!runs) return;
        total += ms;
        owed += ms * kRate;
        const int count = std::min(owed / 1000, end - at);
        owed = count < end - at ? owed - count * 1000 : 0;
        heard.insert(heard.end(), all.begin() + block * at, all.begin() + block * (at + count));
        at += count;
    }
    [[nodiscard]] std::int64_t late() const {
        return std::int64_t{total - base} * 100 - (frame - baseFrame) * kFrameTime;
    }
    void findSoundDry() {
        if (!fed || !runs || dry || at < end || end == kPerFrame * kFrames) return;
        dry = true;
        ++facts[5];
    }
    bool wait() {
        if (runs) findSoundDry();
        return !runs || late() < 0;
    }
    void decode() {
        newPalette |= colourOf(frame) != colourOf(frame - 1);
        if (all.empty() || end == soundUntil(frame, ahead)) return;
        findSoundDry();
        const std::int64_t lateBy =
            (std::int64_t{frame} * kFrameTime + late()) * kRate - std::int64_t{end} * 100'000;
        end = soundUntil(frame, ahead);
        if (dry && lateBy > 5000 * kRate) // more than a twentieth of a second
            at = static_cast<int>(std::min<std::int64_t>(at + lateBy / 100'000, end));
        dry = dry && at == end;
        fed = true;
    }
    void doFrame(const MovieBuilder& movie) {
        if (std::exchange(done, true)) return;
        hidden = !all.empty() && runs && frame + 1 < kFrames && inARow < 4 && late() > kFrameTime;
        inARow = hidden ? inARow + 1 : 0;
        ++facts[hidden ? 4 : 3];
        const Pixels& pixels = movie.frames.at(std::size_t(frame)).pixels;
        for (std::size_t i = 0; i < pixels.size(); ++i)
            if (whole || pixels[i] != shown[i]) changed[i / 96 * 6 + i % 24 / 4] = 1;
        shown = pixels;
        whole = false;
    }
    void endFrame() {
        times.push_back({spent, frame});
        spent = 0;
        done = false;
    }
    void next() {
        if (frame + 1 == kFrames) return;
        endFrame();
        ++frame;
        decode();
    }
    void goTo(int to) {
        endFrame();
        frame = std::clamp(to, 0, kFrames - 1);
        at = frame * kPerFrame;
        end = soundUntil(frame - 1, ahead);
        fed = at < end;
        base = total;
        baseFrame = frame;
        whole = newPalette = true;
        hidden = dry = false;
        owed = inARow = 0;
        decode();
    }
    std::vector<std::uint32_t> allFacts() {
        endFrame();
        std::ranges::stable_sort(times, std::greater(), &std::pair<int, int>::first);
        facts[0] = total;
        facts[1] = kFrameTime;
        for (std::size_t i = 0; i < 2; ++i) std::tie(facts[11 + i], facts[13 + i]) = times[i];
        return {facts.begin(), facts.end()};
    }

    Pixels all{};
    int ahead = 0, block = 1;
    int frame = 0, base = 0, baseFrame = 0, total = 0, inARow = 0;
    int at = 0, end = 0, owed = 0;
    bool runs = false, done = false, hidden = false, whole = true, newPalette = true;
    bool dry = false, fed = false; ///< the speaker, which has had something
    Pixels shown = Pixels(24 * 16), changed = Pixels(24), heard{};
    int spent = 0;                                          ///< on the current frame
    std::vector<std::pair<int, int>> times{{0, 0}, {0, 0}}; ///< and frames
    std::vector<int> facts = std::vector<int>(15);
};

class HostMoviesTest : public testing::Test {
  protected:
    HostMoviesTest() {
        HeadlessOptions options;
        options.host = {folder_.path(), "", folder_.path("home")};
        options.recordSound = folder_.path("sound");
        options.report = options.notes = &report_;
        machine_ = std::make_unique<HeadlessPlatform>(options);
    }
    std::unique_ptr<Movie> open(const Pixels& file, bool preload = false, int extra = -1) {
        folder_.make("a.smk", {file.begin(), file.end()});
        return machine_->movies().open({"A.SMK", preload, extra});
    }
    void pass(int ms) { machine_->clock().sleep(static_cast<std::uint32_t>(ms)); }
    /// Plays to the end, and lets all sound be heard.
    void play(Movie& movie) {
        movie.run(true);
        for (;; movie.nextFrame()) {
            while (movie.wait()) pass(1);
            movie.doFrame();
            if (movie.frame() + 1 == movie.frameCount()) break;
        }
        pass(3000);
    }
    static std::vector<Rect> changed(Movie& movie) {
        std::vector<Rect> rects;
        while (const auto rect = movie.takeChanged()) rects.push_back(*rect);
        return rects;
    }
    static Pixels shown(const Movie& movie, int step = 1) {
        Pixels pixels;
        for (int y = 0; y < movie.height(); y += step)
            pixels.insert(pixels.end(), movie.picture().row(y),
                          movie.picture().row(y) + movie.width());
        return pixels;
    }
    void takeChanged(Movie& movie, Model& model, int most, int blockHeight);

    TemporaryFolder folder_;
    std::ostringstream report_;
    std::unique_ptr<HeadlessPlatform> machine_;
};

/// Takes so many rectangles; each must be of blocks that are to be shown, and none is left out.
void HostMoviesTest::takeChanged(Movie& movie, Model& model, int most, int blockHeight) {
    while (most-- > 0) {
        const auto rect = movie.takeChanged();
        if (!rect) {
            ASSERT_TRUE(model.hidden || model.changed == Pixels(24)) << "not told";
            return;
        }
        ASSERT_FALSE(model.hidden);
        for (int y = rect->top; y < rect->bottom; y += blockHeight)
            for (int x = rect->left; x < rect->right; x += 4)
                ASSERT_EQ(
                    std::exchange(model.changed.at(std::size_t(y / blockHeight * 6 + x / 4)), 0),
                    1);
    }
}

TEST_F(HostMoviesTest, PlayAsAModelDoes) {
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        SCOPED_TRACE(round);
        const formats::MovieSoundFormat track{kRate, round & 1 ? 16 : 8, round & 2 ? 2 : 1,
                                              (round & 4) != 0};
        MovieBuilder builder = colourful(kFrames);
        builder.flags = round % 3 * 2U;
        const int step = round % 3 > 0 ? 2 : 1;
        if (round % 2 == 1) builder.ring = builder.frames.front();
        Model model{.ahead = std::array{0, 1, 15, kFrames}.at(std::size_t(round / 4 % 4)),
                    .block = track.bits / 8 * track.channels};
        if (round < 16) model.all = addSound(builder, track, model.ahead);
        const Pixels file = builder.build();
        const auto whole = static_cast<std::uint32_t>(file.size());
        const int wanted = std::array{-1, 0, 300, 0x7FFFFFFF}.at(std::size_t(round % 4));
        const bool preload = round % 5 == 4;
        auto movie = open(file, preload, wanted);
        ASSERT_TRUE(movie);
        EXPECT_EQ(movie->width(), 24);
        EXPECT_EQ(movie->height(), 16 * step);
        EXPECT_EQ(movie->frameCount(), kFrames) << "without the one that leads back to the first";
        EXPECT_EQ(movie->frameTime(), kFrameTime);
        model.decode();
        for (int i = 0; i < 400; ++i) {
            SCOPED_TRACE(i);
            const unsigned what = random() % 40;
            const int ms = static_cast<int>(random() % (what == 0 ? 700 : 20));
            pass(ms);
            model.pass(ms);
            if (what == 1 || (!model.runs && what < 5)) movie->run(model.runs = !model.runs);
            if (what == 6) {
                const int to = static_cast<int>(random() % (kFrames + 8)) - 4;
                movie->goTo(to);
                model.goTo(to);
            }
            if (what == 7) {
                movie->addBlitTime(std::uint32_t(ms));
                model.spent += ms;
                model.facts[6] += ms;
            }
            ASSERT_EQ(movie->frame(), model.frame);
            ASSERT_EQ(movie->palette()[40], colourOf(model.frame));
            ASSERT_EQ(movie->hasNewPalette(), model.newPalette);
            const bool waits = model.wait();
            ASSERT_EQ(movie->wait(), waits);
            if (waits && what != 8) continue;
            movie->doFrame();
            model.doFrame(builder);
            ASSERT_EQ(shown(*movie, step), model.shown);
            ASSERT_EQ(movie->picture().row(16 * step - 1)[9], model.shown[15 * 24 + 9]);
            takeChanged(*movie, model, what % 4 == 3 ? 1 : 24, 4 * step);
            if (HasFatalFailure()) return;
            if (what == 9) continue;
            movie->clearNewPalette();
            model.newPalette = false;
            movie->nextFrame();
            model.next();
        }
        const MovieSummary facts = movie->summary();
        EXPECT_EQ(std::vector(facts.begin(), facts.begin() + 15), model.allFacts());
        const std::uint32_t memory = preload      ? 0
                                     : wanted < 0 ? whole
                                                  : std::min<unsigned>(wanted, whole);
        EXPECT_EQ(facts[15], (builder.ends[kFrames - 1] - builder.start) / kFrames) << "of a frame";
        EXPECT_EQ(facts[19], memory) << "to read ahead";
        EXPECT_TRUE(facts[20] <= memory && (facts[20] > 0) == (memory > 0));
        EXPECT_GT(facts[18], 24u * 16 + memory) << "in all";
        movie.reset();
        if (round >= 16) continue;
        const std::string name = (round < 9 ? "00" : "0") + std::to_string(round + 1);
        EXPECT_TRUE(folder_.contents("sound/" + name + "-8016.wav") ==
                    recordingOf({kRate, track.channels, track.bits}, model.heard));
    }
}

TEST_F(HostMoviesTest, WhatChangedIsCoveredByFewRectangles) {
    // Blocks of the second frame; "#" is painted anew.
    const std::vector<std::string> grid = {"##.###", "##.#..", "##...#", "...###"};
    MovieBuilder builder{.width = 24, .height = 16, .frames = {{Pixels(24 * 16)}}};
    builder.frames.push_back(builder.frames[0]);
    for (std::size_t i = 0; i < 24 * 16; ++i)
        builder.frames[1].pixels[i] = grid[i / 24 / 4][i % 24 / 4] == '#' && i % 7 < 5;
    const auto movie = open(builder.build());
    movie->doFrame();
    EXPECT_EQ(changed(*movie), std::vector<Rect>({{0, 0, 24, 16}})) << "the first one, whole";
    movie->nextFrame();
    movie->doFrame();
    const Rect second{12, 0, 24, 4}, last{12, 12, 24, 16};
    const std::vector<Rect> rects{{0, 0, 8, 12}, second, {12, 4, 16, 8}, {20, 8, 24, 12}, last};
    EXPECT_EQ(changed(*movie), rects);
}

TEST_F(HostMoviesTest, TheFirstTrackThatCanBePlayedIsHeardOfEveryMovie) {
    MovieBuilder builder = colourful(kFrames);
    const Pixels all = addSound(builder, {kRate, 8, 1}, 0);
    for (auto& frame : builder.frames) {
        frame.sounds[3] = frame.sounds[0];
        frame.sounds[0] = frame.sounds[1] = frame.sounds[4] = Pixels(100);
    }
    builder.tracks = {{0, {kRate}}, {1, {900'000}}, {3, {kRate}}, {4, {22050}}};
    builder.otherCodecs = formats::MovieHeader::kOtherCodec;
    auto movie = open(builder.build());
    auto other = machine_->movies().open({"a.smk"});
    ASSERT_TRUE(movie && other);
    pass(500);
    EXPECT_FALSE(std::filesystem::exists(folder_.path("sound"))) << "before the first run";
    movie->run(true);
    pass(25);
    other->run(true);
    pass(25);
    movie.reset();
    machine_->programEnds(0); // completes the other's
    const auto heard = [&](int samples) { return recordingOf({kRate}, {&all[0], &all[samples]}); };
    EXPECT_EQ(folder_.contents("sound/001-8016.wav"), heard(400));
    EXPECT_EQ(folder_.contents("sound/002-8016.wav"), heard(200));
}

TEST_F(HostMoviesTest, AFileThatEndsEarlyPlaysAsFarAsItGoes) {
    MovieBuilder builder = colourful(kFrames);
    addSound(builder, {kRate, 8, 1, true}, 0);
    builder.frames.resize(3);
    for (auto& frame : builder.frames) frame.sounds[0].resize(60);
    ASSERT_TRUE(open(builder.build()));
    for (std::size_t size = builder.ends.back(); size-- > 0;) {
        std::filesystem::resize_file(folder_.path("a.smk"), size);
        const auto movie = machine_->movies().open({"a.smk"});
        ASSERT_EQ(movie != nullptr, size >= builder.start) << size;
        if (!movie) continue;
        ASSERT_EQ(movie->frameCount(), 3);
        play(*movie);
        const auto missing = std::ranges::upper_bound(builder.ends, size) - builder.ends.begin();
        ASSERT_EQ(shown(*movie),
                  missing == 0 ? Pixels(24 * 16) : builder.frames[std::size_t(missing - 1)].pixels)
            << size;
    }
}

TEST_F(HostMoviesTest, DamagedFramesLeaveThePictureAndTheNextOnesGoOn) {
    MovieBuilder builder = colourful(6);
    builder.frames[3].pixels = Pixels(24 * 16, 200); // leaves nothing as it was
    Pixels file = builder.build();
    file[builder.ends[1] + 1] = 0x41; // copies entries past the palette's end
    file[builder.ends[1] + 2] = 0xFF;
    file[builder.ends[1] + 3] = 0x7F;
    const auto movie = open(file);
    for (std::size_t frame = 0; frame < 6; ++frame, movie->nextFrame()) {
        movie->doFrame();
        ASSERT_EQ(shown(*movie), builder.frames[frame == 2 ? 1 : frame].pixels) << frame;
        EXPECT_EQ(changed(*movie).empty(), frame == 2);
    }
    std::mt19937 random(3);
    builder = colourful(kFrames);
    addSound(builder, {kRate, 16, 2, true}, 0);
    builder.frames.resize(4);
    const Pixels good = builder.build();
    for (int i = 0; i < 300; ++i) { // must not crash, hang or fill the memory
        file = good;
        for (int n = 0; n < 3; ++n)
            file[random() % (n == 0 ? 0x100 : file.size())] = static_cast<std::uint8_t>(random());
        const auto damaged = open(file);
        if (!damaged || damaged->frameCount() >= 100) continue;
        damaged->run(true);
        for (int frame = 0; frame < damaged->frameCount(); ++frame, damaged->nextFrame())
            damaged->doFrame();
        damaged->goTo(1);
    }
}

TEST_F(HostMoviesTest, RefusesWhatIsNoMovieAndAbsurdNumbers) {
    const Pixels good = colourful(2).build();
    constexpr std::uint32_t kMost = 0xFFFFFFFF;
    const std::tuple<std::size_t, std::uint32_t, bool> rows[] = {
        {0x00, 0x46464952, false}, // a RIFF file
        {0x00, 0x344B4D53, true},  // the other version
        {0x04, 0, false},          {0x04, 4097, false},       {0x04, 0xFFFFFFFC, false},
        {0x08, 0, false},          {0x08, 4100, false},       {0x0C, 0, false},
        {0x0C, 3, false},          {0x0C, 0xFFFFFF, false},   {0x0C, kMost, false},
        {0x10, 0, true},           {0x10, 0x80000000, false}, {0x10, 0x7FFFFFFF, false},
        {0x34, kMost, false},      {0x34, 0x7FFFFFFF, false}, {0x34, 0, false},
        {0x38, kMost, true}, // what is said of the memory is not needed
        {0x44, 0, true},           {0x48, kMost, true},       {0x68, 0xFFFFFFFC, false},
        {0x6C, 0x03FFFFFC, true}};
    for (const auto& [place, value, opens] : rows) {
        Pixels file = good;
        for (std::size_t i = 0; i < 4; ++i)
            file[place + i] = static_cast<std::uint8_t>(value >> 8 * i);
        const auto movie = open(file);
        ASSERT_EQ(movie != nullptr, opens) << std::hex << place << " " << value;
        if (movie) {
            EXPECT_EQ(movie->frameTime(), place == 0x10 ? 10000 : kFrameTime);
        }
    }
    EXPECT_FALSE(open({}));
    folder_.makeFolder("folder.smk");
    for (const char* none : {"missing.smk", "folder.smk"})
        EXPECT_FALSE(machine_->movies().open({none}));
}

} // namespace
} // namespace platform
