// Movies: a random play against a model of their clock, pictures, colours and sound; their files,
// read ahead, cut off, damaged and refused.
#include "moviebuilder.h"
#include "temporaryfolder.h"

#include "platform/headless/headlessplatform.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace platform {
namespace {

using testing_support::MovieBuilder;
using testing_support::recordingOf;
using Pixels = formats::Bytes;

constexpr int kFrames = 30, kFrameTime = 6250, kRate = 8016;
constexpr int kPerFrame = 501; ///< samples in this time
constexpr std::size_t kPixels = 24 * 16;

/// Blocks of all kinds, of which each frame leaves some as they were. Colours change at 2, 5 and 9.
MovieBuilder colourful(int frames = kFrames) {
    MovieBuilder movie{.width = 24, .height = 16, .frameTime = kFrameTime};
    std::mt19937 random(7);
    Pixels pixels(kPixels);
    for (int frame = 0; frame < frames; ++frame) {
        for (std::size_t block = 0; block < 24; ++block)
            if (const unsigned colours = random() % 8; colours > 0 && colours < 6)
                for (std::size_t i = 0; i < 16; ++i)
                    pixels[(block / 6 * 4 + i / 4) * 24 + block % 6 * 4 + i % 4] =
                        std::uint8_t(37 * (random() % colours));
        movie.frames.push_back({pixels});
        if (frame == 2 || frame == 5 || frame == 6 || frame == 9)
            movie.frames.back().palette.emplace().fill(
                {std::uint8_t(frame == 6 ? 20 : frame * 4), 160, 255});
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
/// Gives a movie sound, also as the first track that can be played; its whole is the result.
Pixels addSound(MovieBuilder& movie, const formats::MovieSoundFormat& track, int ahead,
                bool hasOthers = false) {
    std::mt19937 random(5);
    const std::size_t number = hasOthers ? 3 : 0;
    const int block = track.bits / 8 * track.channels;
    Pixels all(std::size_t(block * kPerFrame * kFrames));
    for (std::uint8_t& sample : all) sample = std::uint8_t(random());
    const auto at = [&](int frame) { return all.begin() + block * soundUntil(frame, ahead); };
    for (int i = 0; i < std::ssize(movie.frames); ++i) {
        auto& sounds = movie.frames[std::size_t(i)].sounds;
        if (at(i) > at(i - 1)) sounds[number] = {at(i - 1), at(i)};
        if (hasOthers) sounds[0] = sounds[1] = sounds[4] = Pixels(100);
    }
    if (hasOthers) movie.tracks = {{0, {kRate}}, {1, {900'000}}, {4, {22050}}};
    if (hasOthers) movie.otherCodecs = formats::MovieHeader::kOtherCodec;
    movie.tracks[number] = track;
    return all;
}

/// What a movie has to do.
struct Model {
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
        ++soundSkips;
    }
    bool wait() {
        findSoundDry();
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
            at = int(std::min<std::int64_t>(at + lateBy / 100'000, end));
        dry = dry && at == end;
        fed = true;
    }
    void doFrame(const Pixels& pixels) {
        if (std::exchange(done, true)) return;
        hidden = !all.empty() && runs && frame + 1 < kFrames && inARow < 4 && late() > kFrameTime;
        inARow = hidden ? inARow + 1 : 0;
        ++(hidden ? skipped : played);
        for (std::size_t i = 0; i < kPixels; ++i)
            if (whole || pixels[i] != shown[i]) changed[i / 96 * 6 + i % 24 / 4] = 1;
        shown = pixels;
        whole = false;
    }
    void next() {
        if (frame + 1 == kFrames) return;
        done = false;
        ++frame;
        decode();
    }
    void goTo(int to) {
        done = false;
        frame = baseFrame = std::clamp(to, 0, kFrames - 1);
        at = frame * kPerFrame;
        end = soundUntil(frame - 1, ahead);
        fed = at < end;
        base = total;
        whole = newPalette = true;
        hidden = dry = false;
        owed = inARow = 0;
        decode();
    }
    Pixels all{};
    int ahead = 0, block = 1, frame = 0, base = 0, baseFrame = 0, total = 0, inARow = 0;
    int at = 0, end = 0, owed = 0; ///< from and to which sample the speaker has them
    bool runs = false, done = false, hidden = false, whole = true, newPalette = true;
    bool dry = false, fed = false; ///< the speaker, which has had something
    Pixels shown = Pixels(kPixels), changed = Pixels(24), heard{};
    int played = 0, skipped = 0, soundSkips = 0;
};

class HostMoviesTest : public testing::Test {
  protected:
    HostMoviesTest() {
        HeadlessOptions options;
        options.host = {folder_.path(), "", folder_.path("home")};
        options.recordSound = folder_.path("sound");
        options.report = options.notes = &report_;
        machine_.emplace(options);
    }
    std::unique_ptr<Movie> open(const Pixels& file, bool preload = false, int extra = -1) {
        folder_.make("a.smk", {file.begin(), file.end()});
        return machine_->movies().open({"A.SMK", preload, extra});
    }
    void pass(int ms) { machine_->clock().sleep(std::uint32_t(ms)); }
    static Pixels shown(const Movie& movie, int step = 1) {
        Pixels pixels;
        for (int y = 0; y < movie.height(); y += step)
            pixels.insert(pixels.end(), movie.picture().row(y),
                          movie.picture().row(y) + movie.width());
        return pixels;
    }
    TemporaryFolder folder_;
    std::ostringstream report_;
    std::optional<HeadlessPlatform> machine_;
};

TEST_F(HostMoviesTest, PlayAsAModelDoes) {
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        SCOPED_TRACE(round);
        const formats::MovieSoundFormat track{kRate, round & 1 ? 16 : 8, round & 2 ? 2 : 1,
                                              (round & 4) != 0};
        MovieBuilder builder = colourful();
        builder.flags = round % 3 * 2U;
        const int step = round % 3 > 0 ? 2 : 1;
        if (round % 2 == 1) builder.ring = builder.frames.front();
        Model model{.ahead = std::array{0, 1, 15, kFrames}.at(std::size_t(round / 4 % 4)),
                    .block = track.bits / 8 * track.channels};
        if (round < 16) model.all = addSound(builder, track, model.ahead, round / 4 == 1);
        const Pixels file = builder.build();
        const int wanted = std::array{-1, 0, 300, 0x7FFFFFFF}.at(std::size_t(round % 4));
        const bool preload = round % 5 == 4;
        auto movie = open(file, preload, wanted);
        ASSERT_TRUE(movie);
        EXPECT_TRUE(movie->width() == 24 && movie->height() == 16 * step);
        EXPECT_EQ(movie->frameCount(), kFrames) << "without the one that leads back to the first";
        model.decode();
        for (int i = 0; i < 400; ++i) {
            SCOPED_TRACE(i);
            const unsigned what = random() % 40;
            const int ms = int(random() % (what == 0 ? 700 : 20));
            pass(ms);
            model.pass(ms);
            if (what == 1 || (!model.runs && what < 5)) movie->run(model.runs = !model.runs);
            if (what == 6) {
                const int to = int(random() % (kFrames + 8)) - 4;
                movie->goTo(to);
                model.goTo(to);
            }
            ASSERT_EQ(movie->frame(), model.frame);
            ASSERT_EQ(movie->palette()[40], colourOf(model.frame));
            ASSERT_EQ(movie->hasNewPalette(), model.newPalette);
            const bool waits = model.wait();
            ASSERT_EQ(movie->wait(), waits);
            if (waits && what != 8) continue;
            movie->doFrame();
            model.doFrame(builder.frames.at(std::size_t(model.frame)).pixels);
            ASSERT_EQ(shown(*movie, step), model.shown);
            ASSERT_EQ(movie->picture().row(16 * step - 1)[9], model.shown[15 * 24 + 9]);
            // Each rectangle is of blocks that are to be shown, and none is left out.
            Pixels told(24);
            for (int most = what % 4 == 3 ? 1 : 24; most > 0; --most)
                if (const auto rect = movie->takeChanged())
                    for (int y = rect->top / (4 * step); y * 4 * step < rect->bottom; ++y)
                        for (int x = rect->left / 4; x * 4 < rect->right; ++x)
                            ++told.at(std::size_t(y * 6 + x));
            for (std::size_t block = 0; block < 24; ++block) {
                const int left = model.changed[block] - told[block];
                ASSERT_TRUE(model.hidden ? told[block] == 0
                                         : left == 0 || (left == 1 && what % 4 == 3));
                model.changed[block] = std::uint8_t(left);
            }
            if (what == 9) continue;
            movie->clearNewPalette();
            model.newPalette = false;
            movie->nextFrame();
            model.next();
        }
        const MovieSummary facts = movie->summary();
        const std::vector<int> wantedFacts{model.total,  kFrameTime,    0,
                                           model.played, model.skipped, model.soundSkips};
        EXPECT_EQ(std::vector<int>(facts.begin(), facts.begin() + 6), wantedFacts);
        const std::size_t memory =
            preload ? 0 : std::min<std::size_t>(unsigned(wanted), file.size());
        EXPECT_TRUE(facts[19] == memory && facts[20] <= memory && (facts[20] > 0) == (memory > 0));
        movie.reset();
        if (model.all.empty()) continue;
        const std::string name = (round < 9 ? "00" : "0") + std::to_string(round + 1);
        EXPECT_TRUE(folder_.contents("sound/" + name + "-8016.wav") ==
                    recordingOf({kRate, track.channels, track.bits}, model.heard));
    }
}

TEST_F(HostMoviesTest, AFileThatEndsEarlyPlaysAsFarAsItGoes) {
    MovieBuilder builder = colourful(3);
    addSound(builder, {kRate, 8, 1, true}, 0);
    for (auto& frame : builder.frames) frame.sounds[0].resize(60);
    const Pixels file = builder.build();
    for (std::size_t size = file.size(); size-- > 0;) {
        SCOPED_TRACE(size);
        const auto movie = open({file.begin(), file.begin() + std::ptrdiff_t(size)});
        ASSERT_EQ(movie != nullptr, size >= builder.start);
        if (!movie) continue;
        movie->run(true);
        for (int frame = 0; frame < 3; ++frame, movie->nextFrame()) movie->doFrame();
        const auto whole = std::ranges::upper_bound(builder.ends, size) - builder.ends.begin();
        ASSERT_EQ(shown(*movie),
                  whole == 0 ? Pixels(kPixels) : builder.frames[std::size_t(whole - 1)].pixels);
    }
}

TEST_F(HostMoviesTest, DamagedFramesLeaveThePictureAndTheNextOnesGoOn) {
    MovieBuilder builder = colourful(6);
    builder.frames[3].pixels = Pixels(kPixels, 200); // leaves nothing as it was
    Pixels file = builder.build();
    const std::uint8_t damage[] = {0x41, 0xFF, 0x7F}; // copies entries past the palette's end
    std::ranges::copy(damage, file.begin() + std::ptrdiff_t(builder.ends[1] + 1));
    const auto movie = open(file);
    for (std::size_t frame = 0; frame < 6; ++frame, movie->nextFrame()) {
        movie->doFrame();
        ASSERT_EQ(shown(*movie), builder.frames[frame == 2 ? 1 : frame].pixels) << frame;
        std::vector<Rect> changed;
        while (const auto rect = movie->takeChanged()) changed.push_back(*rect);
        EXPECT_EQ(changed.empty(), frame == 2);
        EXPECT_TRUE(frame % 3 > 0 || changed == std::vector<Rect>({{0, 0, 24, 16}}));
    }
}

TEST_F(HostMoviesTest, RefusesWhatIsNoMovieAndAbsurdNumbers) {
    constexpr std::uint32_t kMost = 0xFFFFFFFF, kLarge = 0x7FFFFFFF;
    const Pixels good = colourful(2).build();
    const std::pair<std::size_t, std::vector<std::uint32_t>> rows[] = {
        // place, values
        {0x00, {0x46464952}},
        {0x04, {0, 4097, 0xFFFFFFFC}},
        {0x08, {0, 4100}},
        {0x0C, {0, 3, 0xFFFFFF, kMost}},
        {0x10, {0x80000000, kLarge}},
        {0x34, {kMost, kLarge, 0}},
        {0x68, {0xFFFFFFFC}},
        {0x00, {}},
        {0x10, {0}},
        {0x38, {kMost}},
        {0x44, {0}},
        {0x48, {kMost}},
        {0x6C, {0x03FFFFFC}}};
    bool opens = false; // the last ones
    for (const auto& [place, values] : rows) {
        opens |= values.empty();
        for (const std::uint32_t value : values) {
            Pixels file = good;
            for (std::size_t i = 0; i < 4; ++i) file[place + i] = std::uint8_t(value >> 8 * i);
            const auto movie = open(file);
            ASSERT_EQ(movie != nullptr, opens) << std::hex << place << " " << value;
            EXPECT_TRUE(!opens || movie->frameTime() == (place == 0x10 ? 10000 : kFrameTime));
        }
    }
    EXPECT_FALSE(open({}));
    folder_.makeFolder("folder.smk");
    for (const char* none : {"missing.smk", "folder.smk"})
        EXPECT_FALSE(machine_->movies().open({none}));
}

} // namespace
} // namespace platform
