// The data file byte for byte, and what is read of one that is cut off, changed or full of odd
// texts.
#include "world/datafile.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace world;

constexpr std::string_view kProperties =
    "playerName\nAna\nplayerLevel\n3\nplayerScore\n-7\n"
    "CMASolved\n0\nOMASolved\n0\nPWS1Solved\n0\nPWS2Solved\n0\n"
    "seenCairoMap\n0\nseenOasisMap\n0\nseenChooseActivity\n0\n"
    "seenProgressLevels\n0\nseenLapTrapInGame\n0\n"
    "seenLapTrapInPractice\n0\nisBackgroundMusicOff\n0\n"
    "shoes\nred ones\nPLAYER_END\n";

class DataFile : public testing::Test {
  protected:
    DataFile() {
        globals.push_back(std::make_unique<IntProperty>("volume"));
        globals.push_back(std::make_unique<IntProperty>("passing", false));
        templates.push_back(std::make_unique<StringProperty>("shoes"));
    }
    Player& addPlayer() {
        Player& player = *players.emplace_back(std::make_unique<Player>(templates));
        player.setName("Ana");
        player.setValue("playerLevel", "3");
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

    Properties globals;
    Properties templates;
    Players players;
    std::vector<std::string> unknown;
};

TEST_F(DataFile, EveryByteHasItsPlace) {
    PlayerRecord& record = addPlayer().record();
    std::string numbers(2980, '\0');
    const auto put = [&](std::size_t offset, std::int32_t& number) {
        number = -1 - static_cast<std::int32_t>(offset) * 70'000;
        for (std::size_t i = 0; i < 4; ++i)
            numbers[offset + i] =
                static_cast<char>(static_cast<std::uint32_t>(number) >> (8 * i) & 0xFF);
    };
    put(48, record.missingSlots[1][0]);
    put(364, record.pattern[4][3]);
    put(368, record.currentLocation);
    put(460, record.hubs[0].rounds);
    put(564, record.hubs[1].items[11]);
    put(636, record.maps[1].currentLevel);
    put(660, record.activities[0].autoLeveling);
    put(740, record.activities[0].results[19]);
    put(744, record.activities[0].correctSinceDistribution);
    put(788, record.activities[0].resultCount);
    put(792, record.activities[0].totalCorrect[0]);
    put(820, record.activities[0].totalGuesses[3]);
    put(844, record.activities[0].queue[0]);
    put(2976, record.activities[9].items[5]);
    globals[0]->setText("11");
    const std::string file = "volume\n11\nGLOBAL_END\n" + numbers + std::string(kProperties);
    EXPECT_EQ(compose(), file);

    globals[0]->setText("0");
    EXPECT_TRUE(datafile::readGlobals(file, globals));
    EXPECT_EQ(globals[0]->text(), "11");
    EXPECT_TRUE(read(file));
    ASSERT_EQ(players.size(), 1U);
    EXPECT_EQ(players[0]->value("inGame"), "0");
    EXPECT_EQ(compose(), file);
    EXPECT_THAT(unknown, IsEmpty());
}

TEST_F(DataFile, CutOffAnywhereTheRestIsRead) {
    for (int i = 0; i < 2; ++i)
        std::ranges::fill(addPlayer().record().numbers(), 0x01010101 * (i + 1));
    const std::string file = compose();
    const std::size_t start = std::string_view("volume\n0\nGLOBAL_END\n").size();
    const std::size_t player = (file.size() - start) / 2;
    std::vector<std::size_t> whole;
    for (std::size_t size = 0; size <= file.size(); ++size) {
        const std::string_view bytes = std::string_view(file).substr(0, size);
        if (read(bytes)) whole.push_back(size);
        ASSERT_EQ(datafile::readGlobals(bytes, globals), size == 0 || size >= start - 1) << size;
        const std::size_t expected = size <= start ? 0 : (size - start - 1) / player + 1;
        ASSERT_EQ(players.size(), expected) << size;
        if (expected == 0) continue;
        const std::size_t last = size - start - (expected - 1) * player;
        const auto numbers = players.back()->record().numbers();
        ASSERT_EQ(std::ranges::count(numbers, 0),
                  std::ssize(numbers) - std::min(std::ssize(numbers), std::ptrdiff_t(last / 4)))
            << size;
    }
    EXPECT_THAT(whole, ElementsAre(0, start - 1, start, start + player - 1, start + player,
                                   file.size() - 1, file.size()));
}

TEST_F(DataFile, OddTextsCannotSpoilIt) {
    const std::string full(1022, 'x');
    for (const std::string& name :
         std::vector<std::string>{"GLOBAL_END", "PLAYER_END", "two\nlines", full + "x"})
        for (Properties* list : {&globals, &templates})
            list->push_back(std::make_unique<StringProperty>(name));
    globals.push_back(std::make_unique<StringProperty>("mark"));
    globals.back()->setText("GLOBAL_END");
    templates.push_back(std::make_unique<StringProperty>(full));
    addPlayer().setName("GLOBAL_END");
    addPlayer().setName("PLAYER_END");
    addPlayer().setName("A\nB\n");
    addPlayer().setName("");
    addPlayer().setName(full + "cut");
    players.back()->setValue(full, full);
    const std::string file = compose();
    EXPECT_TRUE(file.starts_with("volume\n0\nGLOBAL_END\n"));
    EXPECT_TRUE(read(file));
    EXPECT_THAT(unknown, IsEmpty());
    ASSERT_EQ(players.size(), 5U);
    EXPECT_EQ(players[0]->name(), "GLOBAL_END");
    EXPECT_EQ(players[1]->name(), "PLAYER_END");
    EXPECT_EQ(players[2]->name(), "A B ");
    EXPECT_EQ(players[3]->name(), "");
    EXPECT_EQ(players[4]->name(), full);
    EXPECT_EQ(players[4]->value(full), full);
    EXPECT_EQ(compose(), file);
}

TEST_F(DataFile, WhatIsNotKnownIsPassedOver) {
    const std::string numbers(2980, '\1');
    // A line of 1,023 bytes and more is two.
    const std::string file = "volume\n5\nold\nvolume\n" + std::string(1030, 'a') +
                             "\nGLOBAL_END\n" + numbers + "hat\nblue\n" + std::string(1023, 'b') +
                             "\nshoes\nold\nPLAYER_END\n" + numbers;
    datafile::readGlobals(file, globals);
    EXPECT_EQ(globals[0]->text(), "5");
    EXPECT_FALSE(read(file));
    ASSERT_EQ(players.size(), 2U);
    EXPECT_EQ(players[0]->value("shoes"), "old");
    EXPECT_THAT(unknown, ElementsAre("hat", std::string(1023, 'b')));
}

TEST_F(DataFile, WhatNobodyDeclaredGoesBackIntoTheFile) {
    EXPECT_TRUE(read("GLOBAL_END\n" + std::string(2980, '\1') +
                     "playerName\nAna\nhat\nblue\nscarf\n\nPLAYER_END\n"));
    EXPECT_THAT(unknown, ElementsAre("hat", "scarf"));
    const std::string kept = compose();
    EXPECT_NE(kept.find("hat\nblue\nscarf\n\nPLAYER_END\n"), std::string::npos);
    templates.push_back(std::make_unique<StringProperty>("hat"));
    EXPECT_TRUE(read(kept));
    EXPECT_EQ(players[0]->value("hat"), "blue");
    EXPECT_THAT(unknown, ElementsAre("scarf"));
}

TEST_F(DataFile, PlayersOfAnotherFormAreNotUnderstood) {
    const std::string player = std::string(2980, '\1') + "playerName\nAna\nPLAYER_END\n";
    EXPECT_TRUE(read("GLOBAL_END\n" + player + player));
    EXPECT_FALSE(read("GLOBAL_END\n" + player.substr(240) + player)) << "a shorter record";
    EXPECT_FALSE(read("GLOBAL_END\n" + std::string(2980, '\1') + "PLAYER_END\n" + player));
}

TEST_F(DataFile, OfTwoNamesTheLastIsTheOneThatIsKept) {
    templates.push_back(std::make_unique<IntProperty>("shoes"));
    addPlayer();
    players[0]->stored().back()->setText("44");
    const std::string file = compose();
    read(file);
    EXPECT_EQ(players[0]->value("shoes"), "44");
}

} // namespace
