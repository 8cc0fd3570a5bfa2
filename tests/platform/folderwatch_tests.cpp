// What is seen of saves, by the host's own kernel.
#include "platform/host/files/folderwatch.h"
#include "temporaryfolder.h"

#include <gmock/gmock.h>

namespace {

using platform::FolderWatch;
namespace fs = std::filesystem;

class FolderWatchTest : public testing::Test {
  protected:
    FolderWatchTest() {
        folder.make("tree/deep/a", "");
        folder.make("flat/below/a", "");
        watch.add(folder.path("tree"), FolderWatch::Depth::Tree);
        watch.add(folder.path("flat"), FolderWatch::Depth::Folder);
        watch.add(folder.path("tree/deep"), FolderWatch::Depth::Folder); // stays of the tree
        watch.add(folder.path("none"), FolderWatch::Depth::Tree);
    }
    /// Names below the temporary folder, with blanks between them.
    std::string changed() {
        std::string names;
        for (const fs::path& path : watch.take().paths)
            names += (names.empty() ? "" : " ") + path.lexically_relative(folder.path()).string();
        return names;
    }
    void rename(const char* from, const char* to) const {
        fs::rename(folder.path(from), folder.path(to));
    }

    TemporaryFolder folder;
    FolderWatch watch;
};

TEST_F(FolderWatchTest, SavesOfAllKindsAreSeenWhereTheyAreWatchedFor) {
    EXPECT_EQ(changed(), "");
    for (const char* name :
         {"tree/b", "tree/deep/a", "tree/.git/a", "tree/.hidden", "flat/a", "flat/below/a"})
        folder.make(name, "x");
    EXPECT_EQ(changed(), "flat/a tree/b tree/deep/a");
    rename("flat/below/a", "tree/moved");
    rename("tree/deep/a", "flat/a");
    fs::remove(folder.path("tree/b"));
    fs::create_symlink("moved", folder.path("tree/link"));
    EXPECT_EQ(changed(), "flat/a tree/b tree/deep/a tree/link tree/moved");
    EXPECT_FALSE(watch.isBlind());
    EXPECT_EQ(watch.takeProblem(), "");
}

TEST_F(FolderWatchTest, FoldersThatComeAreSeenWithWhatIsInThemAndThoseThatGoAreForgotten) {
    folder.make("tree/new/deeper/a", "x");
    EXPECT_EQ(changed(), "tree/new tree/new/deeper/a");
    rename("tree/new", "away");
    EXPECT_EQ(changed(), "tree/new");
    folder.make("away/deeper/a", "x");
    EXPECT_EQ(changed(), "");
    rename("away", "tree/back");
    EXPECT_EQ(changed(), "tree/back tree/back/deeper/a");
    folder.make("tree/back/deeper/b", "x");
    EXPECT_EQ(changed(), "tree/back/deeper/b");
}

TEST_F(FolderWatchTest, WhenTheKernelHasForgottenSomethingAnythingMayHaveChanged) {
    std::ifstream setting("/proc/sys/fs/inotify/max_queued_events");
    int most = 0;
    setting >> most;
    for (int i = 0; i <= most / 2; ++i) { // two names, so that no two events are alike
        folder.make("tree/a", "");
        folder.make("tree/b", "");
    }
    EXPECT_TRUE(watch.take().anything);
    EXPECT_FALSE(watch.take().anything);
}

} // namespace
