// Cursors out of resources: the picture that is taken, and damage.
#include "curbuilder.h"
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omcursor.h"

using namespace testing_support;

namespace {

using CursorTest = OMAppTest;

TEST_F(CursorTest, TakesThePictureThatSuitsBestOrTheArrow) {
    // The hot spot; -1 of the arrow.
    const auto read = [](const Bytes& bytes) {
        const auto cursor = formats::picture::readCursor(formats::asNumbers(bytes));
        EXPECT_EQ(OMCursor(7, bytes).id(), cursor ? 7 : kOMCursorArrow);
        return cursor ? cursor->hotSpot.x : -1;
    };
    const Bytes whole = buildCursor({{32, 32, {1, 3}}});
    // An icon; a directory that tells too little, and too much; a mask too high, another header,
    // another depth, a coding.
    for (const auto& [at, value] :
         {std::pair{2, 1}, {14, 100}, {17, 255}, {30, 65}, {22, 124}, {36, 16}, {38, 1}}) {
        Bytes damaged = whole;
        damaged.at(static_cast<std::size_t>(at)) = static_cast<std::byte>(value);
        EXPECT_EQ(read(damaged), -1) << at;
    }
    EXPECT_EQ(read(buildCursor({{257, 257}})), -1);
    std::vector<CurPicture> all{{257, 257, {8, 3}}, {256, 256, {9, 3}}, {16, 16, {10, 3}}};
    EXPECT_EQ(read(buildCursor(all)), 9) << "the first that can be";
    for (const int mark : {11, 12}) all.push_back({32, 32, {mark, 3}});
    EXPECT_EQ(read(buildCursor(all)), 11) << "the usual size";
    EXPECT_EQ(read(buildCursor({{4, 4, {200, 3}}})), 3) << "inside";
    files.put("c.rsc", NEBuilder().add("CURSOR", 3, whole).add("CURSOR", 4, "damaged").build());
    OMResMgrUseDLL16("c.rsc", true);
    EXPECT_EQ(OMCursor::load(3)->id(), 3);
    for (const int id : {0, 4, 5, 65539, -5}) EXPECT_EQ(OMCursor(id).id(), kOMCursorArrow) << id;
    EXPECT_EQ(takeFailures(), Strings{"OMCursor::OMCursor - invalid cursor id!"});
}

} // namespace
