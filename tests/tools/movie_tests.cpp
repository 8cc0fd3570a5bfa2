// Movies out of pictures and a sound.
#include "tooltest.h"

#include "formats/reading.h"
#include "movies/makemovie.h"
#include "movies/moviesound.h"
#include "pictures/palettelift.h"
#include "sounds/soundfile.h"

#include <random>

namespace {

using namespace testfiles;
using testing_support::SeenFrame;

const Pixels kColours(256, {{200, 100, 40}});

Bytes noise(std::size_t size) {
    std::mt19937 random(static_cast<unsigned>(size));
    Bytes samples(size);
    for (std::uint8_t& sample : samples) sample = static_cast<std::uint8_t>(random() % 99 * 2);
    return samples;
}

class MakeMovie : public ToolTest {
  protected:
    MakeMovie() { options_.output = at("out/a.smk"); }

    /// 8x4 pixels of one index.
    void writeIndexed(const std::string& name, std::uint8_t index, const Pixels& palette) {
        write(name, indexedPng(8, Bytes(32, index), palette));
    }

    int make(const Files& frames) {
        options_.frames = paths(frames);
        return run([&](auto&, auto& errors) { return rsc::runMovie(options_, errors); });
    }
    /// Its frames; a ring frame is the last.
    std::map<std::int64_t, SeenFrame> made(const Files& frames) {
        EXPECT_EQ(make(frames), 0) << errors_;
        return testing_support::framesOf(asBytes(read("out/a.smk")));
    }

    rsc::MovieOptions options_;
};

/// Frames and options of a movie, and what becomes of each frame: the index of its first pixel (-1:
/// any), about which colour that is, and whether it is a key frame and has a palette; or, behind
/// "!", why there is no movie.
constexpr const char* kMovies = R"(
f last.png => 11 12 13 14 15
orange.png violet.png => -1/200,100,40:kp -1/90,80,170:-
orange.png black.png white.png none.png => -1 0 255 0
orange.png palette.png --palette palette.png => 11/210,110,50 5
few.png 18.png => 9 18
few.png 18.png other.png => -1/200,100,40 -1 -1/60,160,60
few.png --remap - => -1/200,100,40
red.png red.png dark.png dark.png --palette-at 3 --ring - => 50/100,50,50:kp 50/100,50,50:-
    50/180,50,50:kp 50/180,50,50:- 50/100,50,50:p
18.png wide.png => !wide.png: the picture has 12x4 pixels, the first frame has 8x4
odd.png => !odd.png: the picture has 6x4 pixels; both must be multiples of 4 in a movie
long.png => !long.png: the picture has 4100x4 pixels, allowed is at most 4096x4096
18.png bad.png => !bad.png: no PNG picture
absent.png => !absent.png: cannot be read: No such file or directory
empty => !empty: holds no PNG files
18.png --palette-at 1 => !--palette-at 1: the frames are 1 to 1
18.png 18.png --palette-at 3 => !--palette-at 3: the frames are 1 to 2
18.png --palette orange.png => !orange.png: the picture is not indexed
18.png --sound bad.png => !bad.png: no
)";

TEST_F(MakeMovie, MakesOrRefusesWhatIsAsked) {
    std::uint8_t index = 11;
    for (const char* name : {"f/a.png", "f/b2.png", "f/b02x.png", "f/b10.PNG", "last.png"})
        writeIndexed(name, index++, kColours);
    write("f/notes.txt", asBytes("no frame"));
    write("empty/notes.txt", asBytes("no frame"));
    const std::pair<std::string, rsc::Pixel> plain[] = {{"orange.png", {{200, 100, 40}}},
                                                        {"violet.png", {{90, 80, 170}}},
                                                        {"black.png", {}},
                                                        {"white.png", {{255, 255, 255}}},
                                                        {"none.png", {{90, 80, 170}, 0}}};
    for (const auto& [name, pixel] : plain) write(name, png(8, Pixels(32, pixel)));
    Pixels palette(20, {{200, 100, 40}});
    writeIndexed("few.png", 9, palette); // entries left out at the end do not matter
    writeIndexed("18.png", 18, kColours);
    palette[19] = {{60, 160, 60}};
    writeIndexed("other.png", 19, palette);
    palette.assign(12, {{50, 60, 70}});
    palette[11] = {{210, 110, 50}};
    writeIndexed("palette.png", 5, palette);
    writeIndexed("red.png", 50, Pixels(256, {{100, 50, 50}}));
    writeIndexed("dark.png", 50, Pixels(256, {{180, 50, 50}}));
    write("wide.png", indexedPng(12, Bytes(48), kColours));
    write("odd.png", indexedPng(6, Bytes(24), kColours));
    write("long.png", indexedPng(4100, Bytes(4100 * 4), kColours));
    write("bad.png", asBytes("no picture"));
    for (const auto& row : testing_support::rowsOf(kMovies)) {
        SCOPED_TRACE(row[0]);
        options_ = {.output = options_.output};
        Files files;
        std::istringstream words(row[0]);
        for (std::string word, value; words >> word;) {
            if (word[0] != '-') {
                files.push_back(word);
                continue;
            }
            words >> value;
            if (word == "--palette-at") options_.colours.paletteAt = {std::stoi(value)};
            if (word == "--palette-at") options_.colours.paletteAt.push_back(std::stoi(value));
            if (word == "--palette") options_.colours.palette = at(value);
            if (word == "--sound") options_.sound = at(value);
            options_.colours.remap |= word == "--remap";
            options_.ring |= word == "--ring";
        }
        if (row[1][0] == '!') {
            const std::string old = read("out/a.smk");
            EXPECT_EQ(make(files), 1);
            EXPECT_THAT(errors_, HasSubstr(row[1].substr(1)));
            EXPECT_EQ(read("out/a.smk"), old);
            continue;
        }
        std::istringstream expected(row[1]);
        std::string told;
        for (const auto& [number, frame] : made(files)) {
            expected >> told;
            int place = 0, red = 0, green = 0, blue = 0;
            char flags[4] = "";
            const int count =
                std::sscanf(told.c_str(), "%d/%d,%d,%d:%3s", &place, &red, &green, &blue, flags);
            const std::uint8_t pixel = frame.picture.at(0);
            EXPECT_TRUE(place < 0 || pixel == place) << number;
            const auto& [r, g, b] = frame.palette[pixel];
            const auto shown = rsc::liftColour({r, g, b});
            const int off = std::abs(shown.red - red) + std::abs(shown.green - green) +
                            std::abs(shown.blue - blue);
            EXPECT_TRUE(count < 2 || off <= 6) << number << " " << off;
            const std::string seen =
                std::string(frame.isKey ? "k" : "") + (frame.hasPalette ? "p" : "");
            EXPECT_TRUE(count < 5 || (seen.empty() ? "-" : seen) == flags) << number << seen;
        }
        EXPECT_FALSE(expected >> told) << "frames are missing";
    }
    EXPECT_EQ(namesIn("out"), "a.smk ");
}

TEST_F(MakeMovie, CarriesTheSoundOneSecondAheadAndIsListed) {
    writeIndexed("1.png", 20, kColours);
    options_.frameTime = 10000;
    options_.sound = at("a.wav");
    for (const int format : {0, 1, 2, 3, 4, 5, 6, 7}) {
        const int channels = 1 + format % 2;
        const int bits = format & 2 ? 16 : 8;
        const bool packed = format < 4;
        const auto point = static_cast<std::size_t>(channels * bits / 8);
        const Bytes samples = noise(11025 * 12 / 10 * point);
        write("a.wav", wav(11025, channels, bits, samples));
        options_.unpacked = !packed;
        options_.ring = packed;
        auto movie = made(Files(13, "1.png"));
        Bytes heard;
        for (std::int64_t i = 0; i < 13; ++i) heard = join({heard, movie[i].sound});
        EXPECT_EQ(heard, samples) << format;
        EXPECT_EQ(movie[0].sound.size(), 11025 * 11 / 10 * point);
        EXPECT_EQ(movie[1].sound.size(), samples.size() - 11025 * 11 / 10 * point);
        EXPECT_EQ(movie[13].sound, packed ? movie[0].sound : Bytes());
        EXPECT_EQ(errors_, "");
    }
    write("a.wav", wav(11025, 1, 8, noise(11025)));
    EXPECT_EQ(made(Files(8, "1.png"))[0].sound.size(), 8820U);
    EXPECT_EQ(errors_,
              "@/a.wav: is longer than the pictures, its last 0.20 seconds are left out\n");
    write("a.wav", wav(11025, 1, 8, {9}));
    EXPECT_EQ(made({"1.png"})[0].sound, (Bytes{9, 128, 128, 128})) << "readers want four";

    write("a.wav", wav(22050, 2, 16, noise(8)));
    options_ = {.output = options_.output, .sound = options_.sound, .ring = true};
    ASSERT_EQ(make({"1.png"}), 0);
    Bytes movie = asBytes(read("out/a.smk"));
    write("cut.smk", Bytes(movie.begin(), movie.end() - 1));
    write("short.smk", Bytes(movie.begin(), movie.begin() + 50));
    movie[20] |= 4;
    write("doubled.smk", movie);
    EXPECT_EQ(list({"cut.smk", "out/a.smk", "doubled.smk", "short.smk"}), 1);
    EXPECT_THAT(out_, HasSubstr("a.smk:\n8x4, 1 frame of 66.66 ms, a ring frame, sound of 22050 "
                                "Hz, 16 bits, stereo, packed\n"));
    EXPECT_THAT(out_, HasSubstr("doubled.smk:\n8x8, 1 frame"));
    EXPECT_EQ(errors_, "@/cut.smk: the movie is cut off\n@/short.smk: the movie is cut off\n");
}

TEST(MovieSound, RefusesWhatIsNoSound) {
    const Bytes good = wav(11025, 2, 16, noise(8));
    EXPECT_EQ(rsc::readMovieSound(good).samples, noise(8));
    const auto refusal = [](const Bytes& file) {
        return refusalOf([&] { return rsc::readMovieSound(file); });
    };
    EXPECT_THAT(refusal(changed(good, 0, 'X')), HasSubstr("sound"));
    EXPECT_THAT(refusal(changed(good, 25, 0)), HasSubstr("the sound has 17 samples a second"));
    EXPECT_THAT(refusal(changed(good, 40, 9)), HasSubstr("the sound is cut off: of its 9 bytes"));
    for (long size = 0; size < std::ssize(good); ++size)
        EXPECT_NE(refusal({good.begin(), good.begin() + size}), "") << size;
    if (!rsc::canReadSounds()) GTEST_SKIP() << "built without libsndfile";
    EXPECT_EQ(rsc::readMovieSound(wav(8000, 1, 24, {9, 2, 1})).samples, (Bytes{2, 1}));
    EXPECT_NE(refusal(wav(8000, 3, 16, noise(6))), "");
}

} // namespace
