// Libraries that are unpacked, and packed again to the same bytes.
#include "fonts/fontbuilder.h"
#include "pictures/cursor.h"
#include "pictures/palette.h"
#include "tooltest.h"

namespace {

namespace fs = std::filesystem;

using namespace testfiles;
using formats::animation::Animation;
using rsc::Resource;

/// One frame of three pixels, and a sequence that shows it.
Animation animationOf(const Bytes& row) {
    Animation animation{.framesPerSecond = 8, .frames = {{3, 1, row}}};
    animation.sequences = {{{1, -2, 0, 90}, {0, 0, -101, 7}, {0, 0, -2, 0}, {0, 0, -1, 0}}};
    return animation;
}
const Bytes kRow = {1, 5, 0, 1, 1, 7}; // the second one is transparent
const Bytes kOtherRuns = {1, 5, 0, 1, 255, 7, 1};
const Bytes kAnimation = formats::animation::write(animationOf(kRow));
const Bytes kFont = rsc::buildFont({}, asBytes(kSmallBdf));
const Bytes kMacSound = bytesOf("000100010005(3)8000018051(5)14(7)0356EE8BA3(9)3C010203");

class Extract : public ToolTest {
  protected:
    /// Unpacks a library "in/NAME" and packs it again; whether the bytes are the same.
    void expectRoundTrip(const std::string& name, const Bytes& library) {
        for (const char* each : {"in", "again"}) fs::remove_all(at(each));
        write("in/" + name, library);
        ASSERT_EQ(extract({"in/" + name}), 0) << errors_;
        const std::string notes = out_;
        ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << errors_;
        EXPECT_TRUE(read("again/" + name) == read("in/" + name));
        out_ = notes;
    }
    void expectManifest(const std::string& line) const {
        EXPECT_THAT(read("out/resources.manifest"), HasSubstr(line + "\n"));
    }
};

/// With " | " between its lines.
constexpr const char* kEverything = R"(
map "MY GAME" | audiomap | palette day | from day.png "dot #1.png" | palette night
indexed night.png | library scene-1.rsc | use day | file WAVE 7 buzz.wav | colours 100 day
picture 100 day.png | picture 103 hole.png | place 2048 -2047 | animation 2001 | rate 12
place -5 300 7 | frame hole.png "dot #1.png" offset -300 40 | frame hole.png | frame day.png
sequence hold sound 7@1,2 1-4 3-1@-3,4:120 marker 500 marker 32768:9 loop
sequence 2 code -7@1,2:3 code -101 code -4:5 2 sound 7 sound 7 sound 9 end@4,-5
file TEXT 1 words.txt | file WAVE 8 mac.snd | animation 2002 | crop no | frame hole.png
sequence 1:50 hold | animation 2003 | transparent none | frame all.png | sequence 1:1000 loop
library night.rsc | colours 101 night | animation 101 | frame night.png
sequence 1:40 sound 7 1:40 | font 5 small.bdf | font 6 small.bdf | bytes big | leading 2
font 7 latin.bdf | font 8 thorn.bdf | file wave 7 words.txt | library cursors.rsc
file CURSOR 1 words.txt | cursor 2 hole.png 3 2 | file "#16" 1 words.txt
)";

TEST_F(Extract, EverythingIsPackedAgainToTheSameBytes) {
    std::string day;
    for (int i = 0; i < 600; ++i) day += i == 300 ? "/b" : i >= 310 && i < 317 ? "g" : "b";
    Pixels night(256, {{60, 70, 120}});
    for (std::uint8_t i = 0; i < 200; ++i) night[i] = {{i, 60, 99}};
    Bytes all(256);
    std::iota(all.begin(), all.end(), std::uint8_t{0});
    write("day.png", drawn(day));
    write("dot #1.png", drawn("g"));
    write("hole.png", drawn("..../.b.g/.gb."));
    write("night.png", indexedPng(2, {12, 13, 0, 255}, night));
    write("all.png", indexedPng(16, all, night));
    write("buzz.wav", formats::sound::writeRiff(Bytes(33, 0x80), 22050));
    write("mac.snd", kMacSound);
    write("words.txt", asBytes("some words"));
    write("small.bdf", asBytes(kSmallBdf));
    write("latin.bdf", asBytes(replaced(kSmallBdf, "ENCODING 3", "ENCODING 255")));
    const std::string thorn = replaced(kSmallBdf, "ENCODING 3", "ENCODING 254");
    write("thorn.bdf", asBytes(replaced(thorn, "C0", "00"))); // blank
    write("game.txt", asBytes(replacedAll(kEverything, " | ", "\n")));
    ASSERT_EQ(pack("game.txt", "RSC"), 0) << errors_;
    const std::string names = "audio.map cursors.rsc night.rsc resource.map scene-1.rsc ";
    Files files;
    for (const std::string& name : wordsOf(names)) files.push_back("RSC/" + name);
    ASSERT_EQ(extract(files), 0) << errors_;
    EXPECT_EQ(out_, "") << "nothing stays as it is";
    ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << errors_;
    EXPECT_EQ(namesIn("again"), names);
    for (const std::string& name : wordsOf(names))
        EXPECT_TRUE(read("again/" + name) == read("RSC/" + name)) << name;
    for (const char* line : {"picture 100 scene_1/ASEQ-100.png", "use night-101", "    crop no",
                             "file wave 7 night/wave-7.bin", "file \"#16\" 1 cursors/_16-1.bin"})
        expectManifest(line);
    EXPECT_EQ(read("out/scene_1/WAVE-7.wav"), read("buzz.wav"));
    EXPECT_EQ(asBytes(read("out/scene_1/WAVE-8.wav")),
              formats::sound::writeRiff(Bytes{1, 2, 3}, 22254))
        << "for players, beside it";
    ASSERT_EQ(extract({"RSC/scene-1.rsc"}), 0) << errors_;
    EXPECT_THAT(out_, HasSubstr("resource.map: would be packed to other bytes")); // one is missing
}

TEST_F(Extract, LeavesAsItIsWhatPicturesCannotTell) {
    Animation noFrames = animationOf(kRow);
    noFrames.sequences.push_back({{0, 0, -1, 0}});
    const Bytes sound = formats::sound::writeRiff(Bytes(9, 0x80), 22050);
    const Bytes palette = rsc::Palette::fromColours({}).resource();
    const Bytes cursor = rsc::buildCursor(rsc::Picture::fromPng(drawn("r")), {0, 0});
    Bytes two = changed(cursor, 4, 2); // the second one's entry tells of the same picture
    two.insert(two.begin() + 6, cursor.begin() + 6, cursor.begin() + 22);
    two[6 + 12] += 16, two[22 + 12] += 16;
    using formats::animation::write;
    // Types, resources, and lines of the manifest; ".EXTENSION": it is a file as it is.
    const std::tuple<std::string, Bytes, std::string> rows[] = {
        {"ASEQ", kAnimation, "        frame a/ASEQ-1.png"},
        {"ASEQ", write(animationOf(kOtherRuns)), ".bin"},
        {"ASEQ", changed(kAnimation, kAnimation.size() - 24, 0xFF), ".bin"}, // an end in between
        {"ASEQ", write(noFrames), ".bin"},
        {"ASEQ", write(animationOf(kRow), std::endian::big), ".bin"},
        {"ASEQ", join(kAnimation, {0, 0, 1}), ".bin"},
        {"ASEQ", changed(kAnimation, 7, 1), ".bin"}, // reserved bytes
        {"NFNT", kFont, "    font 1 a/NFNT-1.bdf"},
        {"NFNT", changed(kFont, 1, 0xB0), ".bin"},  // another type of font
        {"NFNT", changed(kFont, 2, 1), ".bin"},     // another first character
        {"NFNT", changed(kFont, 56, 0xFF), ".bin"}, // no stand-in
        {"RRGB", palette, "    colours 1 a-1"},
        {"RRGB", changed(palette, 601, 7), ".bin"}, // high bytes
        {"RRGB", changed(palette, 0, 7), ".bin"},   // other fixed colours
        {"WAVE", {sound.begin(), sound.begin() + 32}, ".wav unchecked"},
        {"WAVE", Bytes(21, 0), ".bin unchecked"},
        {"WAVE", sound, "    sound 1 a/WAVE-1.wav"},
        {"WAVE", changed({kMacSound.begin(), kMacSound.end() - 3}, 27, 200), ".snd"},
        {"CURSOR", cursor, "    cursor 1 cursors/CURSOR-1.png 0 0"},
        {"CURSOR", two, ".cur"},
        {"CURSOR", changed(cursor, 36, 1), ".cur"},                   // another depth
        {"CURSOR", changed(cursor, cursor.size() - 4, 0x80), ".cur"}, // an inverting pixel
        {"CURSOR", join(cursor, {0, 1}), ".cur"},
        {"CURSOR", {1, 2, 3}, ".bin"},
    };
    for (const auto& [type, bytes, line] : rows) {
        SCOPED_TRACE(type + line);
        const std::string name = type == "CURSOR" ? "cursors" : "a";
        expectRoundTrip(name + ".rsc",
                        rsc::buildNeLibrary(formats::library::moduleNameOf(name),
                                            std::vector<Resource>{{type, 1, bytes}}));
        expectManifest(line[0] == '.' ? "    file " + type + " 1 " + name + "/" + type + "-1" + line
                                      : line);
        EXPECT_FALSE(fs::exists(at("out/" + name + "/library.layout")));
    }
}

TEST_F(Extract, KeepsTheLayoutOfLibrariesMadeElsewhere) {
    const std::vector<ForeignResource> strange = {
        {"WAVE", kNumber | 5, 0, 1},   {"TEXT", kNumber | 1, 2, 1}, // a gap before it
        {"WAVE", kNumber | 6, 0, 1},                                // the bytes of the first one
        {"../x", kNumber | 1, 1, 1},   {"/etc/passwd", kNumber | 1, 1, 1},
        {"..", kNumber | 1, 1, 1},     {"", kNumber | 1, 1, 1},
        {"A\nB\"", kNumber | 1, 1, 1}, {std::string(255, '\xFF'), kNumber | 1, 1, 1},
        {"text", kNumber | 1, 3, 1}, // a type that differs by its case
        {"TEXT", kNumber | 1, 3, 2}, // the same again
        {"TEXT", kNumber, 3, 1},       {"TEXT", 0, 4, 1, "../../NAME"},
        {"TEXT", kNumber | 9, 3, 0}, // empty
    };
    const std::vector<Resource> two = {{"WAVE", 5, Bytes(20, 1)}, {"TEXT", 1, Bytes(5, 2)}};
    const Bytes ours = rsc::buildNeLibrary("A", two);
    std::vector<ForeignResource> same, overlapping; // small files that could grow without end
    for (std::uint16_t i = 0; i < 1000; ++i) {
        const auto id = static_cast<std::uint16_t>(kNumber | (i + 1));
        same.push_back({"ASEQ", id, 0, 6000});
        overlapping.push_back({"ASEQ", id, i, 5000});
    }
    Bytes data = kAnimation;
    data.resize(7000 * 16);
    const Bytes libraries[] = {
        rsc::buildNeLibrary("B", two), // another module name
        join(ours, {1, 2, 3}),
        changed(ours, 0x90 + 2 + 8 + 4, 0), // other flags
        foreignLibrary(4, same, data),
        foreignLibrary(0, strange, Bytes(8, 9)),
        foreignLibrary(4, strange, Bytes(80, 'x')),
        foreignLibrary(9, strange, Bytes(512 * 5, 'x')),
    };
    for (const Bytes& library : libraries) {
        expectRoundTrip("a.rsc", library);
        expectManifest("    layout a/library.layout");
        EXPECT_THAT(out_, HasSubstr("its layout is kept"));
        EXPECT_TRUE(&library != &libraries[3] || namesIn("out/a") == "ASEQ-1.bin library.layout ");
    }
    EXPECT_EQ(namesIn("out"), "a resources.manifest ") << "nothing lies elsewhere";
    expectManifest("    file WAVE 6 a/WAVE-5.bin unchecked"); // shared bytes are one file
    expectManifest("    file text 1 a/text-1_2.bin");         // TEXT-1.bin is another one
    expectManifest("    part 13 a/TEXT-______NAME.bin");
    write("b.rsc", foreignLibrary(4, overlapping, data));
    EXPECT_EQ(extract({"b.rsc"}), 1);
    EXPECT_THAT(errors_, HasSubstr("its resources overlap"));
}

/// Libraries, a picture, and the blue of its first pixel, in the palette of its own id, of that id
/// in another library, the first one of its library or of all, the one asked for, and in greys.
constexpr const char* kShown = R"(
one.rsc two.rsc => one/ASEQ-2.png => 120
one.rsc two.rsc => two/ASEQ-1.png => 110
one.rsc two.rsc => two/ASEQ-9.png => 130
two.rsc three.rsc => three/ASEQ-9.png => 130
one.rsc two.rsc => one/ASEQ-2.png => 150 => 5
three.rsc => three/ASEQ-9.png => 50
)";

TEST_F(Extract, ShowsPicturesInThePaletteThatFits) {
    static const Bytes row = {3, 50, 51, 52};
    const Bytes picture = formats::animation::write(animationOf(row));
    const auto colours = [](std::uint16_t id) {
        rsc::Colours wanted{};
        wanted.fill({100, 100, static_cast<std::uint8_t>(100 + 10 * id)});
        return Resource{"RRGB", id, rsc::Palette::fromColours(wanted).resource()};
    };
    write("one.rsc", {colours(1), colours(2), {"ASEQ", 2, picture}});
    write("two.rsc", {colours(3), colours(5), {"ASEQ", 1, picture}, {"ASEQ", 9, picture}});
    write("three.rsc", {{"ASEQ", 9, picture}});
    for (const Files& shown : rowsOf(kShown)) {
        rsc::ExtractOptions options;
        if (shown.size() > 3) options.palette = std::stoi(shown[3]);
        ASSERT_EQ(extract(wordsOf(shown[0]), options), 0) << errors_;
        const auto png = rsc::Picture::fromPng(asBytes(read("out/" + shown[1])));
        EXPECT_EQ(png.index(0), 50);
        EXPECT_NEAR(png.pixel(0).colour.blue, std::stoi(shown[2]), 1) << shown[1];
    }
    EXPECT_EQ(extract({"one.rsc"}, {.palette = 7}), 1);
    EXPECT_THAT(errors_, HasSubstr("there is no palette RRGB 7"));
}

/// Folders, files that are unpacked into them, and why not.
constexpr const char* kRefused = R"(
full a.rsc => @/full: is not empty: name another folder, or add --force
a.dll a.rsc => @/a.dll: is no folder
out a.rsc bad.rsc => @/bad.rsc: no resource library: it ends within its headers
out a.rsc b/A.RSC => @/b/A.RSC: there are two libraries of this name
out a.dll => @/a.dll: a library's name ends in ".rsc"
out a*.rsc => @/a*.rsc: a library's name is a file's name without a folder and without blanks
out gone.rsc => @/gone.rsc: cannot be read: No such file or directory
out resource.map => no library is named, only maps
)";

TEST_F(Extract, RefusesWithoutWritingAnything) {
    folder_.makeFolder("full/sub");
    for (const char* name : {"a.rsc", "b/A.RSC", "a.dll", "a*.rsc", "...rsc"})
        write(name, {{"TEXT", 1, Bytes(5, 2)}});
    write("bad.rsc", asBytes("MZ"));
    write("resource.map", Bytes());
    for (const Files& row : rowsOf(kRefused)) {
        const Files words = wordsOf(row[0]);
        EXPECT_EQ(extract({words.begin() + 1, words.end()}, {.folder = at(words[0])}), 1);
        EXPECT_EQ(errors_, row[1] + "\n");
        EXPECT_FALSE(fs::exists(at("out")));
    }
    fs::remove(at("resource.map"));
    EXPECT_EQ(extract({"a.rsc"}, {.folder = at("full"), .force = true}), 0) << errors_;
    EXPECT_TRUE(fs::exists(at("full/sub"))) << "what was there stays";
    EXPECT_EQ(extract({"...rsc"}), 0) << "a name that could lead elsewhere";
    EXPECT_TRUE(fs::exists(at("out/__/TEXT-1.bin")));
}

/// Whatever is taken comes back; all else is refused with a text.
TEST_F(Extract, SurvivesAnyByteBeingWrong) {
    const Bytes library = rsc::buildNeLibrary(
        "A",
        std::vector<Resource>{{"ASEQ", 5, kAnimation}, {"NFNT", 5, kFont}, {"WAVE", 6, kMacSound}});
    const auto examine = [&](const Bytes& damaged, std::size_t place) {
        write("a.rsc", damaged);
        const int code = extract({"a.rsc"});
        EXPECT_EQ(code == 0, errors_.empty()) << place << errors_;
        if (!fs::exists(at("out"))) return;
        ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << place << errors_;
        EXPECT_TRUE(read("again/a.rsc") == read("a.rsc")) << place;
    };
    for (std::size_t place = 0; place < library.size(); ++place) {
        const Bytes cut(library.begin(), library.begin() + static_cast<long>(place));
        EXPECT_NE(refusalOf([&] { return rsc::NeLibrary(cut); }), "") << place;
        if (place % 3 == 0) examine(cut, place);
        for (const std::uint8_t value : {0x00, 0xFF})
            if (library[place] != value) examine(changed(library, place, value), place);
    }
    // Damaged resources are told, and kept.
    write("x.rsc", {{"ASEQ", 5, {1, 0, 1, 0, 8}}, {"NFNT", 5, {1, 0x90}}, {"TEXT", 6, {1}}});
    EXPECT_EQ(extract({"x.rsc"}), 1);
    EXPECT_EQ(errors_, "@/x.rsc: ASEQ 5: the animation is cut off\n"
                       "@/x.rsc: NFNT 5: the font is cut off\n");
    EXPECT_EQ(namesIn("out/x"), "ASEQ-5.bin NFNT-5.bin TEXT-6.bin ");
    ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << errors_;
    EXPECT_EQ(read("again/x.rsc"), read("x.rsc"));
}

} // namespace
