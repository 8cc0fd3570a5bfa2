#include "resources/cursors.h"

#include "curbuilder.h"
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omcursor.h"
#include "omtrinketwindow.h"

namespace {

class CursorsTest : public testing_support::OMAppTest {
  protected:
    /// Cursors from 1 to below `end`, and a damaged one.
    void putLibrary(const char* name, int end) {
        testing_support::NEBuilder library;
        const auto cursor = testing_support::buildCursor({testing_support::CurPicture{}});
        for (int id = 1; id < end; ++id) library.add("CURSOR", id, cursor);
        files.put(name, library.add("CURSOR", 30000, "damaged").build());
    }
    static int idOf(int wanted) { return OMTrinketWindow::findCursor(wanted)->id(); }
};

TEST_F(CursorsTest, OpensItsLibraryWhenACursorIsWantedAndReportsWhatIsMissingOnce) {
    putLibrary("cursors.rsc", 3);
    {
        const RCursors cursors;
        EXPECT_EQ(idOf(kOMCursorCross), kOMCursorCross);
        EXPECT_EQ(OMResMgrFindFile(1, "CURSOR"), nullptr);
        for (int i = 0; i < 2; ++i)
            for (const int id : {1, 2, 3, 0, 30000, -7})
                EXPECT_EQ(idOf(id), id == 1 || id == 2 ? id : kOMCursorArrow);
        EXPECT_EQ(OMTrinketWindow::findCursor(1), OMTrinketWindow::findCursor(1));
        EXPECT_EQ(files.text("zorbelog.txt"),
                  "ERROR: Cursor 3 is in no active library: the arrow is shown\n"
                  "ERROR: Cursor 0 is in no active library: the arrow is shown\n"
                  "ERROR: Cursor 30000 is damaged, pack it anew: the arrow is shown\n"
                  "ERROR: Cursor -7 is not one of -1 to -4: the arrow is shown\n");
    }
    EXPECT_FALSE(OMTrinketWindow::hasCursorLocator());
    EXPECT_EQ(OMResMgrFindFile(1, "CURSOR"), nullptr) << "the library is let go";
}

TEST_F(CursorsTest, WithoutALibraryThereAreTheCursorsOfOtherFilesAndThePlatforms) {
    const RCursors cursors;
    for (const int id : {1, 2}) EXPECT_EQ(idOf(id), kOMCursorArrow);
    EXPECT_EQ(files.text("zorbelog.txt"),
              "Warning: cursors.rsc is not there, arrows are shown: pack one\n"
              "ERROR: Cursor 1 is in no active library: the arrow is shown\n"
              "ERROR: Cursor 2 is in no active library: the arrow is shown\n");
    putLibrary("scene.rsc", 2);
    OMResMgrUseDLL16("scene.rsc", true);
    EXPECT_EQ(idOf(1), 1) << "it may come later";
    EXPECT_TRUE(failures.empty());
}

TEST_F(CursorsTest, KeepsABoundedNumber) {
    constexpr int kMany = 2 * static_cast<int>(RCursors::kMostKept);
    putLibrary("cursors.rsc", kMany);
    const RCursors cursors;
    const auto shown = OMTrinketWindow::findCursor(1);
    const std::weak_ptr<const OMCursor> unused = OMTrinketWindow::findCursor(2);
    for (int id = 3; id < kMany; ++id) ASSERT_EQ(idOf(id), id);
    EXPECT_TRUE(unused.expired());
    EXPECT_EQ(OMTrinketWindow::findCursor(1), shown) << "is not made twice";
    EXPECT_EQ(idOf(kOMCursorWait), kOMCursorWait);
}

} // namespace
