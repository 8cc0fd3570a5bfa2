// The memory of the world from its start to its end: what its file and the log hold. What scripts
// see of it is played in tests/world.
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
using testing_support::WorldTest;

class WorldMemories : public WorldTest {
  protected:
    WorldMemories() {
        startWorld();
        OMSRegistry::global().registerClass(RWorldPort::kClass);
    }
    void again() {
        if (thread) thread->unload();
        memory->shutDown();
        startWorld();
    }
    void runOn(const std::string& script) { run("world=RWorldPort 0\n" + script); }
};

TEST_F(WorldMemories, ASaveHoldsAllAndTheNextRunReadsIt) {
    runOn("play world addGlobalIntProperty volume\nplay world addIntProperty coats\n"
          "play world activateDataFile\nplay world activatePlayer Ana\n"
          "set world informColorsWarning 0\nset world volume 5\n");
    memory->activatePlayer("Ana");
    EXPECT_THAT(logged(), testing::EndsWith("World Memory - activating player Ana\n"));
    memory->writeDataFile();
    EXPECT_EQ(logged(), "World Memory - writing data file, sDataFileActive: 1\n");
    const std::optional<std::string> first = file;
    EXPECT_TRUE(first->starts_with("informResolutionWarning\n1\ninformColorsWarning\n0\n"
                                   "informWinGWarning\n1\ninformDirectDrawSwitchFailedWarning\n1\n"
                                   "informDirectDrawVersionWarning\n1\n"
                                   "informDirectDrawNotFoundWarning\n1\nvolume\n5\nGLOBAL_END\n"));
    memory->writeDataFile();
    EXPECT_EQ(file, first);
    logged();
    again();
    runOn("play world activateDataFile\nplay world activateDataFile\n");
    EXPECT_EQ(memory->playersCount(), 1U);
    EXPECT_THAT(logged(), HasSubstr("World Memory shutting down\n"
                                    "World Memory - writing data file, sDataFileActive: 1\n"
                                    "World Memory - starting up!\n"
                                    "World Memory - reading data file, sDataFileActive: 1\n"
                                    "Player: unknown property coats\n"));
    // Writing reads the players before.
    again();
    memory->activatePlayer("Rui");
    EXPECT_THAT(logged(), HasSubstr("World Memory - activating player Rui\n"
                                    "World Memory - creating new player Rui\n"));
    memory->writeDataFile();
    EXPECT_EQ(memory->playersCount(), 2U);
    EXPECT_EQ(memory->activatePlayer("#1").name(), "Ana");
    EXPECT_THAT(logged(), HasSubstr("World Memory - writing data file, sDataFileActive: 0\n"
                                    "World Memory - reading data file, sDataFileActive: 1\n"));
    // Names are as they are stored; no other takes the place of a global of the program.
    memory->activatePlayer(std::string(1100, 'A'));
    memory->removePlayer(std::string(1100, 'A'));
    EXPECT_EQ(memory->playersCount(), 2U);
    runOn("set world informColorsWarning 1\n"
          "play world addGlobalIntProperty informColorsWarning\n");
    again();
    EXPECT_EQ(memory->global("informColorsWarning")->text(), "1");
}

TEST_F(WorldMemories, AFileThatIsNotWholeIsNoticed) {
    memory->activatePlayer("Ana");
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

TEST_F(WorldMemories, PortsStayWhenTheMemoryGoes) {
    runOn("play world activatePlayer Ana\n");
    OMScriptableObject* world = OMScriptableObject::named("world");
    memory->shutDown();
    EXPECT_FALSE(world->hasProperty("playerName") || world->hasProperty("informColorsWarning"));
    EXPECT_EQ(world->getProperty("playersCount"), "0");
    pushWords("CWS1");
    EXPECT_EQ(world->getProperty("wsAutoLevelingA"), "");
    EXPECT_TRUE(world->invoke("activatePlayer", {"Ana"})) << "and nothing happens";
    EXPECT_TRUE(world->invoke("addGlobalIntProperty", {"volume"}));
    EXPECT_EQ(OMSRegistry::global().create("RWorldPort"), nullptr);
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
