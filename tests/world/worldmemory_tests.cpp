// The memory of the world where scripts do not reach: names as they are stored, files that are not
// whole, and ports after its end.
#include "world/worldmemory.h"

#include "../trinkets/scriptfixture.h"
#include "world/rworldport.h"

#include "omsarguments.h"

#include <gmock/gmock.h>

namespace {

class WorldMemories : public testing_support::ScriptTest {
  protected:
    WorldMemories() { start(); }
    /// Another run of the program, without its shutdown.
    void start() {
        memory.reset();
        memory = std::make_unique<world::WorldMemory>(
            [this] { return file; }, [this](const std::string& bytes) { file = bytes; });
    }
    std::optional<std::string> file; ///< none: it cannot be opened
    std::unique_ptr<world::WorldMemory> memory;
};

TEST_F(WorldMemories, NamesAreAsTheyAreStoredAndTwoSavesAreTheSame) {
    for (const char* name : {"A", "B\n"}) {
        const std::string wanted(name + std::string(1100, 'C'));
        memory->activatePlayer(wanted);
        memory->writeDataFile();
        start();
        memory->activateDataFile();
        memory->activatePlayer(wanted);
        EXPECT_EQ(memory->playersCount(), 1U);
        const std::optional<std::string> before = file;
        memory->writeDataFile();
        EXPECT_EQ(file, before);
        memory->removePlayer(wanted);
        EXPECT_EQ(memory->playersCount(), 0U);
    }
}

TEST_F(WorldMemories, AFileThatIsNotWholeIsNoticed) {
    memory->activatePlayer("Ana");
    memory->writeDataFile();
    const std::string whole = *file;
    const std::string globals = "informColorsWarning\n1\n";
    const struct {
        std::optional<std::string> bytes;
        bool startsWhole, isWhole; ///< until the players are read, and after it
        std::size_t players;
    } rows[] = {
        {whole, true, true, 1},          {std::nullopt, true, true, 0},
        {"GLOBAL_END\n", true, true, 0}, {"no data file", false, false, 0},
        {globals, false, false, 0},      {whole.substr(0, whole.size() - 3), true, false, 1}};
    for (const auto& row : rows) {
        file = row.bytes;
        start();
        EXPECT_EQ(memory->wasReadWhole(), row.startsWhole);
        memory->activateDataFile();
        EXPECT_EQ(memory->wasReadWhole(), row.isWhole);
        EXPECT_EQ(memory->playersCount(), row.players);
    }
    file = "GLOBAL_END\n" + std::string(2980, '\0') + std::string(200'000, '\n');
    start();
    machine.files().erase("zorbelog.txt");
    memory->activateDataFile();
    const std::string log = machine.files().text("zorbelog.txt");
    EXPECT_EQ(std::ranges::count(log, '\n'), 10'001) << "not without end";
}

TEST_F(WorldMemories, PortsStayWhenTheMemoryGoes) {
    RWorldPort world(*memory);
    world.takeClass(RWorldPort::kClass);
    EXPECT_TRUE(world.invoke("activatePlayer", {"Ana"}));
    EXPECT_TRUE(world.hasProperty("playerName") && world.hasProperty("informColorsWarning"));
    memory->shutDown();
    EXPECT_FALSE(world.hasProperty("playerName") || world.hasProperty("informColorsWarning"));
    EXPECT_EQ(world.getProperty("playersCount"), "0");
    OMSArguments::global().push("CWS1");
    EXPECT_EQ(world.getProperty("wsAutoLevelingA"), "");
    OMSArguments::global().push("CWS1");
    world.setProperty("wsAutoLevelingA", "1");
    for (const char* method : {"activatePlayer", "removePlayer", "activateDataFile",
                               "addIntProperty", "addGlobalIntProperty"})
        EXPECT_TRUE(world.invoke(method, {"Ana"})) << "and nothing happens";
    OMSRegistry::global().registerClass(RWorldPort::kClass);
    EXPECT_EQ(OMSRegistry::global().create("RWorldPort"), nullptr);
}

} // namespace
