// Manifests: what is made of them, and what is told of their faults.
#include "library/map.h"
#include "pictures/cursor.h"
#include "pictures/quantizer.h"
#include "sounds/resampler.h"
#include "sounds/soundfile.h"
#include "tooltest.h"

namespace {

using namespace testfiles;

class Pack : public ToolTest {
  protected:
    Pack() {
        const Files pictures =
            wordsOf("crop ..../.r../..b. left .r b b r r none . bw .kw half xX all brgy "
                    "bee1 y./yy bee2 yy/.y back gggg/gggg/gggg/gggg");
        for (std::size_t i = 0; i < pictures.size(); i += 2)
            write(pictures[i] + ".png", drawn(pictures[i + 1]));
        const Pixels some = {{{1, 2, 3}, 0}, {{20, 20, 200}}, {{200, 20, 20}}, {{20, 20, 200}}};
        Bytes points; // a tenth of a second, 0x20 in one channel and 0x40 in the other
        for (int i = 0; i < 4410; ++i) points.insert(points.end(), {0, 0x20, 0, 0x40});
        const std::vector<ForeignResource> placed = {{"TEXT", kNumber | 1, 0, 2},
                                                     {"WAVE", kNumber | 5, 1, 2}};
        const std::pair<const char*, Bytes> files[] = {
            {"indexed.png", indexedPng(4, {2, 0, 1, 3}, some)},
            {"buzz.wav", wav(11025, 1, 8, Bytes(2205, 128))},
            {"deep.wav", wav(44100, 2, 16, points)},
            {"small.bdf", asBytes(kSmallBdf)},
            {"empty", {}},
            {"a.layout", foreignLibrary(4, placed, Bytes(48, 'x'))},
            {"x32", Bytes(32, 'x')},
            {"x33", Bytes(33, 'x')},
            {"y32", Bytes(32, 'y')}};
        for (const auto& [name, bytes] : files) write(name, bytes);
    }

    /// What is made of the last resource of a manifest, or "@LINE: " and why it is refused.
    std::string outcome(const std::string& manifest) {
        if (packText(manifest) != 0) {
            const std::string told = replaced(errors_, "@/game.txt:", "@");
            return told.substr(0, told.size() - 1);
        }
        const Bytes file = asBytes(read("out/a.rsc"));
        const rsc::NeLibrary library(file);
        const rsc::ResourceEntry& entry = library.entries().back();
        const auto data = library.data(entry);
        return entry.type == "ASEQ"   ? testing_support::readAnimation(data)
               : entry.type == "NFNT" ? testing_support::readFont(data)
               : entry.type == "WAVE" ? testing_support::readSound(data)
                                      : testing_support::readCursors(data);
    }

    int map(const Files& files, const std::string& to, bool audio, const std::string& name) {
        const rsc::MapOptions options{paths(files), at(to), name, audio};
        return run([&](auto&, auto& errors) { return rsc::runMap(options, errors); });
    }
};

/// A manifest, its lines with " | " between, and what is told of it, or made of its last resource.
/// Some words stand for lines that begin many.
constexpr const char* kCases = R"(
 => @ the manifest names no library: write "library NAME.rsc", and below it what goes into it
LIB => @1: the library holds nothing*
# x | Library a.rsc => @2: unknown keyword "Library": write "library"
file WAVE 1 a => @1: "file" belongs below a "library" line
LIB | rate 5 => @2: "rate" belongs below an "animation" or "picture" line
use p => @1: there is no palette "p" above
palette p | library a.rsc | file WAVE 1 a => @1: the palette has no pictures*
LIB | part 1 a => @2: "part" belongs into a library with a "layout" line
LIB | file WAVE 1 "a => @2: a quotation mark (") has no partner
LIB | file WAVE 1 a b => @2: "b" is more than belongs on this line
LIB | from a.png => @2: "from" belongs below a "palette" line
library a => @1: a library's name ends in ".rsc"
library .rsc => @1: a library's name ends in ".rsc"
library sub/a.rsc => @1: a library's name is a file's name without a folder and without blanks
library longlonglong.rsc => @1: a library's name has at most 15 characters
LIB | file WAVE 1 a | library A.rsc => @3: library a.rsc stands already in line 1
map A | map B => @2: the map stands already in line 1
map 1234567890123456789012345678901234567890 => @1: a map's identifier is a text of 1 to 39 cha*
palette p | from a | indexed b => @3: a palette has either "from" or one "indexed"
LIB | file WAVE 0 a => @2: the id is 0, allowed is 1 to 32767
LIB | file WAVE 9999999999 a => @2: the id: "9999999999" is no number
LIB | file WAVES 1 a => @2: "WAVES" is no type*
LIB | file WAVE 1 a | file TEXT 1 a | file WAVE 1 b => @4: WAVE 1 stands already in line 2
LIB | layout a | part 0 b => @3: the number is 0, allowed is 1 to 32767
LIB | file CURSOR 1 a => @2: CURSOR cannot stand in a map*
library cursors.rsc | file CURSOR 1 a | file WAVE 1 a => @3: WAVE cannot be found in "cursors.rsc"*
LIB | animation 1 => @2: the animation has no frames*
LIB | animation 1 | frame a b => @2: the animation has several frames and no sequence*
ANI | frame a offset 1 99999 => @4: dy is 99999, allowed is -32768 to 32767
ANI | rate 256 => @4: the rate is 256, allowed is 1 to 255
ANI | place 2049 0 => @4: x is 2049, allowed is -2047 to 2048
ANI | transparent colour -12345 => @4: "-12345" is no colour: it is written RRGGBB
ANI | transparent pink => @4: "transparent" is followed by "alpha"*
FRA | sequence 1 end 2 => @5: nothing can follow "end"
FRA | sequence loop 1 => @5: "loop" needs a frame before it
FRA | sequence hold => @5: the sequence shows no frame
FRA | sequence 1 2 3 => @5: the sequence shows frame 3, but there are only 2
FRA | sequence 1 jump => @5: "jump" is no step of a sequence
FRA | sequence 1- => @5: "" is no step of a sequence
FRA | sequence 1@2 => @5: an offset is written "@dx,dy"
FRA | sequence 1:40000 => @5: the number behind ":" is 40000, allowed is -32768 to 32767
FRA | sequence 1:-1 => @5: a duration is 0 ms or more
FRA | sequence 1 sound => @5: the sound's id is missing
FRA | sequence 1 loop:2 => @5: "loop" takes no ":"
FRA | sequence 1 marker 499 => @5: the marker's number is 499, allowed is 500 to 32768
FRA | sequence 1 code 3 => @5: the code is 3, allowed is -32768 to -1
FRA | sequence 1-32767 => @5: the sequence is too long
LIB | animation 1 | frame a | sequence 1:50 1 => @4: frame 1 has no duration*
LIB | font 1 a.ttf => @2: the size in pixels is missing
LIB | font 1 a.ttf 256 => @2: the size in pixels is 256, allowed is 1 to 255
FON | file WAVE 1 a | bytes big => @4: "bytes" belongs below a "font" line
FON | bytes => @3: "bytes" is followed by "big" or "little"
FON | chars 0x100 => @3: the code is 0x100, allowed is 0x00 to 0xFF
FON | chars 256 => @3: the code is 256, allowed is 0 to 255
FON | chars 0xfffffffff => @3: the code: "0xfffffffff" is no number
FON | chars 9-8 => @3: "9-8" is no range: it is written FIRST-LAST
FON | chars 2 => @2: small.bdf: the font has none of the characters that are to be kept
library cursors.rsc | cursor 1 a.png 64 0 => @2: x of the hot spot is 64, allowed is 0 to 63
map none | LIB | cursor 1 bee1.png 2 0 => @3: bee1.png: the hot spot 2 0 lies outside*
LAY | TXT x33 | WAX => @3: TEXT 1 has 33 bytes, its place in the layout 32*
LAY | TXT y32 | WAX => @2: TEXT 1 shares bytes with another resource*
LAY | TXT x32 => @2: WAVE 5 of the layout is missing*
LAY | TXT x32 | WAX | part 3 x32 => @5: the layout has only 2 resources*
LAY | TXT x32 | WAX | part 1 x32 => @5: TEXT 1 stands twice in the library*
LAY | TXT x32 | WAX | file TEXT 2 x32 => @5: the layout has no TEXT 2*
LAY | TXT x32 | WAX => unknown
LIB | layout x32 | TXT x32 => @2: x32: no resource library*
LIB | file WAVE 1 none.wav => @2: none.wav: cannot be read: No such file or directory
LIB | file WAVE 1 empty => @2: empty: is empty
LIB | file WAVE 1 deep.wav => @2: deep.wav: the sound is stereo of 16 bits, the game plays mono of*
LIB | sound 1 buzz.wav rate 44100 => @2: the rate is 44100, the game's sounds have*
ANI | frame buzz.wav | sequence 1 => @4: buzz.wav: no PNG picture: save it as one
ANI | frame r.png | sequence 1 => @4: the picture needs a palette: write "use PALETTE" above*
palette p | indexed r.png | LIB | colours 1 p => @2: r.png: the picture is not indexed*
PAL | picture 1 r.png | transparent index 3 => @6: "transparent index" needs an indexed picture
PAL | animation 1 | rate 5 | frame r.png offset 32767 0 | sequence 1@1,0 => @9: a step's offset,
    with that of its frame, is 32768, allowed is -32768 to 32767
PAL | animation 1 | rate 8 | frame crop.png offset 10 20 | sequence 1@5,-5 sound 3@7,7 => 8/s 0 0 0
    2x2:010B00010001010A | 16,16,0,0 7,7,-101,3 0,0,-1,0
PAL | animation 1 | rate 9 | place 2048 -2047 9 | crop no | frame crop.png | sequence 1 => 9/s 2048
    -2047 9 4x3:00040001010B00020002010A0001 | 0,0,0,0 0,0,-1,0
PAL | animation 1 | frame left.png b.png | frame r.png offset 4 0 | frame none.png | sequence
    1-4:50 => 0/s 0 0 0 1x1:010B 1x1:010A 1x1:0001 | 1,0,0,50 0,0,1,50 4,0,0,50 0,0,2,50 0,0,-1,0
PAL | picture 1 bw.png => 8/s 0 0 0 2x1:0200FF | 0,0,-4,0 1,0,0,0 0,0,-2,0 0,0,-1,0
PAL | picture 1 half.png => 8/s 0 0 0 1x1:010B | 0,0,-4,0 1,0,0,0 0,0,-2,0 0,0,-1,0
PAL | picture 1 indexed.png | remap => 8/s 0 0 0 4x1:010B0001020A0A*
PAL | picture 1 indexed.png => 8/s 0 0 0 4x1:01020001020103*
PAL | picture 1 indexed.png | crop no | transparent none => 8/s 0 0 0 4x1:0402000103*
PAL | picture 1 indexed.png | crop no | transparent index 3 => 8/s 0 0 0 4x1:030200010001*
PAL | picture 1 indexed.png | crop no | transparent colour 1414c8 => 8/s 0 0 0 4x1:01020003*
PAL | animation 1 | rate 8 | frame all.png | sequence 1 => 8/s 0 0 0 4x1:040A0B0C0D*
SEQ hold 2@-3,4:150 loop => BEES 0,0,-4,0 -3,4,1,150 0,0,-2,0 0,0,-1,0
SEQ 1-2:90 2-1@1,2 end@4,5 => BEES 0,0,0,90 0,0,1,90 1,2,1,0 1,2,0,0 4,5,-1,0
SEQ sound 101@1,2 1 marker 500 2 marker 32768:9 => BEES 1,2,-101,101 0,0,0,0 0,0,-500,0 0,0,1,0
    0,0,-32768,9 0,0,-1,0
SEQ 1 code -7@1,2:3 loop 2 hold => BEES 0,0,0,0 1,2,-7,3 0,0,-2,0 0,0,1,0 0,0,-4,0 0,0,-1,0
SEQ 1 code -101 code -1:9 => BEES 0,0,0,0 0,0,-101,0 0,0,-1,9
LIB | sound 1 buzz.wav => 44+2205 11025 1 8
map none | LIB | cursor 1 bw.png 2 0 => 78 3x1@2,0:(4)FF(3)FFFFFFFF 3x1@2,0:(4)FF(3)FFFFFFFF
)";

/// A change of small.bdf, and what becomes of it then.
constexpr const char* kFontCases = R"(
STARTFONT -> STARTFUN => line 1: no BDF font: it does not begin with STARTFONT
CHARS 2 -> CHARS -2 => line 11: CHARS is -2, allowed is 0 to 2147483647
CHARS 2 -> CHARS 3 => line 30: CHARS says 3, but the characters are 2
FONT_ASCENT 2 -> FONT_ASCENT 999999 => line 6: FONT_ASCENT is 999999*
ENDFONT ->  => line 30: the file ends without ENDFONT
STARTCHAR char3 -> ENDCHAR => line 22: "ENDCHAR" where STARTCHAR is expected
BBX 3 3 -1 -1 -> BBX 3 3 -999999999 -1 => line 16: BBX is -999999999*
BBX 3 3 -1 -1 -> BBX 3 4 -1 -1 => line 21: "ENDCHAR" is no row of 3 pixels
BBX 3 3 -1 -1 -> BBX 3 2 -1 -1 => line 20: the character has more rows than its BBX says
BBX 3 3 -1 -1 -> BBX 9 3 -1 -1 => line 18: "E0" is no row of 9 pixels
BBX 3 3 -1 -1 ->  => line 17: the character has no BBX
BITMAP | E0 | A0 | 20 ->  => line 18: the character has no BITMAP
ENCODING 3 -> ENCODING 1 => line 29: there are two characters of the code 1
DWIDTH 4 0 -> DWIDTH four 0 => line 15: DWIDTH: "four" is no number
DWIDTH 4 0 -> DWIDTH 256 0 => the width of character 1 is 256, allowed is 0 to 255
BBX 2 1 1 0 -> BBX 2 1 255 0 => the distance of character 3 from the leftmost edge of all is 256*
DWIDTH 3 0 | BBX 2 1 1 0 -> DWIDTH 255 0 | BBX 2 1 254 0 => the character 3 would count as missing*
BBX 2 1 1 0 -> BBX 2 1 -40000 0 => the left edge of the pictures is -40000*
BBX 2 1 1 0 -> BBX 2 1 1 40000 => the number of rows is 40002*
BBX 2 1 1 0 -> BBX 2 1 1 32760 => the font is too large*
BBX 2 1 1 0 -> BBX 2 1 1 5 => 0-5 6+1*
BBX 2 1 1 0 -> BBX 2 1 1 -5 => 0-5 2+5*
FONT small -> COMMENT x | COMMENT |   FONT	small => SMALL3:3 1 .. ## ..; 4:4 1 ## ## ..
SWIDTH 1000 0 -> VVECTOR 1 2 | NEW 3 => SMALL3:3 1 .. ## ..; 4:4 1 ## ## ..
FONT_ASCENT 2 -> FONT_ASCENT   2 | COPY "ENDPROPERTIES CHARS" => SMALL3:3 1 .. ## ..; 4:4 1 ## ## ..
E0 | A0 -> e0 | a0FF => SMALL3:3 1 .. ## ..; 4:4 1 ## ## ..
FONT_ASCENT 2 | FONT_DESCENT 1 ->  => SMALL3:3 1 .. ## ..; 4:4 1 ## ## ..
ENCODING 3 -> ENCODING 256 => 0-3 2+1+0; 1:4 -1 ### #.# ..#; 2:4 1 ## ## ..
ENCODING 3 -> ENCODING -1 7 => 0-3 2+1+0; 1:4 -1 ### #.# ..#; 2:4 1 ## ## ..
BBX 2 1 1 0 | BITMAP | C0 -> BBX 0 2 1 0 | BITMAP | 00 | 00 => SMALL3:3 1; 4:4 1 ## ## ..
)";

/// The characters of a font, of which each is a dot, and, behind "D", its DEFAULT_CHAR.
constexpr const char* kDotCases = R"(
97 98 => 0-100 5+1+0; 97DOT; 98DOT; 99BOX
72 97 => 0-99*; 98DOT
97 300 D300 => 0-99*; 98DOT
0 97 D0 => 0-99*; 98DOT
63 97 D63 => 0-99*; 98BOX
63 66 D63 | chars 65-0x5a => 0-68*; 67DOT
97 D63 => 0-99*; 98BOX
254 => 0-255*; 254DOT
255 => 0-255*; 254BOX; 255DOT
97 98 99 | chars 97 122 | leading 4 | bytes big => big 0-99 5+1+4; 97DOT; 98BOX
)";

TEST_F(Pack, TellsOrMakesWhatAManifestSays) {
    const std::pair<const char*, const char*> words[] = {
        {"SEQ", "PAL | animation 1 | rate 8 | frame bee1.png bee2.png | sequence"},
        {"FRA", "ANI | frame a b"},
        {"ANI", "LIB | animation 1 | rate 5"},
        {"FON", "LIB | font 1 small.bdf"},
        {"PAL", "palette p | from all.png | map none | LIB | use p"},
        {"LAY", "LIB | layout a.layout"},
        {"TXT", "file TEXT 1"},
        {"WAX", "file WAVE 5 x32 unchecked"},
        {"LIB", "library a.rsc"},
        {" | ", "\n"},
    };
    const std::string bees = "8/s 0 0 0 2x2:010D0001020D0D 2x2:020D0D0001010D |";
    for (const Files& row : rowsOf(kCases)) {
        std::string manifest = row[0];
        for (const auto& [word, lines] : words) manifest = replacedAll(manifest, word, lines);
        const std::string told = outcome(manifest);
        EXPECT_TRUE(isTold(told, replacedAll(row[1], "BEES", bees))) << row[0] << "\n" << told;
    }
}

TEST_F(Pack, TellsOrMakesWhatAFontSays) {
    const auto lines = [](const std::string& text) { return replacedAll(text, " | ", "\n"); };
    const auto expect = [&](const std::string& font, const std::string& rest, std::string told) {
        write("x.bdf", asBytes(font));
        const std::pair<const char*, const char*> words[] = {
            {"SMALL", "0-5 2+1+0; 1:4 -1 ### #.# ..#; "},
            {"DOT", ":2 0 . . . . # ."},
            {"BOX", ":6 1 #### #..# #..# #..# #### ...."},
        };
        for (const auto& [word, meant] : words) told = replacedAll(told, word, meant);
        const std::string made = outcome("library a.rsc\nfont 1 x.bdf" + rest);
        EXPECT_TRUE(isTold(replacedAll(made, "@2: x.bdf: ", ""), told)) << font << made;
    };
    for (const Files& row : rowsOf(kFontCases)) {
        const std::size_t arrow = row[0].find(" ->");
        const std::string now = row[0].substr(std::min(arrow + 4, row[0].size()));
        expect(replaced(kSmallBdf, lines(row[0].substr(0, arrow)), lines(now)), "", row[1]);
    }
    expect(replacedAll(kSmallBdf, "\n", "\r\n \r\n"), "", "SMALL3:3*");
    for (std::size_t size = 1; size + 1 < kSmallBdf.size(); ++size) {
        const Bytes cut = asBytes(kSmallBdf.substr(0, size));
        EXPECT_THAT(refusalOf([&] { return rsc::readBdf(cut); }), testing::StartsWith("line "));
    }
    for (const Files& row : rowsOf(kDotCases)) {
        const std::size_t rest = std::min(row[0].find(" | "), row[0].size());
        rsc::BitmapFont font{5, 1, 0, {}, {}};
        for (const std::string& code : wordsOf(row[0].substr(0, rest)))
            if (code[0] == 'D')
                font.defaultCode = std::stoi(code.substr(1));
            else
                font.glyphs[std::stoi(code)] = {2, 0, 1, 1, 1, {1}};
        expect(rsc::writeBdf(font, "dots"), lines(row[0].substr(rest)), row[1]);
    }
}

constexpr const char* kManifest =
    "# a scene | palette meadow | from back.png bee1.png # two | from bee2.png | "
    "library Meadow.RSC | use meadow | colours 100 meadow | picture 100 back.png | "
    "animation 2001 | rate 8 | place 4 3 5 | frame bee1.png bee2.png | sequence hold 1 loop | "
    "sequence 1 2 sound 101 sound 101 loop sound 7 | library sounds.rsc | file WAVE 101 buzz.wav | "
    "file WAVE 102 \"buzz.wav\" | library fonts.rsc | font 10 small.bdf | library cursors.rsc | "
    "file CURSOR 1 hand.cur | cursor 2 bee1.png 1 0 | ";

TEST_F(Pack, BuildsLibrariesAndTheirMapsAndListsThem) {
    write("hand.cur", rsc::buildCursor(rsc::Picture::fromPng(drawn("k")), {0, 0}));
    ASSERT_EQ(packText(replacedAll(kManifest, " | ", "\r\n")), 0) << errors_;
    const std::string meadow = "meadow.rsc\nRRGB 100\nASEQ 100\nASEQ 2001\nENDFILE\n";
    const std::string sounds = "sounds.rsc\nWAVE 101\nWAVE 102\nENDFILE\n";
    EXPECT_EQ(read("out/resource.map"),
              "game\n3\n" + meadow + sounds + "fonts.rsc\nNFNT 10\nENDFILE\n");
    EXPECT_EQ(list({"out/meadow.rsc", "out/sounds.rsc", "out/fonts.rsc", "out/cursors.rsc"}), 0);
    EXPECT_EQ(out_, "@/out/meadow.rsc:\n"
                    "RRGB     100      1536       240\n"
                    "ASEQ     100        80      1776  1 frame, 1 sequence, 4x4\n"
                    "ASEQ    2001       144      1856  2 frames, 2 sequences, 2x2\n"
                    "@/out/sounds.rsc:\n"
                    "WAVE     101      2256       224  11025 Hz, 8 bits, mono, 0.20 s\n"
                    "WAVE     102      2256      2480  11025 Hz, 8 bits, mono, 0.20 s\n"
                    "@/out/fonts.rsc:\n"
                    "NFNT      10        64       208  2 characters, 2+1 rows\n"
                    "@/out/cursors.rsc:\n"
                    "CURSOR     1        80       208  1x1, hot spot 0 0\n"
                    "CURSOR     2        96       288  2x2, hot spot 1 0\n");
    // With faults all stays as it was.
    const std::string old = read("out/sounds.rsc");
    write("hand.cur", Bytes());
    EXPECT_EQ(pack(), 1);
    EXPECT_EQ(errors_, "@/game.txt:21: hand.cur: is empty\n");
    EXPECT_EQ(read("out/sounds.rsc"), old);
    EXPECT_EQ(namesIn("out"), "cursors.rsc fonts.rsc meadow.rsc resource.map sounds.rsc ");

    const Files both = {"out/meadow.rsc", "out/cursors.rsc", "out/sounds.rsc"};
    ASSERT_EQ(map(both, "maps", true, "MINE"), 0) << errors_;
    EXPECT_EQ(namesIn("maps"), "audio.map resource.map ");
    EXPECT_EQ(read("maps/resource.map"), "MINE\n3\n" + meadow + sounds);
    EXPECT_EQ(read("maps/audio.map"), "AO: 2001\tSequence: 2\tSound: 101\n"
                                      "AO: 2001\tSequence: 2\tSound: 7\n");
    ASSERT_EQ(map({"out/meadow.rsc"}, "maps/other.map", false, ""), 0) << errors_;
    EXPECT_EQ(read("maps/other.map"), "meadow\n3\n" + meadow);
}

TEST_F(Pack, MapsWhatTheGameFindsAndListsDamage) {
    const ForeignResource wave{"WAVE", kNumber | 1, 0, 1};
    const std::pair<const char*, std::vector<ForeignResource>> libraries[] = {
        {"type.rsc", {{"WAVES", kNumber | 1, 0, 1}}},
        {"control.rsc", {{"A\nBC", kNumber | 1, 0, 1}}},
        {"zero.rsc", {{"WAVE", kNumber, 0, 1}}},
        {"name.rsc", {{"WAVE", 0, 0, 1, "NAME"}}},
        {"twice.rsc", {wave, wave}}};
    for (const auto& [name, resources] : libraries)
        write(name, foreignLibrary(4, resources, Bytes(16)));
    write("hand.rsc", {{"CURSOR", 8, {0, 0, 1, 0, 1, 0}}});
    write("bad.rsc", {{"ASEQ", 5, {1, 0, 1, 0, 8}}, {"NFNT", 7, {1}}, {"WAVE", 6, {1}}});
    write("no.rsc", asBytes("MZ but nothing else"));
    for (const std::string told :
         {"type.rsc: WAVES cannot stand in a map", "control.rsc: A?BC 1 cannot stand in a map",
          "zero.rsc: WAVE 0 cannot stand in a map", "name.rsc: WAVE NAME cannot stand in a map",
          "twice.rsc: WAVE 1 is there twice", "hand.rsc: CURSOR cannot stand in a map",
          "bad.rsc: ASEQ 5: the animation is cut off"}) {
        EXPECT_EQ(map({told.substr(0, told.find(':'))}, "maps", true, "M"), 1);
        EXPECT_THAT(errors_, HasSubstr("@/" + told));
    }
    EXPECT_EQ(map({"bad.rsc"}, "maps", false, std::string(40, 'x')), 1);
    EXPECT_THAT(errors_, HasSubstr("1 to 39 characters"));
    EXPECT_FALSE(std::filesystem::exists(at("maps")));

    EXPECT_EQ(list({"no.rsc", "gone.rsc", "bad.rsc", "hand.rsc"}), 1);
    for (const char* told :
         {"no.rsc: no resource library", "gone.rsc: cannot be read: No such file",
          "bad.rsc: ASEQ 5: the animation", "bad.rsc: NFNT 7: the font is cut off",
          "hand.rsc: CURSOR 8: the game shows the arrow: it is an icon"})
        EXPECT_THAT(errors_, HasSubstr(told));
    EXPECT_THAT(out_, HasSubstr("no sound: the game plays nothing"));
}

TEST_F(Pack, ConvertsSoundsToWhatTheGamePlays) {
    ASSERT_EQ(
        packText("map none\nlibrary a.rsc\nfile WAVE 3 deep.wav unchecked\nfile CURSOR 4 deep.wav"),
        0);
    EXPECT_TRUE(isTold(errors_, "@/game.txt:3: warning: deep.wav: the sound is stereo*"));
    EXPECT_THAT(errors_, HasSubstr("4: warning: deep.wav: the game will show the arrow"));
    EXPECT_EQ(list({"out/a.rsc"}), 1);
    EXPECT_THAT(out_, HasSubstr("44100 Hz, 16 bits, stereo, 0.10 s: the game plays noise\n"));
    if (!rsc::canReadSounds() || !rsc::canResample()) GTEST_SKIP() << "built without the libraries";
    ASSERT_EQ(packText("library a.rsc\nsound 1 deep.wav\nsound 2 deep.wav rate 11025\n"), 0)
        << errors_;
    EXPECT_EQ(list({"out/a.rsc"}), 0) << errors_;
    EXPECT_EQ(out_, "WAVE       1      2256       208  22050 Hz, 8 bits, mono, 0.10 s\n"
                    "WAVE       2      1152      2464  11025 Hz, 8 bits, mono, 0.10 s\n");
    EXPECT_EQ(read("out/a.rsc")[208 + 44 + 1100], '\xB0') << "the mean of both channels";
}

TEST_F(Pack, CountsColoursThatGetLost) {
    write("other.png",
          png(2, {{{200, 20, 20}}, {{240, 220, 30}}, {{3, 3, 3}}, {{200, 20, 20}, 0}}));
    ASSERT_EQ(packText("palette p\nfrom bee1.png\nlibrary a.rsc\nuse p\npicture 1 other.png"), 0);
    EXPECT_THAT(errors_,
                HasSubstr("game.txt:5: warning: other.png: 1 of its 3 colours (1 of 3 pixels) "
                          "become others, the palette \"p\" has nothing like them: name it"));
    Pixels many;
    for (std::uint8_t i = 90; i < 240; ++i) many.insert(many.end(), {{{i, i, 90}}, {{i, i, 99}}});
    write("bee1.png", png(20, many));
    if (!rsc::canReduceColours()) GTEST_SKIP() << "built without libimagequant";
    ASSERT_EQ(pack(), 0);
    EXPECT_THAT(errors_,
                HasSubstr("game.txt:1: warning: the pictures of the palette \"p\" have 300 "
                          "colours besides black and white (bee1.png alone 300)"));
    ASSERT_EQ(packText("palette p reduced\nfrom bee1.png\nlibrary a.rsc\ncolours 1 p"), 0);
    EXPECT_EQ(errors_, "");
}

TEST_F(Pack, LeavesNothingBehindWhenItCannotWrite) {
    folder_.makeFolder("out/a.rsc/in the way");
    EXPECT_EQ(packText("library a.rsc\nsound 1 buzz.wav"), 1);
    EXPECT_EQ(errors_, "@/out/a.rsc: cannot be replaced: Is a directory\n");
    EXPECT_EQ(namesIn("out"), "a.rsc ");
    EXPECT_EQ(pack("game.txt", "game.txt"), 1) << "no folder";
    EXPECT_THAT(errors_, HasSubstr("@/game.txt: cannot be made"));
}

TEST_F(Pack, RefusesMoreOfOneTypeThanTheProgramTakes) {
    std::string manifest;
    for (int i = 0; i < 8193; ++i) {
        if (i % 2500 == 0) manifest += "library " + std::to_string(i) + ".rsc\n";
        manifest += "file WAVE " + std::to_string(i % 2500 + 1) + " buzz.wav\n";
    }
    EXPECT_EQ(packText(manifest), 1);
    EXPECT_THAT(errors_, HasSubstr("8193 resources of type WAVE"));
    EXPECT_EQ(packText("map none\n" + manifest), 0) << errors_;
    EXPECT_FALSE(std::filesystem::exists(at("out/resource.map")));
}

} // namespace
