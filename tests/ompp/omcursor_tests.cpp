// Cursors out of resources: their pixels, the picture that is taken, and damage.
#include "curbuilder.h"
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omcursor.h"

using namespace testing_support;

namespace {

using Pixels = std::vector<std::uint32_t>;

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kBlack = 0xFF000000;

class CursorTest : public OMAppTest {
  protected:
    /// None when the bytes gave the arrow.
    std::optional<platform::CursorImage> read(const Bytes& resource) {
        const OMCursor cursor(7, resource);
        if (cursor.id() == kOMCursorArrow) return std::nullopt;
        return machine.display().cursorImages.at(7);
    }
    Pixels pixelsOf(const CurPicture& picture) {
        return read(buildCursor({picture})).value().pixels;
    }
};

/// A picture that is told from others by its hot spot.
CurPicture square(int side, int mark) {
    return {
        .width = side, .height = side, .depth = 1, .hotSpot = {mark, 3}, .table = {0, 0xFFFFFF}};
}

TEST_F(CursorTest, ReadsThePixelsOfAllDepths) {
    Pixels indices(18); // 9 by 2: rows go beyond a byte
    Pixels colours(18);
    Pixels expected(18, kBlack);
    for (const std::size_t at : {0, 7, 8, 9, 16})
        indices[at] = 1, colours[at] = 0xFF0000, expected[at] = kRed;
    for (const int depth : {1, 4, 8, 24, 32}) {
        CurPicture picture{.width = 9, .height = 2, .depth = depth};
        picture.pixels = depth <= 8 ? indices : colours;
        if (depth <= 8) {
            picture.table.assign(std::size_t{1} << depth, 0x00FF00);
            picture.table[0] = 0, picture.table[1] = 0xFF0000;
        }
        EXPECT_EQ(pixelsOf(picture), expected) << depth;
    }
    EXPECT_EQ(pixelsOf({.width = 2,
                        .height = 1,
                        .depth = 4,
                        .colours = 2,
                        .table = {0x0000FF, 0xFF0000},
                        .pixels = {1, 9}}),
              (Pixels{kRed, kBlack}))
        << "what a table leaves out is black";
    CurPicture masked{.width = 4, .height = 1, .depth = 32};
    masked.pixels = {0xFFFFFF, 0xFFFFFF, 0, 0}, masked.mask = {0, 1, 0, 1};
    EXPECT_EQ(pixelsOf(masked), (Pixels{0xFFFFFFFF, kBlack, kBlack, 0}))
        << "no alpha anywhere; what would invert the screen is black";
    masked.pixels = {0x80FF0000, 0x7FFF0000, 0xFFFFFFFF, 0x00FFFFFF}, masked.mask = {1, 0, 1, 0};
    EXPECT_EQ(pixelsOf(masked), (Pixels{kRed, 0, 0xFFFFFFFF, 0})) << "alpha counts, not the mask";
}

TEST_F(CursorTest, TakesThePictureThatSuitsBestOrTheArrow) {
    std::vector<CurPicture> all(8, square(32, 1));
    all[0].compression = 1;
    all[1].claimed = 100;
    all[2].claimed = 0xFFFFFFFF;
    all[3].extraHeight = 1;
    all[4].headerSize = 124;
    all[5].colours = 3;
    all[6].depth = 16;
    all[7] = square(257, 8);
    for (const CurPicture& unusable : all) EXPECT_FALSE(read(buildCursor({unusable})));
    all.push_back(square(256, 9));
    all.push_back(square(16, 10));
    EXPECT_EQ(read(buildCursor(all))->hotSpot, (platform::Point{9, 3})) << "the first that can be";
    all.push_back(square(32, 11));
    all.push_back(square(32, 12));
    EXPECT_EQ(read(buildCursor(all))->hotSpot, (platform::Point{11, 3})) << "the usual size";
    EXPECT_EQ(read(buildCursor({square(4, 200)}))->hotSpot, (platform::Point{3, 3})) << "inside";

    Bytes bytes = buildCursor({square(32, 1)});
    files.put("c.rsc", NEBuilder().add("CURSOR", 3, bytes).add("CURSOR", 4, "damaged").build());
    EXPECT_FALSE(read(buildCursor({square(32, 1)}, 1))) << "an icon";
    bytes.resize(bytes.size() + 40, std::byte{0xEE});
    EXPECT_TRUE(read(bytes)) << "padded";
    bytes.resize(bytes.size() - 40);
    while (!bytes.empty()) {
        bytes.pop_back();
        ASSERT_FALSE(read(bytes)) << bytes.size();
    }
    EXPECT_EQ(OMCursor(-5).id(), kOMCursorArrow);
    EXPECT_EQ(takeFailures(), Strings{"OMCursor::OMCursor - invalid cursor id!"});
    OMResMgrUseDLL16("c.rsc", true);
    EXPECT_EQ(OMCursor::load(3)->id(), 3);
    for (const int id : {0, 4, 5, 65539}) EXPECT_EQ(OMCursor(id).id(), kOMCursorArrow) << id;
    EXPECT_EQ(takeFailures(), Strings{});
}

} // namespace
