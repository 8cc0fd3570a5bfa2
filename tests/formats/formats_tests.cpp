// Every format that we have in one table, and the same loops over all: what is written is read
// again, and what is cut off or damaged is refused or can be looked at. And what is odd.
#include "formats/reading.h"

#include "formats/library/writer.h"

namespace {

using namespace testing_support;

Bytes libraryOf(const std::vector<library::Resource>& resources) {
    return library::write("TEST", resources).value;
}
Bytes animationOf(ByteSpan bytes) {
    return animation::write(animation::readWhole(bytes).value,
                            bytes[5] ? std::endian::big : std::endian::little);
}
Bytes fontOf(ByteSpan bytes) { return font::write(font::read(bytes).value).value; }

const std::string kAnimationTold =
    "8/s -5 300 7 2x1:020506 1x3:010900010109 | 0,0,-4,0 3,-1,1,120 0,0,-1,0 | 0,0,-1,0";
const std::string kFontTold = "0-5 2+1+0; 1:4 -1 ### #.# ..#; 3:3 1 .. ## ..; 4:4 1 ## ## ..";
const std::string kCursorTold = " 3x2@2,1:FFC80A14(4)FF010203FFC80A14FFC80A14(4)";

/// Those of animations, fonts and cursors are the examples of docs/formats.md.
struct Format {
    std::string name;
    Bytes example;
    std::size_t needed; ///< when fewer bytes than these are left it is refused, and else never
    std::string meaning;
    std::string (*read)(ByteSpan);
    /// What is written of what was read; nothing if the format cannot hold it.
    Bytes (*rewrite)(ByteSpan) = nullptr;
};
const Format kFormats[] = {
    {"library",
     bytesOf(
         "4D5A450001(3)04(3)FFFF(10)40(35)50(3)B8014CCD21(11)4E450100730002(6)80(18)080040004000"
         "6A0072007200C5(5)04(3)02(7)0A030400240002(5)0D00010030100180(4)0E00010030100280(6)"
         "0457415645000454455354(6)0454455354(6)01(15)02(15)"),
     library::kWrittenTable, "whole WAVE 1@208+16:01 WAVE 2@224+16:02", readLibrary,
     [](ByteSpan) {
         return libraryOf({{"WAVE", 1, {1}}, {"WAVE", 2, {2}}});
     }},
    {"map", asBytes("MINE\n2\na.rsc\nWAVE 1\nRRGB 2\nENDFILE\nb.rsc\nASEQ 32767\nENDFILE\n"), 6,
     "MINE; a.rsc, WAVE 1, RRGB 2; b.rsc, ASEQ 32767", readMap},
    {"audio map", asBytes("AO: 2001\tSequence: 3\tSound: 101\nAO: -1\tSequence: 1\tSound: 7\n"), 0,
     "2001 3 101; -1 1 7; ", readAudioMap},
    {"animation",
     bytesOf("0200020008(9)09(3)052C180703(5)FCFF00000300FFFF010078(5)FFFF000001(5)FFFF(4)"
             "02000100020506000001000300010900010109"),
     79, kAnimationTold, readAnimation, animationOf},
    {"animation-be",
     bytesOf("000200020801(11)09052C18070003(4)FFFC(3)03FFFF00010078(4)FFFF(3)01(4)FFFF(5)"
             "020001020506(3)010003010900010109"),
     79, kAnimationTold, readAnimation, animationOf},
    {"bitmap", bytesOf("424D(12)28(3)02(3)02(3)010018(5)10(19)01020304050600000708090A0B0C0000"),
     70, "2x2x24 0708090A0B0C0000 0102030405060000", readBitmap},
    {"palette", bytesOf("0100020003(1531)"), 1536, "010203(765)", readPalette,
     [](ByteSpan bytes) { return picture::writePalette(*picture::readPalette(bytes)); }},
    {"font",
     bytesOf("0090000005000400FFFFFFFF040003001000020001(3)0100E600BE0020(5)"
             "030003000500070007000700FFFF0004FFFF02030204FFFFFFFFFFFF"),
     64, kFontTold, readFont, fontOf},
    {"font-be",
     bytesOf("90(4)050004FFFFFFFF00040003001000020001(3)01E600BE0020(6)"
             "0300030005000700070007FFFF0004FFFF02030204FFFFFFFFFFFF"),
     64, "big " + kFontTold, readFont, fontOf},
    {"cursor",
     bytesOf("000002000100030203000200010044(3)16(3)28(3)03(3)04(3)010008(5)10(11)03(7)140AC8(5)"
             "030201(3)01000001020020(3)40(3)"),
     90, "90" + kCursorTold + kCursorTold, readCursors,
     [](ByteSpan bytes) {
         const auto entry = picture::readCursorFile(bytes).value.entries[0];
         const auto pixels = picture::plainPixels(entry).value;
         return pixels ? picture::writeCursor({entry.width, entry.height, entry.hotSpot, *pixels})
                       : Bytes();
     }},
    {"sound",
     bytesOf("5249464628(3)57415645666D742010(3)01000100112B0000112B0000010008006461746103(3)"
             "01020300"),
     0, "44+3 11025 1 8", readSound,
     [](ByteSpan bytes) {
         const auto [offset, length, rate] = sound::examine(bytes).header;
         return sound::writeRiff(bytes.subspan(offset, length), rate);
     }},
    {"mac", bytesOf("000100010005(3)8000018051(5)14(7)035622(11)3C010203"), 0, "42+3 22050 1 8",
     readSound},
    {"mac2", bytesOf("0002000700018051(5)0E(7)015622(10)FF3C(3)03(38)010203"), 0, "78+3 22050 1 8",
     readSound},
    {"movie", // all kinds of blocks and palettes, and tracks, as another decoder reads it, too
     bytesOf("534D4B3409(3)0A(3)02(3)4AB3FFFF03(31)54(3)10(3)10(3)50(3)40(3)401F00F0401F00C0401F00"
             "E0(20)35(3)54(3)19(3)0D0B080351A6FF7FFFFFFE7F062000FFFFFEFFFDFF7C226622B2B658B39507"
             "20C2F3F19599BD653A8E390033FEFFFDFFFBFFC7D0EEDF50C8EEAE16E41D04206002062A60E006AC01F0"
             "FFEFFFDFFFBF4FE5165439(3)0440004100420081FFF7(6)0E(3)04(3)D97F0004083811(3)08(3)5D80"
             "7F0BF00F4020072F18(3)060B363B40004002800838060D031A0904254101FFF600001F(3)10(3)5F7F"
             "01066C3F0001C61F8000FB0FC08000028201F4AB0614(3)08(3)9D7F01F4AD3F00010610A60687F1E788"
             "156FA7130014(3)08(3)DD7F04FAADBF0003020E8E06A3(3)"),
     363,
     "9x20 2 of 19638 ring key palette (768) 4444CCCC(5)4444CCCC(5)33339999(5)33339999(59)  pal"
     "ette 2CDBEF(9)20E318340C69241096(747) 000033991133B15F00226633991133B15F0044CCB3C744CC226"
     "6003399000044CC226600E53E6B7B(5)E53E6B7B(7)44CC(7)44CC(23) 03040401(3)020301010104010104 "
     "key 6B6B6B6B1133B15F006B6B6B6B1133B15F006B6B6B6B44CC2266006B6B6B6B44CC226600E53E6B7B03030"
     "30300E53E6B7B03030303(3)44CC03030303(3)44CC03030303(19) ",
     readMovie},
};
const Format& formatOf(const std::string& name) {
    return *std::ranges::find(kFormats, name, &Format::name);
}

TEST(Formats, AreReadAsTheyWereWritten) {
    for (const Format& format : kFormats) {
        SCOPED_TRACE(format.name);
        if (format.rewrite) {
            EXPECT_EQ(hex(format.rewrite(format.example)), hex(format.example));
        }
        Bytes padded = format.example; // as libraries fill up resources
        if (!format.name.ends_with("map")) padded.resize(padded.size() + 15);
        EXPECT_EQ(format.read(padded), format.meaning);
    }
}

/// What is not refused can be looked at, and what is written of it can be read.
bool isRefused(const Format& format, const Bytes& bytes) {
    const std::string text = format.read(bytes);
    if (text.starts_with('!')) return true;
    const Bytes again = format.rewrite ? format.rewrite(bytes) : Bytes();
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
            Bytes damaged = whole;
            for (int bit = 1; bit <= 0x80 && at < kMost; bit *= 2) {
                damaged[at] = static_cast<std::uint8_t>(whole[at] ^ bit);
                refused += isRefused(format, damaged);
                damaged[at] = static_cast<std::uint8_t>(bit == 0x40 ? 0xFF : bit - 1);
                (void)isRefused(format, damaged);
            }
        }
        // The two signatures, the place of the second header, and the only bit of the relocation
        // table that is set.
        EXPECT_TRUE(format.name != "library" || refused == 2 * 16 + 32 + 1) << refused;
    }
}

void expectRead(std::string (*read)(ByteSpan), ByteSpan bytes, const std::string& meaning) {
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
        const Format& format = formatOf(word);
        Bytes bytes = format.example;
        while (words >> word) {
            if (word == "or") continue;
            std::size_t at = std::stoul(word, nullptr, 16);
            auto value = std::stoul(word.substr(word.find(':') + 1), nullptr, 16);
            do bytes.at(at++) = static_cast<std::uint8_t>(value);
            while (value >>= 8);
            if (!(words >> std::ws).eof() && words.peek() != 'o') continue;
            expectRead(format.read, bytes, row[1]);
            bytes = format.example;
        }
    }
}

/// Maps, their lines with "|" between, and what is read of them; some words stand for others.
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
M|9|DOS|WAVE 5|ENDFILE => M|3: no file name, the resources below are left out
M|1|a|WAVE 1 => M; a, WAVE 1|4: the map ends without ENDFILE: write one behind the last file
MCR2CR|| 	|a.RSC xCRWAVE 1||  RRGB	 2 xCR|x ENDFILE y => M; a.rsc, WAVE 1, RRGB 2
M|9|aBLANKSb|WAVE 1ZEROS|ENDFILE => M; a|4ID
MNULx|1NUL|aNULb|WAVENUL 1|WAVE 2NUL|ENDFILE => MNULx; a, WAVE 2|4ID
)";

TEST(Map, LeavesOutWhatMakesNoSense) {
    const std::pair<std::string, std::string> words[] = {
        {"|", "\n"},
        {"CR", "\r"},
        {"DOS", "\x1A"},
        {"NUL", std::string(1, '\0')},
        {"BLANKS", std::string(100, ' ')},
        {"ZEROS", std::string(90, '0')},
        {"ID", ": an id must be a number from 1 to 32767, the line is left out"},
        {"SURPLUS", ": more resources than line 2 says, the file is left out: correct it"},
        {"NOCOUNT", ": must be the largest number of resources of a file, the folder is scanned "
                    "instead"},
    };
    for (auto row : rowsOf(kMaps)) {
        for (std::string& text : row)
            for (const auto& [word, meant] : words) text = replacedAll(text, word, meant);
        expectRead(readMap, asBytes(row[0]), row[1]);
    }
    expectRead(readAudioMap,
               asBytes("AO:1 Sequence:2 Sound:70000\r\rao: 1\tSequence: 2\tSound: 3\n"
                       "AO: 1 Sequence: 2 Sound: x\nAO: 32768 Sequence: 1 Sound: 1\n"
                       "AO: 1 Sequence: -32769 Sound: 1\nAO: -32768 Sequence: 32767 Sound: 0"),
               "line 3? line 4? line 5? line 6? 1 2 70000; -32768 32767 0; ");
}

TEST(Library, JoinsWhatHasOneName) {
    constexpr std::size_t kType = library::kWrittenTable + 2;
    expectRead(
        readLibrary,
        libraryOf(
            {{"WAVE", 300, {3}}, {"WAVE", 5, Bytes(33, 'x')}, {"ICON", 7, {4}}, {"#77", 1, {5}}}),
        "whole ICON 7@320+16:04 WAVE 300@256+16:03 WAVE 5@272+48:78");
    Bytes joined = libraryOf({{"WAVE", 5, {1}}, {"ASEQ", 5, Bytes(17, 2)}, {"ASEQ", 6, {3}}});
    joined[kType + 8 + 12] = joined[kType]; // both types have the first one's name
    expectRead(readLibrary, joined, "whole WAVE 5@240+16:01 WAVE 5@240+16:01 WAVE 6@288+16:03");
    Bytes named = libraryOf({{"ASEQ", 44, {1}}, {"ASEQ", 2, {2}}, {"?URSOR", 1, {6}}});
    named[kType + 8 + 6 + 1] = 0;         // no number
    *std::ranges::find(named, '?') = 'C'; // the name of a standard type
    expectRead(readLibrary, named, "whole ASEQ 2@256+16:02");
}

TEST(Animation, IsCutOffAndOverlaps) {
    const ByteSpan good = formatOf("animation").example;
    const std::string cutOff = "!the animation is cut off; its ";
    expectRead(readAnimation, good.first(9), cutOff + "header is cut short");
    expectRead(readAnimation, good.first(21), cutOff + "frame table is cut short");
    expectRead(readAnimation, good.first(47), cutOff + "sequences are cut short");
    // A hundred frames in data that reads as a frame of 257 rows at every sixth byte. Reading
    // thousands of these one by one would take for ever.
    for (const int step : {0, 6}) {
        ByteWriter out;
        out.u16(1).u16(100).u8(8).zeros(5);
        for (int i = 0; i < 100; ++i) out.u32(i * step);
        out.u32(0).u16(1).u32(0).u16(-1).u16(0);
        for (int i = 0; i < 1200; ++i) out.u8(i % 6 == 1 || i % 6 == 3 ? 0 : 1);
        expectRead(readAnimation, out.take(),
                   step ? "!frame 4 overlaps other frames" : "8/s 0 0 0 1x257*");
    }
}

/// Chunks of WAVE files, "TAG SIZE BYTES" of them, and what is read.
constexpr const char* kChunks = R"(
fmt 16 16 data 10 10 => 44+10 22050 1 8
fmt 19 20 data 10 10 => 48+10 22050 1 8
LIST 5 6 fmt 16 16 LIST 7 8 data 10 10 => 74+10 22050 1 8
LIST 996 996 fmt 16 16 data 10 10 => 1048+10 22050 1 8
fmt 16 16 LIST 20000 20000 data 10 10 => 20052+10 22050 1 8
data 10 10 fmt 16 16 => 0+0 22050 1 8
data 10 10 fmt 16 16 data 4 4 => 62+4 22050 1 8
fmt 16 16 data 4 4 data 10 10 => 44+4 22050 1 8
fmt 16 16 many 1000 0 data 10 10 => 8044+10 22050 1 8
many 125 0 fmt 16 16 data 10 10 => 1044+10 22050 1 8
many 126 0 fmt 16 16 data 10 10 => 0+0 0 1 8 no format
fmt 16 16 LIST 2147483647 4 data 10 10 => 0+0 22050 1 8
fmt 16 16 LIST 4294967295 4 data 10 10 => 0+0 22050 1 8
fmt 16 16 LIST 3 3 data 10 10 => 0+0 22050 1 8
fmt 16 15 => 0+0 22050 1 0 bits
ext 40 40 data 10 10 => 68+10 22050 1 8 coding 3
ext 39 40 data 10 10 => 68+10 22050 1 8 coding 65534
)";

TEST(Sound, IsFoundAmongAnyOtherChunks) {
    for (const auto& row : rowsOf(kChunks)) {
        ByteWriter out;
        out.text("RIFF").u32(0xFFFFFFFF).text("WAVE");
        std::istringstream words(row[0]);
        std::int64_t size = 0;
        for (std::string tag, bytes; words >> tag >> size >> bytes;) {
            for (int i = 0; tag == "many" && i < size; ++i) out.text("JUNK").u32(0);
            if (tag == "many") continue;
            Bytes data = bytesOf(tag == "fmt"   ? "0100010022560000(6)0800"
                                 : tag == "ext" ? "FEFF010022560000(6)0800(8)0300"
                                                : "");
            data.resize(std::stoul(bytes), 200);
            out.text(tag.size() == 3 ? "fmt " : tag).u32(size).block(data);
        }
        expectRead(readSound, out.take(), row[1]);
    }
}

} // namespace
