// The progress screen: layouts that make no sense, and all rules of when a level is fixed. Scripts
// show the screen.
#include "progress/rlaptrap.h"

#include "ompp/frameworkfixture.h"

#include "omeffectsounds.h"

namespace {

using ProgressLayoutTest = testing_support::FrameworkTest;

TEST_F(ProgressLayoutTest, WhatMakesNoSenseIsLoggedAndLeftOut) {
    const std::string text = R"(MAP CMA 1 1 1
GAME ; the screen of the game
PANEL 9
PANEL 8 10001 0
NAME 1 2 -1 256
NAME 1 -2 -1 255
MUSIC 1 2 3 4 5

CLOSE 32768 1 1
CLOSE 7 99999999999 1
MAP cma 1 1 1
MAP HERE 1 1 1 1
MAP HERE 1 -5 6
PART - 5 CWS* NEVERLAND
MAP CMA 1 1 1
PART seenIt -1 CWS* OMA
LEVELS OMA 1 1 1 2 2 2 3 3 3 4 4
LEVELS OMA 1 1 1 2 2 2 3 3 3 4 4 4
SOUND
HINT 3x
LEVEL 1
; nothing here
HINT 8 ;)";
    const std::string blanks(300, ' ');
    files.put("RSC\\progress.map", text + blanks + "\nSOUND 7" + blanks + "\n");
    OMPathAddDirectory("RSC\\", false);
    const ProgressLayouts layouts = ProgressLayouts::find();
    const std::string log = files.text("zorbelog.txt");
    std::vector<int> lines;
    for (int line = 1; line <= 30; ++line)
        if (log.find("progress.map line " + std::to_string(line) + ":") != std::string::npos)
            lines.push_back(line);
    EXPECT_EQ(lines, (std::vector{1, 4, 5, 7, 9, 10, 11, 12, 14, 17, 19, 20, 21, 24}));
    EXPECT_EQ(std::ranges::count(log, '\n'), 14) << log;
    const ProgressLayout& game = layouts.game;
    EXPECT_EQ(game.panel.id, 9);
    EXPECT_EQ(game.panel.x, OMAnimation::kEmbedded);
    EXPECT_FALSE(game.music || game.closeButton);
    EXPECT_EQ(game.name.value_or(ProgressName{}).y, -2);
    EXPECT_EQ(game.sound, OMEffectSounds::kNoSound);
    EXPECT_EQ(game.hint, 8);
    ASSERT_EQ(game.parts.size(), 2u);
    ASSERT_EQ(game.parts[0].mapButtons.size(), 1u);
    EXPECT_EQ(game.parts[0].mapButtons[0].location, kProgressHere);
    EXPECT_EQ(game.parts[1].levels.size(), 1u);
    EXPECT_TRUE(game.parts[1].isAt(1) && !game.parts[1].isAt(5) && !game.parts[1].isAt(0));
    EXPECT_GT(layouts.practice.parts.size(), 1u) << "the built-in one";
    files.put("RSC\\progress.map", std::string(70000, '\n'));
    EXPECT_GT(ProgressLayouts::find().game.parts.size(), 2u) << "a file that is too large";
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
