// The data file: byte for byte, cut off, changed or full of odd texts; and stored whole, failing at
// every step. The same happens to real ones in tests/datafile.
#include "frameworkfixture.h"
#include "world/datafile.h"
#include "world/safefile.h"

#include "platform/headless/breakingfiles.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using namespace world;

constexpr std::string_view kProperties =
    "playerName\nAna\nplayerLevel\n0\nplayerScore\n-7\nCMASolved\n0\nOMASolved\n0\nPWS1Solved\n0\n"
    "PWS2Solved\n0\nseenCairoMap\n0\nseenOasisMap\n0\nseenChooseActivity\n0\n"
    "seenProgressLevels\n0\nseenLapTrapInGame\n0\nseenLapTrapInPractice\n0\n"
    "isBackgroundMusicOff\n0\nshoes\nred ones\nPLAYER_END\n";
const std::string kNumbers(2980, '\1');

class DataFile : public testing::Test {
  protected:
    DataFile() {
        globals.push_back(std::make_unique<IntProperty>("volume"));
        globals.push_back(std::make_unique<IntProperty>("passing", false));
        declare("shoes");
    }
    void declare(const std::string& name) {
        templates.push_back(std::make_unique<StringProperty>(name));
    }
    Player& addPlayer(const std::string& name = "Ana") {
        Player& player = *players.emplace_back(std::make_unique<Player>(templates));
        player.setName(name);
        player.setValue("playerScore", "-7");
        player.setValue("inGame", "1");
        player.setValue("shoes", "red ones");
        return player;
    }
    bool read(std::string_view bytes) {
        players.clear();
        unknown.clear();
        return datafile::readPlayers(bytes, templates, players,
                                     [this](std::string_view name) { unknown.emplace_back(name); });
    }
    std::string compose() { return datafile::compose(globals, players); }

    Properties globals, templates;
    Players players;
    std::vector<std::string> unknown;
};

TEST_F(DataFile, EveryByteHasItsPlace) {
    std::string numbers;
    std::uint32_t value = 0;
    for (std::int32_t& number : addPlayer().record().numbers()) {
        number = static_cast<std::int32_t>(value -= 5'700'001);
        for (int shift = 0; shift < 32; shift += 8) numbers += static_cast<char>(value >> shift);
    }
    EXPECT_EQ(numbers.size(), kNumbers.size());
    globals[0]->setText("11");
    const std::string file = "volume\n11\nGLOBAL_END\n" + numbers + std::string(kProperties);
    EXPECT_EQ(compose(), file);
    globals[0]->setText("0");
    EXPECT_TRUE(datafile::readGlobals(file, globals) && read(file) && unknown.empty());
    ASSERT_EQ(players.size(), 1U);
    EXPECT_EQ(players[0]->value("inGame"), "0");
    EXPECT_EQ(compose(), file);
}

TEST_F(DataFile, CutOffAnywhereTheRestIsRead) {
    for (int i = 0; i < 2; ++i)
        std::ranges::fill(addPlayer().record().numbers(), 0x01010101 * (i + 1));
    const std::string file = compose();
    const std::size_t start = std::string_view("volume\n0\nGLOBAL_END\n").size();
    const std::size_t player = (file.size() - start) / 2;
    std::vector<std::size_t> whole;
    for (std::size_t size = 0; size <= file.size(); ++size) {
        SCOPED_TRACE(size);
        const std::string bytes = file.substr(0, size);
        if (read(bytes)) whole.push_back(size);
        ASSERT_EQ(datafile::readGlobals(bytes, globals), size == 0 || size >= start - 1);
        const std::size_t count = size <= start ? 0 : (size - start - 1) / player + 1;
        ASSERT_EQ(players.size(), count);
        if (count == 0) continue;
        const auto numbers = players.back()->record().numbers();
        ASSERT_EQ(numbers.size() - std::size_t(std::ranges::count(numbers, 0)),
                  std::min(numbers.size(), (size - start - (count - 1) * player) / 4));
    }
    EXPECT_THAT(whole, ElementsAre(0, start - 1, start, start + player - 1, start + player,
                                   file.size() - 1, file.size()));
}

TEST_F(DataFile, OddTextsCannotSpoilIt) {
    const std::string full(1022, 'x');
    for (const std::string& name : {std::string("GLOBAL_END"), std::string("PLAYER_END"),
                                    std::string("two\nlines"), full + "x", std::string("mark")}) {
        globals.push_back(std::make_unique<StringProperty>(name));
        declare(name);
    }
    globals.back()->setText("GLOBAL_END");
    declare(full);
    for (const char* name : {"GLOBAL_END", "PLAYER_END", "A\nB\n", ""}) addPlayer(name);
    addPlayer(full + "cut").setValue(full, full);
    const std::string file = compose();
    EXPECT_TRUE(file.starts_with("volume\n0\nGLOBAL_END\n") && read(file) && unknown.empty());
    EXPECT_EQ(players[2]->name() + players[4]->name(), "A B " + full);
    EXPECT_EQ(players.back()->value(full), full);
    EXPECT_EQ(compose(), file);
}

TEST_F(DataFile, WhatNobodyDeclaredIsPassedOverAndGoesBackIntoTheFile) {
    // A line of 1,023 bytes and more is two.
    const std::string file = "volume\n5\nold\nvolume\n" + std::string(1030, 'a') +
                             "\nGLOBAL_END\n" + kNumbers + "playerName\nAna\nhat\nblue\n" +
                             std::string(1023, 'b') + "\nshoes\nold\nscarf\n\nPLAYER_END\n";
    EXPECT_TRUE(datafile::readGlobals(file, globals) && read(file));
    EXPECT_EQ(globals[0]->text() + players[0]->value("shoes").value(), "5old");
    EXPECT_THAT(unknown, ElementsAre("hat", std::string(1023, 'b'), "scarf"));
    const std::string kept = compose();
    EXPECT_TRUE(kept.ends_with("hat\nblue\nscarf\n\nPLAYER_END\n"));
    declare("hat");
    EXPECT_TRUE(read(kept));
    EXPECT_EQ(players[0]->value("hat").value() + unknown.at(0), "bluescarf");
    const std::string named = "playerName\nAna\nPLAYER_END\n", next = kNumbers + named;
    EXPECT_TRUE(read(kept + next));
    for (const std::string& wrong :
         {kNumbers.substr(240) + named + next, kNumbers + "PLAYER_END\n" + next, kNumbers})
        EXPECT_FALSE(read(kept + wrong)) << "a shorter record, no name, no properties";
}

class SafeFileTest : public testing_support::FrameworkTest {
  protected:
    static std::string path(const std::string& name) { return "C:\\HOME\\ZORBET." + name; }
    void put(const std::string& name, std::string_view bytes) { files.put(path(name), bytes); }
    /// Extensions and contents of everything in the folder.
    std::string all() const {
        std::string result;
        for (const auto& entry : files.list("C:\\HOME"))
            result += (result.empty() ? "" : ", ") + entry.name.substr(7) + " " +
                      platform::readFile(files, "C:\\HOME\\" + entry.name, 1000).value_or("(none)");
        return result;
    }
    /// It knows what is there.
    static RSafeFile safe(platform::Files& through) {
        RSafeFile file(through, path("DAT"));
        (void)file.read();
        return file;
    }
};

TEST_F(SafeFileTest, FailsAtEveryStepAndKeepsTheOldOrTheNew) {
    using enum platform::BreakHow;
    // "second" is stored over "first", which is kept as `kept`; whether the operation was reached.
    const auto breakStore = [&](std::uint32_t operation, platform::BreakHow how,
                                const std::string& kept) {
        SCOPED_TRACE("operation " + std::to_string(operation) + " " + kept);
        for (const auto& entry : files.list("C:\\HOME")) files.remove("C:\\HOME\\" + entry.name);
        EXPECT_TRUE(safe(files).store("before") && safe(files).store("first"));
        takeLog();
        platform::BreakingFiles breaking(files, {operation, how});
        if (kept == "OTHER") put("DAT", "before");
        RSafeFile file = safe(breaking);
        put("DAT", "first");
        if (kept == "BAD") file.keepBeside();
        if (file.store("second")) return false;
        const std::string log = takeLog();
        EXPECT_THAT(log, HasSubstr("ERROR: " + path("DAT") + " is not stored: "));
        EXPECT_EQ(log.find("ERROR"), log.rfind("ERROR")) << log;
        const std::string now = files.text(path("DAT"));
        EXPECT_TRUE(now == "first" || now == "second") << now;
        EXPECT_TRUE(file.store("third"));
        EXPECT_EQ(files.text(path("DAT")), "third");
        EXPECT_EQ(files.text(path(kept)), kept == "BAK" ? now : "first");
        EXPECT_EQ(files.list("C:\\HOME").size(), kept == "BAK" ? 2u : 3u) << "nothing else is left";
        EXPECT_EQ(takeLog().find("ERROR"), std::string::npos);
        return true;
    };
    for (const platform::BreakHow how : {Error, Full, Short})
        for (const std::string kept : {"BAK", "BAD", "OTHER"}) {
            std::uint32_t operation = 1;
            while (breakStore(operation, how, kept)) ++operation;
            EXPECT_EQ(operation, kept == "BAK" ? 10u : 11u);
        }
}

TEST_F(SafeFileTest, FlushesBytesBeforeTheyGetTheirName) {
    put("DAT", "first");
    files.changes.clear();
    RSafeFile file = safe(files);
    EXPECT_TRUE(file.store("second"));
    std::string changes;
    for (const std::string& change : std::exchange(files.changes, {})) changes += change + "\n";
    for (std::size_t at = 0; (at = changes.find("C:\\HOME\\ZORBET.")) != std::string::npos;)
        changes.erase(at, path("").size());
    EXPECT_EQ(changes, "make NEW\nwrite NEW\nflush NEW\nmake TMP\nwrite TMP\nflush TMP\n"
                       "rename TMP BAK\nrename NEW DAT\nnames C:\\HOME\n");
    EXPECT_TRUE(file.store("second"));
    EXPECT_TRUE(files.changes.empty()) << "is stored already";
    files.erase(path("DAT"));
    EXPECT_TRUE(file.store("second"));
    EXPECT_EQ(all(), "BAK first, DAT second");
}

TEST_F(SafeFileTest, KeepsAFileThatWasNotUnderstood) {
    RSafeFile file = safe(files);
    const auto storeOver = [&](const char* bad, const std::string& bytes) {
        put("DAT", bad);
        (void)file.read();
        file.keepBeside();
        return file.store(bytes);
    };
    put("BAK", "last good");
    put("bad", "another");
    EXPECT_TRUE(storeOver("bad", "one"));
    EXPECT_EQ(all(), "bad another, BAD.1 bad, BAK last good, DAT one");
    EXPECT_TRUE(file.store("two"));
    EXPECT_TRUE(storeOver("bad", "three"));
    EXPECT_EQ(all(), "bad another, BAD.1 bad, BAK one, DAT three");
    for (int i = 2; i <= 9; ++i) put("BAD." + std::to_string(i), "taken");
    takeLog();
    EXPECT_FALSE(storeOver("worse", "four"));
    EXPECT_THAT(takeLog(), HasSubstr(".9 of it are taken"));
    EXPECT_THAT(all(), testing::EndsWith(", BAD.9 taken, BAK one, DAT worse"));
    files.remove(path("BAD.9"));
    EXPECT_TRUE(file.store("four"));
    EXPECT_THAT(all(), testing::EndsWith(", BAD.9 worse, BAK one, DAT four"));
}

TEST_F(SafeFileTest, ReplacesNoFileThatItCannotRead) {
    put("DAT", "larger");
    RSafeFile bounded(files, path("DAT"), 5);
    EXPECT_EQ(bounded.read().state, RSafeFile::State::Unreadable);
    put("DAT", "less");
    EXPECT_EQ(bounded.read().state, RSafeFile::State::Whole);
    EXPECT_FALSE(bounded.store("new")) << "not in this run";
    RSafeFile file = safe(files);
    files.unreadable = path("DAT");
    EXPECT_FALSE(file.store("a"));
    EXPECT_THAT(takeLog(), HasSubstr("ZORBET.DAT cannot be read: Permission denied."));
    files.unreadable.clear();
    EXPECT_EQ(all(), "DAT less");
    EXPECT_TRUE(file.store("a")) << "what it held is known";
    files.putFolder(path("BAD"));
    file.keepBeside();
    EXPECT_TRUE(file.store("b"));
    EXPECT_THAT(all(), HasSubstr("BAD.1 a")) << "the first name is a folder's";
}

} // namespace
