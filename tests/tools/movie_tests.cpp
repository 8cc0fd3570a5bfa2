// Movies out of pictures and a sound.
#include "movies/makemovie.h"
#include "pictures/palettelift.h"
#include "tooltest.h"

namespace {

using namespace testfiles;
using testing_support::SeenFrame;

const Pixels kColours(256, {{200, 100, 40}});

Bytes noise(std::size_t size) {
    Bytes samples(size);
    for (std::size_t i = 0; i < size; ++i) samples[i] = static_cast<std::uint8_t>(i * i % 199);
    return samples;
}

class MakeMovie : public ToolTest {
  protected:
    MakeMovie() { options_.output = at("out/a.smk"); }

    /// `width` x4 pixels of one index.
    void writeIndexed(const std::string& name, std::uint8_t index, const Pixels& palette = kColours,
                      std::size_t width = 8) {
        write(name, indexedPng(width, Bytes(width * 4, index), palette));
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

/// The first ones are colours of pictures.
const std::pair<std::string, rsc::Pixel> kColourNames[] = {
    {"orange", {{200, 100, 40}}}, {"violet", {{90, 80, 170}}},  {"black", {}},
    {"white", {{255, 255, 255}}}, {"none", {{90, 80, 170}, 0}}, {"green", {{60, 160, 60}}},
    {"red", {{100, 50, 50}}},     {"bright", {{180, 50, 50}}},  {"near", {{210, 110, 50}}}};

/// Frames and options of a movie, and what becomes of each frame: the index of its first pixel and
/// the colour, k for a key frame and p for a palette; or, behind "!", why there is no movie.
constexpr const char* kMovies = R"(
f last.png => 11orange,kp 12orange, 13orange, 14orange, 15orange,
orange.png violet.png => 11orange,kp 10violet,
orange.png black.png white.png none.png => 10orange,kp 0, 255white, 0,
orange.png palette.png --palette palette.png => 11near,kp 5,
few.png 18.png => 9,kp 18orange,
few.png 18.png other.png => 11orange,kp 11orange, 10green,
few.png --remap - => 10orange,kp
red.png red.png bright.png bright.png --palette-at 3 --ring - => 50red,kp 50red, 50bright,kp
    50bright, 50red,p
18.png wide.png => !wide.png: the picture has 12x4 pixels, the first frame has 8x4
odd.png => !odd.png: the picture has 6x4 pixels; both must be multiples of 4 in a movie
long.png => !long.png: the picture has 4100x4 pixels, allowed is at most 4096x4096
18.png bad.png => !bad.png: no PNG picture
absent.png => !absent.png: cannot be read: No such file or directory
empty => !empty: holds no PNG files
18.png --palette-at 1 => !--palette-at 1: the frames are 1 to 1
18.png 18.png --palette-at 3 => !--palette-at 3: the frames are 1 to 2
18.png --palette none.png => !none.png: the picture is not indexed
18.png --sound bad.png => !bad.png: no
18.png --sound slow.wav => !slow.wav: the sound has 17 samples a second
18.png --sound three.wav => !three.wav:
18.png --sound cut.wav => !cut.wav: the sound is cut off: of its 9 bytes
)";

TEST_F(MakeMovie, MakesOrRefusesWhatIsAsked) {
    for (const auto& [name, pixel] : kColourNames) write(name + ".png", png(8, Pixels(32, pixel)));
    std::uint8_t index = 11;
    for (const char* name : {"f/a.png", "f/b2.png", "f/b02x.png", "f/b10.PNG", "last.png"})
        writeIndexed(name, index++);
    for (const char* name : {"f/notes.txt", "empty/notes.txt", "bad.png"})
        write(name, asBytes("no picture"));
    const Bytes sound = wav(11025, 2, 16, noise(8));
    write("slow.wav", changed(sound, 25, 0));
    write("three.wav", wav(8000, 3, 16, noise(6)));
    write("cut.wav", changed(sound, 40, 9));
    Pixels palette(20, {{200, 100, 40}});
    writeIndexed("few.png", 9, palette); // entries left out at the end do not matter
    writeIndexed("18.png", 18);
    palette[19] = {{60, 160, 60}};
    writeIndexed("other.png", 19, palette);
    palette.assign(12, {{50, 60, 70}});
    palette[11] = {{210, 110, 50}};
    writeIndexed("palette.png", 5, palette);
    writeIndexed("red.png", 50, Pixels(256, {{100, 50, 50}}));
    writeIndexed("bright.png", 50, Pixels(256, {{180, 50, 50}}));
    writeIndexed("wide.png", 0, kColours, 12);
    writeIndexed("odd.png", 0, kColours, 6);
    writeIndexed("long.png", 0, kColours, 4100);
    for (const Files& row : rowsOf(kMovies)) {
        SCOPED_TRACE(row[0]);
        options_ = {.output = options_.output};
        Files files;
        std::istringstream words(row[0]);
        for (std::string word, value; words >> word;)
            if (word[0] == '-') {
                words >> value;
                if (word == "--palette-at") options_.colours.paletteAt.assign(2, std::stoi(value));
                if (word == "--palette") options_.colours.palette = at(value);
                if (word == "--sound") options_.sound = at(value);
                options_.colours.remap |= word == "--remap";
                options_.ring |= word == "--ring";
            } else
                files.push_back(word);
        if (row[1][0] == '!') {
            const std::string old = read("out/a.smk");
            EXPECT_EQ(make(files), 1);
            EXPECT_THAT(errors_, HasSubstr(row[1].substr(1)));
            EXPECT_EQ(read("out/a.smk"), old);
            continue;
        }
        std::string told;
        for (const auto& [number, frame] : made(files)) {
            const std::uint8_t pixel = frame.picture.at(0);
            const auto& [red, green, blue] = frame.palette[pixel];
            told += (told.empty() ? "" : " ") + std::to_string(pixel);
            for (const auto& [name, colour] : kColourNames)
                if (colour.opaque() &&
                    rsc::componentDistance(rsc::liftColour({red, green, blue}), colour.colour) <= 3)
                    told += name;
            told += std::string(",") + (frame.isKey ? "k" : "") + (frame.hasPalette ? "p" : "");
        }
        EXPECT_EQ(told, row[1]);
    }
    EXPECT_EQ(namesIn("out"), "a.smk ");
}

TEST_F(MakeMovie, CarriesTheSoundOneSecondAheadAndIsListed) {
    writeIndexed("1.png", 20);
    options_.frameTime = 10000;
    options_.sound = at("a.wav");
    for (const int format : {0, 1, 2, 3, 4, 5, 6, 7}) {
        const int channels = 1 + format % 2, bits = format & 2 ? 16 : 8;
        const bool packed = format < 4;
        const auto ahead = static_cast<std::size_t>(11025 * 11 / 10 * channels * bits / 8);
        const Bytes samples = noise(ahead / 11 * 12);
        write("a.wav", wav(11025, channels, bits, samples));
        options_.unpacked = !packed;
        options_.ring = packed;
        auto movie = made(Files(13, "1.png"));
        Bytes heard;
        for (std::int64_t i = 0; i < 13; ++i) heard = join(heard, movie[i].sound);
        EXPECT_EQ(heard, samples) << format;
        EXPECT_EQ(movie[0].sound.size(), ahead);
        EXPECT_EQ(movie[1].sound.size(), samples.size() - ahead);
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
    const Bytes movie = asBytes(read("out/a.smk"));
    write("cut.smk", Bytes(movie.begin(), movie.end() - 1));
    write("short.smk", Bytes(movie.begin(), movie.begin() + 50));
    write("doubled.smk", changed(movie, 20, movie[20] | 4));
    EXPECT_EQ(list({"cut.smk", "out/a.smk", "doubled.smk", "short.smk"}), 1);
    EXPECT_THAT(out_, HasSubstr("a.smk:\n8x4, 1 frame of 66.66 ms, a ring frame, sound of 22050 "
                                "Hz, 16 bits, stereo, packed\n"));
    EXPECT_THAT(out_, HasSubstr("doubled.smk:\n8x8, 1 frame"));
    EXPECT_EQ(errors_, "@/cut.smk: the movie is cut off\n@/short.smk: the movie is cut off\n");
}

} // namespace
