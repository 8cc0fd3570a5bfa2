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
    {"library", libraryOf({{"WAVE", 1, {3}}, {"#77", 2, {4}}}), library::kWrittenTable,
     " WAVE 1@224+16:03", readLibrary, nullptr,
     "4D5A450001(3)04(3)FFFF(10)40(35)50(3)B8014CCD21(11)4E4501007B0002(6)80(18)"
     "08004000400072007A00"
     "7A00CD(5)04(3)02(7)0A0304002C0001(5)0E00010030100180(4)4D8001(5)0F00010030100280(6)0457415645"
     "000454455354(6)0454455354(14)03(15)04(15)"},
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
    {"animation, big-endian", animation::write(kAnimation, std::endian::big), 79, kAnimationTold,
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
    {"font, big-endian", font::write(smallFont(true)).value, 64, "big " + kFontTold, readFont,
     fontOf,
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
    {"sound, Macintosh", MacSound{.data = {1, 2, 3}}.build(), 0, "42+3 22050 1 8", readSound},
    {"sound, Macintosh 2", MacSound{.format = 2, .encoding = 0xFF, .data = {1, 2, 3}}.build(), 0,
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

struct Damage {
    std::string meaning; ///< with any one of these changes
    std::vector<std::pair<std::size_t, std::uint32_t>> changes;
};

/// The bytes of a change stand from its place on, the low one first: as many as it needs.
void expectDamaged(std::string (*read)(ByteSpan), const Bytes& good,
                   const std::vector<Damage>& rows) {
    for (const auto& [meaning, changes] : rows)
        for (auto [at, value] : changes) {
            SCOPED_TRACE(at);
            Bytes bytes = good;
            do bytes.at(at++) = static_cast<std::uint8_t>(value);
            while (value >>= 8);
            expectRead(read, {{bytes, meaning}});
        }
}

TEST(Library, LeavesOutWhatPointsOutside) {
    constexpr std::size_t kNe = library::kWrittenNeHeader;
    constexpr std::size_t kTable = library::kWrittenTable;
    constexpr std::size_t kTablePlace = kNe + 0x24; // counts from the NE header, as the next two
    constexpr std::size_t kTableEnd = kTablePlace + 2;
    constexpr unsigned kTableStart = kTable - kNe;
    constexpr std::size_t kType = kTable + 2, kCount = kType + 2; // of the first one
    constexpr std::size_t kOffset = kType + 8, kLength = kOffset + 2, kId = kLength + 4;
    constexpr unsigned kSize = 240; ///< of the file
    const Bytes good = libraryOf({{"WAVE", 1, {1}}, {"WAVE", 2, {2}}});
    const std::string second = " WAVE 2@224+16:02";
    const std::string both = " WAVE 1@208+16:01" + second;
    Bytes joined = libraryOf({{"WAVE", 5, {1}}, {"ASEQ", 5, Bytes(17, 2)}, {"ASEQ", 6, {3}}});
    joined[kType + 8 + 12] = joined[kType]; // both types have the first one's name
    Bytes named = libraryOf({{"ASEQ", 44, {1}}, {"ASEQ", 2, {2}}, {"?URSOR", 1, {6}}});
    named[kId + 1] = 0;
    *std::ranges::find(named, '?') = 'C'; // the name of a standard type
    const Bytes four = libraryOf(
        {{"WAVE", 300, {3}}, {"WAVE", 5, Bytes(33, 'x')}, {"ICON", 7, {4}}, {"#77", 1, {5}}});
    expectRead(readLibrary, {{four, " ICON 7@320+16:04 WAVE 300@256+16:03 WAVE 5@272+48:78"},
                             {joined, " WAVE 5@240+16:01 WAVE 5@240+16:01 WAVE 6@288+16:03"},
                             {named, " ASEQ 2@256+16:02"}});
    expectDamaged(
        readLibrary, good,
        {
            {"!no library",
             {{0, 0x4D5A}, {0x18, 0x3F}, {0x3C, kNe + 1}, {0x3E, 0xFFFF}, {kNe, 0x4550}}},
            {"damaged", {{kTable, 15}, {kTable, 16}, {kTable, 0xFFFF}, {kCount, 0}}}, // shifts
            // a name behind the table, one that ends there, the empty one, and tables without names
            {"damaged",
             {{kType, 42},
              {kType, 40},
              {kType, 41},
              {kType, 0x7FFF},
              {kTableEnd, kTableStart + 2},
              {kTableEnd, kTableStart + 22}}},
            // a type number without a name, tables that are empty, turned inside out, or elsewhere
            {"",
             {{kType, 0x8003}, {kTableEnd, kTableStart}, {kTableEnd, 1}, {kTablePlace, 0x7000}}},
            {"name table", {{kType, 0x800F}}},
            {both, {{0x18, 0x41}}},
            {"damaged" + both, {{kCount, 0xFFFF}, {kTableEnd, 0xFFFF}}},
            {"damaged" + second, {{kOffset, 0xFFFF}, {kOffset, kSize / 16}}},
            {" WAVE 1@144+16:04" + second, {{kOffset, kTable / 16}}},
            {"damaged WAVE 1@208+32:01" + second, {{kLength, 0xFFFF}}},
            {" WAVE 1@208+0:01" + second, {{kLength, 0}}},
            {second, {{kId + 1, 0}}}, // named
        });
}

TEST(Map, LeavesOutWhatMakesNoSense) {
    const std::string scanned = ", the folder is scanned instead";
    const std::string noCount = ": must be the largest number of resources of a file" + scanned;
    const auto map = [](const std::string& text) { return bytesOf("M\n" + text + "\nENDFILE"); };
    const std::string id = ": an id must be a number from 1 to 32767, the line is left out";
    expectRead(
        readMap,
        {
            {bytesOf("M\r2\r\n\n \t\na.RSC junk\rWAVE 1\n\n  RRGB\t 2 junk\r\nx ENDFILE y\n"),
             "M; a.rsc, WAVE 1, RRGB 2"},
            {map("2147483647\na\nWAVE 1"), "M; a, WAVE 1"},
            {map("2147483648\na\nWAVE 1"), "!\n2" + noCount},
            {map("a.rsc\nWAVE 1"), "!\n2" + noCount},
            {map("-1\na"), "!\n2" + noCount},
            {{}, "!\n0" + noCount},
            {bytesOf(std::string(40, 'M') + "\n9\n"),
             "!\n1: the identifier has more than 39 characters" + scanned},
            {bytesOf(std::string(39, 'M') + "\n9\n"), std::string(39, 'M')},
            {map("0 files\na\nWAVE 1\nENDFILE\nb"), "M; b\n5*"},
            {map("6\na\nWAV 1\nCURSOR 2\nWAVE3\nAB\nASEQ 4\nWAVE\nWAVE 0\nWAVE -1\nWAVE "
                 "32768\nWAVE 32767\n"
                 "WAVE 2" +
                 std::string(90, '0') + "\nc.rsc\nRRGB 5\nRRGB 6"),
             "M; a, WAV  1, WAVE 3, ASEQ 4, WAVE 32767, RRGB 5, RRGB 6\n5" + id +
                 "\n7: a type must have four characters, "
                 "the line is left out\n9" +
                 id + "\n10" + id + "\n11" + id + "\n12" + id + "\n14" + id + "\n15" + id},
            {map("1\na\nWAVE x\nWAVE 1\nWAVE 2\nWAVE 3\nENDFILE\nabcdefghijkl.rsc\nWAVE "
                 "1\nENDFILE\nENDFILE\n"
                 "abcdefghijk.rsc\nWAVE 4\nENDFILE\nb" +
                 std::string(100, ' ') + "b\nENDFILE\n\x1A\nWAVE 5\nENDFILE\nc\nWAVE 6\nENDFIL"),
             "M; abcdefghijk.rsc, WAVE 4; b; c, WAVE 6\n4" + id +
                 "\n8: more resources than line 2 says, the file is left out: correct it\n"
                 "9: the file name has more than 15 characters, the resources below are left "
                 "out\n12: ENDFILE without a file before it, passed over\n"
                 "18: no file name, the resources below are left out\n23" +
                 id},
            {bytesOf("M\n1\na\nWAVE 1"),
             "M; a, WAVE 1\n4: the map ends without ENDFILE: write one behind the last file"},
        });
    using namespace std::string_literals;
    expectRead(readMap, {{bytesOf("M\0x\n1\0\na\0b\nWAVE\0 1\nWAVE 2\0\nENDFILE"s),
                          "M\0x; a, WAVE 2\n4"s + id}});
    const std::string lines = "AO:1 Sequence:2 Sound:70000\r\rao: 1\tSequence: 2\tSound: 3\n"
                              "AO: 1 Sequence: 2 Sound: x\nAO: 32768 Sequence: 1 Sound: 1\nAO: 1 "
                              "Sequence: -32769 Sound: 1\nAO: -32768 Sequence: 32767 Sound: 0";
    expectRead(readAudioMap,
               {{bytesOf(lines), "line 3? line 4? line 5? line 6? 1 2 70000; -32768 32767 0; "}});
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

TEST(Animation, IsRefusedWithItsDamageAndHasPlacesOfTwelveBits) {
    constexpr std::size_t kPlace = 18;
    const Bytes good = animation::write(kAnimation);
    const auto cut = [&](long size) { return Bytes(good.begin(), good.begin() + size); };
    expectDamaged(
        readAnimation, good,
        {
            {"!the animation has no sequences; it has no sequence", {{0, 0}}},
            {"!the animation has no frames; its number of frames is negative", {{3, 0x80}}},
            {"!frame 2 lies past the end", {{14, 200}}},
            {"!frame 2 is damaged in row 1", {{14, 2}}}, // in the middle of frame 1
            {"!sequence 1 has no entries", {{22, 0}}},
            {"!sequence 2 has no entries; its sequences are cut short", {{49, 0x80}}},
            {"!sequence 1 shows frame 3 of 2", {{36, 2}}},
            {"!sequence 1 has no end", {{44, 0xFE}}},
            {"!frame 1 is empty", {{60, 0}, {62, 0}}},
            {"!frame 1 is damaged in row 1", {{64, 251}}},
            {"!frame 2 is damaged in row 2", {{75, 2}}},
            {"8/s 2047 2047 7*", {{kPlace, 0x77FFFF}}},
            {"8/s 2048 2048 7*", {{kPlace, 0x880000}}},
            {"8/s -1 -1 7*", {{kPlace, 0x880101}}},
            {"8/s -2047 -2047 7*", {{kPlace, 0xFFFFFF}}},
        });
    const std::string cutOff = "!the animation is cut off; its ";
    expectRead(readAnimation, {{cut(9), cutOff + "header is cut short"},
                               {cut(21), cutOff + "frame table is cut short"},
                               {cut(47), cutOff + "sequences are cut short"},
                               {manyFrames(0), "8/s 0 0 0 1x257*"},
                               {manyFrames(6), "!frame 4 overlaps other frames"}});
}

TEST(Font, IsRefusedWithItsDamage) {
    const std::string damaged = "!damaged font: ";
    const std::string outside = " lies outside of the others' row";
    expectDamaged(readFont, font::write(smallFont()).value,
                  {
                      {damaged + "its characters are -32768 to 5", {{3, 0x80}}},
                      {damaged + "its characters are 0 to 261", {{5, 1}}},
                      {damaged + "its characters are 6 to 5", {{2, 6}}},
                      {damaged + "its tables lie in its head", {{4, 200}, {16, 0}}},
                      {damaged + "its characters have more rows than its pictures", {{14, 2}}},
                      {"!the font is cut off", {{25, 0xFF}}},
                      {damaged + "the picture of character 1" + outside, {{34, 4}}},
                      {damaged + "the picture of character 3" + outside, {{41, 0x7F}}},
                  });
}

TEST(Cursor, TellsDamageFromOtherKinds) {
    const std::string other = "90 3x2@2,1:-";
    expectDamaged(readCursors, kCursor,
                  {
                      {"!the cursor's picture is cut off", {{14, 67}, {14, 3}}},
                      {"!no cursor file", {{4, 0}}},
                      {"!the cursor is cut off", {{21, 0xFF}}},
                      {"!damaged cursor: a pixel lies outside of its colours", {{74, 3}}},
                      {other + " 4x2@*", {{26, 4}}}, // another width than the directory's
                      {other + " 3x2@2,1:FFC80A14FF(3)FFC80A14FFC80A14FFC80A14FF(3)",
                       {{36, 4}}},                    // four bits a pixel
                      {other, {{38, 1}, {57, 0xFF}}}, // compressed; too many colours
                      {"90 3x2@2,1:FFC80A14(4)FF010203(4)FFC80A14(4) "
                       "3x2@2,1:FFC80A14(4)FF010203FF(3)FFC80A14(4)",
                       {{82, 0xA0}}}, // inverting
                  });
}

TEST(Sound, IsFoundAmongAnyOtherChunks) {
    const Bytes samples(10, 200);
    const auto riff = [&](RiffSound sound) {
        sound.data = samples;
        return sound.build();
    };
    expectRead(readSound, {
                              {riff({.rate = 22000}), "44+10 22000 1 8"},
                              {riff({.rate = 22255}), "44+10 22255 1 8"},
                              {riff({.rate = 11127}), "44+10 11127 1 8"},
                              {riff({.rate = 22254}), "44+10 22254 1 8 rate"},
                              {riff({.rate = 0}), "44+10 0 1 8 rate"},
                              {riff({.rate = 0xFFFFFFFF}), "44+10 2147483647 1 8 rate"},
                              {riff({.channels = 2}), "44+10 22050 2 8 channels"},
                              {riff({.bits = 16}), "44+10 22050 1 16 bits"},
                              {riff({.extraFormat = 3}), "48+10 22050 1 8"},
                              {riff({.before = 5, .between = 7}), "74+10 22050 1 8"},
                              {riff({.before = 996}),
                               "1048+10 22050 1 8"}, // the format ends with the first bytes
                              {riff({.between = 20000}), "20052+10 22050 1 8"},
                              {riff({.claimed = 0xFFFFFFFF}), "44+10 22050 1 8 of 4294967295"},
                              {riff({.claimed = 11}), "44+10 22050 1 8 of 11"},
                              {riff({.claimed = 9}), "44+9 22050 1 8"},
                              {riff({.claimed = 0}), "44+0 22050 1 8"},
                          });
    using Writer = ByteWriter;
    const auto file = [](auto... parts) {
        Writer out;
        out.text("RIFF").u32(0xFFFFFFFF).text("WAVE");
        (parts(out), ...);
        return out.take();
    };
    const auto chunk = [](std::string_view tag, std::uint32_t size, std::size_t bytes) {
        return [=](Writer& out) { out.text(tag).u32(size).block(Bytes(bytes, 200)); };
    };
    const auto format = [](std::uint32_t rate) {
        return [=](Writer& out) {
            out.text("fmt ").u32(16).u16(1).u16(1).u32(rate).u32(rate).u16(1).u16(8);
        };
    };
    const auto empty = [](int count) {
        return [=](Writer& out) {
            for (int i = 0; i < count; ++i) out.text("JUNK").u32(0);
        };
    };
    const auto extensible = [](std::uint32_t size) {
        return [=](Writer& out) {
            out.text("fmt ")
                .u32(size)
                .u16(0xFFFE)
                .u16(1)
                .u32(22050)
                .zeros(6)
                .u16(8)
                .zeros(8)
                .u16(3)
                .zeros(14);
        };
    };
    const auto plain = format(22050);
    const auto data = chunk("data", 10, 10);
    const auto four = chunk("data", 4, 4);
    expectRead(
        readSound,
        {
            {file(data, plain), "0+0 22050 1 8"},
            {file(data, plain, four), "62+4 22050 1 8"},
            {file(plain, four, data), "44+4 22050 1 8"},
            {file(plain, format(11025), data), "68+10 22050 1 8"},
            {file(plain, empty(1000), data), "8044+10 22050 1 8"},
            {file(empty(125), plain, data), "1044+10 22050 1 8"},
            {file(empty(127), plain, data), "0+0 0 1 8 no format"}, // behind the first bytes
            {file(plain, chunk("LIST", 0x7FFFFFFF, 4), data), "0+0 22050 1 8"},
            {file(plain, chunk("LIST", 0xFFFFFFFF, 4), data), "0+0 22050 1 8"},
            {file(plain, chunk("LIST", 3, 3), data), "0+0 22050 1 8"}, // without its pad byte
            {file(chunk("fmt ", 16, 15)), "0+0 2147483647 51400 0 coding 51400 rate channels bits"},
            {file(chunk("fmt ", 0, 0), data),
             "28+10 10 24948 51400 coding 24932 rate channels bits"},
            {file(extensible(40), data), "68+10 22050 1 8 coding 3"},
            {file(extensible(39), data), "68+10 22050 1 8 coding 65534"},
            {bytesOf("just some text"), "unknown"},
            {bytesOf("RIFXxxxxWAVE"), "unknown"},
        });
    const auto mac = [&](MacSound sound) {
        sound.data = samples;
        return sound.build();
    };
    expectRead(readSound, {
                              {mac({.options = 0xA0}), "42+10 22050 1 8"},
                              {mac({.encoding = 0xFF}), "84+10 22050 1 8"},
                              {mac({.format = 2}), "36+10 22050 1 8"},
                              {mac({.format = 3}), "unknown"},
                              {mac({.rate = 0x56EE8BA3}), "42+10 22254 1 8"},
                              {mac({.rate = 0x2B7745D1}), "42+10 11127 1 8"},
                              {mac({.rate = 0xAC440000}), "42+10 44100 1 8 rate"},
                              {mac({.synthesizers = 2}), "42+10 22050 1 8 synthesizers"},
                              {mac({.synthesizer = 1}), "42+10 22050 1 8 synthesizer"},
                              {mac({.options = 0xC0}), "42+10 22050 1 8 options"},
                              {mac({.commands = 2}), "42+10 22050 1 8 commands"},
                              {mac({.command = 0x0051}), "42+10 22050 1 8 command"},
                              {mac({.param1 = 1}), "42+10 22050 1 8 parameter1"},
                              {mac({.param2 = 0x0E}), "42+10 22050 1 8 parameter2"},
                              {mac({.format = 2, .param2 = 0x14}), "36+10 22050 1 8 parameter2"},
                              {mac({.encoding = 0xFE}), "84+10 22050 1 8 encoding"},
                              {mac({.length = 0x80000000}), "42+10 22050 1 8 of 2147483648"},
                              {mac({.length = 3}), "42+3 22050 1 8"},
                          });
}

} // namespace
