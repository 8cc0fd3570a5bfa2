// A file that is stored whole, on files in memory and on real ones that fail at every step.
#include "world/safefile.h"

#include "frameworkfixture.h"
#include "platform/temporaryfolder.h"

#include "platform/headless/breakingfiles.h"
#include "platform/host/files/hostfiles.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace {

using platform::BreakHow;
using platform::BreakingFiles;
using platform::Files;
using platform::HostFiles;
using State = RSafeFile::State;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::UnorderedElementsAre;

constexpr std::uint32_t kSteps = 9; ///< of a store that keeps the file before

class SafeFileTest : public testing_support::FrameworkTest {
  protected:
    /// The same on files in memory and on real ones.
    template <class Try>
    void onBoth(Try attempt) {
        for (Files* each : std::initializer_list<Files*>{&files, &host}) {
            SCOPED_TRACE(each == &host ? "real files" : "files in memory");
            used = each;
            attempt();
        }
    }
    std::string path(const std::string& name) const { return used->homeDirectory() + "\\" + name; }
    std::string text(const std::string& name) const {
        return platform::readFile(*used, path(name), 1000).value_or("(none)");
    }
    void put(const std::string& name, std::string_view bytes) const {
        const auto file = used->open(path(name), platform::OpenMode::Write);
        ASSERT_TRUE(file && file->write(std::as_bytes(std::span(bytes))));
    }
    /// Names and contents of everything in the folder.
    std::map<std::string, std::string> all() const {
        std::map<std::string, std::string> result;
        for (const auto& entry : used->list(used->homeDirectory()))
            result[entry.name] = text(entry.name);
        return result;
    }
    void empty() const {
        for (const auto& [name, bytes] : all()) used->remove(path(name));
    }
    /// The lines that the log got since the last call.
    std::string takeLog() {
        const std::string log = machine.files().text("zorbelog.txt");
        machine.files().erase("zorbelog.txt");
        return log;
    }
    /// It knows what is there.
    RSafeFile safe(Files& through) const {
        RSafeFile file(through, path("ZORBET.DAT"));
        (void)file.read();
        return file;
    }
    RSafeFile safe() const { return safe(*used); }

    /// A store of "second" over "first", which is kept as `kept`, fails at the operation; whether
    /// it came that far.
    bool breakStore(std::uint32_t operation, BreakHow how, const std::string& kept);

    TemporaryFolder folder;
    HostFiles host{{folder.path("game"), "", folder.path("data/home")}};
    Files* used = &files;
};

bool SafeFileTest::breakStore(std::uint32_t operation, BreakHow how, const std::string& kept) {
    SCOPED_TRACE("operation " + std::to_string(operation) + " " + kept);
    empty();
    EXPECT_TRUE(safe().store("before") && safe().store("first"));
    takeLog();
    BreakingFiles breaking(*used, {operation, how});
    if (kept == "ZORBET.OTHER") put("ZORBET.DAT", "before");
    RSafeFile file = safe(breaking);
    put("ZORBET.DAT", "first");
    if (kept == "ZORBET.BAD") file.keepBeside();
    if (file.store("second")) return false;
    const std::string log = takeLog();
    EXPECT_THAT(log, HasSubstr("ERROR: " + path("ZORBET.DAT") + " is not stored: "));
    EXPECT_EQ(log.find("ERROR"), log.rfind("ERROR")) << log;
    const std::string now = text("ZORBET.DAT");
    EXPECT_TRUE(now == "first" || now == "second") << now;

    EXPECT_TRUE(file.store("third"));
    auto expected = all();
    EXPECT_EQ(expected["ZORBET.DAT"], "third");
    EXPECT_EQ(expected[kept], kept == "ZORBET.BAK" ? now : "first");
    EXPECT_EQ(expected.size(), kept == "ZORBET.BAK" ? 2u : 3u) << "nothing else is left";
    EXPECT_THAT(takeLog(), Not(HasSubstr("ERROR")));
    return true;
}

TEST_F(SafeFileTest, FailsAtEveryStepAndKeepsTheOldOrTheNew) {
    onBoth([&] {
        for (const BreakHow how : {BreakHow::Error, BreakHow::Full, BreakHow::Short}) {
            for (const std::string kept : {"ZORBET.BAK", "ZORBET.BAD", "ZORBET.OTHER"}) {
                std::uint32_t operation = 1;
                while (breakStore(operation, how, kept)) ++operation;
                EXPECT_EQ(operation, kSteps + (kept == "ZORBET.BAK" ? 1 : 2));
            }
        }
    });
}

TEST_F(SafeFileTest, FlushesBytesBeforeTheyGetTheirName) {
    put("ZORBET.DAT", "first");
    files.changes.clear();
    RSafeFile file = safe();
    EXPECT_TRUE(file.store("second"));
    EXPECT_THAT(files.changes,
                ElementsAre("make C:\\HOME\\ZORBET.NEW", "write C:\\HOME\\ZORBET.NEW",
                            "flush C:\\HOME\\ZORBET.NEW", "make C:\\HOME\\ZORBET.TMP",
                            "write C:\\HOME\\ZORBET.TMP", "flush C:\\HOME\\ZORBET.TMP",
                            "rename C:\\HOME\\ZORBET.TMP C:\\HOME\\ZORBET.BAK",
                            "rename C:\\HOME\\ZORBET.NEW C:\\HOME\\ZORBET.DAT", "names C:\\HOME"));

    files.changes.clear();
    EXPECT_TRUE(file.store("second"));
    EXPECT_THAT(files.changes, IsEmpty()) << "is stored already";
    files.erase(path("ZORBET.DAT"));
    EXPECT_TRUE(file.store("second"));
    EXPECT_EQ(text("ZORBET.DAT"), "second") << "somebody took it away";
    EXPECT_EQ(text("ZORBET.BAK"), "first");
}

TEST_F(SafeFileTest, KeepsAFileThatWasNotUnderstood) {
    onBoth([&] {
        put("ZORBET.DAT", "bad");
        put("ZORBET.BAK", "last good");
        put("zorbet.bad", "another");
        RSafeFile file = safe();
        file.keepBeside();
        EXPECT_TRUE(file.store("one"));
        EXPECT_THAT(all(), UnorderedElementsAre(
                               Pair("ZORBET.DAT", "one"), Pair("ZORBET.BAK", "last good"),
                               Pair("zorbet.bad", "another"), Pair("ZORBET.BAD.1", "bad")));
        EXPECT_TRUE(file.store("two"));
        EXPECT_EQ(text("ZORBET.BAK"), "one") << "what was stored is good";
        EXPECT_EQ(all().size(), 4u);

        put("ZORBET.DAT", "bad");
        (void)file.read();
        file.keepBeside();
        EXPECT_TRUE(file.store("three"));
        EXPECT_EQ(all().size(), 4u) << "the same is kept already";

        for (int i = 2; i <= 9; ++i) put("ZORBET.BAD." + std::to_string(i), "taken");
        put("ZORBET.DAT", "worse");
        (void)file.read();
        file.keepBeside();
        takeLog();
        EXPECT_FALSE(file.store("four"));
        EXPECT_THAT(takeLog(), HasSubstr(".9 of it are taken"));
        EXPECT_EQ(text("ZORBET.DAT"), "worse");
        used->remove(path("ZORBET.BAD.5"));
        EXPECT_TRUE(file.store("four"));
        EXPECT_EQ(text("ZORBET.BAD.5"), "worse");
        EXPECT_EQ(all().size(), 12u);
    });
}

TEST_F(SafeFileTest, ReplacesNoFileThatItCannotRead) {
    onBoth([&] {
        put("ZORBET.DAT", "larger");
        RSafeFile file(*used, path("ZORBET.DAT"), 5);
        EXPECT_EQ(file.read().state, State::Unreadable);
        put("ZORBET.DAT", "less");
        EXPECT_EQ(file.read().state, State::Whole);
        EXPECT_FALSE(file.store("new")) << "not in this run";
        EXPECT_THAT(all(), ElementsAre(Pair("ZORBET.DAT", "less")));
    });
    used = &files;
    RSafeFile file = safe();
    files.unreadable = path("ZORBET.DAT");
    EXPECT_FALSE(file.store("a"));
    EXPECT_THAT(takeLog(), HasSubstr("ZORBET.DAT cannot be read: Permission denied."));
    files.unreadable.clear();
    EXPECT_TRUE(file.store("a")) << "what it held is known";
}

TEST_F(SafeFileTest, LeavesWhatIsNoFile) {
    used = &host;
    put("other", "");
    folder.makeFolder("data/home/ZORBET.DAT");
    EXPECT_EQ(safe().read().state, State::Unreadable);
    EXPECT_THAT(takeLog(), HasSubstr("ZORBET.DAT is there and cannot be read: Is a directory."));
    std::filesystem::remove(folder.path("data/home/ZORBET.DAT"));
    folder.makeFolder("data/home/ZORBET.BAD");
    put("ZORBET.DAT", "old");
    RSafeFile file = safe();
    file.keepBeside();
    EXPECT_TRUE(file.store("new"));
    EXPECT_EQ(text("ZORBET.BAD.1"), "old") << "the first name is a folder's";
}

} // namespace
