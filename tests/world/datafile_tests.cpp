// The data file byte for byte, and what is read of one that is cut off, changed or full of odd
// texts.
#include "world/datafile.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace world;

constexpr std::string_view kProperties =
    "playerName\nAna\nplayerLevel\n3\nplayerScore\n-7\nCMASolved\n0\nOMASolved\n0\nPWS1Solved\n0\n"
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
        for (const auto& [property, value] : {std::pair{"playerLevel", "3"},
                                              {"playerScore", "-7"},
                                              {"inGame", "1"},
                                              {"shoes", "red ones"}})
            player.setValue(property, value);
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
        ASSERT_EQ(std::ranges::count_if(numbers, [](int number) { return number != 0; }),
                  std::min(std::ssize(numbers), std::ptrdiff_t(last / 4)))
            << size;
    }
    EXPECT_THAT(whole, ElementsAre(0, start - 1, start, start + player - 1, start + player,
                                   file.size() - 1, file.size()));
}

TEST_F(DataFile, OddTextsCannotSpoilIt) {
    const std::string full(1022, 'x');
    for (const std::string& name : {std::string("GLOBAL_END"), std::string("PLAYER_END"),
                                    std::string("two\nlines"), full + "x"}) {
        globals.push_back(std::make_unique<StringProperty>(name));
        declare(name);
    }
    globals.push_back(std::make_unique<StringProperty>("mark"));
    globals.back()->setText("GLOBAL_END");
    declare(full);
    for (const char* name : {"GLOBAL_END", "PLAYER_END", "A\nB\n", ""}) addPlayer(name);
    addPlayer(full + "cut").setValue(full, full);
    const std::string file = compose();
    EXPECT_TRUE(file.starts_with("volume\n0\nGLOBAL_END\n"));
    EXPECT_TRUE(read(file));
    EXPECT_THAT(unknown, IsEmpty());
    std::vector<std::string> names;
    for (const auto& player : players) names.push_back(player->name());
    EXPECT_THAT(names, ElementsAre("GLOBAL_END", "PLAYER_END", "A B ", "", full));
    EXPECT_EQ(players.back()->value(full), full);
    EXPECT_EQ(compose(), file);
}

TEST_F(DataFile, WhatNobodyDeclaredIsPassedOverAndGoesBackIntoTheFile) {
    // A line of 1,023 bytes and more is two.
    const std::string file = "volume\n5\nold\nvolume\n" + std::string(1030, 'a') +
                             "\nGLOBAL_END\n" + kNumbers + "playerName\nAna\nhat\nblue\n" +
                             std::string(1023, 'b') + "\nshoes\nold\nscarf\n\nPLAYER_END\n";
    datafile::readGlobals(file, globals);
    EXPECT_EQ(globals[0]->text(), "5");
    EXPECT_TRUE(read(file));
    EXPECT_EQ(players[0]->value("shoes"), "old");
    EXPECT_THAT(unknown, ElementsAre("hat", std::string(1023, 'b'), "scarf"));
    const std::string kept = compose();
    EXPECT_TRUE(kept.ends_with("hat\nblue\nscarf\n\nPLAYER_END\n"));
    declare("hat");
    EXPECT_TRUE(read(kept));
    EXPECT_EQ(players[0]->value("hat"), "blue");
    EXPECT_THAT(unknown, ElementsAre("scarf"));
    // Of two of a name the last one is kept.
    templates.push_back(std::make_unique<IntProperty>("shoes"));
    addPlayer().stored().back()->setText("44");
    read(compose());
    EXPECT_EQ(players[1]->value("shoes"), "44");
}

TEST_F(DataFile, PlayersOfAnotherFormAreNotUnderstood) {
    const std::string player = kNumbers + "playerName\nAna\nPLAYER_END\n";
    EXPECT_TRUE(read("GLOBAL_END\n" + player + player));
    EXPECT_FALSE(read("GLOBAL_END\n" + player.substr(240) + player)) << "a shorter record";
    EXPECT_FALSE(read("GLOBAL_END\n" + kNumbers + "PLAYER_END\n" + player)) << "no name";
    EXPECT_FALSE(read("GLOBAL_END\n" + player + kNumbers)) << "no properties";
    EXPECT_EQ(players.size(), 2U);
}

} // namespace
