// What no machine of ours comes to: no memory, a silent sound device; and parts of the program that
// begin before the game.
#include "frameworkfixture.h"

#include "omappinitterm.h"
#include "omwaveengine.h"
#include "startup/memoryexhaustion.h"
#include "startup/programresources.h"

#include <new>

namespace {

using StartUpTest = testing_support::FrameworkTest;

TEST_F(StartUpTest, WithoutMemoryThePersonIsToldAndTheProcessEnds) {
    const RProgramTexts texts;
    for (const platform::ProgramResource& each : texts.resources())
        machine.modules().resources[{std::string(each.type), each.id}] = {each.bytes.begin(),
                                                                          each.bytes.end()};
    const std::string told =
        testing_support::toText(machine.modules().resources.at({"TEXT", 1021}));
    EXPECT_EXIT(
        {
            const RMemoryHandler handler;
            std::get_new_handler()();
        },
        testing::ExitedWithCode(1), told);
}

TEST_F(StartUpTest, ASilentDeviceIsTold) {
    machine.waveOut().silence = "unplugged";
    OMWaveEngine engine;
    EXPECT_TRUE(engine.testDevice(true) && engine.isSilent());
    EXPECT_EQ(takeLog(),
              "Warning: No sound is heard (unplugged). The game goes on silently; to hear it, "
              "connect a sound device or start the sound server, and start the game again\n");
}

TEST(AppInitTerm, PartsBeginInTheirOrderAndEndInTheReverse) {
    static std::string done;
    const OMAppInitTerm first([] { done += "a"; }, [] { done += "A"; });
    const OMAppInitTerm second([] { done += "b"; }, nullptr);
    const OMAppInitTerm third(nullptr, [] { done += "C"; });
    OMAppInitTerm::initializeAll();
    OMAppInitTerm::terminateAll();
    EXPECT_EQ(done, "abCA");
}

} // namespace
