// The memory of the world from its start to its end: the data file, the players, and the ports
// through which scripts see it.
#include "worldfixture.h"

#include "commands/commands.h"
#include "movie/rsmackermovie.h"
#include "resources/resources.h"
#include "scene/efwindow.h"
#include "sound/gamesounds.h"
#include "world/rworldport.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing_support::WorldTest;

class WorldMemories : public WorldTest {
  protected:
    WorldMemories() {
        startWorld();
        OMSRegistry::global().registerClass(RWorldPort::kClass);
    }
    /// Runs a script on a port `world` in a new run of the program.
    std::string runAnew(const std::string& script) {
        if (thread) thread->unload();
        memory->shutDown();
        startWorld();
        run("world=RWorldPort 0\n" + script);
        return said();
    }
    std::string runOn(const std::string& script) {
        run("world=RWorldPort 0\n" + script);
        return said();
    }
};

// The guide's example shows what is kept of properties that scripts add.
TEST_F(WorldMemories, WhatIsToldBeforeTheDataFileIsReadComesBack) {
    const std::string declared = "play world addGlobalIntProperty volume\n"
                                 "play world addIntProperty coats \"\"\n"
                                 "play world activateDataFile\n"
                                 "play world activatePlayer \"Ana Lua\"\n";
    runOn(declared + "set world coats 4\nset world inGame 1\nset world playerScore 12\n"
                     "set world informColorsWarning 0\nset world volume 5\n");
    logged();
    memory->writeDataFile();
    EXPECT_EQ(logged(), "World Memory - writing data file, sDataFileActive: 1\n");
    const std::optional<std::string> first = file;
    EXPECT_TRUE(first->starts_with("informResolutionWarning\n1\ninformColorsWarning\n0\n"
                                   "informWinGWarning\n1\ninformDirectDrawSwitchFailedWarning\n1\n"
                                   "informDirectDrawVersionWarning\n1\n"
                                   "informDirectDrawNotFoundWarning\n1\nvolume\n5\nGLOBAL_END\n"));
    memory->writeDataFile();
    EXPECT_EQ(file, first);

    EXPECT_EQ(runAnew(declared + "get world coats r\nget world inGame s\nget world playerScore t\n"
                                 "say r s t\nget world informColorsWarning r\nsay r\n"),
              "4 0 12\n0\n");
    EXPECT_THAT(logged(), Not(HasSubstr("unknown")));

    EXPECT_EQ(runAnew("play world activateDataFile\nget world playersCount r\nsay r\n"), "1\n");
    EXPECT_THAT(logged(), HasSubstr("World Memory shutting down\n"
                                    "World Memory - writing data file, sDataFileActive: 1\n"
                                    "World Memory - starting up!\n"
                                    "World Memory - reading data file, sDataFileActive: 1\n"
                                    "Player: unknown property coats\n"));
    EXPECT_THAT(boxes(), IsEmpty());
}

TEST_F(WorldMemories, WritingReadsThePlayersBefore) {
    runOn("play world activatePlayer Ana\n");
    runAnew("play world activatePlayer Rui\n");
    EXPECT_EQ(memory->playersCount(), 1U);
    memory->writeDataFile();
    EXPECT_EQ(memory->playersCount(), 2U);
    EXPECT_THAT(logged(), HasSubstr("World Memory - writing data file, sDataFileActive: 0\n"
                                    "World Memory - reading data file, sDataFileActive: 1\n"));
    EXPECT_EQ(runAnew("play world activateDataFile\nplay world activatePlayer \"#1\"\n"
                      "get world playerName r\nsay r\n"),
              "Ana\n");
}

TEST_F(WorldMemories, AFileThatIsNotWholeIsNoticed) {
    runOn("play world activatePlayer Ana\n");
    memory->writeDataFile();
    const std::string whole = *file;
    const auto wholeAfterReading = [this](const std::optional<std::string>& bytes) {
        file = bytes;
        startWorld();
        memory->activateDataFile();
        return memory->wasReadWhole();
    };
    EXPECT_TRUE(wholeAfterReading(whole));
    EXPECT_TRUE(wholeAfterReading(std::nullopt));
    EXPECT_TRUE(wholeAfterReading("GLOBAL_END\n"));
    EXPECT_EQ(memory->playersCount(), 0U);
    EXPECT_FALSE(wholeAfterReading("no data file"));
    EXPECT_FALSE(wholeAfterReading(whole.substr(0, whole.size() - 3)));
    EXPECT_EQ(memory->playersCount(), 1U);
    file = "informColorsWarning\n1\n";
    startWorld();
    EXPECT_FALSE(memory->wasReadWhole());
    logged();
    wholeAfterReading("GLOBAL_END\n" + std::string(2980, '\0') + std::string(200'000, '\n'));
    const std::string log = logged();
    EXPECT_EQ(std::ranges::count(log, '\n'), 10'002) << "not without end";
}

TEST_F(WorldMemories, PlayersAreFoundByNameOrPlace) {
    const auto activate = [this](std::string_view name) {
        return memory->activatePlayer(name).name();
    };
    EXPECT_EQ(activate("#0"), "#0") << "nobody was there";
    EXPECT_EQ(activate("Ana"), "Ana");
    EXPECT_EQ(activate("ana"), "ana");
    EXPECT_EQ(activate("#1"), "Ana");
    EXPECT_EQ(activate("#9"), "#9");
    EXPECT_EQ(activate("#-1"), "#-1");
    EXPECT_EQ(memory->playersCount(), 5U);
    EXPECT_EQ(activate("#9"), "#9");
    EXPECT_EQ(activate("#3"), "#9");
    EXPECT_EQ(memory->playersCount(), 5U) << "nobody is made twice";
    logged();
    activate("2");
    EXPECT_THAT(logged(), testing::StartsWith("World Memory - activating player 2\n"
                                              "World Memory - creating new player 2\n"));

    memory->removePlayer("2"); // the name comes first
    memory->removePlayer("99");
    memory->removePlayer("Rui");
    memory->removePlayer("#0x");
    EXPECT_EQ(memory->playersCount(), 5U);
    EXPECT_EQ(memory->currentPlayer(), nullptr);
    activate("ana");
    memory->removePlayer("0");
    EXPECT_EQ(memory->currentPlayer()->name(), "ana") << "another one went";
    EXPECT_EQ(activate("#0"), "Ana");
}

TEST_F(WorldMemories, NothingIsLeftOfThoseWhoGo) {
    runOn("other=RWorldPort 0\nplay world activatePlayer Ana\nget other playerName r\n");
    EXPECT_THAT(boxes(), ElementsAre("Property playerName not found")) << "another port's";
    OMScriptableObject* world = OMScriptableObject::named("world");
    OMScriptableObject* other = OMScriptableObject::named("other");
    other->invoke("activatePlayer", {"Ana"});
    EXPECT_EQ(other->getProperty("playerName"), "Ana");
    other->invoke("activatePlayer", {"Rui"});
    EXPECT_EQ(world->getProperty("playerName"), "Ana") << "until it is told";
    other->invoke("removePlayer", {"Ana"});
    EXPECT_EQ(world->getProperty("playerName"), std::nullopt);
    EXPECT_EQ(other->getProperty("playerName"), "Rui");

    memory->shutDown();
    for (OMScriptableObject* port : {world, other}) {
        EXPECT_FALSE(port->hasProperty("playerName"));
        EXPECT_FALSE(port->hasProperty("informColorsWarning"));
        EXPECT_EQ(port->getProperty("playersCount"), "0");
        pushWords("CWS1");
        EXPECT_EQ(port->getProperty("wsAutoLevelingA"), "");
        EXPECT_TRUE(port->invoke("activatePlayer", {"Ana"})) << "and nothing happens";
        EXPECT_TRUE(port->invoke("addGlobalIntProperty", {"volume"}));
    }
    EXPECT_EQ(OMSRegistry::global().create("RWorldPort"), nullptr);
}

// The guide's examples show more of what they do; here is also what they leave alone.
TEST_F(WorldMemories, NamesThatAreThereAlready) {
    const std::string wide(1100, 'A');
    EXPECT_EQ(runOn("play world addGlobalIntProperty informColorsWarning\n"
                    "play world addGlobalIntProperty hats\nset world hats 1\n"
                    "play world addGlobalIntProperty hats\nset world hats 2\n"
                    "play world addIntProperty hats\nplay world addIntProperty activatePlayer\n"
                    "play world activatePlayer \"Ana\"\nget world hats hers\n"
                    "play world removePlayer \"Ana\"\nget world hats again\nsay hers again\n"
                    "play world activatePlayer \"Rui\"\n"),
              "0 2\n")
        << "a player's property stands before the global only while the player is shown";
    EXPECT_THAT(boxes(), IsEmpty());
    memory->activatePlayer(wide);
    memory->removePlayer(wide);
    EXPECT_EQ(memory->playersCount(), 1U) << "names are as they are stored";
    runAnew("");
    EXPECT_EQ(memory->global("informColorsWarning")->text(), "1") << "no other takes its place";
}

TEST_F(WorldMemories, MethodsChangeTheRecord) {
    EXPECT_EQ(runOn(R"(play world activatePlayer Ana
set world currentLocation CWS1
play world backpackAddObject 29
play world backpackAddObject 0
play world backpackRemoveObject 12
play world backpackAddObject 28
play world backpackAddObject 3
play world backpackRemoveObject 0
get world backpackItemPresent 1 r
for i 1 7
play world addObject 12+i ""
play world addObject 0 CHUB
play world addObject 29 CHUB
play world addObject 5 CBA1
play world removeObjectFromLocation 19 CWS1
get world itemsPresentCount "" s
get world itemsPresentCount CHUB t
say r s t
play world removeObjectFromLocation 14 CWS1
get world itemPresent 2 "" r
get world itemPresent 3 "" s
say r s
play world correctGuess ""
play world incorrectGuess CWS2
play world incorrectGuess PBA
get world wsTotalCorrectGuessCount "" r
get world wsTotalGuessCount CWS2 s
say r s
play world autoLevel CMA
get world currentLevel CMA r
set world currentLocation CHUB
play world distributeItems
get world wsNextItemInQueue CWS1 s
if s>0
say r "queued"
for i 1 3
play world removeNextObjectFromQueue CWS1
get world wsNextItemInQueue CWS1 r
play world newGame
get world itemsPresentCount CWS1 s
get world currentLocation t
say r s t
)"),
              "3 6 0\n0 15\n1 1\n2 queued\n0 0 CBA1\n");
    EXPECT_THAT(boxes(), IsEmpty());
}

TEST_F(WorldMemories, EachActivityHasThresholds) {
    EXPECT_EQ(runOn(R"(get world wsAutoLevelingA CWS1 a
get world wsAutoLevelingB PWS2 b
get world wsAutoLevelingY CWS3 y
set world wsAutoLevelingX OWS4 "-3"
get world wsAutoLevelingX OWS4 w
get world wsAutoLevelingX OWS3 x
say a b w x y
set world wsAutoLevelingA CHUB 9
get world wsAutoLevelingA CHUB a
get world wsAutoLevelingA "" b
say "none:" a b
)"),
              "5 6 -3 4 10\nnone:  \n");
}

TEST_F(WorldMemories, TransitionsWatchAndSave) {
    EffectsWindow window({0, 0}, "Zorbet");
    RMovies movies;
    RResources resources;
    RGameSounds sounds(resources);
    const RCommands commands(window, resources, sounds, movies);
    runOn("StartTransition\n");
    EXPECT_TRUE(file) << "it was saved";
    EXPECT_THAT(logged(), HasSubstr("\n*** CStatueDataset is not defined ***\n"
                                    "World Memory - writing data file, sDataFileActive: 0\n"));
    EXPECT_THAT(boxes(), IsEmpty());

    runOn("play world addGlobalIntProperty CStatueDataset 0\nset world CStatueDataset 3\n"
          "StartTransition\n");
    EXPECT_THAT(logged(), HasSubstr("Setting CStatueDataset to 3\n"));
    EXPECT_THAT(boxes(), IsEmpty());
    runOn("set world CStatueDataset none\nStartTransition\n");
    EXPECT_THAT(logged(), HasSubstr("Querying CStatueDataset, value is 0\n"
                                    "\n**** CStatueDataset is now 0 ****\n\n"
                                    "World Memory - writing data file, sDataFileActive: 1\n"));
    EXPECT_THAT(boxes(), ElementsAre("CStatueDataset is now 0, please inform Ilse or Bram"));
    memory.reset();
    run("StartTransition\n");
    EXPECT_THAT(boxes(), IsEmpty());
}

} // namespace
