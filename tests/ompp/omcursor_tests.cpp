#include "curbuilder.h"
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omapp.h"
#include "omcursor.h"

using namespace testing_support;
using platform::CursorImage;
using platform::Point;

namespace {

using Pixels = std::vector<std::uint32_t>;

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kWhite = 0xFFFFFFFF;
constexpr std::uint32_t kBlack = 0xFF000000;
constexpr int kId = 7;

class CursorTest : public FrameworkTest {
  protected:
    /// None when the bytes gave the arrow.
    std::optional<CursorImage> read(const Bytes& resource) {
        machine.display().cursorImages.clear();
        const OMCursor cursor(kId, resource);
        if (cursor.id() == kOMCursorArrow) return std::nullopt;
        EXPECT_EQ(cursor.id(), kId);
        return machine.display().cursorImages.at(kId);
    }
    std::optional<CursorImage> read(const std::vector<CurPicture>& pictures) {
        return read(buildCursor(pictures));
    }
    Pixels pixelsOf(const CurPicture& picture) {
        const auto image = read({picture});
        return image ? image->pixels : Pixels();
    }
};

/// A picture that is told from others by its hot spot.
CurPicture square(int side, int mark) {
    return {.width = side,
            .height = side,
            .depth = 1,
            .hotSpot = {mark, 0},
            .table = {0x000000, 0xFFFFFF}};
}

TEST_F(CursorTest, ReadsThePixelsOfAllDepths) {
    Pixels indices(18); // 9 by 2: rows go beyond a byte
    Pixels colours(18);
    Pixels expected(18, kBlack);
    for (const std::size_t at : {0, 7, 8, 9, 16}) {
        indices[at] = 1;
        colours[at] = 0xFF0000;
        expected[at] = kRed;
    }
    for (const int depth : {1, 4, 8, 24, 32}) {
        CurPicture picture{.width = 9, .height = 2, .depth = depth};
        picture.pixels = depth <= 8 ? indices : colours;
        if (depth <= 8) picture.table.assign(std::size_t{1} << depth, 0x00FF00);
        if (depth <= 8) picture.table[0] = 0;
        if (depth <= 8) picture.table[1] = 0xFF0000;
        EXPECT_EQ(pixelsOf(picture), expected) << depth;
    }
    CurPicture shortTable{.width = 2, .height = 1, .depth = 4, .colours = 2};
    shortTable.table = {0x0000FF, 0xFF0000};
    shortTable.pixels = {1, 9};
    EXPECT_EQ(pixelsOf(shortTable), (Pixels{kRed, kBlack})) << "what a table leaves out is black";
}

TEST_F(CursorTest, MasksAndAlphaSayWhatIsTransparent) {
    CurPicture masked{.width = 4, .height = 1, .depth = 24};
    masked.pixels = {0xFFFFFF, 0xFFFFFF, 0, 0};
    masked.mask = {0, 1, 0, 1};
    EXPECT_EQ(pixelsOf(masked), (Pixels{kWhite, kBlack, kBlack, 0}))
        << "what would invert the screen is black";
    masked.depth = 32;
    EXPECT_EQ(pixelsOf(masked), (Pixels{kWhite, kBlack, kBlack, 0})) << "no alpha anywhere";
    masked.pixels = {0x80FF0000, 0x7FFF0000, 0xFFFFFFFF, 0x00FFFFFF};
    masked.mask = {1, 0, 1, 0};
    EXPECT_EQ(pixelsOf(masked), (Pixels{kRed, 0, kWhite, 0})) << "alpha counts, not the mask";
}

TEST_F(CursorTest, TakesThePictureThatSuitsBest) {
    CurPicture compressed = square(32, 1);
    compressed.compression = 1;
    CurPicture cut = square(32, 2);
    cut.claimed = 100;
    CurPicture outside = square(32, 3);
    outside.claimed = 0xFFFFFFFF;
    CurPicture odd = square(32, 4);
    odd.extraHeight = 1;
    CurPicture newer = square(32, 5);
    newer.headerSize = 124;
    CurPicture manyColours = square(32, 6);
    manyColours.colours = 3;
    CurPicture otherDepth = square(32, 7);
    otherDepth.depth = 16;
    const std::vector<CurPicture> unusable{compressed, cut,         outside,    odd,
                                           newer,      manyColours, otherDepth, square(257, 8)};
    EXPECT_FALSE(read(unusable));

    std::vector<CurPicture> all = unusable;
    all.push_back(square(256, 9));
    all.push_back(square(16, 10));
    ASSERT_TRUE(read(all));
    EXPECT_EQ(read(all)->hotSpot, (Point{9, 0})) << "the first that can be read";
    all.push_back(square(32, 11));
    all.push_back(square(32, 12));
    EXPECT_EQ(read(all)->hotSpot, (Point{11, 0})) << "the usual size";

    CurPicture small = square(4, 200);
    small.hotSpot.y = 3;
    EXPECT_EQ(read({small})->hotSpot, (Point{3, 3})) << "inside the picture";
}

TEST_F(CursorTest, DamagedResourcesGiveTheArrow) {
    const Bytes whole = buildCursor({square(32, 1)});
    for (std::size_t length = 0; length < whole.size(); ++length)
        ASSERT_FALSE(
            read(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))))
            << length;
    Bytes padded = whole;
    padded.resize(whole.size() + 40, std::byte{0xEE});
    EXPECT_TRUE(read(padded));
    EXPECT_FALSE(read(buildCursor({square(32, 1)}, 1))) << "an icon";
    EXPECT_FALSE(read(std::vector<CurPicture>{}));
}

TEST_F(CursorTest, NumbersStandForThePlatformsCursorsAndForResources) {
    for (const int id : {kOMCursorArrow, kOMCursorWait, kOMCursorText, kOMCursorCross})
        EXPECT_EQ(OMCursor(id).id(), id);
    EXPECT_TRUE(takeFailures().empty());
    EXPECT_EQ(OMCursor(-5).id(), kOMCursorArrow);
    EXPECT_EQ(takeFailures(),
              (std::vector<std::string>{"OMCursor::OMCursor - invalid cursor id!"}));

    const OMApp app(OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8);
    files.put("c.rsc", NEBuilder()
                           .addStandard(12, 3, toText(buildCursor({square(32, 1)})))
                           .addStandard(12, 4, "damaged")
                           .build());
    OMResMgrUseDLL16("c.rsc", true);
    EXPECT_EQ(OMCursor::load(3)->id(), 3);
    for (const int id : {0, 4, 5, 65539}) EXPECT_EQ(OMCursor(id).id(), kOMCursorArrow) << id;
    EXPECT_TRUE(failures.empty());
}

} // namespace
