#include "library/list.h"
#include "movies/makemovie.h"
#include "movies/moviesound.h"

#include "formats/movie/moviedecoder.h"
#include "pictures/palettelift.h"
#include "sounds/soundfile.h"
#include "tooltest.h"

#include <random>

namespace {

using rsc::Bytes;
using testfiles::asBytes;
using testfiles::Rgba;
using testfiles::wavFile;
using testing::HasSubstr;

const std::vector<Rgba> kColours(256, {200, 100, 40, 255});

Bytes noise(std::size_t size) {
    std::mt19937 random(static_cast<unsigned>(size));
    Bytes samples(size);
    for (std::uint8_t& sample : samples) sample = static_cast<std::uint8_t>(random() % 99 * 2);
    return samples;
}

struct Frame {
    bool isKey = false;
    bool hasPalette = false;
    formats::MoviePalette palette;
    Bytes pixels;
    Bytes sound;
};

struct Movie {
    std::vector<Frame> frames; ///< a ring frame is the last
};

Movie decode(const Bytes& file) {
    const auto header = formats::readMovieHeader(file).value();
    const rsc::ByteSpan tables = rsc::ByteSpan(file).subspan(formats::MovieHeader::kSize);
    auto decoder = formats::MovieDecoder::make(
                       header, tables.subspan(header.tablesSize(), header.treesSize), 0)
                       .value();
    Movie movie;
    std::size_t at = header.framesStart();
    for (const auto& entry : formats::readMovieTables(tables.first(header.tablesSize()))) {
        EXPECT_TRUE(decoder.decode(rsc::ByteSpan(file).subspan(at, entry.size), entry.contents));
        EXPECT_LE(decoder.sound().size(), header.largestChunks[0]);
        movie.frames.push_back({entry.key, (entry.contents & entry.kHasPalette) != 0,
                                decoder.palette(), decoder.picture(), decoder.sound()});
        at += entry.size;
    }
    EXPECT_EQ(at, file.size());
    return movie;
}

class MakeMovie : public testfiles::ToolTest {
  protected:
    MakeMovie() { options_.output = folder_.at("out/a.smk"); }

    void writeIndexed(const std::string& name, std::uint8_t colour,
                      const std::vector<Rgba>& palette = kColours) {
        folder_.write(name, testfiles::indexedPng(8, Bytes(32, colour), palette));
    }

    int make(const std::vector<std::string>& frames) {
        options_.frames = paths(frames);
        return run([&](auto&, auto& errors) { return rsc::runMovie(options_, errors); });
    }
    Movie made(const std::vector<std::string>& frames) {
        EXPECT_EQ(make(frames), 0) << errors_;
        return decode(asBytes(folder_.read("out/a.smk")));
    }

    /// The colour on the screen of a frame's pixel.
    static platform::Rgb shown(const Frame& frame, std::size_t pixel) {
        const std::size_t index = frame.pixels.at(pixel);
        if (index < 10 || index >= 246) return platform::staticPalette()[index];
        const formats::MovieColour colour = frame.palette[index];
        return rsc::liftColour({colour.red, colour.green, colour.blue});
    }

    rsc::MovieOptions options_;
};

void expectNear(platform::Rgb colour, platform::Rgb wanted) {
    EXPECT_LE(rsc::colourDistance(colour, wanted), 3 * 4)
        << int{colour.red} << " " << int{colour.green} << " " << int{colour.blue};
}

TEST_F(MakeMovie, TakesFoldersInTheOrderOfTheirNames) {
    std::uint8_t colour = 11;
    for (const char* name : {"f/a.png", "f/b2.png", "f/b02x.png", "f/b10.PNG", "last.png"})
        writeIndexed(name, colour++);
    folder_.write("f/notes.txt", std::string_view("no frame"));
    const Movie movie = made({"f", "last.png"});
    ASSERT_EQ(movie.frames.size(), 5U);
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(movie.frames[i].pixels[0], 11 + i);
}

TEST_F(MakeMovie, MapsTruecolourFramesToOnePalette) {
    std::vector<Rgba> pixels(32, {200, 100, 40, 255});
    pixels[1] = {0, 0, 0, 255};
    pixels[2] = {255, 255, 255, 255};
    pixels[3] = {90, 80, 170, 0};
    folder_.write("1.png", testfiles::truecolourPng(8, pixels));
    folder_.write("2.png", testfiles::truecolourPng(8, std::vector<Rgba>(32, {90, 80, 170, 255})));
    Movie movie = made({"1.png", "2.png"});
    expectNear(shown(movie.frames[0], 0), {200, 100, 40});
    expectNear(shown(movie.frames[1], 0), {90, 80, 170});
    EXPECT_EQ(movie.frames[0].pixels[1], 0);
    EXPECT_EQ(movie.frames[0].pixels[2], 255);
    EXPECT_EQ(movie.frames[0].pixels[3], 0) << "transparent";
    EXPECT_FALSE(movie.frames[1].hasPalette);

    std::vector<Rgba> palette(12, {50, 60, 70, 255});
    palette[11] = {210, 110, 50, 255};
    writeIndexed("palette.png", 5, palette);
    options_.colours.palette = folder_.at("palette.png");
    movie = made({"1.png", "palette.png"});
    EXPECT_EQ(movie.frames[0].pixels[0], 11);
    EXPECT_EQ(movie.frames[1].pixels[0], 5);
    expectNear(shown(movie.frames[0], 0), {210, 110, 50});
}

TEST_F(MakeMovie, KeepsIndicesOnlyWithOnePalette) {
    std::vector<Rgba> few(20, {200, 100, 40, 255});
    std::vector<Rgba> other = few;
    other[19] = {60, 160, 60, 255};
    writeIndexed("1.png", 9, few);
    writeIndexed("2.png", 18);
    writeIndexed("3.png", 19, other);
    Movie movie = made({"1.png", "2.png"});
    EXPECT_EQ(movie.frames[0].pixels[0], 9) << "entries left out at the end do not matter";
    EXPECT_EQ(movie.frames[1].pixels[0], 18);
    movie = made({"1.png", "2.png", "3.png"});
    expectNear(shown(movie.frames[0], 0), {200, 100, 40});
    expectNear(shown(movie.frames[2], 0), {60, 160, 60});
    options_.colours.remap = true;
    expectNear(shown(made({"1.png"}).frames[0], 0), {200, 100, 40});
}

TEST_F(MakeMovie, BeginsScenesWithTheirOwnPalette) {
    for (const auto& [name, red] : {std::pair("1.png", 100), {"2.png", 100}, {"3.png", 180}})
        writeIndexed(name, 50, std::vector<Rgba>(256, {static_cast<std::uint8_t>(red), 50, 50}));
    options_.colours.paletteAt = {3, 3};
    options_.ring = true;
    const Movie movie = made({"1.png", "2.png", "3.png", "3.png"});
    ASSERT_EQ(movie.frames.size(), 5U);
    const int reds[] = {100, 100, 180, 180, 100};
    for (std::size_t i = 0; i < 5; ++i) {
        expectNear(shown(movie.frames[i], 0), {static_cast<std::uint8_t>(reds[i]), 50, 50});
        EXPECT_EQ(movie.frames[i].isKey, i == 0 || i == 2);
        EXPECT_EQ(movie.frames[i].hasPalette, i % 2 == 0);
    }
}

TEST_F(MakeMovie, CarriesTheSoundOneSecondAhead) {
    writeIndexed("1.png", 20);
    options_.frameTime = 10000;
    options_.sound = folder_.at("a.wav");
    for (const std::size_t channels : {1U, 2U}) {
        for (const std::size_t bits : {8U, 16U}) {
            const std::size_t point = channels * bits / 8;
            const Bytes samples = noise(11025 * 12 / 10 * point);
            folder_.write("a.wav", wavFile(11025, channels, bits, samples));
            for (const bool packed : {true, false}) {
                options_.unpacked = !packed;
                options_.ring = packed;
                const Movie movie = made(std::vector<std::string>(13, "1.png"));
                Bytes heard;
                for (std::size_t i = 0; i < 13; ++i)
                    heard = testfiles::join({heard, movie.frames[i].sound});
                EXPECT_EQ(heard, samples) << channels << " " << bits << " " << packed;
                EXPECT_EQ(movie.frames[0].sound.size(), 11025 * 11 / 10 * point);
                EXPECT_EQ(movie.frames[1].sound.size(), samples.size() - 11025 * 11 / 10 * point);
                EXPECT_EQ(movie.frames.back().sound, packed ? movie.frames[0].sound : Bytes());
            }
        }
    }
    EXPECT_EQ(errors_, "");
    folder_.write("a.wav", wavFile(11025, 1, 8, noise(11025)));
    EXPECT_EQ(made(std::vector<std::string>(8, "1.png")).frames[0].sound.size(), 8820U);
    EXPECT_THAT(errors_, HasSubstr("a.wav: is longer than the pictures, its last 0.20 seconds"));
    folder_.write("a.wav", wavFile(11025, 1, 8, {9}));
    EXPECT_EQ(made({"1.png"}).frames[0].sound, (Bytes{9, 128, 128, 128})) << "readers want four";
}

TEST_F(MakeMovie, RefusesWhatItCannotMake) {
    writeIndexed("good.png", 20);
    folder_.write("wide.png", testfiles::indexedPng(12, Bytes(48), kColours));
    folder_.write("odd.png", testfiles::indexedPng(6, Bytes(24), kColours));
    folder_.write("long.png", testfiles::indexedPng(4100, Bytes(4100 * 4), kColours));
    folder_.write("true.png", testfiles::truecolourPng(4, std::vector<Rgba>(16)));
    folder_.write("bad.png", std::string_view("no picture"));
    folder_.write("empty/notes.txt", std::string_view("no frame"));
    ASSERT_EQ(make({"good.png"}), 0);
    const std::string old = folder_.read("out/a.smk");
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"good.png", "wide.png"},
         "wide.png: the picture has 12x4 pixels, the first frame has 8x4"},
        {{"odd.png"},
         "odd.png: the picture has 6x4 pixels; both must be multiples of 4 in a movie"},
        {{"long.png"}, "long.png: the picture has 4100x4 pixels, allowed is at most 4096x4096"},
        {{"good.png", "bad.png"}, "bad.png: no PNG picture"},
        {{"none.png"}, "none.png: cannot be read: No such file or directory"},
        {{"empty"}, "empty: holds no PNG files"},
    };
    for (const auto& [frames, text] : cases) {
        EXPECT_EQ(make(frames), 1) << text;
        EXPECT_THAT(errors_, HasSubstr(text));
    }
    for (const int frame : {1, 3}) {
        options_.colours.paletteAt = {frame};
        EXPECT_EQ(make({"good.png", "good.png"}), 1);
        EXPECT_THAT(errors_, HasSubstr("--palette-at " + std::to_string(frame)));
    }
    options_.colours.paletteAt.clear();
    options_.colours.palette = folder_.at("true.png");
    EXPECT_EQ(make({"good.png"}), 1);
    EXPECT_THAT(errors_, HasSubstr("true.png: the picture is not indexed"));
    options_.sound = folder_.at("bad.png");
    EXPECT_EQ(make({"good.png"}), 1);
    EXPECT_THAT(errors_, HasSubstr("sound"));
    EXPECT_EQ(folder_.read("out/a.smk"), old);
    EXPECT_EQ(testfiles::namesIn(folder_.at("out")).size(), 1U);
}

TEST(MovieSound, RefusesWhatIsNoSound) {
    const Bytes good = wavFile(11025, 2, 16, noise(8));
    EXPECT_EQ(rsc::readMovieSound(good).samples, noise(8));
    testfiles::expectRefused(good,
                             {{0, 'X', "sound"},
                              {25, 0, "the sound has 17 samples a second"},
                              {52, 9, "the sound is cut off: of its 9 bytes"}},
                             [](const Bytes& file) { (void)rsc::readMovieSound(file); });
    if (!rsc::canReadSounds()) GTEST_SKIP() << "built without libsndfile";
    EXPECT_EQ(rsc::readMovieSound(wavFile(8000, 1, 24, {9, 2, 1})).samples, (Bytes{2, 1}));
    EXPECT_THROW((void)rsc::readMovieSound(wavFile(8000, 3, 16, noise(6))), rsc::Refusal);
}

TEST_F(MakeMovie, IsListed) {
    writeIndexed("1.png", 20);
    folder_.write("a.wav", wavFile(22050, 2, 16, noise(8)));
    options_.sound = folder_.at("a.wav");
    options_.ring = true;
    ASSERT_EQ(make({"1.png"}), 0);
    Bytes movie = asBytes(folder_.read("out/a.smk"));
    folder_.write("cut.smk", Bytes(movie.begin(), movie.end() - 1));
    folder_.write("short.smk", Bytes(movie.begin(), movie.begin() + 50));
    movie[20] |= 4;
    folder_.write("doubled.smk", movie);
    EXPECT_EQ(run([&](auto& out, auto& errors) {
                  return rsc::runList(paths({"cut.smk", "out/a.smk", "doubled.smk", "short.smk"}),
                                      out, errors);
              }),
              1);
    EXPECT_THAT(out_,
                HasSubstr("a.smk:\n8x4, 1 frame of 66.66 ms, a ring frame, sound of 22050 Hz, "
                          "16 bits, stereo, packed\n"));
    EXPECT_THAT(out_, HasSubstr("doubled.smk:\n8x8, 1 frame"));
    for (const char* name : {"cut.smk", "short.smk"})
        EXPECT_THAT(errors_, HasSubstr(name + std::string(": the movie is cut off\n")));
}

} // namespace
