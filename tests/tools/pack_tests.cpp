#include "library/list.h"
#include "library/nelibrary.h"
#include "pictures/cursor.h"
#include "pictures/quantizer.h"
#include "sounds/resampler.h"
#include "sounds/soundfile.h"
#include "testfonts.h"
#include "tooltest.h"

namespace {

using rsc::Bytes;
using testfiles::Rgba;
using testing::HasSubstr;
using testing::MatchesRegex;

constexpr std::string_view kManifest = R"(
palette meadow
    from back.png bee1.png bee2.png

library meadow.rsc
    use meadow
    colours 100 meadow
    picture 100 back.png
    animation 2001
        rate 8
        place 4 3 5
        frame bee1.png bee2.png
        sequence hold 1 loop
        sequence 1 2 sound 101 loop
library sounds.rsc
    file WAVE 101 buzz.wav
    file WAVE 102 buzz.wav
library fonts.rsc
    font 10 small.bdf
library cursors.rsc
    file CURSOR 1 hand.cur
    cursor 2 bee1.png 1 0
)";

/// A tenth of a second, 0x20 in one channel and 0x40 in the other.
const Bytes kPoints = [] {
    Bytes points;
    for (int i = 0; i < 4410; ++i) points.insert(points.end(), {0, 0x20, 0, 0x40});
    return points;
}();
const Bytes kHand = rsc::buildCursor(
    rsc::Picture::fromPng(testfiles::truecolourPng(1, {Rgba{9, 9, 9, 255}})), {0, 0});

class Pack : public testfiles::ToolTest {
  protected:
    Pack() {
        constexpr Rgba kGrass{40, 160, 60, 255};
        constexpr Rgba kYellow{240, 220, 30, 255};
        constexpr Rgba kNone{0, 0, 0, 0};
        folder_.write("back.png", testfiles::truecolourPng(8, std::vector<Rgba>(64, kGrass)));
        folder_.write("bee1.png", testfiles::truecolourPng(2, {kYellow, kNone, kYellow, kYellow}));
        folder_.write("bee2.png", testfiles::truecolourPng(2, {kYellow, kYellow, kNone, kYellow}));
        folder_.write("buzz.wav", testfiles::wavFile(11025, 1, 8, Bytes(2205, 128)));
        folder_.write("deep.wav", testfiles::wavFile(44100, 2, 16, kPoints));
        folder_.write("small.bdf", testfonts::kSmallBdf);
        folder_.write("hand.cur", kHand);
        folder_.write("game.txt", kManifest);
    }

    int pack(const std::string& to = "out") { return ToolTest::pack("game.txt", to); }
    int list(const std::vector<std::string>& files) {
        return run(
            [&](auto& out, auto& errors) { return rsc::runList(paths(files), out, errors); });
    }

    [[nodiscard]] std::string manifestName() const { return folder_.at("game.txt").string(); }
};

TEST_F(Pack, BuildsLibrariesAndTheirMap) {
    ASSERT_EQ(pack(), 0) << errors_;
    EXPECT_EQ(folder_.read("out/resource.map"),
              "game\n3\n"
              "meadow.rsc\nRRGB 100\nASEQ 100\nASEQ 2001\nENDFILE\n"
              "sounds.rsc\nWAVE 101\nWAVE 102\nENDFILE\n"
              "fonts.rsc\nNFNT 10\nENDFILE\n");
    EXPECT_EQ(list({"out/meadow.rsc"}), 0) << errors_;
    EXPECT_EQ(out_, "RRGB     100      1536       240\n"
                    "ASEQ     100        96      1776  1 frame, 1 sequence, 8x8\n"
                    "ASEQ    2001       128      1872  2 frames, 2 sequences, 2x2\n");
    EXPECT_EQ(list({"out/cursors.rsc", "out/sounds.rsc"}), 0) << errors_;
    EXPECT_THAT(
        out_,
        HasSubstr("  1x1, hot spot 0 0\nCURSOR     2        96       288  2x2, hot spot 1 0\n"));
    EXPECT_THAT(out_,
                HasSubstr("WAVE     102      2272      2496  11025 Hz, 8 bits, mono, 0.20 s\n"));
    EXPECT_EQ(list({"out/fonts.rsc"}), 0) << errors_;
    EXPECT_EQ(out_, "NFNT      10        64       208  2 characters, 2+1 rows\n");
}

TEST_F(Pack, TellsFaultsWithTheirLineAndLeavesOldFiles) {
    ASSERT_EQ(pack(), 0) << errors_;
    const std::string old = folder_.read("out/sounds.rsc");
    struct Case {
        std::string file;
        std::string contents;
        std::string errors;
    };
    const Case cases[] = {
        {"buzz.wav", "", ":16: buzz.wav: is empty\n"},
        {"game.txt", "library a.rsc\nfile WAVE 1 none.wav",
         ":2: none.wav: cannot be read: No such file or directory\n"},
        {"game.txt", "library a.rsc\nanimation 1\nrate 1\nframe buzz.wav\nsequence 1",
         ":4: buzz.wav: no PNG picture: save it as one\n"},
        {"game.txt", "library a.rsc\nfile WAVE 1 deep.wav",
         ":2: deep.wav: the sound is stereo of 16 bits, the game plays mono of 8 bits: it would be "
         "noise; \"sound 1 deep.wav\" converts what is a sound file of any kind\n"},
        {"game.txt", "library a.rsc\nsound 1 buzz.wav rate 44100",
         ":2: the rate is 44100, the game's sounds have 22050, 22000, 22255, 11025 or 11127\n"},
        {"small.bdf", "STARTFONT 2.1\nCHARS -1\n",
         ":19: small.bdf: line 2: CHARS is -1, allowed is 0 to 2147483647\n"},
        {"game.txt", "map none\nlibrary a.rsc\ncursor 1 bee1.png 2 0",
         ":3: bee1.png: the hot spot 2 0 lies outside of the picture, which has 2x2 pixels\n"},
        {"game.txt", "",
         ": the manifest names no library: write \"library NAME.rsc\", and below it what goes into "
         "it\n"},
    };
    for (const Case& row : cases) {
        const std::string before = folder_.read(row.file);
        folder_.write(row.file, row.contents);
        EXPECT_EQ(pack(), 1) << row.errors;
        EXPECT_EQ(errors_, manifestName() + row.errors);
        EXPECT_EQ(folder_.read("out/sounds.rsc"), old);
        EXPECT_EQ(testfiles::namesIn(folder_.at("out")).size(), 5U)
            << "nothing is left beside them";
        folder_.write(row.file, before);
    }
}

TEST_F(Pack, ConvertsSoundsToWhatTheGamePlays) {
    folder_.write("game.txt", "map none\nlibrary a.rsc\nsound 1 buzz.wav\nfile WAVE 2 buzz.wav\n"
                              "file WAVE 3 deep.wav unchecked\nfile CURSOR 4 deep.wav\n");
    ASSERT_EQ(pack(), 0);
    EXPECT_THAT(errors_, MatchesRegex(".*:5: warning: deep.wav: the sound is stereo.*\n"
                                      ".*:6: warning: deep.wav: the game will show the arrow.*\n"));
    EXPECT_EQ(list({"out/a.rsc"}), 1);
    EXPECT_THAT(out_, HasSubstr("44100 Hz, 16 bits, stereo, 0.10 s: the game plays noise\n"));
    EXPECT_THAT(errors_, HasSubstr("a.rsc: CURSOR 4: the game shows the arrow: it is no cursor"));
    if (!rsc::canReadSounds() || !rsc::canResample()) GTEST_SKIP() << "built without the libraries";
    folder_.write("game.txt", "library a.rsc\nsound 1 deep.wav\nsound 2 deep.wav rate 11025\n");
    ASSERT_EQ(pack(), 0) << errors_;
    EXPECT_EQ(list({"out/a.rsc"}), 0) << errors_;
    EXPECT_EQ(out_, "WAVE       1      2256       208  22050 Hz, 8 bits, mono, 0.10 s\n"
                    "WAVE       2      1152      2464  11025 Hz, 8 bits, mono, 0.10 s\n");
    EXPECT_EQ(folder_.read("out/a.rsc")[208 + 44 + 1100], '\xB0') << "the mean of both channels";
}

TEST_F(Pack, CountsColoursThatGetLost) {
    folder_.write(
        "other.png",
        testfiles::truecolourPng(
            2, {{200, 20, 20, 255}, {240, 220, 30, 255}, {3, 3, 3, 255}, {200, 20, 20, 0}}));
    const std::string rest = "\n from bee1.png\nlibrary a.rsc\nuse p\npicture 1 other.png";
    folder_.write("game.txt", "palette p" + rest);
    ASSERT_EQ(pack(), 0);
    EXPECT_THAT(errors_,
                HasSubstr("game.txt:5: warning: other.png: 1 of its 3 colours (1 of 3 pixels) "
                          "become others, the palette \"p\" has nothing like them: name it"));
    std::vector<Rgba> many;
    for (int i = 90; i < 240; ++i)
        for (const std::uint8_t blue : {90, 99})
            many.push_back({static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i), blue});
    folder_.write("bee1.png", testfiles::truecolourPng(20, many));
    if (!rsc::canReduceColours()) GTEST_SKIP() << "built without libimagequant";
    ASSERT_EQ(pack(), 0);
    EXPECT_THAT(errors_,
                HasSubstr("game.txt:1: warning: the pictures of the palette \"p\" have 300 "
                          "colours besides black and white (bee1.png alone 300)"));
    folder_.write("game.txt", "palette p reduced\n from bee1.png\nlibrary a.rsc\ncolours 1 p");
    ASSERT_EQ(pack(), 0);
    EXPECT_EQ(errors_, "");
}

TEST_F(Pack, LeavesNothingBehindWhenItCannotWrite) {
    folder_.makeFolder("out/sounds.rsc/in the way");
    EXPECT_EQ(pack(), 1);
    EXPECT_THAT(errors_, HasSubstr("sounds.rsc: cannot be replaced"));
    for (const std::string& name : testfiles::namesIn(folder_.at("out")))
        EXPECT_FALSE(name.ends_with(".new")) << name;
    EXPECT_EQ(pack("game.txt"), 1) << "no folder";
    EXPECT_FALSE(errors_.empty());
}

TEST_F(Pack, RefusesMoreOfOneTypeThanTheProgramTakes) {
    std::string manifest;
    for (int library = 0; library < 4; ++library) {
        manifest += "library " + std::to_string(library) + ".rsc\n";
        for (int id = 1; id <= 2500; ++id)
            manifest += "file WAVE " + std::to_string(id) + " buzz.wav\n";
    }
    folder_.write("game.txt", manifest);
    EXPECT_EQ(pack(), 1);
    EXPECT_THAT(errors_, HasSubstr("10000 resources of type WAVE"));
    folder_.write("game.txt", "map none\n" + manifest);
    EXPECT_EQ(pack(), 0) << errors_;
    EXPECT_FALSE(std::filesystem::exists(folder_.at("out/resource.map")));
}

TEST_F(Pack, ListsDamagedLibrariesAndGoesOn) {
    folder_.write("no.rsc", std::string_view("MZ but nothing else"));
    const std::vector<rsc::Resource> resources = {{"ASEQ", 5, {1, 0, 1, 0, 8}},
                                                  {"NFNT", 7, {1}},
                                                  {"CURSOR", 8, {0, 0, 1, 0, 1, 0}},
                                                  {"WAVE", 6, {1}}};
    folder_.write("bad.rsc", rsc::buildNeLibrary("BAD", resources));
    EXPECT_EQ(list({"no.rsc", "gone.rsc", "bad.rsc"}), 1);
    for (const char* told :
         {"no.rsc: no resource library", "gone.rsc: cannot be read: No such file",
          "bad.rsc: ASEQ 5: ", "bad.rsc: NFNT 7: the font is cut off",
          "bad.rsc: CURSOR 8: the game shows the arrow: it is an icon"})
        EXPECT_THAT(errors_, HasSubstr(told));
    EXPECT_THAT(out_, HasSubstr("no sound: the game plays nothing"));
}

} // namespace
