// The progress screen: how large its layouts may be, and all rules of when a level is fixed.
// Scripts show the screen.
#include "progress/rlaptrap.h"

#include "ompp/frameworkfixture.h"

namespace {

using ProgressLayoutTest = testing_support::FrameworkTest;

TEST_F(ProgressLayoutTest, LongLinesAndLargeFilesAreLeftOut) {
    OMPathAddDirectory("RSC\\", false);
    const auto soundOf = [&](std::size_t line, std::size_t more) {
        files.put("RSC\\progress.map", "GAME ;" + std::string(300, ' ') + "\nSOUND 7" +
                                           std::string(line - 7, ' ') + "\nPART seenIt -1 CWS*\n" +
                                           std::string(more, '\n'));
        return ProgressLayouts::find().game.sound;
    };
    EXPECT_EQ(soundOf(199, 0), 7);
    EXPECT_EQ(soundOf(200, 0), -1);
    EXPECT_GT(soundOf(199, 70000), 7);
    EXPECT_NE(takeLog().find("line 2: longer than 199 characters, left out"), std::string::npos);
}

TEST(LapTrapRuleTest, WhenALevelIsFixed) {
    // In the game, at which location, opened at which one, visits, solved, fixed.
    const std::tuple<bool, const char*, const char*, int, bool, bool> rows[] = {
        {false, "CMA", "CMA", 0, false, true},   {false, "CMA", "CMA", 1, false, false},
        {false, "CMA", "CHUB", 0, false, false}, {false, "OMA", "OMA", 0, false, false},
        {false, "CMA", "CMA", 2, true, false},   {true, "CMA", "CHUB", 0, false, true},
        {true, "OMA", "CHUB", 1, false, false},  {true, "OMA", "OMA", 1, false, true},
        {true, "PWS1", "PWS2", 3, true, true},   {true, "PWS2", "PWS1", 3, false, false},
        {true, "PWS2", "PWS2", 0, false, true},  {true, "CWS1", "CWS1", 0, false, false},
        {true, "CBA1", "CMA", 0, false, false},
    };
    for (const auto& [inGame, location, opened, visits, solved, fixed] : rows)
        EXPECT_EQ(RIsLevelFixed({inGame, location, opened, visits, solved}), fixed)
            << location << " from " << opened;
}

} // namespace
