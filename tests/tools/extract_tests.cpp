#include "library/extract.h"

#include "foreignlibrary.h"
#include "library/nelibrary.h"
#include "pictures/cursor.h"
#include "pictures/palette.h"
#include "pictures/picture.h"
#include "sounds/gamesound.h"
#include "testfonts.h"
#include "tooltest.h"

#include <span>

namespace {

namespace fs = std::filesystem;

using rsc::Bytes;
using rsc::Resource;
using testfiles::asBytes;
using testfiles::changed;
using testfiles::ForeignResource;
using testfiles::join;
using testfiles::Rgba;

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

/// One frame of two pixels, one of them transparent, and a sequence that shows it.
formats::animation::Animation packedAnimation() {
    static const Bytes row = {1, 5, 0, 1, 1, 7};
    formats::animation::Animation aseq;
    aseq.framesPerSecond = 8;
    aseq.frames = {{3, 1, row}};
    aseq.sequences = {{{1, -2, 0, 90}, {0, 0, -101, 7}, {0, 0, -2, 0}, {0, 0, -1, 0}}};
    return aseq;
}

/// What stands in a library and how its manifest names it.
struct RawCase {
    std::string what;
    std::string type;
    Bytes bytes;
    std::string line; ///< ".EXTENSION": it is a file as it is
};

class Extract : public testfiles::ToolTest {
  protected:
    int extract(const std::vector<std::string>& files, rsc::ExtractOptions options = {}) {
        options.files = paths(files);
        if (options.folder.empty()) options.folder = folder_.at("out");
        return run([&](auto& out, auto& errors) { return rsc::runExtract(options, out, errors); });
    }

    /// Unpacks a library "in/NAME" and packs it again; whether the bytes are the same.
    void expectRoundTrip(const std::string& name, const Bytes& library) {
        for (const char* each : {"in", "out", "again"}) fs::remove_all(folder_.at(each));
        folder_.write("in/" + name, library);
        ASSERT_EQ(extract({"in/" + name}), 0) << errors_;
        const std::string notes = out_;
        ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << errors_;
        EXPECT_TRUE(folder_.read("again/" + name) == folder_.read("in/" + name));
        out_ = notes;
    }

    /// Libraries of ours that hold just one resource, of the id 1.
    void expectLines(const std::string& name, const std::string& moduleName,
                     std::span<const RawCase> cases) {
        for (const RawCase& row : cases) {
            SCOPED_TRACE(row.what);
            const std::vector<Resource> resources = {{row.type, 1, row.bytes}};
            expectRoundTrip(name + ".rsc", rsc::buildNeLibrary(moduleName, resources));
            EXPECT_TRUE(manifestSays(row.line[0] == '.' ? "    file " + row.type + " 1 " + name +
                                                              "/" + row.type + "-1" + row.line
                                                        : row.line))
                << manifest();
            EXPECT_FALSE(manifestSays("    layout " + name + "/library.layout"));
        }
    }

    [[nodiscard]] std::string manifest() const { return folder_.read("out/resources.manifest"); }
    [[nodiscard]] bool manifestSays(const std::string& line) const {
        return manifest().find(line + "\n") != std::string::npos;
    }
};

constexpr std::string_view kEverything = R"(
map "MY GAME"
audiomap
palette day
    from day.png dot.png
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
        frame hole.png dot.png offset -300 40
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

class ExtractEverything : public Extract {
  protected:
    ExtractEverything() {
        constexpr Rgba kSky{90, 140, 230, 255};
        constexpr Rgba kLeaf{40, 160, 60, 255};
        constexpr Rgba kClear{0, 0, 0, 0};
        std::vector<Rgba> day(600, kSky);
        std::fill_n(day.begin() + 310, 7, kLeaf);
        std::vector<Rgba> night(256, {60, 70, 120, 255});
        for (std::uint8_t i = 0; i < 200; ++i) night[i] = {i, 60, 99, 255};
        Bytes all(256);
        for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i);
        folder_.write("day.png", testfiles::truecolourPng(300, day));
        folder_.write("dot.png", testfiles::truecolourPng(1, {kLeaf}));
        folder_.write("hole.png",
                      testfiles::truecolourPng(4, {kClear, kClear, kClear, kClear, kClear, kSky,
                                                   kClear, kLeaf, kClear, kLeaf, kSky, kClear}));
        folder_.write("night.png", testfiles::indexedPng(2, {12, 13, 0, 255}, night));
        folder_.write("all.png", testfiles::indexedPng(16, all, night));
        folder_.write("buzz.wav", riffSound(33));
        folder_.write("mac.snd", macSound({1, 2, 3}, 3));
        folder_.write("words.txt", std::string_view("some words"));
        folder_.write("small.bdf", testfonts::kSmallBdf);
        std::string latin = testfonts::kSmallBdf;
        latin.replace(latin.find("ENCODING 3"), 10, "ENCODING 255");
        folder_.write("latin.bdf", latin);
        latin.replace(latin.find("ENCODING 255"), 12, "ENCODING 254");
        folder_.write("thorn.bdf", latin);
        folder_.write("game.txt", kEverything);
    }
};

TEST_F(ExtractEverything, IsPackedAgainToTheSameBytes) {
    ASSERT_EQ(pack("game.txt", "RSC"), 0) << errors_;
    const std::vector<std::string> names = testfiles::namesIn(folder_.at("RSC"));
    ASSERT_EQ(names, (std::vector<std::string>{"audio.map", "cursors.rsc", "night.rsc",
                                               "resource.map", "scene-1.rsc"}));
    std::vector<std::string> files;
    for (const std::string& name : names) files.push_back("RSC/" + name);
    ASSERT_EQ(extract(files), 0) << errors_;
    EXPECT_EQ(out_, "") << "nothing stays as it is";
    ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << errors_;
    EXPECT_EQ(testfiles::namesIn(folder_.at("again")), names);
    for (const std::string& name : names)
        EXPECT_TRUE(folder_.read("again/" + name) == folder_.read("RSC/" + name)) << name;
    for (const std::string line :
         {"map \"MY GAME\"", "audiomap", "    picture 100 scene_1/ASEQ-100.png",
          "        place 2048 -2047", "        place -5 300 7", "        crop no",
          "    use night-101", "    file TEXT 1 scene_1/TEXT-1.bin", "    font 5 night/NFNT-5.bdf",
          "        bytes big", "        leading 2", "    font 7 night/NFNT-7.bdf",
          "    font 8 night/NFNT-8.bdf", ".bin", "    cursor 2 cursors/CURSOR-2.png 3 2",
          "    file wave 7 night/wave-7.bin", "    file \"#16\" 1 cursors/_16-1.bin"})
        EXPECT_TRUE(manifestSays(line)) << line << " in\n" << manifest();
    EXPECT_EQ(folder_.read("out/scene_1/WAVE-7.wav"), folder_.read("buzz.wav"));
}

TEST_F(ExtractEverything, KeepsASoundBesideWhatPlayersPlay) {
    ASSERT_EQ(pack("game.txt", "RSC"), 0) << errors_;
    ASSERT_EQ(extract({"RSC/scene-1.rsc"}), 0) << errors_;
    EXPECT_NE(out_.find("resource.map: would be packed to other bytes"), std::string::npos)
        << "a library of it is not there: " << out_;
    EXPECT_TRUE(manifestSays("    file WAVE 8 scene_1/WAVE-8.snd"));
    EXPECT_EQ(asBytes(folder_.read("out/scene_1/WAVE-8.wav")),
              formats::sound::writeRiff(Bytes{1, 2, 3}, 22254));
}

formats::animation::Animation withRows(const Bytes& rows) {
    formats::animation::Animation aseq = packedAnimation();
    aseq.frames[0].rows = rows;
    return aseq;
}

TEST_F(Extract, LeavesAsItIsWhatPicturesCannotTell) {
    const Bytes small = formats::animation::write(packedAnimation());
    static const Bytes otherRuns = {1, 5, 0, 1, 255, 7, 1};
    formats::animation::Animation unused = packedAnimation();
    unused.sequences[0][2] = {0, 0, -1, 0};
    formats::animation::Animation noFrames = packedAnimation();
    noFrames.sequences.push_back({{0, 0, -1, 0}});
    const Bytes swapped = {0, 1, 0, 1, 8, 1, 0, 0, 0, 0, 0,    0,    0, 0, 0, 0, 0, 0, 0, 2, 0, 0,
                           0, 0, 0, 0, 0, 9, 0, 0, 0, 0, 0xFF, 0xFF, 0, 0, 0, 0, 0, 1, 0, 1, 1, 5};
    Bytes cutSound = riffSound(0);
    cutSound.resize(32);
    Bytes palette = rsc::Palette::fromColours({}).resource();
    const RawCase cases[] = {
        {"an animation of ours", "ASEQ", small, "        frame a/ASEQ-1.png"},
        {"other runs", "ASEQ", formats::animation::write(withRows(otherRuns)), ".bin"},
        {"an end in between", "ASEQ", formats::animation::write(unused), ".bin"},
        {"no frames", "ASEQ", formats::animation::write(noFrames), ".bin"},
        {"big-endian", "ASEQ", swapped, ".bin"},
        {"bytes behind it", "ASEQ", join({small, {0, 0, 1}}), ".bin"},
        {"reserved bytes", "ASEQ", changed(small, 7, 1), ".bin"},
        {"a font of ours", "NFNT", testfonts::kSmallNfnt, "    font 1 a/NFNT-1.bdf"},
        {"another type of font", "NFNT", changed(testfonts::kSmallNfnt, 1, 0xB0), ".bin"},
        {"another first character", "NFNT", changed(testfonts::kSmallNfnt, 2, 1), ".bin"},
        {"no stand-in", "NFNT", changed(testfonts::kSmallNfnt, 56, 0xFF), ".bin"},
        {"a palette of ours", "RRGB", palette, "    colours 1 a-1"},
        {"high bytes", "RRGB", changed(palette, 601, 7), ".bin"},
        {"other fixed colours", "RRGB", changed(palette, 0, 7), ".bin"},
        {"a sound cut off", "WAVE", cutSound, ".wav unchecked"},
        {"nothing of a sound", "WAVE", Bytes(21, 0), ".bin unchecked"},
        {"a sound of ours", "WAVE", riffSound(9), "    sound 1 a/WAVE-1.wav"},
        {"the head of a sound", "WAVE", macSound({}, 200), ".snd"},
    };
    expectLines("a", "A", cases);
}

TEST_F(Extract, KeepsCursorsThatPicturesCannotTell) {
    const auto picture = rsc::Picture::fromPng(testfiles::truecolourPng(1, {Rgba{9, 8, 7, 255}}));
    const Bytes ours = rsc::buildCursor(picture, {0, 0});
    Bytes entry(ours.begin() + 6, ours.begin() + 22);
    entry[12] += 16;
    const Bytes two =
        join({{0, 0, 2, 0, 2, 0}, entry, entry, Bytes(ours.begin() + 22, ours.end())});
    const RawCase cases[] = {
        {"one of ours", "CURSOR", ours, "    cursor 1 cursors/CURSOR-1.png 0 0"},
        {"two pictures", "CURSOR", two, ".cur"},
        {"another depth", "CURSOR", changed(ours, 36, 1), ".cur"},
        {"an inverting pixel", "CURSOR", changed(ours, ours.size() - 4, 0x80), ".cur"},
        {"bytes behind it", "CURSOR", join({ours, {0, 1}}), ".cur"},
        {"something else", "CURSOR", {1, 2, 3}, ".bin"},
    };
    expectLines("cursors", "CURSORS", cases);
}

std::vector<ForeignResource> strangeResources() {
    return {
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
}

TEST_F(Extract, KeepsTheLayoutOfLibrariesMadeElsewhere) {
    struct Case {
        std::string what;
        Bytes library;
    };
    const std::vector<Resource> two = {{"WAVE", 5, Bytes(20, 1)}, {"TEXT", 1, Bytes(5, 2)}};
    const Bytes ours = rsc::buildNeLibrary("A", two);
    const Case cases[] = {
        {"another module name", rsc::buildNeLibrary("B", two)},
        {"bytes at the end", join({ours, {1, 2, 3}})},
        {"other flags", changed(ours, 0x90 + 2 + 8 + 4, 0)},
        {"units of a byte", testfiles::foreignLibrary(0, strangeResources(), Bytes(8, 9))},
        {"strange types", testfiles::foreignLibrary(4, strangeResources(), Bytes(80, 'x'))},
        {"large units", testfiles::foreignLibrary(9, strangeResources(), Bytes(512 * 5, 'x'))},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.what);
        expectRoundTrip("a.rsc", row.library);
        EXPECT_TRUE(manifestSays("    layout a/library.layout"));
        EXPECT_NE(out_.find("its layout is kept"), std::string::npos);
    }
    EXPECT_EQ(testfiles::namesIn(folder_.at("out")),
              (std::vector<std::string>{"a", "resources.manifest"}))
        << "nothing lies elsewhere";
    EXPECT_TRUE(manifestSays("    file WAVE 6 a/WAVE-5.bin unchecked"))
        << "shared bytes are one file";
    EXPECT_TRUE(manifestSays("    file text 1 a/text-1_2.bin")) << "TEXT-1.bin is another one";
    EXPECT_TRUE(manifestSays("    part 13 a/TEXT-______NAME.bin")) << manifest();
}

TEST_F(Extract, FillsALayoutOnlyWithWhatFits) {
    const std::vector<ForeignResource> resources = {{"TEXT", kNumber | 1, {}, 0, 2},
                                                    {"WAVE", kNumber | 5, {}, 1, 2}};
    expectRoundTrip("a.rsc", testfiles::foreignLibrary(4, resources, Bytes(48, 'x')));
    const std::string head = "library a.rsc\nlayout a/library.layout\n";
    const std::string text = "file TEXT 1 a/TEXT-1.bin\n";
    const std::string wave = "file WAVE 5 a/WAVE-5.bin unchecked\n";
    struct Case {
        std::string manifest;
        Bytes text; ///< instead of the resource TEXT
        std::string refusal;
    };
    const Bytes old(32, 'x');
    const Case cases[] = {
        {head + text + wave, old, ""},
        {"library a.rsc\n" + text + wave, Bytes(99, 'y'), ""}, // laid out anew
        {head + text + wave, Bytes(33, 'x'), ":3: TEXT 1 has 33 bytes, its place in the layout 32"},
        {head + text + wave, Bytes(32, 'y'), ":2: TEXT 1 shares bytes with another resource"},
        {head + text, old, ":2: WAVE 5 of the layout is missing"},
        {head + text + wave + "part 3 a/TEXT-1.bin", old, ":5: the layout has only 2 resources"},
        {head + text + wave + "file TEXT 2 a/TEXT-1.bin", old, ":5: the layout has no TEXT 2"},
        {"library a.rsc\nlayout a/TEXT-1.bin\n", old, ":2: a/TEXT-1.bin: no resource library"},
    };
    for (const Case& row : cases) {
        folder_.write("out/a/TEXT-1.bin", row.text);
        folder_.write("out/game.txt", row.manifest);
        EXPECT_EQ(pack("out/game.txt", "new"), row.refusal.empty() ? 0 : 1) << row.manifest;
        EXPECT_NE(errors_.find(row.refusal), std::string::npos) << errors_ << row.refusal;
    }
}

TEST_F(Extract, ShowsPicturesInThePaletteThatFits) {
    static const Bytes row = {3, 50, 51, 52};
    const auto write = [&](const std::string& name, std::initializer_list<std::uint16_t> palettes,
                           std::initializer_list<std::uint16_t> animations) {
        std::vector<Resource> resources;
        for (const std::uint16_t id : palettes) {
            rsc::Colours wanted{};
            wanted.fill({100, 100, static_cast<std::uint8_t>(100 + 10 * id)});
            resources.push_back({"RRGB", id, rsc::Palette::fromColours(wanted).resource()});
        }
        for (const std::uint16_t id : animations)
            resources.push_back({"ASEQ", id, formats::animation::write(withRows(row))});
        folder_.write(name, rsc::buildNeLibrary("X", resources));
    };
    write("one.rsc", {1, 2}, {2});
    write("two.rsc", {3, 5}, {1, 9});
    write("three.rsc", {}, {9});
    struct Case {
        std::vector<std::string> libraries;
        std::optional<int> palette;
        std::string picture;
        int blue;
    };
    const Case cases[] = {
        {{"one.rsc", "two.rsc"}, {}, "one/ASEQ-2.png", 120}, // its own id
        {{"one.rsc", "two.rsc"}, {}, "two/ASEQ-1.png", 110}, // its id in another library
        {{"one.rsc", "two.rsc"}, {}, "two/ASEQ-9.png", 130}, // the first of its library
        {{"two.rsc", "three.rsc"}, {}, "three/ASEQ-9.png", 130},
        {{"one.rsc", "two.rsc"}, 5, "one/ASEQ-2.png", 150},
        {{"three.rsc"}, {}, "three/ASEQ-9.png", 50}, // greys
    };
    for (const Case& each : cases) {
        fs::remove_all(folder_.at("out"));
        ASSERT_EQ(extract(each.libraries, {.palette = each.palette}), 0) << errors_;
        const std::string png = folder_.read("out/" + each.picture);
        const auto picture = rsc::Picture::fromPng(Bytes(png.begin(), png.end()));
        EXPECT_EQ(picture.index(0), 50);
        EXPECT_NEAR(picture.pixel(0).colour.blue, each.blue, 1) << each.picture;
    }
    fs::remove_all(folder_.at("out"));
    EXPECT_EQ(extract({"one.rsc"}, {.palette = 7}), 1);
    EXPECT_NE(errors_.find("there is no palette RRGB 7"), std::string::npos) << errors_;
}

TEST_F(Extract, RefusesWithoutWritingAnything) {
    const std::vector<Resource> resources = {{"TEXT", 1, Bytes(5, 2)}};
    const Bytes library = rsc::buildNeLibrary("A", resources);
    folder_.makeFolder("full/sub");
    for (const std::string name : {"a.rsc", "b/A.RSC", "a.dll", "a long name.rsc", "...rsc"})
        folder_.write(name, library);
    folder_.write("bad.rsc", std::string_view("MZ"));
    folder_.write("resource.map", std::string_view(""));
    struct Case {
        std::vector<std::string> files;
        std::string folder;
        std::string text;
    };
    const Case cases[] = {
        {{"a.rsc"}, "full", "full: is not empty: name another folder, or add --force"},
        {{"a.rsc"}, "a.dll", "a.dll: is no folder"},
        {{"a.rsc", "bad.rsc"}, "out", "bad.rsc: no resource library"},
        {{"a.rsc", "b/A.RSC"}, "out", "A.RSC: there are two libraries of this name"},
        {{"a.dll"}, "out", "a.dll: a library's name ends in \".rsc\""},
        {{"a long name.rsc"}, "out", "without blanks"},
        {{"gone.rsc"}, "out", "gone.rsc: cannot be read"},
        {{"resource.map"}, "out", "no library is named"},
    };
    for (const Case& row : cases) {
        EXPECT_EQ(extract(row.files, {.folder = folder_.at(row.folder)}), 1) << row.text;
        EXPECT_NE(errors_.find(row.text), std::string::npos) << errors_;
        EXPECT_FALSE(fs::exists(folder_.at("out")));
    }
    fs::remove(folder_.at("resource.map"));
    EXPECT_EQ(extract({"a.rsc"}, {.folder = folder_.at("full"), .force = true}), 0) << errors_;
    EXPECT_TRUE(fs::exists(folder_.at("full/sub"))) << "what was there stays";
    EXPECT_EQ(extract({"...rsc"}), 0) << "a name that could lead elsewhere";
    EXPECT_TRUE(fs::exists(folder_.at("out/__/TEXT-1.bin")));
}

TEST_F(Extract, TellsDamagedAnimationsAndUnpacksAllTheSame) {
    const std::vector<Resource> resources = {
        {"ASEQ", 5, {1, 0, 1, 0, 8}}, {"NFNT", 5, {1, 0x90}}, {"TEXT", 6, {1}}};
    folder_.write("bad.rsc", rsc::buildNeLibrary("BAD", resources));
    EXPECT_EQ(extract({"bad.rsc"}), 1);
    EXPECT_NE(errors_.find("bad.rsc: ASEQ 5: the animation"), std::string::npos) << errors_;
    EXPECT_EQ(testfiles::namesIn(folder_.at("out/bad")),
              (std::vector<std::string>{"ASEQ-5.bin", "NFNT-5.bin", "TEXT-6.bin"}));
    EXPECT_NE(errors_.find("bad.rsc: NFNT 5: the font is cut off"), std::string::npos) << errors_;
    ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << errors_;
    EXPECT_EQ(folder_.read("again/bad.rsc"), folder_.read("bad.rsc"));
}

TEST_F(Extract, DoesNotGrowSmallFilesWithoutEnd) {
    std::vector<ForeignResource> same;
    std::vector<ForeignResource> overlapping;
    for (std::uint16_t i = 0; i < 1200; ++i) {
        const auto id = static_cast<std::uint16_t>(kNumber | (i + 1));
        same.push_back({"ASEQ", id, {}, 0, 6000});
        overlapping.push_back({"ASEQ", id, {}, i, 5000});
    }
    Bytes data = formats::animation::write(packedAnimation());
    data.resize(7000 * 16);
    expectRoundTrip("a.rsc", testfiles::foreignLibrary(4, same, data));
    EXPECT_EQ(testfiles::namesIn(folder_.at("out/a")).size(), 2U) << "one resource and the layout";
    folder_.write("b.rsc", testfiles::foreignLibrary(4, overlapping, data));
    fs::remove_all(folder_.at("out"));
    EXPECT_EQ(extract({"b.rsc"}), 1);
    EXPECT_NE(errors_.find("its resources overlap"), std::string::npos) << errors_;
}

TEST(NeLibrary, RefusesAFileCutOffAnywhere) {
    const std::vector<Resource> resources = {{"WAVE", 101, Bytes(33, 1)},
                                             {"CURSOR", 32767, Bytes(40, 4)}};
    const Bytes file = rsc::buildNeLibrary("SCENE", resources);
    for (std::size_t size = 0; size < file.size(); ++size)
        EXPECT_THROW((void)rsc::NeLibrary(rsc::ByteSpan(file).first(size)), rsc::Refusal) << size;
}

/// Whatever is taken comes back; all else is refused with a text.
TEST_F(Extract, SurvivesAnyByteBeingWrong) {
    const std::vector<Resource> resources = {
        {"ASEQ", 5, formats::animation::write(packedAnimation())},
        {"NFNT", 5, testfonts::kSmallNfnt},
        {"WAVE", 6, macSound({1, 2, 3}, 3)}};
    const Bytes library = rsc::buildNeLibrary("A", resources);
    const auto examine = [&](const Bytes& damaged, std::size_t at) {
        fs::remove_all(folder_.at("out"));
        folder_.write("a.rsc", damaged);
        const int code = extract({"a.rsc"});
        EXPECT_EQ(code == 0, errors_.empty()) << at << errors_;
        if (!fs::exists(folder_.at("out"))) return;
        ASSERT_EQ(pack("out/resources.manifest", "again"), 0) << at << errors_;
        EXPECT_TRUE(folder_.read("again/a.rsc") == folder_.read("a.rsc")) << at;
    };
    for (std::size_t at = 0; at < library.size(); ++at) {
        if (at % 3 == 0)
            examine(Bytes(library.begin(), library.begin() + static_cast<long>(at)), at);
        for (const std::uint8_t value : {0x00, 0xFF})
            if (library[at] != value) examine(changed(library, at, value), at);
    }
}

} // namespace
