#include "manifest.h"

#include "refusal.h"
#include "sequencetext.h"

#include <gtest/gtest.h>

namespace rsc {
void PrintTo(const AseqEntry& entry, std::ostream* out) {
    *out << "{" << entry.dx << ", " << entry.dy << ", " << entry.code << ", " << entry.argument
         << "}";
}
} // namespace rsc

namespace {

using rsc::AnimationPlan;
using rsc::AseqSequence;
using rsc::Manifest;
using rsc::parseManifest;
using rsc::Refusal;
using rsc::Transparency;

const AnimationPlan& animationOf(const rsc::ResourcePlan& resource) {
    return std::get<AnimationPlan>(resource.content);
}

TEST(Manifest, ReadsEverything) {
    const Manifest manifest = parseManifest("# a scene\r\n"
                                            "map \"MY GAME\"\r\n"
                                            "palette day\n"
                                            "  from a.png \"b #1.png\"   # two\n"
                                            "  from c.png\n"
                                            "palette night\n"
                                            "  indexed night.png\n"
                                            "\n"
                                            "library Scene1.RSC\n"
                                            "  picture 99 plain.png\n"
                                            "  use night\n"
                                            "  colours 100 day\n"
                                            "  picture 100 back.png\n"
                                            "    place -3 12\n"
                                            "  animation 2001\n"
                                            "    rate 8\n"
                                            "    place 10 -20 30\n"
                                            "    crop no\n"
                                            "    remap\n"
                                            "    transparent colour FF00fe\n"
                                            "    frame 1.png 2.png offset 3 -4\n"
                                            "    frame 3.png\n"
                                            "    sequence 1-3 loop\n"
                                            "    sequence hold 1\n"
                                            "  file WAVE 7 sub/noise.wav\n"
                                            "  font 10 small.BDF\n"
                                            "    chars 32-0x7e 0xA0\n"
                                            "    chars 255\n"
                                            "    leading 3\n"
                                            "  font 11 big.ttf 14 italic\n"
                                            "    bytes big\n"
                                            "library cursors.rsc\n"
                                            "  file CURSOR 1 hand.cur\n"
                                            "  cursor 2 fist.png 4 63",
                                            "DEFAULT");
    EXPECT_EQ(manifest.mapIdentifier, "MY GAME");
    ASSERT_EQ(manifest.palettes.size(), 2U);
    ASSERT_EQ(manifest.palettes[0].pictures.size(), 3U);
    EXPECT_EQ(manifest.palettes[0].pictures[1].path, "b #1.png");
    EXPECT_EQ(manifest.palettes[0].pictures[2].line, 5);
    EXPECT_EQ(manifest.palettes[1].indexed->path, "night.png");
    ASSERT_EQ(manifest.libraries.size(), 2U);
    const auto& scene = manifest.libraries[0];
    EXPECT_EQ(scene.name, "scene1.rsc");
    ASSERT_EQ(scene.resources.size(), 7U);
    EXPECT_EQ(animationOf(scene.resources[0]).palette, std::nullopt);
    EXPECT_EQ(scene.resources[1].type, "RRGB");
    EXPECT_EQ(std::get<rsc::ColoursPlan>(scene.resources[1].content).palette, 0U);
    const AnimationPlan& picture = animationOf(scene.resources[2]);
    EXPECT_EQ(scene.resources[2].type, "ASEQ");
    EXPECT_EQ(picture.frames.at(0).file.path, "back.png");
    EXPECT_EQ(picture.x, -3);
    EXPECT_EQ(picture.palette, 1U);
    const AnimationPlan& animation = animationOf(scene.resources[3]);
    EXPECT_EQ(scene.resources[3].id, 2001);
    EXPECT_EQ(animation.rate, 8);
    EXPECT_EQ(animation.y, -20);
    EXPECT_EQ(animation.depth, 30);
    EXPECT_FALSE(animation.crop);
    EXPECT_TRUE(animation.remap);
    EXPECT_EQ(animation.transparency.kind, Transparency::Kind::Colour);
    EXPECT_EQ(animation.transparency.colour, (platform::Rgb{255, 0, 254}));
    ASSERT_EQ(animation.frames.size(), 3U);
    EXPECT_EQ(animation.frames[1].dy, -4);
    EXPECT_EQ(animation.frames[2].dy, 0);
    EXPECT_EQ(animation.sequences.size(), 2U);
    EXPECT_EQ(scene.resources[4].id, 7);
    EXPECT_EQ(std::get<rsc::PlainFilePlan>(scene.resources[4].content).file.path, "sub/noise.wav");
    const auto& small = std::get<rsc::FontPlan>(scene.resources[5].content);
    EXPECT_EQ(scene.resources[5].type, "NFNT");
    EXPECT_EQ(small.face.has_value(), false);
    EXPECT_EQ(small.chars->count(), 0x7FU - 32 + 2);
    EXPECT_TRUE(small.keeps(0x7E) && small.keeps(0xA0) && small.keeps(255) && !small.keeps(300));
    EXPECT_EQ(small.leading, 3);
    const auto& big = std::get<rsc::FontPlan>(scene.resources[6].content);
    EXPECT_EQ(big.face.value().size, 14);
    EXPECT_FALSE(big.face.value().bold);
    EXPECT_TRUE(big.face.value().italic);
    EXPECT_TRUE(big.bigEndian);
    EXPECT_TRUE(big.keeps(300));
    const rsc::ResourcePlan& fist = manifest.libraries[1].resources.at(1);
    EXPECT_EQ(fist.type, "CURSOR");
    EXPECT_EQ(std::get<rsc::CursorPlan>(fist.content).hotSpot.y, 63);

    const std::string rest = "library a.rsc\nfile WAVE 1 a";
    EXPECT_EQ(parseManifest(rest, "DEFAULT").mapIdentifier, "DEFAULT");
    EXPECT_EQ(parseManifest("map none\n" + rest, "DEFAULT").mapIdentifier, std::nullopt);
}

AseqSequence sequenceOf(const std::string& text) {
    const std::string start = "library a.rsc\nanimation 1\nrate 5\nframe a b c d e\nsequence ";
    const Manifest manifest = parseManifest(start + text, "M");
    return animationOf(manifest.libraries[0].resources[0]).sequences[0].entries;
}

struct SequenceCase {
    std::string text;
    AseqSequence entries;
};

TEST(Manifest, ReadsSequences) {
    const SequenceCase cases[] = {
        {"1", {{0, 0, 0, 0}, {0, 0, -1, 0}}},
        {"1 end", {{0, 0, 0, 0}, {0, 0, -1, 0}}},
        {"hold 2@-3,4:150 loop", {{0, 0, -4, 0}, {-3, 4, 1, 150}, {0, 0, -2, 0}, {0, 0, -1, 0}}},
        {"2-4:90 4-3@1,2",
         {{0, 0, 1, 90}, {0, 0, 2, 90}, {0, 0, 3, 90}, {1, 2, 3, 0}, {1, 2, 2, 0}, {0, 0, -1, 0}}},
        {"sound 101@1,2 1", {{1, 2, -101, 101}, {0, 0, 0, 0}, {0, 0, -1, 0}}},
        {"marker 500 1 marker 32768:9",
         {{0, 0, -500, 0}, {0, 0, 0, 0}, {0, 0, -32768, 9}, {0, 0, -1, 0}}},
        {"1 code -7@1,2:3 end@4,5", {{0, 0, 0, 0}, {1, 2, -7, 3}, {4, 5, -1, 0}}},
        {"1 loop 2 hold",
         {{0, 0, 0, 0}, {0, 0, -2, 0}, {0, 0, 1, 0}, {0, 0, -4, 0}, {0, 0, -1, 0}}},
    };
    for (const SequenceCase& row : cases) {
        EXPECT_EQ(sequenceOf(row.text), row.entries) << row.text;
        EXPECT_EQ(sequenceOf(rsc::formatSequence(row.entries)), row.entries) << "written again";
    }
}

TEST(Manifest, WritesSequencesAsAuthorsDo) {
    for (const std::string text :
         {"1", "1-3:90 2 1 loop", "hold 3-1 end@4,5", "1 2 sound 101@1,2 marker 500:7 code -7:3",
          "1 code -101 code -4:1 code -2:1 code -1:9", "1-3 4:9 5"})
        EXPECT_EQ(rsc::formatSequence(sequenceOf(text)), text);
}

struct RefusalCase {
    std::string manifest;
    int line;
    std::string text; ///< part of the refusal
};

const std::string kLibrary = "library a.rsc\n";
const std::string kAnimation = kLibrary + "animation 1\nrate 5\n";
const std::string kFont = kLibrary + "font 1 a.bdf\n";
const std::string kFrames = kAnimation + "frame a b\n";

TEST(Manifest, RefusesFaultsWithTheirLine) {
    const RefusalCase cases[] = {
        {"", 0, "names no library"},
        {kLibrary, 1, "holds nothing"},
        {"\n\nLibrary a.rsc", 3, "unknown keyword \"Library\""},
        {"file WAVE 1 a", 1, "\"file\" belongs below a \"library\" line"},
        {kLibrary + "rate 5", 2, "\"rate\" belongs below an \"animation\""},
        {kAnimation + "frame a\nfile WAVE 1 a\nrate 5", 6, "belongs below an \"animation\""},
        {kLibrary + "from a.png", 2, "\"from\" belongs below a \"palette\" line"},
        {"library a", 1, "ends in \".rsc\""},
        {"library sub/a.rsc", 1, "without a folder"},
        {"library longlonglong.rsc", 1, "at most 15 characters"},
        {"library a.rsc b", 1, "\"b\" is more than belongs"},
        {kLibrary + "file WAVE 1 a\nlibrary A.rsc", 3, "library a.rsc stands already in line 1"},
        {"map A\nmap B", 2, "stands already in line 1"},
        {"map \"\"", 1, "1 to 39 characters"},
        {"map 1234567890123456789012345678901234567890", 1, "1 to 39 characters"},
        {"palette p\nlibrary a.rsc\nfile WAVE 1 a", 1, "has no pictures"},
        {"palette p\nfrom a\npalette p", 3, "stands already in line 1"},
        {"palette p\nfrom a\nindexed b", 3, "either"},
        {"palette p\nindexed b\nfrom a", 3, "either"},
        {"palette p\nfrom", 2, "a picture's name is missing"},
        {"use p", 1, "no palette \"p\" above"},
        {kLibrary + "colours 1 p", 2, "no palette \"p\" above"},
        {kLibrary + "file WAVE 0 a", 2, "the id is 0, allowed is 1 to 32767"},
        {kLibrary + "file WAVE 32768 a", 2, "the id is 32768"},
        {kLibrary + "file WAVE 9999999999 a", 2, "\"9999999999\" is no number"},
        {kLibrary + "file WAVE x a", 2, "\"x\" is no number"},
        {kLibrary + "file WAVE 1", 2, "the file's name is missing"},
        {kLibrary + "file WAVES 1 a", 2, "\"WAVES\" is no type"},
        {kLibrary + "file WAVE 1 a\nfile TEXT 1 a\nfile WAVE 1 b", 4,
         "WAVE 1 stands already in line 2"},
        {kLibrary + "file WAVE 1 \"a", 2, "quotation mark"},
        {kLibrary + "part 1 a", 2, "with a \"layout\" line"},
        {kLibrary + "layout a\nlayout b", 3, "the layout stands already in line 2"},
        {kLibrary + "layout a\npart 0 b", 3, "the number is 0"},
        {"audiomap yes", 1, "\"yes\" is more than belongs"},
        {kLibrary + "file CURSOR 1 a", 2, "cannot stand in a map"},
        {"library cursors.rsc\nfile CURSOR 1 a\nfile WAVE 1 a", 3,
         "cannot be found in \"cursors.rsc\""},
        {kLibrary + "animation 1", 2, "no frames"},
        {kLibrary + "animation 1\nframe a b", 2, "several frames and no sequence"},
        {kAnimation + "frame", 4, "a picture's name is missing"},
        {kAnimation + "frame a offset 1", 4, "dy is missing"},
        {kAnimation + "frame a offset 1 99999", 4, "dy is 99999"},
        {kAnimation + "rate 256", 4, "the rate is 256"},
        {kAnimation + "place 2049 0", 4, "x is 2049, allowed is -2047 to 2048"},
        {kAnimation + "place 0 -2048", 4, "y is -2048"},
        {kAnimation + "place 0 0 256", 4, "the depth is 256"},
        {kAnimation + "crop", 4, "followed by \"no\""},
        {kAnimation + "transparent index 256", 4, "the index is 256"},
        {kAnimation + "transparent colour 12345", 4, "RRGGBB"},
        {kAnimation + "transparent colour -12345", 4, "RRGGBB"},
        {kAnimation + "transparent pink", 4, "followed by \"alpha\""},
        {kFrames + "sequence", 5, "shows no frame"},
        {kFrames + "sequence hold end", 5, "shows no frame"},
        {kFrames + "sequence 1 end 2", 5, "nothing can follow"},
        {kFrames + "sequence loop 1", 5, "needs a frame before it"},
        {kFrames + "sequence code -2 1", 5, "needs a frame before it"},
        {kFrames + "sequence 1 2 3", 5, "shows frame 3, but there are only 2"},
        {kFrames + "sequence 0", 5, "the frame is 0"},
        {kFrames + "sequence 1 jump", 5, "\"jump\" is no step"},
        {kFrames + "sequence 1-", 5, "\"\" is no step"},
        {kFrames + "sequence 1@2", 5, "\"@dx,dy\""},
        {kFrames + "sequence 1@2,x", 5, "dy: \"x\" is no number"},
        {kFrames + "sequence 1:40000", 5, "is 40000"},
        {kFrames + "sequence 1:-1", 5, "0 ms or more"},
        {kFrames + "sequence 1 sound", 5, "the sound's id is missing"},
        {kFrames + "sequence 1 sound 0", 5, "the sound's id is 0"},
        {kFrames + "sequence 1 sound 1:5", 5, "takes no \":\""},
        {kFrames + "sequence 1 hold:5", 5, "takes no \":\""},
        {kFrames + "sequence 1 marker 499", 5, "allowed is 500 to 32768"},
        {kFrames + "sequence 1 code 3", 5, "the code is 3"},
        {kFrames + "sequence 1-32767", 5, "too long"},
        {kLibrary + "font 1", 2, "the file's name is missing"},
        {kLibrary + "font 1 a.bdf 14", 2, "\"14\" is more than belongs"},
        {kLibrary + "font 1 a.ttf", 2, "the size in pixels is missing"},
        {kLibrary + "font 1 a.ttf 256", 2, "the size in pixels is 256"},
        {kLibrary + "font 1 a.ttf 14 thin", 2, "\"thin\" is more than belongs"},
        {kLibrary + "chars 1", 2, "\"chars\" belongs below a \"font\" line"},
        {kFont + "file WAVE 1 a\nbytes big", 4, "belongs below a \"font\" line"},
        {kFont + "file NFNT 1 a", 3, "NFNT 1 stands already in line 2"},
        {kFont + "chars", 3, "a range of codes is missing"},
        {kFont + "chars 256", 3, "the code is 256, allowed is 0 to 255"},
        {kFont + "chars 0x100", 3, "the code is 0x100"},
        {kFont + "chars 0xfffffffff", 3, "\"0xfffffffff\" is no number"},
        {kFont + "chars 0x", 3, "\"0x\" is no number"},
        {kFont + "chars 9-8", 3, "\"9-8\" is no range"},
        {kFont + "chars 8-", 3, "\"\" is no number"},
        {kFont + "leading -1", 3, "the leading is -1"},
        {kFont + "bytes", 3, "followed by \"big\" or \"little\""},
        {kLibrary + "cursor 1 a.png 0 0", 2, "cannot stand in a map"},
        {"library cursors.rsc\ncursor 1 a.png 64 0", 2, "x of the hot spot is 64"},
        {"library cursors.rsc\ncursor 1 a.png 0", 2, "y of the hot spot is missing"},
        {kLibrary + "animation 1\nframe a\nsequence 1:50 1", 4, "frame 1 has no duration"},
    };
    for (const RefusalCase& row : cases) {
        try {
            (void)parseManifest(row.manifest, "M");
            ADD_FAILURE() << row.manifest << " was taken";
        } catch (const Refusal& refusal) {
            EXPECT_EQ(refusal.line(), row.line) << row.manifest;
            EXPECT_NE(std::string(refusal.what()).find(row.text), std::string::npos)
                << row.manifest << ": " << refusal.what();
        }
    }
}

} // namespace
