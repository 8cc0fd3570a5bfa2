#include "resources/cursors.h"

#include "curbuilder.h"
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "omapp.h"
#include "omcursor.h"
#include "omtrinketwindow.h"

using testing_support::FrameworkTest;
using testing_support::NEBuilder;

namespace {

constexpr const char* kLibrary = "cursors.rsc";

class CursorsTest : public FrameworkTest {
  protected:
    static testing_support::Bytes library(int from, int to) {
        NEBuilder library;
        const auto cursor = testing_support::buildCursor({testing_support::CurPicture{}});
        for (int id = from; id < to; ++id) library.add("CURSOR", id, cursor);
        return library.add("CURSOR", 30000, "damaged").build();
    }
    std::string takeLog() {
        const std::string text = files.text("zorbelog.txt");
        files.erase("zorbelog.txt");
        return text;
    }
    static int idOf(int wanted) { return OMTrinketWindow::findCursor(wanted)->id(); }

    OMApp app{OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8};
};

TEST_F(CursorsTest, OpensItsLibraryWhenACursorIsWantedAndReportsWhatIsMissingOnce) {
    files.put(kLibrary, library(1, 3));
    {
        const RCursors cursors;
        EXPECT_EQ(idOf(kOMCursorCross), kOMCursorCross);
        EXPECT_EQ(OMResMgrFindFile(1, "CURSOR"), nullptr);
        for (int i = 0; i < 2; ++i) {
            EXPECT_EQ(idOf(1), 1);
            EXPECT_EQ(idOf(2), 2);
            for (const int id : {3, 0, 30000, -7}) EXPECT_EQ(idOf(id), kOMCursorArrow);
        }
        EXPECT_EQ(OMTrinketWindow::findCursor(1), OMTrinketWindow::findCursor(1));
        EXPECT_EQ(takeLog(), "ERROR: Cursor 3 is in no active library: the arrow is shown\n"
                             "ERROR: Cursor 0 is in no active library: the arrow is shown\n"
                             "ERROR: Cursor 30000 is damaged, pack it anew: the arrow is shown\n"
                             "ERROR: Cursor -7 is not one of -1 to -4: the arrow is shown\n");
    }
    EXPECT_FALSE(OMTrinketWindow::hasCursorLocator());
    EXPECT_EQ(OMResMgrFindFile(1, "CURSOR"), nullptr) << "the library is let go";
}

TEST_F(CursorsTest, WithoutALibraryThereAreTheCursorsOfOtherFilesAndThePlatforms) {
    const RCursors cursors;
    EXPECT_EQ(idOf(1), kOMCursorArrow);
    EXPECT_EQ(idOf(2), kOMCursorArrow);
    EXPECT_EQ(takeLog(), "Warning: cursors.rsc is not there, arrows are shown: pack one\n"
                         "ERROR: Cursor 1 is in no active library: the arrow is shown\n"
                         "ERROR: Cursor 2 is in no active library: the arrow is shown\n");
    files.put("scene.rsc", library(1, 2));
    OMResMgrUseDLL16("scene.rsc", true);
    EXPECT_EQ(idOf(1), 1) << "it may come later";
    EXPECT_TRUE(failures.empty());
}

TEST_F(CursorsTest, KeepsABoundedNumber) {
    constexpr int kMany = 2 * static_cast<int>(RCursors::kMostKept);
    files.put(kLibrary, library(1, kMany));
    const RCursors cursors;
    const auto shown = OMTrinketWindow::findCursor(1);
    const std::weak_ptr<const OMCursor> unused = OMTrinketWindow::findCursor(2);
    for (int id = 3; id < kMany; ++id) ASSERT_EQ(idOf(id), id);
    EXPECT_TRUE(unused.expired());
    EXPECT_EQ(OMTrinketWindow::findCursor(1), shown) << "is not made twice";
    EXPECT_EQ(idOf(kOMCursorWait), kOMCursorWait);
}

} // namespace
