// The program's file names on the host's files.
#include "temporaryfolder.h"

#include "platform/host/files/hostfiles.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <sys/stat.h>

namespace platform {
namespace {

using std::errc;
constexpr std::size_t kLimit = 1000;

class HostFilesTest : public testing::Test {
  protected:
    HostFilesTest() {
        folder_.makeFolder("game");
        folder_.makeFolder("cd");
        files_ = std::make_unique<HostFiles>(
            HostOptions{folder_.path("game"), folder_.path("cd"), folder_.path("data/home")});
    }

    [[nodiscard]] std::string real(std::string name) const {
        std::string folder = "C:" + folder_.path() + "\\";
        std::ranges::replace(folder, '/', '\\');
        while (name.find('@') != name.npos) name.replace(name.find('@'), 1, folder);
        return name;
    }
    bool write(const std::string& path, OpenMode mode, std::string_view text) {
        const auto file = files_->open(path, mode);
        return file && file->write(std::as_bytes(std::span(text)));
    }
    /// Of true and false: "yes" and "no".
    std::string done(const std::string& call, const std::string& path, const std::string& extra) {
        const std::map<std::string, OpenMode> modes = {{"write", OpenMode::Write},
                                                       {"append", OpenMode::Append},
                                                       {"through", OpenMode::WriteThrough}};
        if (call == "full") return files_->fullPath(path);
        if (call == "read") return readFile(*files_, path, kLimit).value_or("(none)");
        if (call == "on host") return folder_.contents(path);
        if (call == "list") {
            std::string names;
            for (const DirectoryEntry& entry : files_->list(path))
                names += entry.name + (entry.isDirectory ? "/ " : " ");
            return names;
        }
        const bool is = call == "exists"     ? files_->exists(path)
                        : call == "writable" ? files_->isWritable(path)
                        : call == "space"    ? files_->freeSpace(path).has_value()
                        : call == "remove"   ? files_->remove(path)
                        : call == "rename"   ? files_->rename(path, extra)
                                             : write(path, modes.at(call), extra);
        return is ? "yes" : "no";
    }
    /// What comes of a call, with "|" between. Arguments are paths, or a path > and a name or text.
    /// "@" is the temporary folder on its drive.
    void all(const std::string& call, const std::vector<std::string>& arguments,
             const std::string& expected) {
        std::string came;
        for (const std::string& each : arguments) {
            const std::size_t end = std::min(each.find('>'), each.size());
            const std::string extra = end < each.size() ? each.substr(end + 1) : "";
            came += (&each == &arguments[0] ? "" : "|") +
                    done(call, real(each.substr(0, end)), real(extra));
        }
        EXPECT_EQ(came, real(expected)) << call;
    }

    TemporaryFolder folder_;
    std::unique_ptr<HostFiles> files_;
};

TEST_F(HostFilesTest, FindsNamesByTheirTextWithoutRegardToCase) {
    for (const char* name : {"Scripts/Start.mps", "same", "Same", "SAME", "\xC3\x81gua.txt"})
        folder_.make(std::string("game/") + name, name);
    folder_.make("cd/RSC/resource.map", "map");
    all("full",
        {"", "RSC/./Maps\\\\..\\b", "..\\cd\\x", "c:a.txt", files_->currentDirectory(),
         files_->homeDirectory(), "\\a", "C:\\..\\..\\a\\..", "d:scripts/x.mps",
         "z:\\Some\\Where\\", "\\\\server\\share\\..\\x"},
        "@game|@game\\RSC\\b|@cd\\x|@game\\a.txt|@game|@data\\home|C:\\a|C:\\|D:\\scripts\\x.mps|"
        "Z:\\Some\\Where|\\\\server\\x");
    // The exact name wins, otherwise the first in name order.
    all("read", {"scripts\\START.MPS", "@Game/scripts/start.mps", "same", "SAMe", "\xE1GUA.TXT"},
        "Scripts/Start.mps|Scripts/Start.mps|same|SAME|\xC3\x81gua.txt");
    all("exists", {"scripts/start.mps", "scripts", std::string("same\0", 5)}, "yes|no|no");
    // Nothing lies above a drive's root.
    all("read",
        {"Start.mps", "D:\\rsc\\RESOURCE.MAP", "D:\\..\\rsc\\resource.map", "E:\\rsc\\resource.map",
         "\\\\cd\\rsc\\resource.map"},
        "(none)|map|map|(none)|(none)");
    all("space", {"d:\\", "E:\\"}, "yes|no");
    const HostFiles withoutCd({folder_.path("game"), "", folder_.path("home")});
    EXPECT_FALSE(withoutCd.freeSpace("D:\\").has_value());
    EXPECT_TRUE(withoutCd.list("D:\\").empty());
}

TEST_F(HostFilesTest, WritesListsRenamesAndRemoves) {
    const std::string home = files_->homeDirectory();
    const std::string log = home + "\\LOG.TXT";
    all("write", {"New \xC3.txt>first", "new \xE3.txt>2"}, "yes|yes"); // the same file
    all("append", {"NEW \xE3.TXT> more"}, "yes");
    all("on host", {"game/New \xC3\x83.txt"}, "2 more");
    for (const char* name : {"b.map", "a.map", "\xE2\x82\xAC.map", "\xFF\xFE.map", "back\\slash"})
        folder_.make(std::string("game/") + name, ""); // the last three have no Latin-1 form
    folder_.make("game/Sub/x", "x");
    all("list", {"", "nothing", "a.map"}, "a.map b.map New \xC3.txt Sub/ ||");
    all("append", {"sub\\log>x"}, "yes");
    all("write", {"missing\\log>x", "sub>x", "sub\\log\\deeper>x"}, "no|no|no");
    all("space", {home}, "yes");
    all("writable", {log}, "no");
    EXPECT_FALSE(std::filesystem::exists(folder_.path("data"))) << "made when it is written to";
    folder_.make("game/Old.dat", "old");
    const auto reader = files_->open("old.dat", OpenMode::Read);
    all("append", {log + ">x"}, "yes");
    all("writable", {log, home}, "yes|no");
    all("on host", {"data/home/LOG.TXT", "game/Sub/log"}, "x|x");
    all("rename", {"NEW \xE3.TXT>OLD.DAT"}, "yes");
    all("on host", {"game/Old.dat"}, "2 more"); // the spelling stays
    all("rename",
        {"old.dat>Fresh \xE3.txt", "fresh \xE3.TXT>FRESH \xE3.txt", "SUB\\x>@game\\sub\\y"},
        "yes|yes|yes");
    all("on host", {"game/FRESH \xC3\xA3.txt"}, "2 more"); // only the spelling changes
    // Not into another folder, and no file may replace one.
    all("rename",
        {"missing>y", "fresh \xE3.txt>sub\\fresh.txt", "fresh \xE3.txt>sub", "sub>other", "",
         "fresh \xE3.txt>" + std::string(100'000, 'x'), "C:\\>C:\\"},
        "no|no|no|no|no|no|no");
    all("list", {"", "sub"}, "a.map b.map FRESH \xE3.txt Sub/ |log y ");
    all("remove", {"FRESH \xE3.TXT", "fresh \xE3.txt", "sub", "Z:\\d"}, "yes|no|no|no");
    all("exists", {"fresh \xE3.txt", "new \xE3.txt"}, "no|no");
    EXPECT_EQ(reader->size(), 3u) << "who has the old file keeps it";
}

TEST_F(HostFilesTest, ReadsInPiecesIntoAnyMemory) {
    std::string content(20'000, ' ');
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>(i * 7 + i / 256);
    folder_.make("game/data", content);
    std::vector<std::byte> memory(4 * kPageSize);
    void* start = memory.data();
    std::size_t space = memory.size();
    auto* page = static_cast<std::byte*>(std::align(kPageSize, kPageSize, start, space));
    ASSERT_TRUE(page);
    // The place of the buffer, from the start of a page, and the size of each read.
    for (const auto& [offset, size] : std::initializer_list<std::pair<std::size_t, std::size_t>>{
             {0, 8192}, {0, 4096}, {1, 4096}, {0, 1000}, {512, 512}})
        for (const OpenMode mode : {OpenMode::Read, OpenMode::ReadSequential}) {
            const auto file = files_->open("DATA", mode);
            ASSERT_TRUE(file);
            EXPECT_EQ(file->size(), content.size());
            const std::span<std::byte> buffer(page + offset, size);
            std::string text;
            while (const std::size_t count = file->read(buffer))
                text.append(reinterpret_cast<const char*>(buffer.data()), count);
            EXPECT_TRUE(text == content) << offset << " " << size;
            EXPECT_TRUE(file->seek(19'990));
            EXPECT_EQ(file->read(buffer), 10u);
            EXPECT_EQ(std::to_integer<char>(buffer[3]), content[19'993]);
            EXPECT_TRUE(file->seek(30'000));
            EXPECT_EQ(file->read(buffer), 0u);
            EXPECT_FALSE(file->seek(~std::uint64_t{0}));
            EXPECT_FALSE(file->write(buffer));
        }
    EXPECT_EQ(readFile(*files_, "data", content.size()), content);
    EXPECT_EQ(readFile(*files_, "data", content.size() - 1), std::nullopt);
}

TEST_F(HostFilesTest, WritesThroughWhatNobodyShares) {
    all("write", {"d>old and longer"}, "yes");
    const auto reader = files_->open("d", OpenMode::Read);
    {
        const auto writer = files_->open("D", OpenMode::WriteThrough);
        ASSERT_TRUE(writer);
        EXPECT_TRUE(writer->write(std::as_bytes(std::span("new", 3))));
        all("read", {"d"}, "new"); // with the host at once
        all("through", {"d>x"}, "no");
        EXPECT_FALSE(files_->open("d", OpenMode::ReadSequential));
        EXPECT_EQ(Files::lastRefusal(), errc::device_or_resource_busy);
    }
    EXPECT_EQ(reader->size(), 14u) << "who has the old file keeps it";
    {
        const auto first = files_->open("d", OpenMode::ReadSequential);
        const auto second = files_->open("d", OpenMode::ReadSequential);
        EXPECT_TRUE(first && second) << "readers share";
        all("through", {"d>x"}, "no");
    }
    all("read", {"d"}, "new"); // a refusal leaves the file as it is
    all("through", {"d>again", "missing\\d>x"}, "yes|no");
}

TEST_F(HostFilesTest, OpensPlainFilesOnly) {
    folder_.makeFolder("game/folder");
    ASSERT_EQ(::mkfifo(folder_.path("game/pipe").c_str(), 0600), 0);
    const std::pair<std::string, errc> rows[] = {
        {"folder", errc::is_a_directory},
        {"", errc::is_a_directory},
        {"pipe", errc::operation_not_supported}, // would wait for ever
        {"C:\\dev\\null", errc::no_such_file_or_directory},
        {"Z:\\x", errc::no_such_file_or_directory},
        {std::string(100'000, 'x'), errc::filename_too_long},
    };
    for (const OpenMode mode :
         {OpenMode::Read, OpenMode::Write, OpenMode::Append, OpenMode::WriteThrough})
        for (const auto& [path, refusal] : rows) {
            EXPECT_FALSE(files_->open(path, mode));
            EXPECT_EQ(Files::lastRefusal(), refusal) << path.substr(0, 20);
        }
}

TEST_F(HostFilesTest, GivesFoldersWithForeignNamesTheirOwnDrives) {
    folder_.make("\xD0\xB8\xD0\xB3/Sub/a.txt", "inside");
    files_ = std::make_unique<HostFiles>(
        HostOptions{folder_.path("\xD0\xB8\xD0\xB3"), "", folder_.path("\xD0\xB4/home")});
    all("full", {"", files_->homeDirectory()}, "E:\\|F:\\");
    all("read", {"sub\\A.TXT"}, "inside");
    all("write", {"F:\\saved>x"}, "yes");
    all("on host", {"\xD0\xB4/home/saved"}, "x");
    EXPECT_EQ(files_->programPath(files_->hostPath("sub/a.txt").value_or("")), "E:\\Sub\\a.txt");
}

} // namespace
} // namespace platform
