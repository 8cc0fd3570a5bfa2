// What the writers of formats can hold, and what they refuse.
#include "formats/reading.h"

#include "formats/library/writer.h"

namespace {

using namespace testing_support;
using library::Resource;

TEST(Library, TakesTheSmallestShiftThatReachesEverything) {
    const struct {
        std::size_t size;
        int count;
        int shift;
    } cases[] = {
        {0xFFFF * 16, 1, 4},     // the largest that a length of 16 bits can tell
        {0xFFFF * 16 + 1, 1, 5}, //
        {0x8000 * 16, 2, 4},     // the second begins just within reach
        {0x8000 * 16, 3, 5},     // the third does not
        {0xFFFF * 64 + 1, 1, 7},
    };
    for (const auto& [size, count, shift] : cases) {
        std::vector<Resource> resources;
        for (std::uint16_t id = 1; id <= count; ++id)
            resources.push_back({"WAVE", id, Bytes(size, static_cast<std::uint8_t>(id))});
        const Bytes file = library::write("TEST", resources).value;
        EXPECT_EQ(file.at(library::kWrittenTable), shift) << size << " x " << count;
        const auto index = library::Index::read(readAt(file), file.size());
        for (int id = 1; id <= count; ++id) {
            const std::size_t offset = index->find(id, "WAVE")->offset;
            EXPECT_TRUE(file.at(offset) == id && file.at(offset + size - 1) == id);
        }
        EXPECT_FALSE(index->find(count + 1, "WAVE") || index->find(1, "wave"));
    }
}

TEST(Library, RefusesMoreResourcesThanItsTableHolds) {
    // Offsets of 32768 and more of a type's name were read as integer types.
    for (const auto& [type, most] : {std::pair("WAVE", 2728U), std::pair("CURSOR", 5440U)}) {
        std::vector<Resource> resources(most, Resource{type, 1, {1}});
        const Bytes file = library::write("MANY", resources).value;
        EXPECT_EQ(library::Index::read(readAt(file), file.size())->ids(type).size(), most);
        resources.resize(most + 20, resources[0]);
        EXPECT_NE(library::write("MANY", resources).refusal, "") << type;
    }
}

TEST(Library, KnowsItsTypes) {
    EXPECT_EQ(library::typeNumber("ICON"), 14);
    EXPECT_EQ(library::typeNumber("#300"), 300);
    for (const char* good : {"WAVE", "a.b!", "ACCELERATOR", "#1", "#32767"})
        EXPECT_TRUE(library::isResourceType(good)) << good;
    for (const char* bad : {"", "WAV", "WAVES", "WA E", "#", "#0", "#32768", "#-12", "Cursor"})
        EXPECT_FALSE(library::isResourceType(bad)) << bad;
}

TEST(Animation, TellsWhatItsFieldsCannotHold) {
    const struct {
        std::string text; ///< begins the reason
        void (*spoil)(animation::Animation&);
    } rows[] = {
        {"", [](auto&) {}},
        {"the number of sequences is 0", [](auto& a) { a.sequences.clear(); }},
        {"the number of sequences is 32768",
         [](auto& a) {
             a.sequences.resize(32768, {{0, 0, -1, 0}});
         }},
        {"the number of frames is 0", [](auto& a) { a.frames.clear(); }},
        {"the rate is 256", [](auto& a) { a.framesPerSecond = 256; }},
        {"the embedded x is -2048", [](auto& a) { a.x = -2048; }},
        {"the embedded y is 2049", [](auto& a) { a.y = 2049; }},
        {"the embedded depth is 256", [](auto& a) { a.depth = 256; }},
        {"a frame's width is 32768", [](auto& a) { a.frames[0].width = 32768; }},
        {"a frame's height is 0", [](auto& a) { a.frames[0].height = 0; }},
        {"a step's code is 1", [](auto& a) { a.sequences[0][1].code = 1; }},
    };
    for (const auto& [text, spoil] : rows) {
        animation::Animation stored{
            255, 2048, -2047, 255, {{32767, 1, {}}}, {animation::stillSequence()}};
        spoil(stored);
        const std::string why = animation::whyNotStored(stored);
        EXPECT_TRUE(text.empty() ? why.empty() : why.starts_with(text)) << why;
    }
}

TEST(Font, RefusesWhatIsTooWide) {
    font::Font wide{.lastChar = 255};
    for (int code = 0; code < 40; ++code) wide.glyphs[code] = {1, 0, 0, 1000, 0, {}};
    EXPECT_NE(font::write(wide).refusal, "") << "40,000 columns";
}

TEST(Cursor, HasATableUpTo256Colours) {
    constexpr std::uint32_t kRedPixel = 0xFFC80A14;
    picture::Cursor large{64, 64, {0, 63}, picture::CursorPixels(64 * 64, kRedPixel)};
    for (std::uint32_t i = 0; i < 255; ++i) large.pixels[i] = 0xFF000303 | i << 16;
    const Bytes most = writeCursor(large);
    EXPECT_EQ(most[8], 0) << "256 colours";
    EXPECT_EQ(most.size(), 62U + 256 * 4 + 64 * 64 + 64 * 8);
    EXPECT_EQ(picture::readCursor(most)->pixels, large.pixels);
    large.pixels.back() = 0; // black is one more
    const Bytes more = writeCursor(large);
    EXPECT_EQ(more[36], 24) << "bits a pixel";
    EXPECT_EQ(more.size(), 62U + 64 * 64 * 3 + 64 * 8);
    EXPECT_EQ(picture::readCursor(more)->pixels, large.pixels);
    EXPECT_EQ(picture::plainPixels(picture::readCursorFile(more).value.entries[0]).value,
              large.pixels);
}

/// Of one kind; number `i` differs from its neighbours, but for solid and skipped ones.
Bytes blockOf(unsigned kind, std::size_t i) {
    Bytes pixels(16, kind == 2 ? 7 : kind == 3 ? 200 : static_cast<std::uint8_t>(10 + i % 90));
    if (kind < 2) pixels[1 + i % 15] = 101;
    if (kind == 1) pixels[1 + (i + 3) % 15] = 102;
    return pixels;
}

void roundTrip(std::size_t width, const std::vector<Bytes>& pictures) {
    auto frames = framesOf(movieOf(static_cast<std::uint32_t>(width), pictures).value());
    for (std::size_t i = 0; i < pictures.size(); ++i)
        EXPECT_TRUE(frames[static_cast<std::int64_t>(i)].picture == pictures[i]) << i;
}

TEST(Movie, TellsEveryKindOfBlockInEveryRun) {
    std::vector<std::size_t> lengths = {127, 128, 256, 512, 1024, 2048, 4096 + 60};
    for (std::size_t length = 1; length <= 60; ++length) lengths.push_back(length);
    for (const unsigned kind : {0U, 1U, 2U, 3U}) {
        std::vector<Bytes> row;
        for (const std::size_t length : lengths) {
            for (std::size_t i = 0; i < length; ++i) row.push_back(blockOf(kind, i));
            row.push_back(blockOf((kind + 1) % 4, 0));
        }
        const std::size_t width = row.size() * 4;
        Bytes picture(width * 4);
        for (std::size_t i = 0; i < picture.size(); ++i)
            picture[i] = row[i % width / 4][i / width * 4 + i % 4];
        const Bytes before(picture.size(), 7);
        roundTrip(width, {before, picture, before, before});
    }
}

TEST(Movie, NeedsValuesForTheMarkers) {
    // each pair of neighbouring colours once: blocks of 8 pairs in a row
    const auto pictureWith = [](std::size_t pairs) {
        constexpr std::size_t kBlocks = 65536 / 8;
        Bytes picture(kBlocks * 16);
        for (std::size_t i = 0; i < 65536; ++i) {
            const std::size_t pair = std::min(i, pairs - 1);
            const std::size_t at = i % 8 / 2 * kBlocks * 4 + i / 8 * 4 + i % 2 * 2;
            picture[at] = static_cast<std::uint8_t>(pair);
            picture[at + 1] = static_cast<std::uint8_t>(pair >> 8);
        }
        return picture;
    };
    roundTrip(65536 / 2, {pictureWith(65533)});
    roundTrip(65536 / 2, {pictureWith(65534)}); // 0 is there from the start
    EXPECT_FALSE(movieOf(65536 / 2, {pictureWith(65535)}));
}

/// Differences as frequent as the Fibonacci numbers make the deepest trees.
TEST(Movie, BoundsTheLengthOfCodes) {
    Bytes samples = {0};
    std::array<std::size_t, 2> counts{1, 1};
    for (unsigned step = 1; step <= 28; ++step) {
        for (std::size_t i = 0; i < counts[0]; ++i)
            samples.push_back(static_cast<std::uint8_t>(samples.back() + step));
        counts = {counts[1], counts[0] + counts[1]};
    }
    const MovieSoundFormat format{22050, 8, 1, true};
    const Bytes chunk = makeSoundChunk(format, samples);
    EXPECT_TRUE(readSoundChunk(format, ByteSpan(chunk).subspan(4)).value() == samples);
    for (std::size_t size = 4; size + 1 < chunk.size(); size += 7919) // cut off
        EXPECT_FALSE(readSoundChunk(format, ByteSpan(chunk).subspan(4, size - 4)));
}

} // namespace
