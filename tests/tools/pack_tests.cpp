#include "list.h"
#include "nelibrary.h"
#include "testfonts.h"
#include "tooltest.h"

namespace {

using rsc::Bytes;
using testfiles::Rgba;

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

class Pack : public testfiles::ToolTest {
  protected:
    Pack() {
        constexpr Rgba kGrass{40, 160, 60, 255};
        constexpr Rgba kYellow{240, 220, 30, 255};
        constexpr Rgba kNone{0, 0, 0, 0};
        folder_.write("back.png", testfiles::truecolourPng(8, std::vector<Rgba>(64, kGrass)));
        folder_.write("bee1.png", testfiles::truecolourPng(2, {kYellow, kNone, kYellow, kYellow}));
        folder_.write("bee2.png", testfiles::truecolourPng(2, {kYellow, kYellow, kNone, kYellow}));
        folder_.write("buzz.wav", std::string_view("RIFF and so on"));
        folder_.write("small.bdf", testfonts::kSmallBdf);
        folder_.write("hand.cur", std::string_view("a hand"));
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
    EXPECT_NE(out_.find("cursors.rsc:\nCURSOR     1        16       208\n"
                        "CURSOR     2        96       224  2x2, hot spot 1 0\n"),
              std::string::npos)
        << out_;
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
         ":4: buzz.wav: no PNG picture\n"},
        {"small.bdf", "STARTFONT 2.1\nCHARS -1\n",
         ":19: small.bdf: line 2: CHARS is -1, allowed is 0 to 2147483647\n"},
        {"game.txt", "map none\nlibrary a.rsc\ncursor 1 bee1.png 2 0",
         ":3: bee1.png: the hot spot 2 0 lies outside of the picture, which has 2x2 pixels\n"},
        {"game.txt", "", ": the manifest names no library\n"},
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

TEST_F(Pack, LeavesNothingBehindWhenItCannotWrite) {
    folder_.makeFolder("out/sounds.rsc/in the way");
    EXPECT_EQ(pack(), 1);
    EXPECT_THAT(errors_, testing::HasSubstr("sounds.rsc: cannot be replaced"));
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
    EXPECT_NE(errors_.find("10000 resources of type WAVE"), std::string::npos) << errors_;
    folder_.write("game.txt", "map none\n" + manifest);
    EXPECT_EQ(pack(), 0) << errors_;
    EXPECT_FALSE(std::filesystem::exists(folder_.at("out/resource.map")));
}

TEST_F(Pack, ListsDamagedLibrariesAndGoesOn) {
    folder_.write("no.rsc", std::string_view("MZ but nothing else"));
    const std::vector<rsc::Resource> resources = {{"ASEQ", 5, {1, 0, 1, 0, 8}},
                                                  {"NFNT", 7, {1}},
                                                  {"CURSOR", 8, {0, 0, 2, 0, 1, 0}},
                                                  {"WAVE", 6, {1}}};
    folder_.write("bad.rsc", rsc::buildNeLibrary("BAD", resources));
    EXPECT_EQ(list({"no.rsc", "gone.rsc", "bad.rsc"}), 1);
    for (const char* told :
         {"no.rsc: no resource library", "gone.rsc: cannot be read: No such file",
          "bad.rsc: ASEQ 5: ", "bad.rsc: NFNT 7: the font is cut off", "bad.rsc: CURSOR 8: "})
        EXPECT_THAT(errors_, testing::HasSubstr(told));
    EXPECT_THAT(out_, testing::HasSubstr("WAVE       6 "));
}

} // namespace
