// Every format that we have in one table, and the same loops over all: what is written is read
// again, and what is cut off or damaged is refused or can be looked at. And what is odd.
#include "formats/reading.h"
#include "formats/soundbuilder.h"

#include "formats/library/writer.h"
#include "formats/picture/dib.h"

namespace {

using namespace testing_support;
using Pictures = std::vector<Bytes>;

Bytes bytesOf(std::string_view text) { return {text.begin(), text.end()}; }

Bytes libraryOf(const std::vector<library::Resource>& resources) {
    return library::write("TEST", resources).value;
}

const Bytes kRed = {2, 5, 6};           // two pixels
const Bytes kTall = {1, 9, 0, 1, 1, 9}; // three rows of one pixel
const animation::Animation kAnimation = {
    8,
    -5,
    300,
    7,
    {{2, 1, kRed}, {1, 3, kTall}},
    {{{0, 0, -4, 0}, {3, -1, 1, 120}, {0, 0, -1, 0}}, {{0, 0, -1, 0}}}};

/// The example of docs/formats.md: a hook, a dash, and the box that stands in.
font::Font smallFont(bool bigEndian = false) {
    font::Font font{bigEndian, 0, 5, 2, 1, 0, {}};
    font.glyphs[1] = {4, -1, 2, 3, 3, {1, 1, 1, 1, 0, 1, 0, 0, 1}};
    font.glyphs[3] = {3, 1, 2, 2, 3, {0, 0, 1, 1, 0, 0}};
    font.glyphs[4] = {4, 1, 2, 2, 3, {1, 1, 1, 1, 0, 0}};
    return font;
}

/// The example of docs/formats.md.
const Bytes kCursor =
    picture::writeCursor({3, 2, {2, 1}, {0xFFC80A14, 0, 0xFF010203, 0xFFC80A14, 0xFFC80A14, 0}});

Bytes bitmapFile(int width, int height, int depth, ByteSpan rows) {
    ByteWriter out;
    out.text("BM").zeros(12);
    picture::writeDibHeader(out, {width, height, depth}, rows.size());
    return out.block(rows).take();
}

Bytes animationOf(ByteSpan bytes) {
    return animation::write(animation::readWhole(bytes).value,
                            bytes[5] ? std::endian::big : std::endian::little);
}
Bytes fontOf(ByteSpan bytes) { return font::write(font::read(bytes).value).value; }

const std::string kAnimationTold =
    "8/s -5 300 7 2x1:020506 1x3:010900010109 | 0,0,-4,0 3,-1,1,120 0,0,-1,0 | 0,0,-1,0";
const std::string kFontTold = "0-5 2+1+0; 1:4 -1 ### #.# ..#; 3:3 1 .. ## ..; 4:4 1 ## ## ..";
const std::string kCursorTold = "90 3x2@2,1:FFC80A14(4)FF010203FFC80A14FFC80A14(4) "
                                "3x2@2,1:FFC80A14(4)FF010203FFC80A14FFC80A14(4)";
const Bytes kTwoColours = {1, 2, 1, 1, 2, 1, 2, 2, 1, 1, 1, 1, 1, 1, 1, 1};
const Bytes kManyColours = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

struct Format {
    std::string name;
    Bytes example;
    std::size_t needed; ///< when fewer bytes than these are left it is refused, and else never
    std::string meaning;
    std::string (*read)(ByteSpan);
    Bytes (*rewrite)(ByteSpan) =
        nullptr;             ///< reads and writes; nothing if the format cannot hold it
    std::string layout = ""; ///< of its bytes, where nothing else judges them
};
const Format kFormats[] = {
    {"library", libraryOf({{"WAVE", 1, {1}}, {"WAVE", 2, {2}}}), library::kWrittenTable,
     "whole WAVE 1@208+16:01 WAVE 2@224+16:02", readLibrary, nullptr,
     "4D5A450001(3)04(3)FFFF(10)40(35)50(3)B8014CCD21(11)4E450100730002(6)80(18)0800400040006A00"
     "72007200C5(5)04(3)02(7)0A030400240002(5)0D00010030100180(4)0E00010030100280(6)"
     "0457415645000454455354(6)0454455354(6)01(15)02(15)"},
    {"map", bytesOf("MINE\n2\na.rsc\nWAVE 1\nRRGB 2\nENDFILE\nb.rsc\nASEQ 32767\nENDFILE\n"), 6,
     "MINE; a.rsc, WAVE 1, RRGB 2; b.rsc, ASEQ 32767", readMap,
     [](ByteSpan bytes) {
         std::vector<map::Library> files;
         const std::string text = textOf(bytes);
         map::ResourceMap read(text, [](int, const char*) {});
         for (map::Library file; read.next(file);) files.push_back(file);
         return bytesOf(map::writeResourceMap(read.identifier(), files));
     }},
    {"audio map", bytesOf("AO: 2001\tSequence: 3\tSound: 101\nAO: -1\tSequence: 1\tSound: 7\n"), 0,
     "2001 3 101; -1 1 7; ", readAudioMap,
     [](ByteSpan bytes) {
         return bytesOf(
             map::writeAudioMap(map::readAudioMap(textOf(bytes), [](int, const char*) {})));
     }},
    {"animation", animation::write(kAnimation), 79, kAnimationTold, readAnimation, animationOf,
     "0200020008(9)09(3)052C180703(5)FCFF00000300FFFF010078(5)FFFF000001(5)FFFF(4)"
     "02000100020506000001000300010900010109"},
    {"animation-be", animation::write(kAnimation, std::endian::big), 79, kAnimationTold,
     readAnimation, animationOf,
     "000200020801(11)09052C18070003(4)FFFC(3)03FFFF00010078(4)FFFF(3)01(4)FFFF(5)020001020506(3)"
     "010003010900010109"},
    {"bitmap", bitmapFile(2, 2, 24, Bytes{1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0}), 70,
     "2x2x24 0708090A0B0C0000 0102030405060000", readBitmap,
     [](ByteSpan bytes) {
         picture::BitmapFault fault{};
         const auto bitmap = picture::readBitmap(bytes, fault).value();
         return bitmapFile(bitmap.width, bitmap.height, bitmap.depth, bitmap.rows);
     },
     "424D(12)28(3)02(3)02(3)010018(5)10(19)01020304050600000708090A0B0C0000"},
    {"palette", picture::writePalette({{{1, 2, 3}}}), 1536, "010203(765)", readPalette,
     [](ByteSpan bytes) { return picture::writePalette(*picture::readPalette(bytes)); },
     "0100020003(1531)"},
    {"font", font::write(smallFont()).value, 64, kFontTold, readFont, fontOf,
     "0090000005000400FFFFFFFF040003001000020001(3)0100E600BE0020(5)"
     "030003000500070007000700FFFF0004FFFF02030204FFFFFFFFFFFF"},
    {"font-be", font::write(smallFont(true)).value, 64, "big " + kFontTold, readFont, fontOf,
     "90(4)050004FFFFFFFF00040003001000020001(3)01E600BE0020(6)"
     "0300030005000700070007FFFF0004FFFF02030204FFFFFFFFFFFF"},
    {"cursor", kCursor, 90, kCursorTold, readCursors,
     [](ByteSpan bytes) {
         const auto entry = picture::readCursorFile(bytes).value.entries[0];
         const auto pixels = picture::plainPixels(entry).value;
         return pixels ? picture::writeCursor({entry.width, entry.height, entry.hotSpot, *pixels})
                       : Bytes();
     },
     "000002000100030203000200010044(3)16(3)28(3)03(3)04(3)010008(5)10(11)03(7)140AC8(5)030201(3)"
     "01000001020020(3)40(3)"},
    {"sound", sound::writeRiff(Bytes{1, 2, 3}, 11025), 0, "44+3 11025 1 8", readSound,
     [](ByteSpan bytes) {
         const auto [offset, length, rate] = sound::examine(bytes).header;
         return sound::writeRiff(bytes.subspan(offset, length), rate);
     },
     "5249464628(3)57415645666D742010(3)01000100112B0000112B0000010008006461746103(3)01020300"},
    {"mac", MacSound{.data = {1, 2, 3}}.build(), 0, "42+3 22050 1 8", readSound},
    {"mac2", MacSound{.format = 2, .encoding = 0xFF, .data = {1, 2, 3}}.build(), 0,
     "78+3 22050 1 8", readSound},
    {"movie", *movieOf(4, {Bytes(16, 5), kTwoColours, kManyColours}, {1, 2, 3, 5, 8}), 215,
     "4x4 3 of 6666 key palette " + hex(Bytes(16, 5)) + " 0102030508 " + hex(kTwoColours) + "  " +
         hex(kManyColours) + " ",
     readMovie,
     [](ByteSpan bytes) {
         auto frames = framesOf(bytes);
         Pictures pictures;
         for (const auto& [number, frame] : frames) pictures.push_back(frame.picture);
         return movieOf(readMovieHeader(bytes)->width, pictures, frames[0].sound).value();
     }},
};

TEST(Formats, AreReadAsTheyWereWritten) {
    for (const Format& format : kFormats) {
        SCOPED_TRACE(format.name);
        EXPECT_TRUE(format.layout.empty() || hex(format.example) == format.layout)
            << hex(format.example);
        if (format.rewrite) {
            EXPECT_EQ(hex(format.rewrite(format.example)), hex(format.example));
        }
        Bytes padded = format.example; // as libraries fill up resources
        padded.resize(padded.size() + 15);
        const bool isText = format.read == readMap || format.read == readAudioMap;
        EXPECT_EQ(format.read(isText ? format.example : padded), format.meaning);
    }
}

/// What is not refused can be looked at, and what is written of it can be read.
bool isRefused(const Format& format, const Bytes& bytes) {
    const std::string text = format.read(bytes);
    if (text.starts_with('!')) return true;
    const bool isQuick = format.rewrite && format.read != readMovie;
    const Bytes again = isQuick ? format.rewrite(bytes) : Bytes();
    EXPECT_FALSE(!again.empty() && format.read(again).starts_with('!')) << text;
    return false;
}

TEST(Formats, LiveWithEveryTruncationAndDamage) {
    constexpr std::size_t kMost = 300; // bytes that are damaged; what is behind them is alike
    for (const Format& format : kFormats) {
        const Bytes& whole = format.example;
        int refused = 0; // of the bits that were turned
        for (std::size_t at = 0; at < whole.size(); ++at) {
            SCOPED_TRACE(format.name + std::to_string(at));
            const Bytes cut(whole.begin(), whole.begin() + static_cast<long>(at));
            EXPECT_EQ(isRefused(format, cut), at < format.needed);
            if (at >= kMost) continue;
            Bytes damaged = whole;
            for (int bit = 1; bit <= 0x80; bit *= 2) {
                damaged[at] = static_cast<std::uint8_t>(whole[at] ^ bit);
                refused += isRefused(format, damaged);
            }
            for (const std::uint8_t value : {0x00, 0x01, 0x7F, 0x80, 0xFF}) {
                damaged[at] = value;
                (void)isRefused(format, damaged);
            }
        }
        // The two signatures, the place of the second header, and the only bit of the relocation
        // table that is set.
        EXPECT_TRUE(format.read != readLibrary || refused == 2 * 16 + 32 + 1) << refused;
    }
}

struct Odd {
    Bytes bytes;
    std::string meaning;
};

void expectRead(std::string (*read)(ByteSpan), const std::vector<Odd>& rows) {
    for (const auto& [bytes, meaning] : rows)
        EXPECT_TRUE(isTold(read(bytes), meaning)) << meaning << "\n" << read(bytes);
}

/// Changes of the examples, "PLACE:VALUE" in hexadecimal digits, the low byte of a value first; and
/// what is read then.
constexpr const char* kDamages = R"(
library 0:4E or 18:3F or 3C:51 or 3E:FFFF or 50:4F => !no library
library 90:F or 90:10 or 90:FFFF or 94:0 => damaged
library 92:2A or 92:28 or 92:29 or 92:7FFF or 76:42 or 76:56 => damaged
library 92:8003 or 76:40 or 76:1 or 74:7000 => whole
library 92:800F => name table
library 18:41 => whole WAVE 1@208+16:01 WAVE 2@224+16:02
library 94:FFFF or 76:FFFF => damaged WAVE 1@208+16:01 WAVE 2@224+16:02
library 9A:FFFF or 9A:F => damaged WAVE 2@224+16:02
library 9A:9 => whole WAVE 1@144+16:04 WAVE 2@224+16:02
library 9C:FFFF => damaged WAVE 1@208+32:01 WAVE 2@224+16:02
library 9C:0 => whole WAVE 1@208+0:01 WAVE 2@224+16:02
library A1:0 => whole WAVE 2@224+16:02
animation 0:0 => !the animation has no sequences; it has no sequence
animation 3:80 => !the animation has no frames; its number of frames is negative
animation E:C8 => !frame 2 lies past the end
animation E:2 => !frame 2 is damaged in row 1
animation 16:0 => !sequence 1 has no entries
animation 31:80 => !sequence 2 has no entries; its sequences are cut short
animation 24:2 => !sequence 1 shows frame 3 of 2
animation 2C:FE => !sequence 1 has no end
animation 3C:0 or 3E:0 => !frame 1 is empty
animation 40:FB => !frame 1 is damaged in row 1
animation 4B:2 => !frame 2 is damaged in row 2
animation 12:77FFFF => 8/s 2047 2047 7*
animation 12:880000 => 8/s 2048 2048 7*
animation 12:880101 => 8/s -1 -1 7*
animation 12:FFFFFF => 8/s -2047 -2047 7*
font 3:80 => !damaged font: its characters are -32768 to 5
font 5:1 => !damaged font: its characters are 0 to 261
font 2:6 => !damaged font: its characters are 6 to 5
font 4:C8 or 10:0 => !damaged font: its tables lie in its head
font E:2 => !damaged font: its characters have more rows than its pictures
font 19:FF => !the font is cut off
font 22:4 => !damaged font: the picture of character 1 lies outside of the others' row
font 29:7F => !damaged font: the picture of character 3 lies outside of the others' row
cursor E:43 or E:3 => !the cursor's picture is cut off
cursor 4:0 => !no cursor file
cursor 15:FF => !the cursor is cut off
cursor 4A:3 => !damaged cursor: a pixel lies outside of its colours
cursor 1A:4 => 90 3x2@2,1:- 4x2@*
cursor 24:4 => 90 3x2@2,1:- 3x2@2,1:FFC80A14FF(3)FFC80A14FFC80A14FFC80A14FF(3)
cursor 26:1 or 39:FF => 90 3x2@2,1:-
cursor 52:A0 => *:FFC80A14(4)FF010203FF(3)FFC80A14(4)
sound 18:55F0 => 44+3 22000 1 8
sound 18:56EF => 44+3 22255 1 8
sound 18:2B77 => 44+3 11127 1 8
sound 18:56EE => 44+3 22254 1 8 rate
sound 18:0 19:0 => 44+3 0 1 8 rate
sound 18:FFFFFFFF => 44+3 2147483647 1 8 rate
sound 16:2 => 44+3 11025 2 8 channels
sound 22:10 => 44+3 11025 1 16 bits
sound 14:2 => 44+3 11025 1 8 coding 2
sound 28:FFFFFFFF => 44+4 11025 1 8 of 4294967295
sound 28:5 => 44+4 11025 1 8 of 5
sound 28:2 => 44+2 11025 1 8
sound 28:0 => 44+0 11025 1 8
sound 3:58 => unknown
mac 9:A0 => 42+3 22050 1 8
mac 1:3 => unknown
mac 1C:A38BEE56 => 42+3 22254 1 8
mac 1C:D145772B => 42+3 11127 1 8
mac 1C:44AC => 42+3 44100 1 8 rate
mac 3:2 => 42+3 22050 1 8 synthesizers
mac 5:1 => 42+3 22050 1 8 synthesizer
mac 9:C0 => 42+3 22050 1 8 options
mac B:2 => 42+3 22050 1 8 commands
mac C:0 => 42+3 22050 1 8 command
mac F:1 => 42+3 22050 1 8 parameter1
mac 13:E => 42+3 22050 1 8 parameter2
mac 28:FE => 45+0 22050 1 8 encoding
mac 18:80 => 42+3 22050 1 8 of 2147483651
mac 1B:2 => 42+2 22050 1 8
mac2 D:14 => 78+3 22050 1 8 parameter2
mac2 22:0 => 36+1 22050 1 8
mac2 22:FE => 78+3 22050 1 8 encoding
)";

TEST(Formats, TellWhatIsDamaged) {
    for (const auto& row : rowsOf(kDamages)) {
        SCOPED_TRACE(row[0]);
        std::istringstream words(row[0]);
        std::string word;
        words >> word;
        const auto* format = std::ranges::find(kFormats, word, &Format::name);
        Bytes bytes = format->example;
        while (words >> word) {
            if (word == "or") continue;
            std::size_t at = std::stoul(word, nullptr, 16);
            auto value = std::stoul(word.substr(word.find(':') + 1), nullptr, 16);
            do bytes.at(at++) = static_cast<std::uint8_t>(value);
            while (value >>= 8);
            if (!(words >> std::ws).eof() && words.peek() != 'o') continue;
            expectRead(format->read, {{bytes, row[1]}});
            bytes = format->example;
        }
    }
}

/// Maps, their lines with "|" between, and what is read of them; some words stand for problems.
constexpr const char* kMaps = R"(
M|2147483647|a|WAVE 1|ENDFILE => M; a, WAVE 1
M|2147483648|a|WAVE 1|ENDFILE => !|2NOCOUNT
M|a.rsc|WAVE 1|ENDFILE => !|2NOCOUNT
M|-1|a|ENDFILE => !|2NOCOUNT
 => !|0NOCOUNT
MMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMM|9 => MMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMM
MMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMMM|9 => !|1: the identifier has more than 39 characters, the
    folder is scanned instead
M|0 files|a|WAVE 1|ENDFILE|b|ENDFILE => M; b|5SURPLUS
M|5|a|WAV 1|CURSOR 2|WAVE3|AB|ASEQ 4|WAVE|WAVE 0|WAVE -1|WAVE 32768|WAVE 32767|c.rsc|RRGB 5|ENDFILE
    => M; a, WAV  1, WAVE 3, ASEQ 4, WAVE 32767, RRGB 5|5ID|7: a type must have four characters,
    the line is left out|9ID|10ID|11ID|12ID|14ID
M|1|a|WAVE x|WAVE 1|WAVE 2|WAVE 3|ENDFILE|abcdefghijkl.rsc|WAVE 1|ENDFILE|abcdefghijk.rsc|WAVE
    4|ENDFILE => M; abcdefghijk.rsc, WAVE 4|4ID|8SURPLUS|9: the file name has more than 15
    characters, the resources below are left out
M|9|ENDFILE|a|WAVE 1|ENDFILE => M; a, WAVE 1|3: ENDFILE without a file before it, passed over
M|9|\x1A|WAVE 5|ENDFILE => M|3: no file name, the resources below are left out
M|1|a|WAVE 1 => M; a, WAVE 1|4: the map ends without ENDFILE: write one behind the last file
)";

TEST(Map, LeavesOutWhatMakesNoSense) {
    using namespace std::string_literals;
    const std::string id = ": an id must be a number from 1 to 32767, the line is left out";
    const std::pair<std::string, std::string> words[] = {
        {"|", "\n"},
        {"ID", id},
        {"\\x1A", "\x1A"},
        {"SURPLUS", ": more resources than line 2 says, the file is left out: correct it"},
        {"NOCOUNT", ": must be the largest number of resources of a file, the folder is scanned "
                    "instead"},
    };
    for (auto row : rowsOf(kMaps)) {
        for (std::string& text : row)
            for (const auto& [word, meant] : words) text = replacedAll(text, word, meant);
        expectRead(readMap, {{bytesOf(row[0]), row[1]}});
    }
    const std::string blanks(100, ' ');
    const std::string zeros(90, '0');
    expectRead(
        readMap,
        {{bytesOf("M\r2\r\n\n \t\na.RSC x\rWAVE 1\n\n  RRGB\t 2 x\r\nx ENDFILE y\n"),
          "M; a.rsc, WAVE 1, RRGB 2"},
         {bytesOf("M\n9\na" + blanks + "b\nWAVE 1" + zeros + "\nENDFILE"), "M; a\n4" + id},
         {bytesOf("M\0x\n1\0\na\0b\nWAVE\0 1\nWAVE 2\0\nENDFILE"s), "M\0x; a, WAVE 2\n4"s + id}});
    const std::string lines =
        "AO:1 Sequence:2 Sound:70000\r\rao: 1\tSequence: 2\tSound: 3\n"
        "AO: 1 Sequence: 2 Sound: x\nAO: 32768 Sequence: 1 Sound: 1\n"
        "AO: 1 Sequence: -32769 Sound: 1\nAO: -32768 Sequence: 32767 Sound: 0";
    expectRead(readAudioMap, {{bytesOf(lines), "line 3? line 4? line 5? line 6? 1 2 70000; -32768 "
                                               "32767 0; "}});
}

/// A hundred frames, `step` bytes apart, in data that reads as a frame of 257 rows at every sixth
/// byte. Reading thousands of these one by one would take for ever.
Bytes manyFrames(int step) {
    ByteWriter out;
    out.u16(1).u16(100).u8(8).zeros(5);
    for (int i = 0; i < 100; ++i) out.u32(i * step);
    out.u32(0).u16(1).u32(0).u16(-1).u16(0);
    for (int i = 0; i < 200; ++i) out.u16(1).u16(1).u16(0x0101);
    return out.take();
}

TEST(Library, JoinsWhatHasOneName) {
    constexpr std::size_t kType = library::kWrittenTable + 2;
    constexpr std::size_t kId = kType + 8 + 6;
    Bytes joined = libraryOf({{"WAVE", 5, {1}}, {"ASEQ", 5, Bytes(17, 2)}, {"ASEQ", 6, {3}}});
    joined[kType + 8 + 12] = joined[kType]; // both types have the first one's name
    Bytes named = libraryOf({{"ASEQ", 44, {1}}, {"ASEQ", 2, {2}}, {"?URSOR", 1, {6}}});
    named[kId + 1] = 0;
    *std::ranges::find(named, '?') = 'C'; // the name of a standard type
    const Bytes four = libraryOf(
        {{"WAVE", 300, {3}}, {"WAVE", 5, Bytes(33, 'x')}, {"ICON", 7, {4}}, {"#77", 1, {5}}});
    expectRead(readLibrary, {{four, "whole ICON 7@320+16:04 WAVE 300@256+16:03 WAVE 5@272+48:78"},
                             {joined, "whole WAVE 5@240+16:01 WAVE 5@240+16:01 WAVE 6@288+16:03"},
                             {named, "whole ASEQ 2@256+16:02"}});
}

TEST(Animation, IsCutOffAndOverlaps) {
    const Bytes good = animation::write(kAnimation);
    const auto cut = [&](long size) { return Bytes(good.begin(), good.begin() + size); };
    const std::string cutOff = "!the animation is cut off; its ";
    expectRead(readAnimation, {{cut(9), cutOff + "header is cut short"},
                               {cut(21), cutOff + "frame table is cut short"},
                               {cut(47), cutOff + "sequences are cut short"},
                               {manyFrames(0), "8/s 0 0 0 1x257*"},
                               {manyFrames(6), "!frame 4 overlaps other frames"}});
}

/// Chunks of WAVE files, "TAG SIZE BYTES" of them, or several empty ones, and what is read.
constexpr const char* kChunks = R"(
fmt 16 16 | data 10 10 => 44+10 22050 1 8
fmt 19 20 | data 10 10 => 48+10 22050 1 8
LIST 5 6 | fmt 16 16 | LIST 7 8 | data 10 10 => 74+10 22050 1 8
LIST 996 996 | fmt 16 16 | data 10 10 => 1048+10 22050 1 8
fmt 16 16 | LIST 20000 20000 | data 10 10 => 20052+10 22050 1 8
data 10 10 | fmt 16 16 => 0+0 22050 1 8
data 10 10 | fmt 16 16 | data 4 4 => 62+4 22050 1 8
fmt 16 16 | data 4 4 | data 10 10 => 44+4 22050 1 8
fmt 16 16 | 1000 | data 10 10 => 8044+10 22050 1 8
125 | fmt 16 16 | data 10 10 => 1044+10 22050 1 8
126 | fmt 16 16 | data 10 10 => 0+0 0 1 8 no format
fmt 16 16 | LIST 2147483647 4 | data 10 10 => 0+0 22050 1 8
fmt 16 16 | LIST 4294967295 4 | data 10 10 => 0+0 22050 1 8
fmt 16 16 | LIST 3 3 | data 10 10 => 0+0 22050 1 8
fmt 16 15 => 0+0 22050 1 0 bits
ext 40 40 | data 10 10 => 68+10 22050 1 8 coding 3
ext 39 40 | data 10 10 => 68+10 22050 1 8 coding 65534
)";

TEST(Sound, IsFoundAmongAnyOtherChunks) {
    for (const auto& row : rowsOf(kChunks)) {
        ByteWriter out;
        out.text("RIFF").u32(0xFFFFFFFF).text("WAVE");
        std::istringstream words(row[0]);
        for (std::string tag; words >> tag;) {
            if (tag == "|") continue;
            std::int64_t size = 0;
            std::size_t bytes = 0;
            if (tag[0] <= '9')
                for (int i = 0; i < std::stoi(tag); ++i) out.text("JUNK").u32(0);
            else if (words >> size >> bytes) {
                ByteWriter data;
                if (tag == "fmt" || tag == "ext")
                    data.u16(tag == "ext" ? 0xFFFE : 1).u16(1).u32(22050).zeros(6).u16(8);
                if (tag == "ext") data.zeros(8).u16(3);
                Bytes all = data.take();
                all.resize(bytes, 200);
                out.text(tag == "fmt" || tag == "ext" ? "fmt " : tag).u32(size).block(all);
            }
        }
        expectRead(readSound, {{out.take(), row[1]}});
    }
}

} // namespace
