#include "manifest/manifest.h"

#include "pictures/sequencetext.h"
#include "testfiles.h"

#include <gmock/gmock.h>

namespace formats::animation {
void PrintTo(const Entry& entry, std::ostream* out) {
    *out << "{" << entry.dx << ", " << entry.dy << ", " << entry.code << ", " << entry.argument
         << "}";
}
} // namespace formats::animation

namespace {

using formats::animation::Sequence;
using rsc::AnimationPlan;
using rsc::Manifest;
using rsc::parseManifest;
using testing::HasSubstr;
using testing::StartsWith;

const AnimationPlan& animationOf(const rsc::ResourcePlan& resource) {
    return std::get<AnimationPlan>(resource.content);
}

// What is not seen when everything is packed, unpacked and packed again.
TEST(Manifest, ReadsWhatAuthorsWrite) {
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
                                            "  animation 2001\n"
                                            "    place 10 -20 30\n"
                                            "    remap\n"
                                            "    transparent colour FF00fe\n"
                                            "    frame 1.png 2.png offset 3 -4\n"
                                            "    frame 3.png\n"
                                            "    sequence 1:5 hold\n"
                                            "  font 10 small.BDF\n"
                                            "    chars 32-0x7e 0xA0\n"
                                            "    chars 255\n"
                                            "  font 11 big.ttf 14 italic",
                                            "DEFAULT");
    EXPECT_EQ(manifest.mapIdentifier, "MY GAME");
    EXPECT_EQ(manifest.palettes.at(0).pictures.at(1).path, "b #1.png");
    EXPECT_EQ(manifest.palettes[0].pictures.at(2).line, 5);
    EXPECT_EQ(manifest.libraries.at(0).name, "scene1.rsc");
    const auto& resources = manifest.libraries[0].resources;
    ASSERT_EQ(resources.size(), 5U);
    EXPECT_EQ(animationOf(resources[0]).palette, std::nullopt);
    EXPECT_EQ(std::get<rsc::ColoursPlan>(resources[1].content).palette, 0U);
    const AnimationPlan& animation = animationOf(resources[2]);
    EXPECT_EQ(animation.palette, 1U);
    EXPECT_EQ(animation.y, -20);
    EXPECT_TRUE(animation.remap);
    EXPECT_EQ(animation.transparency.colour, (platform::Rgb{255, 0, 254}));
    ASSERT_EQ(animation.frames.size(), 3U);
    EXPECT_EQ(animation.frames[1].dy, -4);
    EXPECT_EQ(animation.frames[2].dy, 0);
    const auto& small = std::get<rsc::FontPlan>(resources[3].content);
    EXPECT_FALSE(small.face);
    EXPECT_EQ(small.chars->count(), 0x7FU - 32 + 2);
    EXPECT_TRUE(small.keeps(0x7E) && small.keeps(0xA0) && small.keeps(255) && !small.keeps(300));
    const auto& big = std::get<rsc::FontPlan>(resources[4].content);
    EXPECT_EQ(big.face.value().size, 14);
    EXPECT_TRUE(!big.face->bold && big.face->italic && big.keeps(300));

    const std::string rest = "library a.rsc\nfile WAVE 1 a";
    EXPECT_EQ(parseManifest(rest, "DEFAULT").mapIdentifier, "DEFAULT");
    EXPECT_EQ(parseManifest("map none\n" + rest, "DEFAULT").mapIdentifier, std::nullopt);
}

Sequence sequenceOf(const std::string& text) {
    const std::string start = "library a.rsc\nanimation 1\nrate 5\nframe a b c d e\nsequence ";
    const Manifest manifest = parseManifest(start + text, "M");
    return animationOf(manifest.libraries[0].resources[0]).sequences[0].entries;
}

TEST(Manifest, ReadsSequences) {
    const std::pair<std::string, Sequence> cases[] = {
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
    for (const auto& [text, entries] : cases) {
        EXPECT_EQ(sequenceOf(text), entries) << text;
        EXPECT_EQ(sequenceOf(rsc::formatSequence(entries)), entries) << "written again";
    }
}

TEST(Manifest, WritesSequencesAsAuthorsDo) {
    for (const std::string text :
         {"1", "1-3:90 2 1 loop", "hold 3-1 end@4,5", "1 2 sound 101@1,2 marker 500:7 code -7:3",
          "1 code -101 code -4:1 code -2:1 code -1:9", "1-3 4:9 5"})
        EXPECT_EQ(rsc::formatSequence(sequenceOf(text)), text);
}

const std::string kLibrary = "library a.rsc\n";
const std::string kAnimation = kLibrary + "animation 1\nrate 5\n";
const std::string kFont = kLibrary + "font 1 a.bdf\n";
const std::string kFrames = kAnimation + "frame a b\n";

TEST(Manifest, RefusesFaultsWithTheirLine) {
    const struct {
        std::string manifest;
        int line;
        std::string text; ///< part of the refusal
    } cases[] = {
        {"", 0, "names no library"},
        {kLibrary, 1, "holds nothing"},
        {"\n\nLibrary a.rsc", 3, "unknown keyword \"Library\""},
        {"file WAVE 1 a", 1, "\"file\" belongs below a \"library\" line"},
        {kLibrary + "rate 5", 2, "\"rate\" belongs below an \"animation\""},
        {"use p", 1, "no palette \"p\" above"},
        {"palette p\nlibrary a.rsc\nfile WAVE 1 a", 1, "has no pictures"},
        {kLibrary + "part 1 a", 2, "with a \"layout\" line"},
        {kLibrary + "file WAVE 1 \"a", 2, "quotation mark"},
        {kLibrary + "from a.png", 2, "\"from\" belongs below a \"palette\" line"},
        {"library a", 1, "ends in \".rsc\""},
        {"library sub/a.rsc", 1, "without a folder"},
        {"library longlonglong.rsc", 1, "at most 15 characters"},
        {kLibrary + "file WAVE 1 a\nlibrary A.rsc", 3, "library a.rsc stands already in line 1"},
        {"map A\nmap B", 2, "stands already in line 1"},
        {"map 1234567890123456789012345678901234567890", 1, "1 to 39 characters"},
        {"palette p\nfrom a\nindexed b", 3, "either"},
        {kLibrary + "file WAVE 0 a", 2, "the id is 0, allowed is 1 to 32767"},
        {kLibrary + "file WAVE 9999999999 a", 2, "\"9999999999\" is no number"},
        {kLibrary + "file WAVES 1 a", 2, "\"WAVES\" is no type"},
        {kLibrary + "file WAVE 1 a\nfile TEXT 1 a\nfile WAVE 1 b", 4,
         "WAVE 1 stands already in line 2"},
        {kLibrary + "layout a\npart 0 b", 3, "the number is 0"},
        {kLibrary + "file CURSOR 1 a", 2, "cannot stand in a map"},
        {"library cursors.rsc\nfile CURSOR 1 a\nfile WAVE 1 a", 3,
         "cannot be found in \"cursors.rsc\""},
        {kLibrary + "animation 1", 2, "no frames"},
        {kLibrary + "animation 1\nframe a b", 2, "several frames and no sequence"},
        {kAnimation + "frame a offset 1 99999", 4, "dy is 99999"},
        {kAnimation + "rate 256", 4, "the rate is 256"},
        {kAnimation + "place 2049 0", 4, "x is 2049, allowed is -2047 to 2048"},
        {kAnimation + "transparent colour -12345", 4, "RRGGBB"},
        {kAnimation + "transparent pink", 4, "followed by \"alpha\""},
        {kFrames + "sequence 1 end 2", 5, "nothing can follow"},
        {kFrames + "sequence loop 1", 5, "needs a frame before it"},
        {kFrames + "sequence 1 2 3", 5, "shows frame 3, but there are only 2"},
        {kFrames + "sequence 1 jump", 5, "\"jump\" is no step"},
        {kFrames + "sequence 1-", 5, "\"\" is no step"},
        {kFrames + "sequence 1@2", 5, "\"@dx,dy\""},
        {kFrames + "sequence 1:40000", 5, "is 40000"},
        {kFrames + "sequence 1:-1", 5, "0 ms or more"},
        {kFrames + "sequence 1 sound", 5, "the sound's id is missing"},
        {kFrames + "sequence 1 marker 499", 5, "allowed is 500 to 32768"},
        {kFrames + "sequence 1 code 3", 5, "the code is 3"},
        {kFrames + "sequence 1-32767", 5, "too long"},
        {kLibrary + "font 1 a.ttf", 2, "the size in pixels is missing"},
        {kLibrary + "font 1 a.ttf 256", 2, "the size in pixels is 256"},
        {kFont + "file WAVE 1 a\nbytes big", 4, "belongs below a \"font\" line"},
        {kFont + "bytes", 3, "followed by \"big\" or \"little\""},
        {kFont + "chars 0x100", 3, "the code is 0x100"},
        {kFont + "chars 256", 3, "the code is 256, allowed is 0 to 255"},
        {kFont + "chars 0xfffffffff", 3, "\"0xfffffffff\" is no number"},
        {kFont + "chars 9-8", 3, "\"9-8\" is no range"},
        {kLibrary + "cursor 1 a.png 0 0", 2, "cannot stand in a map"},
        {"library cursors.rsc\ncursor 1 a.png 64 0", 2, "x of the hot spot is 64"},
        {kLibrary + "animation 1\nframe a\nsequence 1:50 1", 4, "frame 1 has no duration"},
    };
    for (const auto& row : cases) {
        const std::string refusal =
            testfiles::refusalOf([&] { (void)parseManifest(row.manifest, "M"); });
        EXPECT_THAT(refusal, StartsWith(std::to_string(row.line) + ": ")) << row.manifest;
        EXPECT_THAT(refusal, HasSubstr(row.text)) << row.manifest;
    }
}

} // namespace
