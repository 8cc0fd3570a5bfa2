// Which file operations are counted, and how the chosen one fails.
#include "temporaryfolder.h"

#include "platform/headless/headlessplatform.h"

#include <gtest/gtest.h>
#include <sstream>

namespace platform {
namespace {

class BreakingFilesTest : public testing::Test {
  protected:
    BreakingFilesTest() {
        folder_.makeFolder("game");
        folder_.makeFolder("homeless");
        folder_.makeFolder("home");
    }

    HeadlessPlatform machine(std::uint32_t operation, BreakHow how) {
        HeadlessOptions options;
        options.host = {folder_.path("game"), "", folder_.path("home")};
        options.breakPoint = BreakPoint{operation, how, "log.txt"};
        options.report = &report_;
        return HeadlessPlatform(options);
    }
    static bool write(File& file, std::string_view text) {
        return file.write(std::as_bytes(std::span(text)));
    }

    TemporaryFolder folder_;
    std::ostringstream report_;
};

TEST_F(BreakingFilesTest, CountsWhatChangesTheHomeFolder) {
    struct Row {
        const char* name;
        bool (*change)(Files& files, const std::string& home);
        std::uint32_t counted;
    };
    constexpr OpenMode kWrite = OpenMode::Write;
    const Row rows[] = {
        {"the game's folder",
         [](Files& files, auto&) { return write(*files.open("a", kWrite), "x"); }, 0},
        {"a folder beside",
         [](Files& files, auto& home) {
             return write(*files.open(home + "less\\a", kWrite), "x") &&
                    files.flushFolder(home + "less");
         },
         0},
        {"the log",
         [](Files& files, auto& home) {
             const auto file = files.open(home + "\\LOG.TXT", OpenMode::Append);
             return write(*file, "x") && file->flush();
         },
         0},
        {"writing",
         [](Files& files, auto& home) {
             const auto file = files.open(home + "\\a", kWrite);
             return write(*file, "x") && write(*file, "y") && file->flush();
         },
         4},
        {"reading",
         [](Files& files, auto& home) { return readFile(files, home + "\\a", 9) == "xy"; }, 0},
        {"names",
         [](Files& files, auto& home) {
             return files.rename(home + "\\a", home + "\\b") && files.flushFolder(home) &&
                    files.remove(home + "\\B");
         },
         3},
    };
    HostFiles host({folder_.path("game"), "", folder_.path("home")});
    for (const Row& row : rows) {
        BreakingFiles files(host, {0, BreakHow::Error, "log.txt"});
        EXPECT_TRUE(row.change(files, files.homeDirectory())) << row.name;
        EXPECT_EQ(files.operations(), row.counted) << row.name;
    }
}

TEST_F(BreakingFilesTest, FailsOnceInTheChosenWay) {
    const struct {
        BreakHow how;
        const char* stored;
    } rows[] = {{BreakHow::Error, ""}, {BreakHow::Full, "123"}, {BreakHow::Short, "12"}};
    for (const auto& row : rows) {
        HeadlessPlatform broken = machine(2, row.how);
        const auto file =
            broken.files().open(broken.files().homeDirectory() + "\\a", OpenMode::Write);
        ASSERT_TRUE(file);
        EXPECT_FALSE(write(*file, "1234"));
        EXPECT_EQ(folder_.contents("home/a"), row.stored);
        EXPECT_TRUE(write(*file, "5")) << "only one fails";
    }
    for (const std::uint32_t operation : {1u, 2u, 3u}) {
        folder_.make("home/a", "x");
        HeadlessPlatform broken = machine(operation, BreakHow::Full);
        Files& files = broken.files();
        const std::string name = files.homeDirectory() + "\\a";
        EXPECT_EQ(files.flushFolder(files.homeDirectory()), operation != 1);
        EXPECT_EQ(files.open(name, OpenMode::Write) != nullptr, operation != 2);
        EXPECT_EQ(files.remove(name), operation != 3);
        EXPECT_EQ(files.exists(name), operation == 3);
    }
}

TEST_F(BreakingFilesTest, EndsTheProcessInTheMiddleOfAWrite) {
    const auto killed = [&] {
        HeadlessPlatform broken = machine(2, BreakHow::Kill);
        Files& files = broken.files();
        write(*files.open(files.homeDirectory() + "\\a", OpenMode::Write), "1234");
    };
    EXPECT_EXIT(killed(), testing::ExitedWithCode(kKilledExit), "");
    EXPECT_EQ(folder_.contents("home/a"), "12");
}

} // namespace
} // namespace platform
