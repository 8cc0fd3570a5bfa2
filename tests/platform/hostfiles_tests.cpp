// The program's file names on the host's files.
#include "temporaryfolder.h"

#include "platform/host/files/hostfiles.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>

namespace platform {
namespace {

using testing::ElementsAre;

constexpr std::size_t kLimit = 1000;

class HostFilesTest : public testing::Test {
  protected:
    HostFilesTest() {
        folder_.makeFolder("game");
        folder_.makeFolder("cd");
        files_ = std::make_unique<HostFiles>(
            HostOptions{folder_.path("game"), folder_.path("cd"), folder_.path("data/home")});
    }

    /// "C:\..." for a name in the temporary folder.
    [[nodiscard]] std::string full(const std::string& name) const {
        std::string path = "C:" + folder_.path(name);
        std::ranges::replace(path, '/', '\\');
        return path;
    }

    std::string read(const std::string& path) {
        return readFile(*files_, path, kLimit).value_or("(none)");
    }

    bool write(const std::string& path, OpenMode mode, std::string_view text) {
        const auto file = files_->open(path, mode);
        return file && file->write(std::as_bytes(std::span(text)));
    }

    TemporaryFolder folder_;
    std::unique_ptr<HostFiles> files_;
};

TEST_F(HostFilesTest, WorksPathsOutByTheirText) {
    const std::pair<std::string, std::string> rows[] = {
        {"", full("game")},
        {"RSC/./Maps\\\\..\\b", full("game") + "\\RSC\\b"},
        {"..\\cd\\x", full("cd") + "\\x"},
        {"c:a.txt", full("game") + "\\a.txt"},
        {"\\a", "C:\\a"},
        {"C:\\..\\..\\a\\..", "C:\\"},
        {"d:scripts/x.mps", "D:\\scripts\\x.mps"},
        {"z:\\Some\\Where\\", "Z:\\Some\\Where"},
        {"\\\\server\\share\\..\\x", "\\\\server\\x"},
    };
    for (const auto& [path, expected] : rows) EXPECT_EQ(files_->fullPath(path), expected) << path;
    EXPECT_EQ(files_->currentDirectory(), full("game"));
    EXPECT_EQ(files_->homeDirectory(), full("data/home"));
}

TEST_F(HostFilesTest, FindsNamesWithoutRegardToCase) {
    folder_.make("game/Scripts/Start.mps", "one");
    folder_.make("game/same", "lower");
    folder_.make("game/Same", "mixed");
    folder_.make("game/SAME", "upper");
    folder_.make("game/\xC3\x81gua.txt", "water"); // Água in UTF-8
    EXPECT_EQ(read("scripts\\START.MPS"), "one");
    EXPECT_EQ(read(full("Game/scripts/start.mps")), "one");
    EXPECT_EQ(read("same"), "lower") << "the exact name wins";
    EXPECT_EQ(read("SAMe"), "upper") << "otherwise the first in name order";
    EXPECT_EQ(read("\xE1GUA.TXT"), "water");
    EXPECT_EQ(read("Start.mps"), "(none)");
    EXPECT_TRUE(files_->exists("scripts/start.mps"));
    EXPECT_FALSE(files_->exists("scripts"));
    EXPECT_FALSE(files_->exists(std::string_view("same\0", 5)));
}

TEST_F(HostFilesTest, KeepsDrivesApart) {
    folder_.make("cd/RSC/resource.map", "map");
    EXPECT_EQ(read("D:\\rsc\\RESOURCE.MAP"), "map");
    EXPECT_EQ(read("D:\\..\\rsc\\resource.map"), "map") << "nothing lies above a drive's root";
    EXPECT_EQ(read("E:\\rsc\\resource.map"), "(none)");
    EXPECT_EQ(read("\\\\cd\\rsc\\resource.map"), "(none)");
    EXPECT_TRUE(files_->freeSpace("d:\\").has_value());
    EXPECT_FALSE(files_->freeSpace("E:\\").has_value());
    const HostFiles withoutCd({folder_.path("game"), "", folder_.path("home")});
    EXPECT_FALSE(withoutCd.freeSpace("D:\\").has_value());
    EXPECT_TRUE(withoutCd.list("D:\\").empty());
}

TEST_F(HostFilesTest, ListsInNameOrder) {
    folder_.make("game/b.map", "");
    folder_.make("game/C.map", "");
    folder_.make("game/a.map", "");
    folder_.make("game/\xC3\xA9.map", "");     // é
    folder_.make("game/\xE2\x82\xAC.map", ""); // a euro sign has no Latin-1 form
    folder_.make("game/\xFF\xFE.map", "");     // no UTF-8
    folder_.make("game/back\\slash.map", "");
    folder_.makeFolder("game/RSC");
    std::vector<std::string> names;
    for (const DirectoryEntry& entry : files_->list(""))
        names.push_back(entry.name + (entry.isDirectory ? "/" : ""));
    EXPECT_THAT(names, ElementsAre("a.map", "b.map", "C.map", "RSC/", "\xE9.map"));
    EXPECT_TRUE(files_->list("nothing").empty());
    EXPECT_TRUE(files_->list("a.map").empty());
}

TEST_F(HostFilesTest, WritesEmptiesAndAppends) {
    EXPECT_TRUE(write("New \xC3.txt", OpenMode::Write, "first"));
    EXPECT_EQ(folder_.contents("game/New \xC3\x83.txt"), "first");
    EXPECT_TRUE(write("NEW \xE3.TXT", OpenMode::Append, " more"));
    EXPECT_EQ(folder_.contents("game/New \xC3\x83.txt"), "first more");
    EXPECT_TRUE(write("new \xE3.txt", OpenMode::Write, "2"));
    EXPECT_EQ(folder_.contents("game/New \xC3\x83.txt"), "2");
    EXPECT_EQ(files_->list("").size(), 1u) << "another case is the same file";

    folder_.makeFolder("game/Sub");
    EXPECT_TRUE(write("sub\\log", OpenMode::Append, "x"));
    EXPECT_EQ(folder_.contents("game/Sub/log"), "x");
    EXPECT_FALSE(write("missing\\log", OpenMode::Write, "x"));
    EXPECT_FALSE(write("sub", OpenMode::Write, "x"));
    EXPECT_FALSE(write("sub\\log\\deeper", OpenMode::Write, "x"));
}

TEST_F(HostFilesTest, MakesTheHomeFolderWhenItIsWrittenTo) {
    const std::string log = files_->homeDirectory() + "\\LOG.TXT";
    EXPECT_TRUE(files_->freeSpace(files_->homeDirectory()).has_value());
    EXPECT_FALSE(files_->isWritable(log));
    EXPECT_FALSE(std::filesystem::exists(folder_.path("data")));
    EXPECT_TRUE(write(log, OpenMode::Append, "x"));
    EXPECT_EQ(folder_.contents("data/home/LOG.TXT"), "x");
    EXPECT_TRUE(files_->isWritable(log));
    EXPECT_FALSE(files_->isWritable(files_->homeDirectory()));
}

TEST_F(HostFilesTest, ReadsInPieces) {
    folder_.make("game/data", "0123456789");
    for (const OpenMode mode : {OpenMode::Read, OpenMode::ReadSequential}) {
        const auto file = files_->open("DATA", mode);
        ASSERT_TRUE(file);
        EXPECT_EQ(file->size(), 10u);
        std::string buffer(4, ' ');
        const auto next = [&] {
            return buffer.substr(0, file->read(std::as_writable_bytes(std::span(buffer))));
        };
        EXPECT_EQ(next(), "0123");
        EXPECT_TRUE(file->seek(7));
        EXPECT_EQ(next(), "789");
        EXPECT_EQ(next(), "");
        EXPECT_TRUE(file->seek(100));
        EXPECT_EQ(next(), "");
        EXPECT_FALSE(file->seek(~std::uint64_t{0}));
        EXPECT_FALSE(file->write(std::as_bytes(std::span("x", 1))));
    }
    EXPECT_EQ(readFile(*files_, "data", 10), "0123456789");
    EXPECT_EQ(readFile(*files_, "data", 9), std::nullopt);
}

TEST_F(HostFilesTest, ReadsSequentiallyIntoAnyMemory) {
    std::string content(20'000, ' ');
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>(i * 7 + i / 256);
    folder_.make("game/data", content);
    struct Row {
        std::size_t offset; ///< of the buffer from the start of a page
        std::size_t size;   ///< of each read
    };
    std::vector<std::byte> memory(4 * kPageSize);
    void* start = memory.data();
    std::size_t space = memory.size();
    auto* page = static_cast<std::byte*>(std::align(kPageSize, kPageSize, start, space));
    ASSERT_TRUE(page);
    for (const Row& row : {Row{0, 8192}, Row{0, 4096}, Row{1, 4096}, Row{0, 1000}, Row{512, 512}}) {
        const auto file = files_->open("data", OpenMode::ReadSequential);
        ASSERT_TRUE(file);
        const std::span<std::byte> buffer(page + row.offset, row.size);
        std::string text;
        while (const std::size_t count = file->read(buffer))
            text.append(reinterpret_cast<const char*>(buffer.data()), count);
        EXPECT_TRUE(text == content) << row.offset << " " << row.size;
        EXPECT_TRUE(file->seek(0));
        EXPECT_EQ(file->read(buffer), row.size);
        EXPECT_EQ(std::to_integer<char>(buffer[3]), content[3]);
    }
}

TEST_F(HostFilesTest, WritesThroughWhatNobodyShares) {
    EXPECT_TRUE(write("d", OpenMode::Write, "old and longer"));
    const auto reader = files_->open("d", OpenMode::Read);
    {
        const auto writer = files_->open("D", OpenMode::WriteThrough);
        ASSERT_TRUE(writer);
        EXPECT_TRUE(writer->write(std::as_bytes(std::span("new", 3))));
        EXPECT_EQ(read("d"), "new") << "with the host at once";
        EXPECT_FALSE(files_->open("d", OpenMode::WriteThrough));
        EXPECT_FALSE(files_->open("d", OpenMode::ReadSequential));
        EXPECT_EQ(Files::lastRefusal(), std::errc::device_or_resource_busy);
    }
    EXPECT_EQ(reader->size(), 14u) << "who has the old file keeps it";
    {
        const auto first = files_->open("d", OpenMode::ReadSequential);
        const auto second = files_->open("d", OpenMode::ReadSequential);
        EXPECT_TRUE(first && second) << "readers share";
        EXPECT_FALSE(files_->open("d", OpenMode::WriteThrough));
    }
    EXPECT_EQ(read("d"), "new") << "a refusal leaves the file as it is";
    EXPECT_TRUE(write("d", OpenMode::WriteThrough, "again"));
    EXPECT_FALSE(files_->open("missing\\d", OpenMode::WriteThrough));

    EXPECT_TRUE(files_->remove("D"));
    EXPECT_FALSE(files_->exists("d"));
    EXPECT_FALSE(files_->remove("d"));
    folder_.makeFolder("game/folder");
    EXPECT_FALSE(files_->remove("folder"));
    EXPECT_FALSE(files_->remove("Z:\\d"));
}

TEST_F(HostFilesTest, RenamesWithinAFolderAndReplaces) {
    folder_.make("game/Old.dat", "old");
    folder_.make("game/new", "new");
    folder_.make("game/Sub/x", "x");
    const auto reader = files_->open("old.dat", OpenMode::Read);
    EXPECT_TRUE(files_->rename("NEW", "OLD.DAT"));
    EXPECT_EQ(folder_.contents("game/Old.dat"), "new") << "the spelling stays";
    EXPECT_FALSE(files_->exists("new"));
    EXPECT_EQ(files_->list("").size(), 2u);
    EXPECT_EQ(reader->size(), 3u) << "who has the old file keeps it";

    EXPECT_TRUE(files_->rename("old.dat", "Fresh \xE3.txt"));
    EXPECT_EQ(folder_.contents("game/Fresh \xC3\xA3.txt"), "new");
    EXPECT_TRUE(files_->rename("fresh \xE3.TXT", "FRESH \xE3.txt"));
    EXPECT_EQ(folder_.contents("game/FRESH \xC3\xA3.txt"), "new") << "only the spelling changes";
    EXPECT_TRUE(files_->rename("SUB\\x", full("game") + "\\sub\\y"));

    EXPECT_FALSE(files_->rename("missing", "y"));
    EXPECT_FALSE(files_->rename("fresh \xE3.txt", "sub\\fresh.txt")) << "another folder";
    EXPECT_FALSE(files_->rename("fresh \xE3.txt", "sub")) << "no file may replace a folder";
    EXPECT_FALSE(files_->rename("sub", "other"));
    EXPECT_FALSE(files_->rename("fresh \xE3.txt", std::string(100'000, 'x')));
    EXPECT_FALSE(files_->rename("", ""));
    EXPECT_FALSE(files_->rename("C:\\", "C:\\"));
    EXPECT_EQ(read("fresh \xE3.txt"), "new");
}

TEST_F(HostFilesTest, OpensPlainFilesOnly) {
    folder_.makeFolder("game/folder");
    ASSERT_EQ(::mkfifo(folder_.path("game/pipe").c_str(), 0600), 0);
    const std::pair<std::string, std::errc> rows[] = {
        {"folder", std::errc::is_a_directory},
        {"", std::errc::is_a_directory},
        {"pipe", std::errc::operation_not_supported}, // would wait for ever
        {"C:\\dev\\null", std::errc::no_such_file_or_directory},
        {"Z:\\x", std::errc::no_such_file_or_directory},
        {std::string(100'000, 'x'), std::errc::filename_too_long},
    };
    for (const OpenMode mode :
         {OpenMode::Read, OpenMode::Write, OpenMode::Append, OpenMode::WriteThrough}) {
        for (const auto& [path, refusal] : rows) {
            EXPECT_FALSE(files_->open(path, mode));
            EXPECT_EQ(Files::lastRefusal(), refusal) << path.substr(0, 20);
        }
    }
}

TEST_F(HostFilesTest, GivesFoldersWithForeignNamesTheirOwnDrives) {
    folder_.make("\xD0\xB8\xD0\xB3\xD1\x80\xD0\xB0/Sub/a.txt", "inside");
    HostFiles foreign({folder_.path("\xD0\xB8\xD0\xB3\xD1\x80\xD0\xB0"), "",
                       folder_.path("\xD0\xB4\xD0\xBE\xD0\xBC/home")});
    EXPECT_EQ(foreign.currentDirectory(), "E:\\");
    EXPECT_EQ(foreign.homeDirectory(), "F:\\");
    EXPECT_EQ(readFile(foreign, "sub\\A.TXT", kLimit), "inside");
    const auto file = foreign.open("F:\\saved", OpenMode::Write);
    EXPECT_TRUE(file);
    EXPECT_TRUE(std::filesystem::exists(folder_.path("\xD0\xB4\xD0\xBE\xD0\xBC/home/saved")));
    const auto host = foreign.hostPath("sub/a.txt");
    ASSERT_TRUE(host);
    EXPECT_EQ(foreign.programPath(*host), "E:\\Sub\\a.txt");
}

} // namespace
} // namespace platform
