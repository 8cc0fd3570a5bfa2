// Movies: their pictures and colours, what changed, when frames are due, skipping, going to frames,
// their sound, and files that are none or damaged.
#include "moviebuilder.h"
#include "temporaryfolder.h"

#include "platform/headless/headlessplatform.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace platform {
namespace {

using testing_support::MovieBuilder;
using MovieBytes = formats::Bytes;
using Pixels = std::vector<std::uint8_t>;
using Samples = MovieBuilder::Samples;
constexpr int kFrameTime = 6666;

/// The first millisecond at which a frame may be shown.
std::uint32_t dueMs(int frame) {
    return static_cast<std::uint32_t>((frame * kFrameTime + 99) / 100);
}

/// Blocks of all kinds, of which each frame leaves some as they were.
MovieBuilder colourful(int frames) {
    MovieBuilder movie{.width = 24, .height = 16};
    std::mt19937 random(7);
    Pixels pixels(static_cast<std::size_t>(movie.width * movie.height));
    for (int frame = 0; frame < frames; ++frame) {
        for (std::size_t block = 0; block < pixels.size() / 16; ++block) {
            if (random() % 3 == 0) continue;
            const auto colours = static_cast<std::uint8_t>(1 + random() % 5);
            for (std::size_t i = 0; i < 16; ++i) {
                const std::size_t x = block % 6 * 4 + i % 4;
                const std::size_t y = block / 6 * 4 + i / 4;
                pixels[y * static_cast<std::size_t>(movie.width) + x] =
                    static_cast<std::uint8_t>(37 * (random() % colours));
            }
        }
        movie.frames.push_back({pixels});
    }
    return movie;
}

formats::MoviePalette paletteOf(int red) {
    formats::MoviePalette palette{};
    for (std::size_t i = 0; i < palette.size(); ++i)
        palette[i] = {static_cast<std::uint8_t>(red << 2), static_cast<std::uint8_t>(i << 2), 255};
    return palette;
}

Samples noise(std::size_t size, unsigned seed) {
    std::mt19937 random(seed);
    Samples samples(size);
    for (std::uint8_t& sample : samples) sample = static_cast<std::uint8_t>(random());
    return samples;
}

/// Gives every frame as much sound as it lasts; `all` is its whole.
MovieBuilder withSound(MovieBuilder movie, const MovieBuilder::Track& track, Samples& all) {
    movie.tracks[0] = track;
    const auto block = static_cast<std::size_t>(track.bits / 8 * track.channels);
    for (std::size_t i = 0; i < movie.frames.size(); ++i) {
        const auto until = [&](std::size_t frame) {
            return frame * std::size_t(track.rate) * 6666 / 100000;
        };
        const Samples part = noise(block * (until(i + 1) - until(i)), static_cast<unsigned>(i));
        movie.frames[i].sounds[0] = part;
        all.insert(all.end(), part.begin(), part.end());
    }
    return movie;
}

class HostMoviesTest : public testing::Test {
  protected:
    void SetUp() override { start(""); }
    void start(const std::string& recordings) {
        HeadlessOptions options;
        options.host = {folder_.path(), "", folder_.path("home")};
        options.recordSound = recordings;
        options.report = &report_;
        options.notes = &report_;
        machine_ = std::make_unique<HeadlessPlatform>(options);
    }
    std::unique_ptr<Movie> open(const MovieBytes& file, bool preload = false, int extra = -1) {
        folder_.make("a.smk", {reinterpret_cast<const char*>(file.data()), file.size()});
        return machine_->movies().open({"A.SMK", preload, extra});
    }
    std::unique_ptr<Movie> open(MovieBuilder& builder) { return open(builder.build()); }

    void pass(std::uint32_t ms) { machine_->clock().sleep(ms); }
    std::uint32_t now() { return machine_->clock().milliseconds(); }
    void waitFor(Movie& movie) {
        for (int i = 0; movie.wait(); ++i) {
            ASSERT_LT(i, 1000);
            pass(1);
        }
    }
    /// Plays to the end, and lets all sound be heard.
    void play(Movie& movie) {
        movie.run(true);
        for (;; movie.nextFrame()) {
            waitFor(movie);
            movie.doFrame();
            if (movie.frame() + 1 == movie.frameCount()) break;
        }
        pass(1000);
    }
    static std::vector<Rect> changed(Movie& movie) {
        std::vector<Rect> rects;
        while (const auto rect = movie.takeChanged()) rects.push_back(*rect);
        return rects;
    }
    static Pixels shown(const Movie& movie) {
        Pixels pixels;
        for (int y = 0; y < movie.height(); ++y)
            pixels.insert(pixels.end(), movie.picture().row(y),
                          movie.picture().row(y) + movie.width());
        return pixels;
    }
    static std::uint32_t fact(const Movie& movie, MovieFact fact) {
        return movie.summary().at(static_cast<std::size_t>(fact));
    }
    /// The samples of a recording whose header tells `format`.
    Samples recorded(const std::string& name, const SoundFormat& format) {
        const std::string all = folder_.contents("sound/" + name);
        const auto number = [&](std::size_t place, int size) {
            int value = 0;
            while (size-- > 0)
                value = value << 8 |
                        static_cast<std::uint8_t>(all.at(place + static_cast<std::size_t>(size)));
            return value;
        };
        if (all.size() < 44) return {};
        EXPECT_EQ(number(22, 2), format.channels);
        EXPECT_EQ(number(24, 4), format.rate);
        EXPECT_EQ(number(28, 4), format.bytesPerSecond());
        EXPECT_EQ(number(32, 2), format.blockSize());
        EXPECT_EQ(number(34, 2), format.bits);
        return {all.begin() + 44, all.begin() + 44 + number(40, 4)};
    }

    TemporaryFolder folder_;
    std::ostringstream report_;
    std::unique_ptr<HeadlessPlatform> machine_;
};

TEST_F(HostMoviesTest, ShowsThePicturesAndColoursItWasMadeOf) {
    MovieBuilder builder = colourful(12);
    for (const int frame : {2, 5, 6, 9})
        builder.frames.at(static_cast<std::size_t>(frame)).palette =
            paletteOf(frame == 6 ? 5 : frame); // 6 repeats 5
    builder.ring = builder.frames.front();
    const auto movie = open(builder);
    ASSERT_TRUE(movie);
    EXPECT_EQ(movie->width(), 24);
    EXPECT_EQ(movie->height(), 16);
    EXPECT_EQ(movie->frameCount(), 12) << "without the one that leads back to the first";
    EXPECT_EQ(movie->frameTime(), kFrameTime);
    std::string newPalettes;
    for (int frame = 0; frame < 12; ++frame, movie->nextFrame()) {
        ASSERT_EQ(movie->frame(), frame);
        if (movie->hasNewPalette()) newPalettes += std::to_string(frame) + " ";
        movie->clearNewPalette();
        const int red = frame < 2 ? 0 : frame < 5 ? 2 : frame < 9 ? 5 : 9;
        EXPECT_EQ(movie->palette()[40], frame < 2 ? Rgb() : Rgb(red << 2, 40 << 2 | 2, 255));
        movie->doFrame();
        ASSERT_EQ(shown(*movie), builder.frames[static_cast<std::size_t>(frame)].pixels) << frame;
    }
    EXPECT_EQ(newPalettes, "0 2 5 9 ");
    EXPECT_EQ(movie->frame(), 11) << "the last one stays";
}

TEST_F(HostMoviesTest, PicturesOfDoubleHeightHaveEveryLineTwice) {
    for (const std::uint32_t flags : {2u, 4u}) {
        MovieBuilder builder = colourful(2);
        builder.flags = flags;
        builder.frames[1].pixels = builder.frames[0].pixels;
        builder.frames[1].pixels[24 * 15] ^= 1; // the lowest block of the left
        const auto movie = open(builder);
        ASSERT_TRUE(movie);
        ASSERT_EQ(movie->height(), 32);
        movie->doFrame();
        EXPECT_EQ(changed(*movie), std::vector<Rect>({{0, 0, 24, 32}}));
        movie->nextFrame();
        movie->doFrame();
        for (std::size_t y = 0; y < 32; ++y)
            for (std::size_t x = 0; x < 24; ++x)
                ASSERT_EQ(shown(*movie)[y * 24 + x], builder.frames[1].pixels[y / 2 * 24 + x]);
        EXPECT_EQ(changed(*movie), std::vector<Rect>({{0, 24, 4, 32}}));
    }
}

TEST_F(HostMoviesTest, WhatChangedIsCoveredByFewRectangles) {
    // Blocks that each frame paints anew; "." stays.
    const std::vector<std::vector<std::string>> grids = {{"......", "......", "......", "......"},
                                                         {"##.###", "##.#..", "##...#", "...###"},
                                                         {"......", "......", "......", "......"},
                                                         {"#.....", "......", "......", ".....#"},
                                                         {".#....", "......", "......", "......"}};
    MovieBuilder builder{.width = 24, .height = 16};
    Pixels pixels(24 * 16);
    for (const auto& grid : grids) {
        for (std::size_t i = 0; i < pixels.size(); ++i)
            if (grid[i / 24 / 4][i % 24 / 4] == '#' && i % 7 < 5) ++pixels[i];
        builder.frames.push_back({pixels});
    }
    const auto movie = open(builder);
    ASSERT_TRUE(movie);
    const auto next = [&] {
        movie->nextFrame();
        movie->doFrame();
    };
    movie->doFrame();
    EXPECT_EQ(changed(*movie), std::vector<Rect>({{0, 0, 24, 16}})) << "the first one, whole";
    next();
    EXPECT_EQ(
        changed(*movie),
        std::vector<Rect>(
            {{0, 0, 8, 12}, {12, 0, 24, 4}, {12, 4, 16, 8}, {20, 8, 24, 12}, {12, 12, 24, 16}}));
    next();
    EXPECT_EQ(changed(*movie), std::vector<Rect>());
    next();
    EXPECT_EQ(movie->takeChanged(), Rect(0, 0, 4, 4));
    next();
    EXPECT_EQ(changed(*movie), std::vector<Rect>({{4, 0, 8, 4}, {20, 12, 24, 16}}))
        << "with what was not taken before";
}

TEST_F(HostMoviesTest, FramesAreDueToTheHundredthOfAMillisecond) {
    MovieBuilder builder = colourful(100);
    const auto movie = open(builder);
    ASSERT_TRUE(movie);
    pass(1000);
    EXPECT_TRUE(movie->wait()) << "it does not run yet";
    movie->run(true);
    std::uint32_t start = now();
    for (int frame = 0; frame < 100; ++frame, movie->nextFrame()) {
        waitFor(*movie);
        ASSERT_EQ(now() - start, dueMs(frame)) << frame;
        movie->doFrame();
        if (frame % 10 != 3) continue;
        pass(20);
        movie->run(false);
        pass(500);
        EXPECT_TRUE(movie->wait());
        movie->run(true);
        start += 500;
    }
    EXPECT_EQ(fact(*movie, MovieFact::PlaybackTime), dueMs(99));
    EXPECT_EQ(fact(*movie, MovieFact::FramesPlayed), 100u);
    EXPECT_EQ(fact(*movie, MovieFact::FrameTime), 6666u);
}

TEST_F(HostMoviesTest, SkipsFramesToKeepUpWithSoundButNotMoreThanFourInARow) {
    for (const bool hasSound : {true, false}) {
        MovieBuilder builder{.width = 8, .height = 4};
        for (std::uint8_t i = 0; i < 30; ++i)
            builder.frames.push_back({Pixels(32, static_cast<std::uint8_t>(i + 1))});
        builder.frames[5].pixels[31] = 99; // the skipped one alone changes the right block
        for (std::size_t i = 6; i < 12; ++i) std::fill_n(&builder.frames[i].pixels[4], 4, 42);
        if (hasSound) builder.tracks[0] = {};
        if (hasSound) builder.frames[0].sounds[0] = noise(22050 * 3, 1);
        const auto movie = open(builder);
        ASSERT_TRUE(movie);
        movie->run(true);
        std::string shownFrames;
        for (int frame = 0; frame < 30; ++frame, movie->nextFrame()) {
            if (frame == 3) pass(dueMs(13) - dueMs(2)); // it then is ten frames late
            if (frame == 28) pass(3000);
            waitFor(*movie);
            movie->doFrame();
            ASSERT_EQ(movie->picture().row(0)[0], frame + 1) << "also when it is not shown";
            if (!changed(*movie).empty()) shownFrames += std::to_string(frame) + " ";
        }
        const std::string all = "0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20 21 22 23 24 "
                                "25 26 27 28 29 ";
        const std::string some = "0 1 2 7 12 13 14 15 16 17 18 19 20 21 22 23 24 25 26 27 29 ";
        EXPECT_EQ(shownFrames, hasSound ? some : all);
        EXPECT_EQ(fact(*movie, MovieFact::FramesSkipped), hasSound ? 9u : 0u);
        EXPECT_EQ(fact(*movie, MovieFact::FramesPlayed), hasSound ? 21u : 30u);
    }
}

TEST_F(HostMoviesTest, GoesToFramesBothWays) {
    MovieBuilder builder = colourful(12);
    builder.frames[4].palette = paletteOf(4);
    const auto movie = open(builder);
    ASSERT_TRUE(movie);
    movie->run(true);
    movie->doFrame();
    for (const int frame : {7, 2, 3, 3, 11, 0, 99, -5}) {
        const auto real = static_cast<std::size_t>(std::clamp(frame, 0, 11));
        changed(*movie);
        movie->clearNewPalette();
        pass(12345);
        movie->goTo(frame);
        EXPECT_EQ(movie->frame(), static_cast<int>(real));
        EXPECT_TRUE(movie->hasNewPalette());
        EXPECT_EQ(movie->palette()[0].red, real < 4 ? 0 : 4 << 2);
        EXPECT_FALSE(movie->wait()) << "its time begins anew";
        movie->doFrame();
        ASSERT_EQ(shown(*movie), builder.frames[real].pixels) << frame;
        EXPECT_EQ(changed(*movie), std::vector<Rect>({{0, 0, 24, 16}}));
        const std::uint32_t start = now();
        if (real == 11) continue;
        movie->nextFrame();
        waitFor(*movie);
        EXPECT_EQ(now() - start, dueMs(1));
        movie->doFrame();
        EXPECT_EQ(shown(*movie), builder.frames[real + 1].pixels);
    }
}

TEST_F(HostMoviesTest, EveryKindOfSoundIsHeardAsItWas) {
    start(folder_.path("sound"));
    int files = 0;
    for (const int bits : {8, 16})
        for (const int channels : {1, 2})
            for (const bool packed : {false, true}) {
                Samples all;
                MovieBuilder builder =
                    withSound(colourful(8), {11127, bits, channels, packed}, all);
                auto movie = open(builder);
                ASSERT_TRUE(movie);
                play(*movie);
                EXPECT_EQ(fact(*movie, MovieFact::SoundSkips), 0u);
                movie.reset();
                const std::string name = "00" + std::to_string(++files) + "-11127.wav";
                EXPECT_EQ(recorded(name, {11127, bits, channels}), all) << name;
            }
}

TEST_F(HostMoviesTest, TheFirstTrackThatCanBePlayedIsHeard) {
    start(folder_.path("sound"));
    Samples all;
    MovieBuilder builder = withSound(colourful(8), {11127, 16, 1, true}, all);
    for (auto& frame : builder.frames) {
        frame.sounds[3] = std::exchange(frame.sounds[0], noise(100, 1));
        frame.sounds[1] = frame.sounds[4] = frame.sounds[0];
    }
    builder.tracks[3] = std::exchange(builder.tracks[0], {.unknown = true});
    builder.tracks[1] = {.rate = 900'000};
    builder.tracks[4] = {};
    auto movie = open(builder);
    ASSERT_TRUE(movie);
    play(*movie);
    movie.reset();
    EXPECT_EQ(recorded("001-11127.wav", {11127, 16, 1}), all);
    EXPECT_FALSE(std::filesystem::exists(folder_.path("sound/002-22050.wav")));
}

TEST_F(HostMoviesTest, SoundWaitsWithTheMovieAndGoesWithIt) {
    start(folder_.path("sound"));
    Samples all;
    MovieBuilder builder = withSound(colourful(20), {1000, 8, 1}, all);
    auto movie = open(builder);
    auto other = open(builder);
    ASSERT_TRUE(movie && other);
    pass(500);
    EXPECT_FALSE(std::filesystem::exists(folder_.path("sound"))) << "before the first run";
    movie->run(true);
    pass(50);
    movie->run(false);
    pass(500);
    other->run(true); // has a speaker of its own
    pass(30);
    movie->run(true);
    pass(10);
    movie->goTo(10);
    pass(40);
    movie.reset();
    machine_->programEnds(0); // completes the other's
    Samples expected(all.begin(), all.begin() + 60);
    expected.insert(expected.end(), all.begin() + 666, all.begin() + 706);
    EXPECT_EQ(recorded("001-1000.wav", {1000}), expected);
    EXPECT_EQ(recorded("002-1000.wav", {1000}), Samples(all.begin(), all.begin() + 66));
}

TEST_F(HostMoviesTest, AfterAJumpTheSoundIsThatOfThePicture) {
    Samples all;
    MovieBuilder even = withSound(colourful(30), {1000, 16, 2, true}, all);
    even.frameTime = 6000;
    const auto at = [](int frame) { return static_cast<std::size_t>(frame) * 60; };
    // How many frames the sound is ahead; 30: all of it comes with the first one.
    for (const int ahead : {0, 1, 15, 30}) {
        start(folder_.path("sound"));
        MovieBuilder builder = even;
        for (int i = 0; i < 30; ++i) {
            auto& sounds = builder.frames.at(static_cast<std::size_t>(i)).sounds;
            const std::size_t begin = at(i == 0 ? 0 : std::min(i + ahead, 30));
            const std::size_t end = at(std::min(i + ahead + 1, 30));
            const auto samples = all.begin();
            sounds[0] = Samples(samples + static_cast<std::ptrdiff_t>(4 * begin),
                                samples + static_cast<std::ptrdiff_t>(4 * end));
            if (begin == end) sounds.clear();
        }
        auto movie = open(builder);
        ASSERT_TRUE(movie);
        Samples expected;
        movie->goTo(9); // before it runs
        movie->run(true);
        for (const int frame : {9, 12, 20, 4, 29, 28, 0}) {
            movie->goTo(frame);
            movie->doFrame();
            pass(50);
            const auto from = all.begin() + static_cast<std::ptrdiff_t>(4 * at(frame));
            expected.insert(expected.end(), from, from + 4 * 50);
        }
        EXPECT_EQ(fact(*movie, MovieFact::SoundSkips), 0u);
        movie.reset();
        const Samples heard = recorded("001-1000.wav", {1000, 16, 2});
        EXPECT_EQ(heard, expected) << ahead;
    }
}

TEST_F(HostMoviesTest, SoundThatComesTooLateIsLeftOut) {
    start(folder_.path("sound"));
    Samples all;
    MovieBuilder builder = withSound(colourful(40), {1000, 8, 1}, all);
    builder.frames[0].sounds[0] = Samples(all.begin(), all.begin() + 266); // ahead of the pictures
    for (std::size_t i = 1; i < 40; ++i) {
        const auto at = [&](std::size_t frame) {
            return all.begin() + std::min<std::ptrdiff_t>((frame * 6666 + 20000) / 100, 2666);
        };
        builder.frames[i].sounds[0] = Samples(at(i), at(i + 1));
        if (builder.frames[i].sounds[0].empty()) builder.frames[i].sounds.clear();
    }
    auto movie = open(builder);
    ASSERT_TRUE(movie);
    movie->run(true);
    for (int frame = 0; frame < 40; ++frame, movie->nextFrame()) {
        if (frame == 10) pass(1000); // the program stands still
        waitFor(*movie);
        movie->doFrame();
    }
    EXPECT_EQ(fact(*movie, MovieFact::SoundSkips), 1u);
    pass(1000);
    movie.reset();
    // What was queued, and from the time on at which the program went on.
    const std::ptrdiff_t queued = (11 * 6666 + 20000) / 100;
    const std::ptrdiff_t on = static_cast<std::ptrdiff_t>(dueMs(9)) + 1000;
    Samples expected(all.begin(), all.begin() + queued);
    expected.insert(expected.end(), all.begin() + on, all.end());
    const Samples heard = recorded("001-1000.wav", {1000});
    ASSERT_NEAR(static_cast<double>(heard.size()), static_cast<double>(expected.size()), 2);
    EXPECT_TRUE(std::equal(heard.rbegin(), heard.rbegin() + 1000, all.rbegin()));
    EXPECT_TRUE(std::equal(expected.begin(), expected.begin() + queued, heard.begin()));
}

TEST_F(HostMoviesTest, ReadsAheadAsFarAsItMay) {
    MovieBuilder builder = colourful(40);
    const MovieBytes file = builder.build();
    struct Row {
        bool preload;
        int wanted;
        std::uint32_t memory;
    };
    const auto whole = static_cast<std::uint32_t>(file.size());
    for (const Row& row : {Row{false, 0, 0}, Row{false, 300, 300}, Row{false, -1, whole},
                           Row{false, 0x7FFFFFFF, whole}, Row{true, 300, 0}}) {
        const auto movie = open(file, row.preload, row.wanted);
        ASSERT_TRUE(movie);
        movie->goTo(20);
        play(*movie);
        EXPECT_EQ(shown(*movie), builder.frames.back().pixels);
        EXPECT_EQ(fact(*movie, MovieFact::ExtraMemory), row.memory);
        EXPECT_LE(fact(*movie, MovieFact::HighestExtraUse), row.memory);
        EXPECT_GT(fact(*movie, MovieFact::HighestMemory), 24u * 16 + row.memory);
    }
}

TEST_F(HostMoviesTest, AFileThatEndsEarlyPlaysAsFarAsItGoes) {
    Samples all;
    MovieBuilder builder = withSound(colourful(3), {1000, 8, 1, true}, all);
    builder.frames[1].palette = paletteOf(3);
    const MovieBytes file = builder.build();
    const std::size_t tables = builder.start;
    ASSERT_TRUE(open(file));
    for (std::size_t size = file.size(); size-- > 0;) {
        std::filesystem::resize_file(folder_.path("a.smk"), size);
        const auto movie = machine_->movies().open({"a.smk"});
        ASSERT_EQ(movie != nullptr, size >= tables) << size;
        if (!movie) continue;
        ASSERT_EQ(movie->frameCount(), 3);
        play(*movie);
        const auto missing = std::ranges::upper_bound(builder.ends, size) - builder.ends.begin();
        ASSERT_EQ(shown(*movie), missing == 0
                                     ? Pixels(24 * 16)
                                     : builder.frames[static_cast<std::size_t>(missing - 1)].pixels)
            << size;
    }
}

TEST_F(HostMoviesTest, DamagedFramesLeaveThePictureAndTheNextOnesGoOn) {
    MovieBuilder builder = colourful(6);
    builder.frames[3].pixels = Pixels(24 * 16, 200); // leaves nothing as it was
    builder.frames[2].palette = formats::MoviePalette{};
    MovieBytes file = builder.build();
    file[builder.ends[1] + 1] = 0x41; // copies entries past the palette's end
    file[builder.ends[1] + 2] = 0xFF;
    file[builder.ends[1] + 3] = 0x7F;
    const auto movie = open(file);
    ASSERT_TRUE(movie);
    for (std::size_t frame = 0; frame < 6; ++frame, movie->nextFrame()) {
        movie->doFrame();
        const std::size_t expected = frame == 2 ? 1 : frame;
        ASSERT_EQ(shown(*movie), builder.frames[expected].pixels) << frame;
        EXPECT_EQ(changed(*movie).empty(), frame == 2);
    }
    std::mt19937 random(3);
    Samples all;
    MovieBuilder sounding = withSound(colourful(4), {1000, 16, 2, true}, all);
    sounding.frames[0].palette = paletteOf(1);
    const MovieBytes good = sounding.build();
    for (int i = 0; i < 300; ++i) { // must not crash, hang or fill the memory
        file = good;
        for (int n = 0; n < 3; ++n)
            file[random() % file.size()] = static_cast<std::uint8_t>(random());
        if (const auto damaged = open(file); damaged && damaged->frameCount() < 100) {
            damaged->run(true);
            for (int frame = 0; frame < damaged->frameCount(); ++frame, damaged->nextFrame())
                damaged->doFrame();
            damaged->goTo(1);
        }
    }
}

TEST_F(HostMoviesTest, RefusesWhatIsNoMovieAndAbsurdNumbers) {
    MovieBuilder builder = colourful(2);
    const MovieBytes good = builder.build();
    struct Row {
        std::size_t place;
        std::uint32_t value;
        bool opens;
    };
    for (const Row& row : std::vector<Row>{
             {0x00, 0x46464952, false}, // a RIFF file
             {0x00, 0x344B4D53, true},  // the other version
             {0x04, 0, false},          {0x04, 4097, false},       {0x04, 0xFFFFFFFC, false},
             {0x08, 0, false},          {0x08, 4100, false},       {0x0C, 0, false},
             {0x0C, 3, false},          {0x0C, 0xFFFFFF, false},   {0x0C, 0xFFFFFFFF, false},
             {0x10, 0, true},           {0x10, 0x80000000, false}, {0x10, 0x7FFFFFFF, false},
             {0x34, 0xFFFFFFFF, false}, {0x34, 0x7FFFFFFF, false}, {0x34, 0, false},
             {0x38, 0xFFFFFFFF, true}, // what is said of the memory is not needed
             {0x44, 0, true},           {0x48, 0xFFFFFFFF, true},  {0x68, 0xFFFFFFFC, false},
             {0x6C, 0x03FFFFFC, true}}) {
        MovieBytes file = good;
        for (std::size_t i = 0; i < 4; ++i)
            file[row.place + i] = static_cast<std::uint8_t>(row.value >> 8 * i);
        const auto movie = open(file);
        ASSERT_EQ(movie != nullptr, row.opens) << std::hex << row.place << " " << row.value;
        if (!movie) continue;
        movie->doFrame();
        EXPECT_TRUE(row.place == 0 || shown(*movie) == builder.frames[0].pixels) << row.place;
        EXPECT_EQ(movie->frameTime(), row.place == 0x10 ? 10000 : kFrameTime);
    }
    EXPECT_FALSE(open(MovieBytes()));
    EXPECT_FALSE(machine_->movies().open({"missing.smk"}));
    folder_.makeFolder("folder.smk");
    EXPECT_FALSE(machine_->movies().open({"folder.smk"}));
}

} // namespace
} // namespace platform
