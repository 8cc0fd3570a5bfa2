// Cursors out of resources: the picture that is taken, and damage.
#include "../../fuzz/cursorfiles.h"
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "formats/picture/cursor.h"
#include "omcursor.h"

using namespace testing_support;

namespace {

using CursorTest = OMAppTest;
using fuzzing::buildCursor;

/// A picture that is told from others by its hot spot.
fuzzing::CurPicture square(int side, int mark = 0) {
    return {.width = side, .height = side, .hotSpot = {mark, 3}};
}

TEST_F(CursorTest, TakesThePictureThatSuitsBestOrTheArrow) {
    // The hot spot; -1 of the arrow.
    const auto read = [](const Bytes& bytes) {
        const auto cursor = formats::picture::readCursor(formats::asNumbers(bytes));
        EXPECT_EQ(OMCursor(7, bytes).id(), cursor ? 7 : kOMCursorArrow);
        return cursor ? cursor->hotSpot.x : -1;
    };
    const Bytes whole = buildCursor({square(32, 1)});
    // An icon; a directory that tells too little, and too much; a mask too high, another header,
    // another depth, a coding.
    for (const auto& [at, value] :
         {std::pair{2, 1}, {14, 100}, {17, 255}, {30, 65}, {22, 124}, {36, 16}, {38, 1}}) {
        Bytes damaged = whole;
        damaged.at(static_cast<std::size_t>(at)) = static_cast<std::byte>(value);
        EXPECT_EQ(read(damaged), -1) << at;
    }
    EXPECT_EQ(read(buildCursor({square(257)})), -1);
    std::vector<fuzzing::CurPicture> all{square(257, 8), square(256, 9), square(16, 10)};
    EXPECT_EQ(read(buildCursor(all)), 9) << "the first that can be";
    for (const int mark : {11, 12}) all.push_back(square(32, mark));
    EXPECT_EQ(read(buildCursor(all)), 11) << "the usual size";
    EXPECT_EQ(read(buildCursor({square(4, 200)})), 3) << "inside";
    files.put("c.rsc", NEBuilder().add("CURSOR", 3, whole).add("CURSOR", 4, "damaged").build());
    OMResMgrUseDLL16("c.rsc", true);
    EXPECT_EQ(OMCursor::load(3)->id(), 3);
    for (const int id : {0, 4, 5, 65539, -5}) EXPECT_EQ(OMCursor(id).id(), kOMCursorArrow) << id;
    EXPECT_EQ(takeFailures(), Strings{"OMCursor::OMCursor - invalid cursor id!"});
}

} // namespace
