// Which file operations are counted, and how the chosen one fails.
#include "temporaryfolder.h"

#include "platform/headless/breakingfiles.h"
#include "platform/host/hostfiles.h"

#include <gtest/gtest.h>
#include <utility>

namespace platform {
namespace {

class BreakingFilesTest : public testing::Test {
  protected:
    BreakingFilesTest() {
        for (const char* name : {"game", "homeless", "home"}) folder_.makeFolder(name);
    }
    static bool write(Files& files, const std::string& name, OpenMode mode, int times) {
        const auto file = files.open(name, mode);
        while (file && times-- > 0)
            if (!file->write(std::as_bytes(std::span("1234", 4)))) return false;
        return file && file->flush();
    }

    TemporaryFolder folder_;
    HostFiles host_{{folder_.path("game"), "", folder_.path("home")}};
    std::string home_ = host_.homeDirectory();
};

TEST_F(BreakingFilesTest, CountsWhatChangesTheHomeFolder) {
    BreakingFiles files(host_, {0, BreakHow::Error, "log.txt"});
    auto counted = [&, before = 0u](bool done) mutable {
        EXPECT_TRUE(done);
        return files.operations() - std::exchange(before, files.operations());
    };
    EXPECT_EQ(counted(write(files, "a", OpenMode::Write, 1)), 0u) << "the game's folder";
    EXPECT_EQ(counted(write(files, home_ + "less\\a", OpenMode::Write, 1)), 0u) << "one beside";
    EXPECT_EQ(counted(write(files, home_ + "\\LOG.TXT", OpenMode::Append, 1)), 0u) << "the log";
    EXPECT_EQ(counted(write(files, home_ + "\\a", OpenMode::Write, 2)), 4u);
    EXPECT_EQ(counted(readFile(files, home_ + "\\a", 9) == "12341234"), 0u);
    EXPECT_EQ(counted(files.rename(home_ + "\\a", home_ + "\\b")), 1u);
    EXPECT_EQ(counted(files.flushFolder(home_)), 1u);
    EXPECT_EQ(counted(files.remove(home_ + "\\B")), 1u);
}

TEST_F(BreakingFilesTest, FailsOnceInTheChosenWay) {
    const struct {
        BreakHow how;
        const char* stored;
    } rows[] = {{BreakHow::Error, ""}, {BreakHow::Full, "123"}, {BreakHow::Short, "12"}};
    for (const auto& row : rows) {
        BreakingFiles files(host_, {2, row.how, "log.txt"});
        EXPECT_FALSE(write(files, home_ + "\\a", OpenMode::Write, 1));
        EXPECT_EQ(folder_.contents("home/a"), row.stored);
        EXPECT_TRUE(write(files, home_ + "\\a", OpenMode::Write, 1)) << "only one fails";
    }
    const auto killed = [&] {
        BreakingFiles files(host_, {2, BreakHow::Kill, "log.txt"});
        write(files, home_ + "\\a", OpenMode::Write, 1);
    };
    EXPECT_EXIT(killed(), testing::ExitedWithCode(kKilledExit), "");
    EXPECT_EQ(folder_.contents("home/a"), "12") << "in the middle of the write";
}

} // namespace
} // namespace platform
