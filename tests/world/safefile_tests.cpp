// A file that is stored whole, and fails at every step. The same happens to real ones in
// tests/datafile.
#include "world/safefile.h"

#include "frameworkfixture.h"

#include "platform/headless/breakingfiles.h"

#include <gmock/gmock.h>

namespace {

using platform::BreakHow;
using State = RSafeFile::State;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pair;

constexpr std::uint32_t kSteps = 9; ///< of a store that keeps the file before

class SafeFileTest : public testing_support::FrameworkTest {
  protected:
    static std::string path(const std::string& name) { return "C:\\HOME\\" + name; }
    std::string text(const std::string& name) const {
        return platform::readFile(files, path(name), 1000).value_or("(none)");
    }
    void put(const std::string& name, std::string_view bytes) { files.put(path(name), bytes); }
    void putData(std::string_view bytes) { put("ZORBET.DAT", bytes); }
    /// Names and contents of everything in the folder.
    std::map<std::string, std::string> all() const {
        std::map<std::string, std::string> result;
        for (const auto& entry : files.list("C:\\HOME")) result[entry.name] = text(entry.name);
        return result;
    }
    /// The lines that the log got since the last call.
    std::string takeLog() {
        const std::string log = files.text("zorbelog.txt");
        files.erase("zorbelog.txt");
        return log;
    }
    /// It knows what is there.
    static RSafeFile safe(platform::Files& through) {
        RSafeFile file(through, path("ZORBET.DAT"));
        (void)file.read();
        return file;
    }

    /// A store of "second" over "first", which is kept as `kept`, fails at the operation; whether
    /// it came that far.
    bool breakStore(std::uint32_t operation, BreakHow how, const std::string& kept);
};

bool SafeFileTest::breakStore(std::uint32_t operation, BreakHow how, const std::string& kept) {
    SCOPED_TRACE("operation " + std::to_string(operation) + " " + kept);
    for (const auto& [name, bytes] : all()) files.remove(path(name));
    EXPECT_TRUE(safe(files).store("before") && safe(files).store("first"));
    takeLog();
    platform::BreakingFiles breaking(files, {operation, how});
    if (kept == "ZORBET.OTHER") putData("before");
    RSafeFile file = safe(breaking);
    putData("first");
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
    EXPECT_EQ(takeLog().find("ERROR"), std::string::npos);
    return true;
}

TEST_F(SafeFileTest, FailsAtEveryStepAndKeepsTheOldOrTheNew) {
    for (const BreakHow how : {BreakHow::Error, BreakHow::Full, BreakHow::Short})
        for (const std::string kept : {"ZORBET.BAK", "ZORBET.BAD", "ZORBET.OTHER"}) {
            std::uint32_t operation = 1;
            while (breakStore(operation, how, kept)) ++operation;
            EXPECT_EQ(operation, kSteps + (kept == "ZORBET.BAK" ? 1 : 2));
        }
}

TEST_F(SafeFileTest, FlushesBytesBeforeTheyGetTheirName) {
    putData("first");
    files.changes.clear();
    RSafeFile file = safe(files);
    EXPECT_TRUE(file.store("second"));
    EXPECT_THAT(files.changes,
                ElementsAre("make C:\\HOME\\ZORBET.NEW", "write C:\\HOME\\ZORBET.NEW",
                            "flush C:\\HOME\\ZORBET.NEW", "make C:\\HOME\\ZORBET.TMP",
                            "write C:\\HOME\\ZORBET.TMP", "flush C:\\HOME\\ZORBET.TMP",
                            "rename C:\\HOME\\ZORBET.TMP C:\\HOME\\ZORBET.BAK",
                            "rename C:\\HOME\\ZORBET.NEW C:\\HOME\\ZORBET.DAT", "names C:\\HOME"));
    files.changes.clear();
    EXPECT_TRUE(file.store("second"));
    EXPECT_THAT(files.changes, testing::IsEmpty()) << "is stored already";
    files.erase(path("ZORBET.DAT"));
    EXPECT_TRUE(file.store("second"));
    EXPECT_EQ(text("ZORBET.DAT"), "second") << "somebody took it away";
    EXPECT_EQ(text("ZORBET.BAK"), "first");
}

TEST_F(SafeFileTest, KeepsAFileThatWasNotUnderstood) {
    RSafeFile file = safe(files);
    const auto storeOver = [&](const char* bad, const std::string& bytes) {
        putData(bad);
        (void)file.read();
        file.keepBeside();
        return file.store(bytes);
    };
    put("ZORBET.BAK", "last good");
    put("zorbet.bad", "another");
    EXPECT_TRUE(storeOver("bad", "one"));
    EXPECT_THAT(all(), testing::UnorderedElementsAre(
                           Pair("ZORBET.DAT", "one"), Pair("ZORBET.BAK", "last good"),
                           Pair("zorbet.bad", "another"), Pair("ZORBET.BAD.1", "bad")));
    EXPECT_TRUE(file.store("two"));
    EXPECT_EQ(text("ZORBET.BAK"), "one") << "what was stored is good";
    EXPECT_EQ(all().size(), 4u);
    EXPECT_TRUE(storeOver("bad", "three"));
    EXPECT_EQ(all().size(), 4u) << "the same is kept already";

    for (int i = 2; i <= 9; ++i) put("ZORBET.BAD." + std::to_string(i), "taken");
    takeLog();
    EXPECT_FALSE(storeOver("worse", "four"));
    EXPECT_THAT(takeLog(), HasSubstr(".9 of it are taken"));
    EXPECT_EQ(text("ZORBET.DAT"), "worse");
    files.remove(path("ZORBET.BAD.9"));
    EXPECT_TRUE(file.store("four"));
    EXPECT_EQ(text("ZORBET.BAD.9"), "worse");
    EXPECT_EQ(all().size(), 12u);
}

TEST_F(SafeFileTest, ReplacesNoFileThatItCannotRead) {
    putData("larger");
    RSafeFile bounded(files, path("ZORBET.DAT"), 5);
    EXPECT_EQ(bounded.read().state, State::Unreadable);
    putData("less");
    EXPECT_EQ(bounded.read().state, State::Whole);
    EXPECT_FALSE(bounded.store("new")) << "not in this run";
    EXPECT_THAT(all(), ElementsAre(Pair("ZORBET.DAT", "less")));

    RSafeFile file = safe(files);
    files.unreadable = path("ZORBET.DAT");
    EXPECT_FALSE(file.store("a"));
    EXPECT_THAT(takeLog(), HasSubstr("ZORBET.DAT cannot be read: Permission denied."));
    files.unreadable.clear();
    EXPECT_TRUE(file.store("a")) << "what it held is known";
    files.putFolder(path("ZORBET.BAD"));
    file.keepBeside();
    EXPECT_TRUE(file.store("b"));
    EXPECT_EQ(text("ZORBET.BAD.1"), "a") << "the first name is a folder's";
}

} // namespace
