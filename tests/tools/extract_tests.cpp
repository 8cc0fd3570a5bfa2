// Libraries that are unpacked, and packed again to the same bytes.
#include "fonts/fontbuilder.h"
#include "formats/animation/animation.h"
#include "tooltest.h"

#include "formats/reading.h"
#include "pictures/cursor.h"
#include "pictures/palette.h"

namespace {

namespace fs = std::filesystem;

using namespace testfiles;
using rsc::Resource;

constexpr std::uint16_t kNumber = 0x8000; ///< mark of an id

Bytes riffSound(std::size_t samples) {
    return formats::sound::writeRiff(Bytes(samples, 0x80), 22050);
}

/// A sound of format 1 that says it has `length` samples and has these.
Bytes macSound(const Bytes& samples, std::uint8_t length) {
    return join(
        {{0, 1, 0, 1, 0, 5, 0, 0, 0, 0x80, 0, 1, 0x80, 0x51, 0, 0, 0, 0, 0, 0x14},
         {0, 0, 0, 0, 0, 0, 0, length, 0x56, 0xEE, 0x8B, 0xA3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 60},
         samples});
}

/// One frame of three pixels, one of them transparent, and a sequence that shows it.
formats::animation::Animation packedAnimation() {
    static const Bytes row = {1, 5, 0, 1, 1, 7};
    return {8,
            0,
            0,
            0,
            {{3, 1, row}},
            {{{1, -2, 0, 90}, {0, 0, -101, 7}, {0, 0, -2, 0}, {0, 0, -1, 0}}}};
}
formats::animation::Animation withRows(const Bytes& rows) {
    formats::animation::Animation aseq = packedAnimation();
    aseq.frames[0].rows = rows;
    return aseq;
}

const Bytes kFont = rsc::buildFont({}, asBytes(kSmallBdf));

class Extract : public ToolTest {
  protected:
    /// Unpacks a library "in/NAME" and packs it again; whether the bytes are the same.
    void expectRoundTrip(const std::string& name, const Bytes& library) {
        for (const char* each : {"in", "out", "again"}) fs::remove_all(at(each));
        write("in/" + name, library);
        ASSERT_EQ(extract({"in/" + name}), 0) << errors_;
        const std::string notes = out_;
        ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << errors_;
        EXPECT_TRUE(read("again/" + name) == read("in/" + name));
        out_ = notes;
    }

    [[nodiscard]] std::string manifest() const { return read("out/resources.manifest"); }
    void expectManifest(const std::string& line, bool says = true) const {
        EXPECT_EQ(manifest().find(line + "\n") != std::string::npos, says) << line << " in\n"
                                                                           << manifest();
    }
};

constexpr std::string_view kEverything = R"(
map "MY GAME"
audiomap
palette day
    from day.png "dot #1.png"
palette night
    indexed night.png
library scene-1.rsc
    use day
    file WAVE 7 buzz.wav
    colours 100 day
    picture 100 day.png
    picture 103 hole.png
        place 2048 -2047
    animation 2001
        rate 12
        place -5 300 7
        frame hole.png "dot #1.png" offset -300 40
        frame hole.png
        frame day.png
        sequence hold sound 7@1,2 1-4 3-1@-3,4:120 marker 500 marker 32768:9 loop
        sequence 2 code -7@1,2:3 code -101 code -4:5 2 sound 7 sound 7 sound 9 end@4,-5
    file TEXT 1 words.txt
    file WAVE 8 mac.snd
    animation 2002
        crop no
        frame hole.png
        sequence 1:50 hold
    animation 2003
        transparent none
        frame all.png
        sequence 1:1000 loop
library night.rsc
    colours 101 night
    animation 101
        frame night.png
        sequence 1:40 sound 7 1:40
    font 5 small.bdf
    font 6 small.bdf
        bytes big
        leading 2
    font 7 latin.bdf
    font 8 thorn.bdf
    file wave 7 words.txt
library cursors.rsc
    file CURSOR 1 words.txt
    cursor 2 hole.png 3 2
    file "#16" 1 words.txt
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
    write("buzz.wav", riffSound(33));
    write("mac.snd", macSound({1, 2, 3}, 3));
    write("words.txt", asBytes("some words"));
    write("small.bdf", asBytes(kSmallBdf));
    write("latin.bdf", asBytes(replaced(kSmallBdf, "ENCODING 3", "ENCODING 255")));
    const std::string thorn = replaced(kSmallBdf, "ENCODING 3", "ENCODING 254");
    write("thorn.bdf", asBytes(replaced(thorn, "C0", "00"))); // blank
    write("game.txt", asBytes(kEverything));
    ASSERT_EQ(pack("game.txt", "RSC"), 0) << errors_;
    const Files names = {"audio.map", "cursors.rsc", "night.rsc", "resource.map", "scene-1.rsc"};
    Files files;
    for (const std::string& name : names) files.push_back("RSC/" + name);
    ASSERT_EQ(extract(files), 0) << errors_;
    EXPECT_EQ(out_, "") << "nothing stays as it is";
    ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << errors_;
    EXPECT_EQ(namesIn("again"), "audio.map cursors.rsc night.rsc resource.map scene-1.rsc ");
    for (const std::string& name : names)
        EXPECT_TRUE(read("again/" + name) == read("RSC/" + name)) << name;
    for (const std::string line :
         {"map \"MY GAME\"", "audiomap", "    picture 100 scene_1/ASEQ-100.png",
          "        place 2048 -2047", "        place -5 300 7", "        crop no",
          "    use night-101", "    file TEXT 1 scene_1/TEXT-1.bin", "    font 5 night/NFNT-5.bdf",
          "        bytes big", "        leading 2", "    font 7 night/NFNT-7.bdf",
          "    font 8 night/NFNT-8.bdf", "    file WAVE 8 scene_1/WAVE-8.snd",
          "    cursor 2 cursors/CURSOR-2.png 3 2", "    file wave 7 night/wave-7.bin",
          "    file \"#16\" 1 cursors/_16-1.bin"})
        expectManifest(line);
    EXPECT_EQ(read("out/scene_1/WAVE-7.wav"), read("buzz.wav"));
    // Beside a sound lies what players play.
    EXPECT_EQ(asBytes(read("out/scene_1/WAVE-8.wav")),
              formats::sound::writeRiff(Bytes{1, 2, 3}, 22254));
    fs::remove_all(at("out"));
    ASSERT_EQ(extract({"RSC/scene-1.rsc"}), 0) << errors_;
    EXPECT_THAT(out_, HasSubstr("resource.map: would be packed to other bytes")); // one is missing
}

TEST_F(Extract, LeavesAsItIsWhatPicturesCannotTell) {
    const Bytes small = formats::animation::write(packedAnimation());
    static const Bytes otherRuns = {1, 5, 0, 1, 255, 7, 1};
    formats::animation::Animation unused = packedAnimation();
    unused.sequences[0][2] = {0, 0, -1, 0};
    formats::animation::Animation noFrames = packedAnimation();
    noFrames.sequences.push_back({{0, 0, -1, 0}});
    Bytes cutSound = riffSound(0);
    cutSound.resize(32);
    const Bytes palette = rsc::Palette::fromColours({}).resource();
    const Bytes cursor = rsc::buildCursor(rsc::Picture::fromPng(drawn("r")), {0, 0});
    Bytes entry(cursor.begin() + 6, cursor.begin() + 22);
    entry[12] += 16;
    const Bytes two =
        join({{0, 0, 2, 0, 2, 0}, entry, entry, Bytes(cursor.begin() + 22, cursor.end())});
    const struct {
        const char* what;
        std::string type;
        Bytes bytes;
        std::string line; ///< of the manifest; ".EXTENSION": it is a file as it is
    } rows[] = {
        {"an animation of ours", "ASEQ", small, "        frame a/ASEQ-1.png"},
        {"other runs", "ASEQ", formats::animation::write(withRows(otherRuns)), ".bin"},
        {"an end in between", "ASEQ", formats::animation::write(unused), ".bin"},
        {"no frames", "ASEQ", formats::animation::write(noFrames), ".bin"},
        {"big-endian", "ASEQ", formats::animation::write(packedAnimation(), std::endian::big),
         ".bin"},
        {"bytes behind it", "ASEQ", join({small, {0, 0, 1}}), ".bin"},
        {"reserved bytes", "ASEQ", changed(small, 7, 1), ".bin"},
        {"a font of ours", "NFNT", kFont, "    font 1 a/NFNT-1.bdf"},
        {"another type of font", "NFNT", changed(kFont, 1, 0xB0), ".bin"},
        {"another first character", "NFNT", changed(kFont, 2, 1), ".bin"},
        {"no stand-in", "NFNT", changed(kFont, 56, 0xFF), ".bin"},
        {"a palette of ours", "RRGB", palette, "    colours 1 a-1"},
        {"high bytes", "RRGB", changed(palette, 601, 7), ".bin"},
        {"other fixed colours", "RRGB", changed(palette, 0, 7), ".bin"},
        {"a sound cut off", "WAVE", cutSound, ".wav unchecked"},
        {"nothing of a sound", "WAVE", Bytes(21, 0), ".bin unchecked"},
        {"a sound of ours", "WAVE", riffSound(9), "    sound 1 a/WAVE-1.wav"},
        {"the head of a sound", "WAVE", macSound({}, 200), ".snd"},
        {"a cursor of ours", "CURSOR", cursor, "    cursor 1 cursors/CURSOR-1.png 0 0"},
        {"two pictures", "CURSOR", two, ".cur"},
        {"another depth", "CURSOR", changed(cursor, 36, 1), ".cur"},
        {"an inverting pixel", "CURSOR", changed(cursor, cursor.size() - 4, 0x80), ".cur"},
        {"bytes behind it", "CURSOR", join({cursor, {0, 1}}), ".cur"},
        {"something else", "CURSOR", {1, 2, 3}, ".bin"},
    };
    for (const auto& [what, type, bytes, line] : rows) {
        SCOPED_TRACE(what);
        const std::string name = type == "CURSOR" ? "cursors" : "a";
        const std::vector<Resource> one = {{type, 1, bytes}};
        expectRoundTrip(name + ".rsc",
                        rsc::buildNeLibrary(formats::library::moduleNameOf(name), one));
        expectManifest(line[0] == '.' ? "    file " + type + " 1 " + name + "/" + type + "-1" + line
                                      : line);
        expectManifest("    layout " + name + "/library.layout", false);
    }
}

TEST_F(Extract, KeepsTheLayoutOfLibrariesMadeElsewhere) {
    const std::vector<ForeignResource> strange = {
        {"WAVE", kNumber | 5, {}, 0, 1},   {"TEXT", kNumber | 1, {}, 2, 1}, // a gap before it
        {"WAVE", kNumber | 6, {}, 0, 1}, // the bytes of the first one
        {"../x", kNumber | 1, {}, 1, 1},   {"/etc/passwd", kNumber | 1, {}, 1, 1},
        {"..", kNumber | 1, {}, 1, 1},     {"", kNumber | 1, {}, 1, 1},
        {"A\nB\"", kNumber | 1, {}, 1, 1}, {std::string(255, '\xFF'), kNumber | 1, {}, 1, 1},
        {"text", kNumber | 1, {}, 3, 1}, // a type that differs by its case
        {"TEXT", kNumber | 1, {}, 3, 2}, // the same again
        {"TEXT", kNumber | 0, {}, 3, 1},   {"TEXT", 0, "../../NAME", 4, 1},
        {"TEXT", kNumber | 9, {}, 3, 0}, // empty
    };
    const std::vector<Resource> two = {{"WAVE", 5, Bytes(20, 1)}, {"TEXT", 1, Bytes(5, 2)}};
    const Bytes ours = rsc::buildNeLibrary("A", two);
    const Bytes libraries[] = {
        rsc::buildNeLibrary("B", two), // another module name
        join({ours, {1, 2, 3}}),
        changed(ours, 0x90 + 2 + 8 + 4, 0), // other flags
        foreignLibrary(0, strange, Bytes(8, 9)),
        foreignLibrary(4, strange, Bytes(80, 'x')),
        foreignLibrary(9, strange, Bytes(512 * 5, 'x')),
    };
    for (const Bytes& library : libraries) {
        expectRoundTrip("a.rsc", library);
        expectManifest("    layout a/library.layout");
        EXPECT_THAT(out_, HasSubstr("its layout is kept"));
    }
    EXPECT_EQ(namesIn("out"), "a resources.manifest ") << "nothing lies elsewhere";
    expectManifest("    file WAVE 6 a/WAVE-5.bin unchecked"); // shared bytes are one file
    expectManifest("    file text 1 a/text-1_2.bin");         // TEXT-1.bin is another one
    expectManifest("    part 13 a/TEXT-______NAME.bin");
}

TEST_F(Extract, FillsALayoutOnlyWithWhatFits) {
    const std::vector<ForeignResource> resources = {{"TEXT", kNumber | 1, {}, 0, 2},
                                                    {"WAVE", kNumber | 5, {}, 1, 2}};
    expectRoundTrip("a.rsc", foreignLibrary(4, resources, Bytes(48, 'x')));
    const std::string head = "library a.rsc\nlayout a/library.layout\n";
    const std::string text = "file TEXT 1 a/TEXT-1.bin\n";
    const std::string wave = "file WAVE 5 a/WAVE-5.bin unchecked\n";
    const Bytes old(32, 'x');
    const struct {
        std::string manifest;
        Bytes text; ///< instead of the resource TEXT
        std::string refusal;
    } rows[] = {
        {head + text + wave, old, ""},
        {"library a.rsc\n" + text + wave, Bytes(99, 'y'), ""}, // laid out anew
        {head + text + wave, Bytes(33, 'x'), ":3: TEXT 1 has 33 bytes, its place in the layout 32"},
        {head + text + wave, Bytes(32, 'y'), ":2: TEXT 1 shares bytes with another resource"},
        {head + text, old, ":2: WAVE 5 of the layout is missing"},
        {head + text + wave + "part 3 a/TEXT-1.bin", old, ":5: the layout has only 2 resources"},
        {head + text + wave + "part 1 a/TEXT-1.bin", old, ":5: TEXT 1 stands twice in the library"},
        {head + text + wave + "file TEXT 2 a/TEXT-1.bin", old, ":5: the layout has no TEXT 2"},
        {"library a.rsc\nlayout a/TEXT-1.bin\n", old, ":2: a/TEXT-1.bin: no resource library"},
    };
    for (const auto& [lines, contents, refusal] : rows) {
        write("out/a/TEXT-1.bin", contents);
        write("out/game.txt", asBytes(lines));
        EXPECT_EQ(pack("out/game.txt", "new"), refusal.empty() ? 0 : 1) << lines;
        EXPECT_THAT(errors_, HasSubstr(refusal));
    }
}

TEST_F(Extract, ShowsPicturesInThePaletteThatFits) {
    static const Bytes row = {3, 50, 51, 52};
    using Ids = std::initializer_list<std::uint16_t>;
    const auto make = [&](const std::string& name, Ids palettes, Ids animations) {
        std::vector<Resource> resources;
        for (const std::uint16_t id : palettes) {
            rsc::Colours wanted{};
            wanted.fill({100, 100, static_cast<std::uint8_t>(100 + 10 * id)});
            resources.push_back({"RRGB", id, rsc::Palette::fromColours(wanted).resource()});
        }
        for (const std::uint16_t id : animations)
            resources.push_back({"ASEQ", id, formats::animation::write(withRows(row))});
        write(name, resources);
    };
    make("one.rsc", {1, 2}, {2});
    make("two.rsc", {3, 5}, {1, 9});
    make("three.rsc", {}, {9});
    const struct {
        Files libraries;
        std::optional<int> palette;
        std::string picture;
        int blue;
    } rows[] = {
        {{"one.rsc", "two.rsc"}, {}, "one/ASEQ-2.png", 120}, // its own id
        {{"one.rsc", "two.rsc"}, {}, "two/ASEQ-1.png", 110}, // its id in another library
        {{"one.rsc", "two.rsc"}, {}, "two/ASEQ-9.png", 130}, // the first of its library
        {{"two.rsc", "three.rsc"}, {}, "three/ASEQ-9.png", 130},
        {{"one.rsc", "two.rsc"}, 5, "one/ASEQ-2.png", 150},
        {{"three.rsc"}, {}, "three/ASEQ-9.png", 50}, // greys
    };
    for (const auto& [libraries, palette, name, blue] : rows) {
        fs::remove_all(at("out"));
        ASSERT_EQ(extract(libraries, {.palette = palette}), 0) << errors_;
        const auto picture = rsc::Picture::fromPng(asBytes(read("out/" + name)));
        EXPECT_EQ(picture.index(0), 50);
        EXPECT_NEAR(picture.pixel(0).colour.blue, blue, 1) << name;
    }
    fs::remove_all(at("out"));
    EXPECT_EQ(extract({"one.rsc"}, {.palette = 7}), 1);
    EXPECT_THAT(errors_, HasSubstr("there is no palette RRGB 7"));
}

TEST_F(Extract, RefusesWithoutWritingAnything) {
    const std::vector<Resource> text = {{"TEXT", 1, Bytes(5, 2)}};
    folder_.makeFolder("full/sub");
    for (const char* name : {"a.rsc", "b/A.RSC", "a.dll", "a*.rsc", "...rsc"})
        write(name, rsc::buildNeLibrary("A", text));
    write("bad.rsc", asBytes("MZ"));
    write("resource.map", Bytes());
    for (const auto& row : testing_support::rowsOf(R"(
a.rsc -> full => @/full: is not empty: name another folder, or add --force
a.rsc -> a.dll => @/a.dll: is no folder
a.rsc bad.rsc -> out => @/bad.rsc: no resource library: it ends within its headers
a.rsc b/A.RSC -> out => @/b/A.RSC: there are two libraries of this name
a.dll -> out => @/a.dll: a library's name ends in ".rsc"
a*.rsc -> out => @/a*.rsc: a library's name is a file's name without a folder and without blanks
gone.rsc -> out => @/gone.rsc: cannot be read: No such file or directory
resource.map -> out => no library is named, only maps
)")) {
        std::istringstream words(row[0]);
        Files files;
        std::string word;
        while (words >> word && word != "->") files.push_back(word);
        words >> word;
        EXPECT_EQ(extract(files, {.folder = at(word)}), 1);
        EXPECT_EQ(errors_, row[1] + "\n");
        EXPECT_FALSE(fs::exists(at("out")));
    }
    fs::remove(at("resource.map"));
    EXPECT_EQ(extract({"a.rsc"}, {.folder = at("full"), .force = true}), 0) << errors_;
    EXPECT_TRUE(fs::exists(at("full/sub"))) << "what was there stays";
    EXPECT_EQ(extract({"...rsc"}), 0) << "a name that could lead elsewhere";
    EXPECT_TRUE(fs::exists(at("out/__/TEXT-1.bin")));
}

TEST_F(Extract, DoesNotGrowSmallFilesWithoutEnd) {
    std::vector<ForeignResource> same;
    std::vector<ForeignResource> overlapping;
    for (std::size_t i = 0; i < 1000; ++i) {
        const auto id = static_cast<std::uint16_t>(kNumber | (i + 1));
        same.push_back({"ASEQ", id, {}, 0, 6000});
        overlapping.push_back({"ASEQ", id, {}, i, 5000});
    }
    Bytes data = formats::animation::write(packedAnimation());
    data.resize(7000 * 16);
    expectRoundTrip("a.rsc", foreignLibrary(4, same, data));
    EXPECT_EQ(namesIn("out/a"), "ASEQ-1.bin library.layout ");
    write("b.rsc", foreignLibrary(4, overlapping, data));
    fs::remove_all(at("out"));
    EXPECT_EQ(extract({"b.rsc"}), 1);
    EXPECT_THAT(errors_, HasSubstr("its resources overlap"));
}

/// Whatever is taken comes back; all else is refused with a text.
TEST_F(Extract, SurvivesAnyByteBeingWrong) {
    const Bytes aseq = formats::animation::write(packedAnimation());
    const std::vector<Resource> resources = {
        {"ASEQ", 5, aseq}, {"NFNT", 5, kFont}, {"WAVE", 6, macSound({1, 2, 3}, 3)}};
    const Bytes library = rsc::buildNeLibrary("A", resources);
    const auto examine = [&](const Bytes& damaged, std::size_t place) {
        fs::remove_all(at("out"));
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
    fs::remove_all(at("out"));
    EXPECT_EQ(extract({"x.rsc"}), 1);
    EXPECT_EQ(errors_, "@/x.rsc: ASEQ 5: the animation is cut off\n"
                       "@/x.rsc: NFNT 5: the font is cut off\n");
    EXPECT_EQ(namesIn("out/x"), "ASEQ-5.bin NFNT-5.bin TEXT-6.bin ");
    ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << errors_;
    EXPECT_EQ(read("again/x.rsc"), read("x.rsc"));
}

} // namespace
