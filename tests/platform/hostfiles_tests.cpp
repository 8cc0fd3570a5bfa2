// The program's file names on the host's files.
#include "temporaryfolder.h"

#include "platform/host/files/hostfiles.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>

namespace platform {
namespace {

class HostFilesTest : public testing::Test {
  protected:
    HostFilesTest() {
        for (const char* name : {"game", "cd"}) folder_.makeFolder(name);
        use("game", "data/home");
    }
    void use(const std::string& game, const std::string& home) {
        files_.emplace(HostOptions{folder_.path(game), folder_.path("cd"), folder_.path(home)});
    }
    /// "@" is the temporary folder on its drive, "~" and "^" are letters of Latin-1.
    [[nodiscard]] std::string real(std::string_view text) const {
        std::string folder = "C:" + folder_.path() + "\\", result;
        std::ranges::replace(folder, '/', '\\');
        for (const char c : text)
            result += c == '@' ? folder : std::string(1, c == '~' ? '\xE3' : c == '^' ? '\xC3' : c);
        return result;
    }
    std::string done(const std::string& call, const std::string& path, const std::string& extra) {
        if (call == "full") return files_->fullPath(path);
        if (call == "read") return readFile(*files_, path, 1000).value_or("none");
        if (call == "exists") return files_->exists(path) ? "yes" : "no";
        if (call == "remove") return files_->remove(path) ? "yes" : "no";
        if (call == "rename") return files_->rename(path, extra) ? "yes" : "no";
        std::string names;
        for (const DirectoryEntry& entry : files_->list(path))
            names += entry.name + (entry.isDirectory ? "/;" : ";");
        if (call == "list") return names;
        const auto file = files_->open(path, call == "write"    ? OpenMode::Write
                                             : call == "append" ? OpenMode::Append
                                             : call == "open"   ? OpenMode::Read
                                                                : OpenMode::WriteThrough);
        return file && file->write(std::as_bytes(std::span(extra)))
                   ? "yes"
                   : Files::lastRefusal().message();
    }
    /// Lines of a call, its arguments and what comes of each, with "|" between. Arguments are
    /// paths, or a path > and a name or text.
    void all(const std::string& text) {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            if (line.empty()) continue;
            SCOPED_TRACE(line);
            const std::size_t space = line.find(' '), equals = line.find(" = ");
            std::istringstream arguments(line.substr(space + 1, equals - space - 1) + "|");
            std::string came;
            for (std::string each; std::getline(arguments, each, '|');) {
                const std::size_t end = std::min(each.find('>'), each.size());
                came += (came.empty() ? "" : "|") +
                        done(line.substr(0, space), real(each.substr(0, end)),
                             real(each.substr(std::min(end + 1, each.size()))));
            }
            EXPECT_EQ(came, real(line.substr(equals + 3)));
        }
    }

    TemporaryFolder folder_;
    std::optional<HostFiles> files_;
};

TEST_F(HostFilesTest, FindsNamesByTheirTextWithoutRegardToCase) {
    for (const char* name : {"Scripts/Start.mps", "same", "Same", "SAME", "\xC3\x83gua.txt"})
        folder_.make(std::string("game/") + name, name);
    folder_.make("cd/RSC/resource.map", "map");
    // The exact name wins, otherwise the first in name order. Nothing lies above a drive's root.
    all(R"(
full RSC/./Maps\\..\b|..\cd\x|c:a.txt|\a|C:\..\..\a\.. = @game\RSC\b|@cd\x|@game\a.txt|C:\a|C:\
full d:scripts/x.mps|z:\Some\Where\|\\server\share\..\x = D:\scripts\x.mps|Z:\Some\Where|\\server\x
read scripts\START.MPS|@Game/scripts/start.mps|same = Scripts/Start.mps|Scripts/Start.mps|same
read SAMe|Start.mps|D:\rsc\RESOURCE.MAP|D:\..\rsc\resource.map = SAME|none|map|map
read E:\rsc\resource.map|\\cd\rsc\resource.map = none|none
exists ~GUA.TXT|scripts/start.mps|scripts = yes|yes|no
)");
    EXPECT_EQ(files_->currentDirectory() + files_->homeDirectory(), real("@game@data\\home"));
    EXPECT_FALSE(files_->exists(std::string("same\0", 5)));
    const HostFiles withoutCd({folder_.path("game"), "", folder_.path("home")});
    EXPECT_TRUE(!withoutCd.freeSpace("D:\\") && withoutCd.list("D:\\").empty());
    EXPECT_TRUE(files_->freeSpace("d:\\") && !files_->freeSpace("E:\\"));
}

TEST_F(HostFilesTest, WritesListsRenamesAndRemoves) {
    all("write New ^.txt>first|new ~.txt>2 = yes|yes\nappend NEW ~.TXT> more = yes");
    EXPECT_EQ(folder_.contents("game/New \xC3\x83.txt"), "2 more") << "it is the same file";
    for (const char* name : {"b.map", "a.map", "\xE2\x82\xAC.map", "\xFF\xFE.map", "back\\slash"})
        folder_.make(std::string("game/") + name, ""); // the last three have no Latin-1 form
    folder_.make("game/Sub/x", "x");
    folder_.make("game/Old.dat", "old");
    all(R"(
list .|nothing|a.map = a.map;b.map;New ^.txt;Old.dat;Sub/;||
append sub\log>x = yes
write missing\log>x|sub>x|sub\log\deeper>x = No such file or directory|Is a directory|Not a directory
)");
    const std::string home = real("@data\\home");
    EXPECT_TRUE(files_->freeSpace(home) && !files_->isWritable(home + "\\LOG.TXT"));
    EXPECT_FALSE(std::filesystem::exists(folder_.path("data"))) << "made when it is written to";
    const auto reader = files_->open("old.dat", OpenMode::Read);
    // The spelling stays, or only the spelling changes. Not into another folder, and no file may
    // replace one.
    all(R"(
append @data\home\LOG.TXT>x = yes
rename NEW ~.TXT>OLD.DAT = yes
list . = a.map;b.map;Old.dat;Sub/;
rename old.dat>Fresh ~.txt|fresh ~.TXT>FRESH ~.txt|SUB\x>@game\sub\y = yes|yes|yes
rename missing>y|fresh ~.txt>sub\fresh.txt|fresh ~.txt>sub|sub>other|C:\>C:\ = no|no|no|no|no
list .|sub = a.map;b.map;FRESH ~.txt;Sub/;|log;y;
read fresh ~.txt = 2 more
remove FRESH ~.TXT|fresh ~.txt|sub|Z:\d = yes|no|no|no
exists fresh ~.txt|new ~.txt = no|no
)");
    EXPECT_TRUE(files_->isWritable(home + "\\log.txt") && !files_->isWritable(home));
    EXPECT_FALSE(files_->rename("", "") || files_->rename("a.map", std::string(100'000, 'x')));
    EXPECT_EQ(folder_.contents("data/home/LOG.TXT") + folder_.contents("game/Sub/log"), "xx");
    EXPECT_EQ(reader->size(), 3u) << "who has the old file keeps it";
}

TEST_F(HostFilesTest, ReadsInPiecesIntoAnyMemory) {
    std::string content(20'000, ' ');
    for (std::size_t i = 0; i < content.size(); ++i) content[i] = char(i * 7 + i / 256);
    folder_.make("game/data", content);
    alignas(kPageSize) static std::byte page[3 * kPageSize];
    // The place of the buffer, from the start of a page, and the size of each read.
    for (const auto& [offset, size] : std::initializer_list<std::pair<std::size_t, std::size_t>>{
             {0, 8192}, {0, 4096}, {1, 4096}, {0, 1000}, {512, 512}})
        for (const OpenMode mode : {OpenMode::Read, OpenMode::ReadSequential}) {
            const auto file = files_->open("DATA", mode);
            ASSERT_TRUE(file && file->size() == content.size());
            const std::span<std::byte> buffer(page + offset, size);
            std::string text;
            while (const std::size_t count = file->read(buffer))
                text.append(reinterpret_cast<const char*>(buffer.data()), count);
            EXPECT_TRUE(text == content) << offset << " " << size;
            EXPECT_TRUE(file->seek(19'990) && file->read(buffer) == 10);
            EXPECT_EQ(std::to_integer<char>(buffer[3]), content[19'993]);
            EXPECT_TRUE(file->seek(30'000) && file->read(buffer) == 0);
            EXPECT_FALSE(file->seek(~std::uint64_t{0}) || file->write(buffer));
        }
    EXPECT_TRUE(readFile(*files_, "data", 20'000) && !readFile(*files_, "data", 19'999));
}

TEST_F(HostFilesTest, WritesThroughWhatNobodyShares) {
    all("write d>old and longer = yes");
    const auto reader = files_->open("d", OpenMode::Read);
    {
        const auto writer = files_->open("D", OpenMode::WriteThrough);
        ASSERT_TRUE(writer && writer->write(std::as_bytes(std::span("new", 3))));
        all("read d = new\nthrough d>x = Device or resource busy"); // with the host at once
        EXPECT_FALSE(files_->open("d", OpenMode::ReadSequential));
    }
    EXPECT_EQ(reader->size(), 14u) << "who has the old file keeps it";
    {
        const auto first = files_->open("d", OpenMode::ReadSequential);
        const auto second = files_->open("d", OpenMode::ReadSequential);
        EXPECT_TRUE(first && second) << "readers share";
        all("through d>x = Device or resource busy\nread d = new"); // a refusal leaves the file as
                                                                    // it is
    }
    all("through d>again|missing\\d>x = yes|No such file or directory");
}

TEST_F(HostFilesTest, OpensPlainFilesOnly) {
    folder_.makeFolder("game/folder");
    ASSERT_EQ(::mkfifo(folder_.path("game/pipe").c_str(), 0600), 0); // would wait for ever
    for (const std::string call : {"open", "write", "append", "through"})
        all(call + " folder|.|pipe|C:\\dev\\null|" + std::string(100'000, 'x') +
            " = Is a directory|Is a directory|Operation not supported|No such file or directory|"
            "File name too long");
}

TEST_F(HostFilesTest, GivesFoldersWithForeignNamesTheirOwnDrives) {
    folder_.make("\xD0\xB8\xD0\xB3/Sub/a.txt", "inside");
    use("\xD0\xB8\xD0\xB3", "\xD0\xB4/home");
    EXPECT_EQ(files_->currentDirectory() + files_->homeDirectory(), "E:\\F:\\");
    all("read sub\\A.TXT = inside\nwrite F:\\saved>x = yes");
    EXPECT_EQ(folder_.contents("\xD0\xB4/home/saved"), "x");
    EXPECT_EQ(files_->programPath(files_->hostPath("sub/a.txt").value_or("")), "E:\\Sub\\a.txt");
}

} // namespace
} // namespace platform
