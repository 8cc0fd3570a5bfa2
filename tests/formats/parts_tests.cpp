// What formats are made of, numbers, words and rows of pixels; and what their writers can hold.
#include "../../fuzz/rowcheck.h"
#include "formats/base/latin1.h"
#include "formats/base/scanner.h"
#include "formats/library/writer.h"
#include "formats/reading.h"
#include "formats/texts/catalogue.h"

#include <numeric>
#include <random>

namespace {

using namespace testing_support;

TEST(Scanners, ReadNumbersWordsAndLinesUpToTheEnd) {
    const Bytes bytes = ByteWriter().u16(-0x7EFE).u16(-1).u32(-2).take();
    ByteReader reader(bytes), huge(bytes);
    EXPECT_TRUE(reader.u16() == 0x8102 && reader.i16() == -1 && reader.i32() == -2 && reader.ok());
    reader.seek(7);
    EXPECT_TRUE(reader.ok() && reader.u16() == 0 && !reader.ok()) << "no half numbers";
    reader.seek(0);
    EXPECT_EQ(reader.u8(), 0) << "it fails for good";
    huge.skip(1);
    EXPECT_TRUE(huge.text(SIZE_MAX).empty() && !huge.ok());
    TextScanner scanner("one\rtwo\r\n\n \t \nfive is long\n  AO:5 Sound");
    for (const char* line : {"one", "two", "five is "}) EXPECT_EQ(scanner.line(8), line);
    EXPECT_EQ(scanner.lineNumber(), 5);
    EXPECT_TRUE(!scanner.literal("ao:") && scanner.literal("AO:") && scanner.number() == 5);
    EXPECT_TRUE(!scanner.literal("Sounds") && scanner.word() == "Sound");
    EXPECT_TRUE(scanner.line(8).empty() && scanner.atEnd());
    const std::tuple<const char*, std::optional<int>, const char*> rows[] = {
        {"12 x", 12, "x"}, {" \t-7x", -7, "x"}, {"+5", 5, ""},
        {"x1", {}, "x1"},  {"+-5", {}, "+-5"},  {"2147483647", 2147483647, ""},
        {"+", {}, "+"},    {"", {}, ""},        {"2147483648 y", {}, "y"}};
    for (const auto& [text, number, rest] : rows) {
        TextScanner words(text);
        EXPECT_TRUE(words.number() == number && words.word() == rest) << text;
    }
    EXPECT_TRUE(equalIgnoringCase("SOM\xC7O.RSC", "som\xE7o.rsc"));
    EXPECT_FALSE(equalIgnoringCase("\xD7", "\xF7") || equalIgnoringCase("a", "ab"));
    EXPECT_EQ(lowerLatin1("A[Z\xC0\xDF"), "a[z\xE0\xDF");
    EXPECT_EQ(lowerAscii("A[Z\xC0") + upperAscii("\xE0z{a"), "a[z\xC0\xE0Z{A");
}

TEST(Catalogues, AreReadAndWritten) {
    const std::string file = "# by Ana\n#. said by Tilli\n#: a.mps:1\n#: b.mps:20\n#, fuzzy\n"
                             "msgctxt \"a.mps\"\nmsgid \"Bom \\\"dia\\\"\"\n"
                             "msgstr \"\"\n\"Good\\n\"\n\"\\tmorning\\\\\"\n\n"
                             "#~ msgid \"Ol\xC3\xA1\"\n#~ msgstr \"\"\n";
    const auto read = texts::readCatalogue(file);
    ASSERT_TRUE(read.ok() && read.value.size() == 2) << read.refusal;
    EXPECT_EQ(read.value[0].text + '/' + read.value[0].translation,
              "Bom \"dia\"/Good\n\tmorning\\");
    EXPECT_TRUE(read.value[0].isFuzzy && read.value[1].isObsolete && read.value[1].line == 12);
    EXPECT_EQ(texts::writeCatalogue(read.value), file);
    const auto loose =
        texts::readCatalogue("\xEF\xBB\xBFmsgid\"a\"\r\n\t\"b\" \r\n#| msgid \"c\"\r\n"
                             "msgstr\"x\"\r\nmsgid \"d\"\r\nmsgstr \"\"");
    ASSERT_TRUE(loose.ok() && loose.value.size() == 2) << loose.refusal;
    EXPECT_TRUE(loose.value[0].text == "ab" && loose.value[0].isTranslated() &&
                !loose.value[1].isTranslated());
    for (const char* wrong :
         {"\"a\"", "msgstr \"a\"", "msgid \"a\"", "msgid \"a\"\nmsgid \"b\"", "msgid a",
          "msgid \"a", "msgid \"\\", "msgid \"\\q\"", "msgid \"a\"b\"", "msgid \"\xFF\"",
          "msgid \"a\"\nmsgid_plural \"b\"", "msgctxt \"a\"\nmsgctxt \"b\""})
        EXPECT_FALSE(texts::readCatalogue(wrong).ok()) << wrong;
    EXPECT_EQ(texts::readCatalogue("\n\nmsgid x").refusal.substr(0, 3), "3: ");
}

constexpr std::uint8_t kClear = 7; ///< the transparent index of rows

Bytes encoded(const Bytes& pixels, std::optional<std::uint8_t> clear = kClear) {
    Bytes out;
    animation::encodeRow(pixels, clear, out);
    return out;
}

TEST(AnimationRow, IsPackedAndUnpacked) {
    using namespace animation;
    Bytes long251(251); // neither equal neighbours nor kClear
    std::iota(long251.begin(), long251.end(), std::uint8_t{8});
    const std::pair<Bytes, Bytes> rows[] = {
        {{}, {}},
        {Bytes(251, kClear), {0, 250, 0, 1}},
        {Bytes(251, 9), {255, 9, 250, 255, 9, 1}},
        {{1, 5, 5, 5}, {4, 1, 5, 5, 5}},   // a run of 3 with 3 left
        {{5, 5, 5, 1}, {255, 5, 3, 1, 1}}, // with 4 left
        {{1, kClear, kClear, kClear}, {1, 1, 0, 3}},
        {{1, 2, kClear, 3}, {2, 1, 2, 0, 1, 1, 3}},
    };
    for (const auto& [pixels, packed] : rows) EXPECT_EQ(encoded(pixels), packed);
    EXPECT_EQ(encoded(Bytes(4, kClear), {}), (Bytes{255, kClear, 4})) << "all opaque";
    EXPECT_TRUE(encoded(long251)[0] == 250 && encoded(long251)[251] == 1);
    // Data of a row four wide that end where the damage is, and how much of them is taken.
    const std::pair<Bytes, std::size_t> damaged[] = {
        {{}, 0},       {{1, 5, 251, 9, 9}, 3},     {{1, 5, 0, 0, 3}, 4}, {{255, 5, 0, 3}, 3},
        {{255, 5}, 2}, {{5, 1, 2, 3, 4, 6, 1}, 6},
    };
    for (const auto& [data, bytes] : damaged)
        EXPECT_EQ(skipRow(data, 4), (RowEnd{bytes, false})) << bytes;
    EXPECT_EQ(skipRow(Bytes{1, 2}, 0), (RowEnd{0, true})) << "a row without pixels";
    std::mt19937 random(1);
    for (std::size_t round = 0; round < 500; ++round) {
        Bytes pixels = round ? Bytes() : long251;
        while (pixels.size() < round * 2)
            pixels.resize(pixels.size() + (random() % 4 ? 1 : random() % 400),
                          static_cast<std::uint8_t>(random() % 9));
        Bytes data = encoded(pixels), back(pixels.size());
        ASSERT_LE(data.size(), pixels.size() * 2);
        const RowEnd whole{data.size(), true};
        data.push_back(3); // the next row
        ASSERT_EQ(decodeRow(data, back, kClear), whole);
        ASSERT_EQ(back, pixels);
        ASSERT_EQ(skipRow(data, static_cast<int>(pixels.size())), whole);
    }
    constexpr std::uint8_t kTokens[] = {0, 1, 3, 250, 251, 254, 255};
    for (int round = 0; round < 20000; ++round) {
        Bytes data(random() % 12); // as large as it is, so that the sanitizer sees a read past it
        for (std::uint8_t& byte : data) byte = kTokens[random() % std::size(kTokens)];
        fuzzing::checkRows(data, static_cast<int>(random() % 6), 3);
    }
}

TEST(Library, TakesTheSmallestShiftThatReachesEverything) {
    const std::array<std::size_t, 3> rows[] = {
        {0xFFFF * 16, 1, 4},     // the largest that a length of 16 bits can tell
        {0xFFFF * 16 + 1, 1, 5}, //
        {0x8000 * 16, 2, 4},     // the second begins just within reach
        {0x8000 * 16, 3, 5},     // the third does not
        {0xFFFF * 64 + 1, 1, 7},
    };
    for (const auto& [size, count, shift] : rows) {
        std::vector<library::Resource> resources;
        for (std::uint16_t id = 1; id <= count; ++id)
            resources.push_back({"WAVE", id, Bytes(size, static_cast<std::uint8_t>(id))});
        const Bytes file = library::write("TEST", resources).value;
        EXPECT_EQ(file.at(library::kWrittenTable), shift) << size << " x " << count;
        const auto index = library::Index::read(readAt(file), file.size());
        const std::size_t last = index->find(static_cast<int>(count), "WAVE")->offset;
        EXPECT_TRUE(file.at(last) == count && file.at(last + size - 1) == count);
        EXPECT_FALSE(index->find(static_cast<int>(count) + 1, "WAVE") || index->find(1, "wave"));
    }
}

TEST(Library, KnowsItsTypesAndRefusesMoreResourcesThanItsTableHolds) {
    EXPECT_EQ(library::typeNumber("ICON"), 14);
    EXPECT_EQ(library::typeNumber("#300"), 300);
    for (const char* good : {"WAVE", "a.b!", "ACCELERATOR", "#1", "#32767"})
        EXPECT_TRUE(library::isResourceType(good)) << good;
    for (const char* bad : {"", "WAV", "WAVES", "WA E", "#", "#0", "#32768", "#-12", "#12x",
                            "#99999999999", "Cursor"})
        EXPECT_FALSE(library::isResourceType(bad)) << bad;
    // Offsets of 32768 and more of a type's name were read as integer types.
    for (const auto& [type, most] : {std::pair("WAVE", 2728U), std::pair("CURSOR", 5440U)}) {
        std::vector<library::Resource> resources(most, {type, 1, {1}});
        const Bytes file = library::write("MANY", resources).value;
        EXPECT_EQ(library::Index::read(readAt(file), file.size())->ids(type).size(), most);
        resources.resize(most + 20, {type, 1, {1}});
        EXPECT_NE(library::write("MANY", resources).refusal, "") << type;
    }
}

TEST(Animation, TellsWhatItsFieldsCannotHold) {
    using animation::Animation;
    const std::pair<std::string, void (*)(Animation&)> rows[] = {
        {"the number of sequences is 0", [](auto& a) { a.sequences.clear(); }},
        {"the number of sequences is 32768", [](auto& a) { a.sequences.resize(32768, {{}}); }},
        {"the number of frames is 0", [](auto& a) { a.frames.clear(); }},
        {"the rate is 256", [](auto& a) { a.framesPerSecond = 256; }},
        {"the embedded x is -2048", [](auto& a) { a.x = -2048; }},
        {"the embedded y is 2049", [](auto& a) { a.y = 2049; }},
        {"the embedded depth is 256", [](auto& a) { a.depth = 256; }},
        {"a frame's width is 32768", [](auto& a) { a.frames[0].width = 32768; }},
        {"a frame's height is 0", [](auto& a) { a.frames[0].height = 0; }},
        {"a step's code is 1", [](auto& a) { a.sequences[0][1].code = 1; }},
    };
    const Animation most{255, 2048, -2047, 255, {{32767, 1, {}}}, {animation::stillSequence()}};
    EXPECT_EQ(animation::whyNotStored(most), "");
    for (const auto& [text, spoil] : rows) {
        Animation spoilt = most;
        spoil(spoilt);
        EXPECT_TRUE(animation::whyNotStored(spoilt).starts_with(text)) << text;
    }
}

TEST(Writers, RefuseWideFontsAndTableTheColoursOfCursors) {
    font::Font wide{.lastChar = 255};
    for (int code = 0; code < 40; ++code) wide.glyphs[code] = {1, 0, 0, 1000, 0, {}};
    EXPECT_NE(font::write(wide).refusal, "") << "40,000 columns";
    picture::Cursor large{64, 64, {0, 63}, picture::CursorPixels(64 * 64, 0xFFC80A14)};
    for (std::uint32_t i = 0; i < 255; ++i) large.pixels[i] = 0xFF000303 | i << 16;
    for (const std::size_t pictureSize : {256 * 4 + 64 * 64, 64 * 64 * 3}) {
        const Bytes file = writeCursor(large);
        EXPECT_EQ(file.size(), 62 + pictureSize + 64 * 8);
        EXPECT_EQ(file[8], 0) << "256 colours, or none";
        EXPECT_EQ(picture::readCursor(file)->pixels, large.pixels);
        const auto entry = picture::readCursorFile(file).value.entries[0];
        EXPECT_EQ(picture::plainPixels(entry).value, large.pixels);
        large.pixels.back() = 0; // black is one more
    }
}

/// The first picture is told whole, the others as changes. None when a tree has too many values.
std::optional<Bytes> movieOf(std::uint32_t width, const std::vector<Bytes>& pictures) {
    const auto height = static_cast<std::uint32_t>(pictures[0].size()) / width;
    VideoCoder coder(static_cast<int>(width), static_cast<int>(height));
    for (const Bytes& picture : pictures) coder.add(picture, &picture == pictures.data());
    const auto video = coder.finish();
    if (!video) return std::nullopt;
    std::vector<MovieFrame> frames;
    for (const Bytes& picture : video->frames) frames.push_back({.picture = picture});
    return makeMovieFile({.width = width, .height = height}, video->trees, frames);
}
void roundTrip(std::uint32_t width, const std::vector<Bytes>& pictures) {
    for (const auto& [number, frame] : framesOf(movieOf(width, pictures).value()))
        EXPECT_TRUE(frame.picture == pictures[static_cast<std::size_t>(number)]) << number;
}

TEST(Movie, TellsEveryKindOfBlockInEveryRun) {
    std::vector<unsigned> lengths(60);
    std::iota(lengths.begin(), lengths.end(), 1U);
    lengths.insert(lengths.end(), {127, 128, 256, 512, 1024, 2048, 4096 + 60});
    std::vector<std::pair<unsigned, unsigned>> row; // of blocks: kinds and numbers
    for (const unsigned length : lengths)
        for (const unsigned kind : {0U, 1U, 2U, 3U, 4U}) // two colours, more, as before, one
            for (unsigned i = 0; i < length; ++i) row.emplace_back(kind, i);
    const auto width = static_cast<std::uint32_t>(row.size()) * 4;
    Bytes picture;
    for (std::size_t i = 0; i < width * 4; ++i) {
        const auto [kind, number] = row[i % width / 4];
        const std::size_t pixel = i / width * 4 + i % 4;
        unsigned colour = kind == 2 ? 7 : kind > 2 ? 200 + kind : 10 + number % 90;
        if (kind < 2 && pixel == 1 + number % 15) colour = 101;
        if (kind == 1 && pixel == 1 + (number + 3) % 15) colour = 102;
        picture.push_back(static_cast<std::uint8_t>(colour));
    }
    const Bytes before(picture.size(), 7);
    roundTrip(width, {before, picture, before, before});
}

TEST(Movie, NeedsValuesForTheMarkers) {
    // each pair of neighbouring colours once: blocks of 8 pairs in a row
    constexpr std::uint32_t kWidth = 65536 / 8 * 4;
    Bytes picture(kWidth * 4);
    for (const std::size_t pairs : {65535, 65534}) { // 0 is there from the start
        for (std::size_t i = 0; i < 65536; ++i) {
            const std::size_t at = i % 8 / 2 * kWidth + i / 8 * 4 + i % 2 * 2;
            picture[at] = static_cast<std::uint8_t>(std::min(i, pairs - 1));
            picture[at + 1] = static_cast<std::uint8_t>(std::min(i, pairs - 1) >> 8);
        }
        EXPECT_EQ(movieOf(kWidth, {picture}).has_value(), pairs == 65534);
    }
    roundTrip(kWidth, {picture});
}

/// Differences as frequent as the Fibonacci numbers make the deepest trees.
TEST(Movie, BoundsTheLengthOfCodes) {
    Bytes samples = {0};
    std::size_t count = 1, next = 1;
    for (unsigned step = 1; step <= 28; ++step) {
        for (std::size_t i = 0; i < count; ++i)
            samples.push_back(static_cast<std::uint8_t>(samples.back() + step));
        count = std::exchange(next, count + next);
    }
    const MovieSoundFormat format{22050, 8, 1, true};
    const Bytes chunk = makeSoundChunk(format, samples);
    EXPECT_TRUE(readSoundChunk(format, ByteSpan(chunk).subspan(4)).value() == samples);
    for (std::size_t size = 4; size + 1 < chunk.size(); size += 7919) // cut off
        EXPECT_FALSE(readSoundChunk(format, ByteSpan(chunk).subspan(4, size - 4)));
}

} // namespace
