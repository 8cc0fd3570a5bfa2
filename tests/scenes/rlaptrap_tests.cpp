// The progress screen: its layouts, what it shows of a player, what clicks change in the world's
// memory, when it refuses, and who is told.
#include "progress/rlaptrap.h"

#include "ompp/soundfixture.h"
#include "trinkets/windowfixture.h"

#include "omeffectsounds.h"
#include "ompath.h"
#include "omsclass.h"
#include "scene/backgroundmusic.h"
#include "scene/scenepause.h"
#include "world/rworldport.h"
#include "world/worldmemory.h"

#include <gmock/gmock.h>

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

// Layouts

class ProgressLayoutTest : public FrameworkTest {};

TEST_F(ProgressLayoutTest, TheBuiltInOnesAreRight) {
    const ProgressLayouts layouts = ProgressLayouts::find();
    EXPECT_EQ(files.text("zorbelog.txt"), "") << "no line of them is left out";
    const ProgressLayout& game = layouts.game;
    EXPECT_TRUE(game.closeButton && game.refusal && game.name && game.music);
    std::string seen;
    for (const int location : {world::location::kCMA, world::location::kOHUB, 9}) {
        for (const ProgressPart& part : game.parts)
            if (!part.flag.empty() && part.isAt(location))
                seen += part.flag + " " + std::to_string(part.mapButtons.size()) + " " +
                        std::to_string(part.levels.size()) + "; ";
    }
    EXPECT_EQ(seen, "seenCairoMap 8 0; seenProgressLevels 0 7; "
                    "seenOasisMap 8 0; seenProgressLevels 0 7; "
                    "seenOasisMap 8 0; seenProgressLevels 0 7; ");
}

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
    std::string problems = files.text("zorbelog.txt");
    for (const int line : {1, 4, 5, 7, 9, 10, 11, 12, 14, 17, 19, 20, 21, 24}) {
        const std::string mark = "progress.map line " + std::to_string(line) + ":";
        EXPECT_THAT(problems, testing::HasSubstr(mark));
    }
    EXPECT_EQ(std::ranges::count(problems, '\n'), 14) << problems;
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
    struct Row {
        bool inGame;
        const char* location;
        const char* opened;
        int visits;
        bool solved;
        bool fixed;
    };
    const Row rows[] = {
        {false, "CMA", "CMA", 0, false, true},   {false, "CMA", "CMA", 1, false, false},
        {false, "CMA", "CHUB", 0, false, false}, {false, "OMA", "OMA", 0, false, false},
        {false, "CMA", "CMA", 2, true, false},   {true, "CMA", "CHUB", 0, false, true},
        {true, "OMA", "CHUB", 1, false, false},  {true, "OMA", "OMA", 1, false, true},
        {true, "PWS1", "PWS2", 3, true, true},   {true, "PWS2", "PWS1", 3, false, false},
        {true, "PWS2", "PWS2", 0, false, true},  {true, "CWS1", "CWS1", 0, false, false},
        {true, "CBA1", "CMA", 0, false, false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(RIsLevelFixed({row.inGame, row.location, row.opened, row.visits, row.solved}),
                  row.fixed)
            << row.location << " from " << row.opened;
}

// The screen

constexpr const char* kLayout = R"(
PRACTICE
PANEL 1 10 10
SOUND 50
HINT 51
CLOSE 8 180 0
REFUSAL 3 100 50
NAME 5 5 -1 7
MUSIC 2 150 0 2 160 0
PART seenLapTrapInPractice 52
MAP CMA 4 0 20
MAP CWS1 4 10 20
MAP CLOC01 4 20 20
PART seenProgressLevels 53
LEVELS CMA 6 0 40 6 10 40 6 20 40 6 30 40 7 40 40
LEVELS CWS1 6 0 50 6 10 50 6 20 50 6 30 50 7 40 50
LEVELS CHUB 6 0 60 6 10 60 6 20 60 6 30 60
GAME
PANEL 1 10 10
SOUND 60
CLOSE 8 180 0
REFUSAL 3 100 50
PART seenCairoMap 61 C*
MAP HERE 4 0 20
LEVELS HERE 6 0 40 6 10 40 6 20 40 6 30 40
PART seenOasisMap 62 O*
MAP OMA 4 10 20
LEVELS OMA 6 0 50 6 10 50 6 20 50 6 30 50
)";

// Where they are in the window.
constexpr Point kClose{191, 11};
constexpr Point kMusicOn{161, 11};
constexpr Point kMusicOff{171, 11};
constexpr Point kFirstMapButton{11, 31};
constexpr Point kUpperBox{51, 51};
constexpr Point kLowerBox{51, 61};
constexpr Point levelButton(int row, int level) { return {1 + 10 * level, 51 + 10 * row}; }

class LapTrapTest : public SoundTest, protected OMEffectSounds {
  protected:
    LapTrapTest() {
        AOImage::setSourceLocator([](int id) { return picture(id); });
        startWorld();
        app->begin();
    }
    ~LapTrapTest() override {
        screen.reset();
        AOImage::setSourceLocator(nullptr);
        OMEffectSounds::setCurrent(nullptr);
    }

    /// 1 is the panel, 3 the refusal; 7 has two states in one sequence, the others as many
    /// sequences as their number says, of which the third one of 5 ends.
    static std::unique_ptr<OMIStream> picture(int id) {
        AseqBuilder builder;
        if (id == 1) builder.block(200, 100, 'p').sequence({entry(0, 100), entry(AOEntry::kHold)});
        if (id == 3) builder.block(9, 9, 'x').sequence({entry(0, 100), entry(0, 100)});
        if (id == 7)
            builder.block(8, 8, 'c').block(8, 8, 'd').sequence(
                {entry(AOEntry::kHold), entry(0, 100), entry(1, 100)});
        for (int i = 0; id != 1 && id != 3 && id != 7 && i < id; ++i)
            builder.block(8, 8, 'a').sequence(
                {entry(id == 5 && i == 2 ? 0 : AOEntry::kHold), entry(i, 100)});
        return std::make_unique<MemoryStream>(builder.build());
    }
    int playEffect(int id, OMLink done) override {
        said.push_back(id);
        if (id == 53) return kNotPlaying;
        saidDone = done;
        return id;
    }
    void endEffect(int handle) override { said.push_back(-handle); }
    /// All that is said up to the end.
    std::vector<int> takeSaid() {
        while (const OMLink done = std::exchange(saidDone, nullptr)) done();
        return std::exchange(said, {});
    }

    void startWorld() {
        memory.emplace([]() -> std::optional<std::string> { return std::nullopt; },
                       [](const std::string&) {});
        memory->activatePlayer("Ana");
        port = std::make_unique<RWorldPort>(*memory);
        port->takeClass(RWorldPort::kClass);
        set("currentLocation", "CHUB");
    }
    static void fillArguments(std::initializer_list<const char*> words) {
        OMSArguments::global().clear();
        for (const char* word : words) OMSArguments::global().push(word);
    }
    void set(const char* property, const char* value, const char* location = "") {
        fillArguments({location});
        port->setProperty(property, value);
    }
    std::string get(const char* property, const char* location = "") {
        fillArguments({location});
        return port->getProperty(property).value_or("none");
    }
    void open(std::initializer_list<const char*> arguments) {
        fillArguments(arguments);
        std::unique_ptr<OMScriptableObject> made = RLapTrap::createFromScript();
        screen.reset(static_cast<RLapTrap*>(made.release()));
        screen->takeClass(RLapTrap::kClass);
        for (const char* event : {"locationSelected", "closed"})
            screen->attachHandler(event, [this, event] {
                heard.emplace_back(event);
                if (const auto then = onEvent) then();
            });
    }
    void click(Point point) {
        window.mouseDown(point);
        window.mouseUp(point);
    }
    /// State of the button there: its sequence, or its frame; 0 without a button.
    int stateAt(Point point) {
        auto* button = dynamic_cast<LapTrapButton*>(window.input().hitTest(point));
        if (!button) return 0;
        return button->sequenceCount() > 1 ? button->sequenceNumber() : button->frameNumber();
    }
    std::string levels(int row) {
        std::string all;
        for (int level = 1; level <= 4; ++level)
            all += std::to_string(stateAt(levelButton(row, level)));
        return all;
    }
    std::string mapButtons() {
        std::string all;
        for (int i = 0; i < 3; ++i)
            all += std::to_string(stateAt({kFirstMapButton.x + 10 * i, kFirstMapButton.y}));
        return all;
    }
    bool refusalIsSeen() {
        return window.findTrinket([](const OMTrinket& trinket) {
            const auto* animation = dynamic_cast<const OMAnimation*>(&trinket);
            return animation && animation->resourceId() == 3 && animation->isShown();
        }) != nullptr;
    }
    void pass(std::uint32_t ms) {
        machine.clock().now += ms;
        app->pass();
    }
    void playRefusal() {
        for (int i = 0; i < 5; ++i) pass(100);
    }
    Strings take() { return std::exchange(heard, {}); }

    OMTrinketWindow window{{0, 0, 320, 200}, nullptr, "Test"};
    ScenePause scene;
    BackgroundMusic music{scene};
    LapTrapLayouts layouts{ProgressLayouts::read("progress.map", kLayout)};
    std::optional<world::WorldMemory> memory;
    std::unique_ptr<RWorldPort> port;
    std::unique_ptr<RLapTrap> screen;
    std::vector<int> said; ///< sounds, negative when they are ended
    OMLink saidDone;
    std::function<void()> onEvent;
    Strings heard;
};

TEST_F(LapTrapTest, PracticeShowsAllThatThePlayerHasDone) {
    memory->currentPlayer()->record().activities[0].color = {1, 2, 0, 7};
    set("currentLevel", "2", "CWS1");
    set("isAutoLevelingEnabled", "0", "CMA");
    set("visitedCount", "3", "CWS1");
    open({"CMA"});
    EXPECT_EQ(screen->boundingRectangle(), (Rect{10, 10, 210, 110}));
    EXPECT_EQ(mapButtons(), "213");
    EXPECT_EQ(levels(0) + " " + levels(1) + " " + levels(2), "2111 3611 0000");
    EXPECT_EQ(stateAt(kUpperBox), 2);
    EXPECT_EQ(stateAt(kLowerBox), 1);
    EXPECT_EQ(std::pair(stateAt(kMusicOn), stateAt(kMusicOff)), (std::pair{2, 1}));
    open({"0"}); // CHUB
    EXPECT_EQ(mapButtons(), "313");
    open({"1", "-1", "60", "11111", "40"});
    EXPECT_EQ(screen->boundingRectangle(), (Rect{60, 10, 260, 110}));
    EXPECT_EQ(stateAt({71, 31}), 2) << "CWS1 by its number";
    EXPECT_EQ(window.input().hitTest({71, 31})->z(), 41);
    open({"Atlantis", "1", "9"});
    EXPECT_EQ(machine.dialogs().boxes.back().text, "RLapTrap: unknown location Atlantis");
    EXPECT_EQ(screen->boundingRectangle(), (Rect{0, 0, 200, 100}));
    EXPECT_EQ(screen->z(), 9);
}

TEST_F(LapTrapTest, TheGameShowsThePartsOfItsPlace) {
    set("inGame", "1");
    open({"CWS2"});
    EXPECT_EQ(mapButtons() + " " + levels(0) + " " + levels(1), "200 2111 0000");
    open({"CLOC05"});
    EXPECT_EQ(mapButtons() + " " + levels(0), "200 0000") << "a place without levels";
    open({"OHUB"});
    EXPECT_EQ(mapButtons() + " " + levels(0) + " " + levels(1), "030 0000 2111");
    set("currentLocation", "nowhere");
    open({"0"});
    EXPECT_EQ(mapButtons() + " " + levels(0), "000 0000");
}

TEST_F(LapTrapTest, WhatIsSeenForTheFirstTimeIsIntroduced) {
    open({"CMA"});
    EXPECT_EQ(said, std::vector{50}) << "one after the other";
    EXPECT_EQ(takeSaid(), (std::vector{50, 52, 53}));
    for (const char* flag : {"seenChooseActivity", "seenLapTrapInPractice", "seenProgressLevels"})
        EXPECT_EQ(get(flag), "1") << flag;
    EXPECT_EQ(get("seenLapTrapInGame") + get("seenCairoMap") + get("seenOasisMap"), "000");
    set("seenLapTrapInPractice", "0");
    open({"CMA"});
    EXPECT_EQ(takeSaid(), std::vector{52});
    set("inGame", "1");
    open({"CMA"});
    EXPECT_EQ(takeSaid(), (std::vector{60, 61}));
    open({"OMA"});
    EXPECT_EQ(takeSaid(), std::vector{62});
    EXPECT_EQ(get("seenLapTrapInGame") + get("seenCairoMap") + get("seenOasisMap"), "111");

    startWorld();
    open({"CMA"});
    click(kClose);
    EXPECT_EQ(std::exchange(said, {}), (std::vector{50, -50})) << "closing ends it";
    saidDone();
    EXPECT_EQ(takeSaid(), std::vector<int>{});
    OMEffectSounds::setCurrent(nullptr);
    startWorld();
    open({"CMA"});
    EXPECT_EQ(takeFailures(), Strings(3, "Extended Sound URL is not installed in RLapTrap"));
    EXPECT_EQ(get("seenChooseActivity"), "1");
}

TEST_F(LapTrapTest, AnotherLevelForgetsTheResultsAndTheSameOneKeepsThem) {
    world::ActivityRecord& activity = memory->currentPlayer()->record().activities[0];
    port->invoke("correctGuess", {"CWS1"});
    open({"CWS1"});
    click(levelButton(1, 1));
    EXPECT_EQ(activity.resultCount, 1);
    window.mouseDown(levelButton(1, 3));
    window.mouseUp({19, 59}); // beside it
    EXPECT_EQ(get("currentLevel", "CWS1"), "1");
    set("currentLevel", "4", "CWS1");
    port->invoke("correctGuess", {"CWS1"});
    click(levelButton(1, 4)); // which the screen does not know yet
    EXPECT_EQ(activity.resultCount, 1);
    EXPECT_EQ(levels(1), "1112") << "it has caught up";
    click(levelButton(1, 3));
    EXPECT_EQ(get("currentLevel", "CWS1"), "3");
    EXPECT_EQ(activity.resultCount, 0);
    EXPECT_EQ(levels(1), "1121");
}

TEST_F(LapTrapTest, ARefusalIsShownOnceAndLevelsWaitForIt) {
    open({"CMA"});
    click(levelButton(0, 2));
    EXPECT_EQ(get("currentLevel", "CMA"), "1");
    EXPECT_EQ(levels(0), "2111");
    EXPECT_TRUE(refusalIsSeen());
    click(levelButton(1, 2));
    EXPECT_EQ(get("currentLevel", "CWS1"), "1") << "not now";
    screen->setVisible(false);
    EXPECT_FALSE(refusalIsSeen());
    screen->setVisible(true);
    EXPECT_TRUE(refusalIsSeen());
    playRefusal();
    EXPECT_FALSE(refusalIsSeen());
    click(levelButton(1, 2));
    EXPECT_EQ(get("currentLevel", "CWS1"), "2");
    click(levelButton(0, 2));
    EXPECT_TRUE(refusalIsSeen()) << "a second time";
    playRefusal();
    EXPECT_FALSE(refusalIsSeen());
    screen->setVisible(false);
    screen->setVisible(true);
    EXPECT_FALSE(refusalIsSeen());
    set("visitedCount", "1", "CMA");
    click(levelButton(0, 2));
    EXPECT_EQ(get("currentLevel", "CMA"), "2");

    set("inGame", "1");
    set("visitedCount", "1", "OMA");
    open({"OHUB"});
    click(levelButton(1, 2));
    EXPECT_EQ(get("currentLevel", "OMA"), "2");
    set("OMASolved", "1");
    click(levelButton(1, 3));
    EXPECT_EQ(get("currentLevel", "OMA"), "2");
    EXPECT_TRUE(refusalIsSeen());
}

TEST_F(LapTrapTest, TheCheckBoxKeepsTheLevel) {
    open({"CWS1"});
    click(kLowerBox);
    EXPECT_EQ(get("isAutoLevelingEnabled", "CWS1"), "0");
    EXPECT_EQ(stateAt(kLowerBox), 2);
    for (int i = 0; i < 6; ++i) port->invoke("correctGuess", {"CWS1"});
    port->invoke("autoLevel", {"CWS1"});
    EXPECT_EQ(get("currentLevel", "CWS1"), "1");
    EXPECT_EQ(levels(1), "2111");
    click(kUpperBox);
    EXPECT_EQ(levels(1), "4111") << "read anew after each press";
    EXPECT_EQ(get("isAutoLevelingEnabled", "CMA"), "0");
    click(kUpperBox);
    EXPECT_EQ(get("isAutoLevelingEnabled", "CMA"), "1");
}

TEST_F(LapTrapTest, TheMusic) {
    open({"CMA"});
    click(kMusicOff);
    EXPECT_FALSE(music.isEnabled());
    EXPECT_EQ(get("isBackgroundMusicOff"), "1");
    EXPECT_EQ(std::pair(stateAt(kMusicOn), stateAt(kMusicOff)), (std::pair{1, 2}));
    click(kMusicOff);
    EXPECT_FALSE(music.isEnabled());
    click(kMusicOn);
    EXPECT_TRUE(music.isEnabled());
    EXPECT_EQ(get("isBackgroundMusicOff"), "0");
    EXPECT_EQ(std::pair(stateAt(kMusicOn), stateAt(kMusicOff)), (std::pair{2, 1}));
}

TEST_F(LapTrapTest, ALocationIsSelected) {
    open({"CMA"});
    EXPECT_EQ(screen->getProperty("selectedLocation"), "0");
    onEvent = [this] { set("visitedCount", "1", "CWS1"); };
    click({kFirstMapButton.x + 10, kFirstMapButton.y});
    EXPECT_EQ(take(), Strings{"locationSelected"});
    EXPECT_EQ(screen->getProperty("selectedLocation"), "1");
    EXPECT_EQ(screen->getProperty("selectedLocationName"), "CWS1");
    EXPECT_EQ(mapButtons(), "213");
}

TEST_F(LapTrapTest, PartsGoWithTheScreen) {
    open({"CMA"});
    screen->offset(50, 20);
    EXPECT_EQ(stateAt(kFirstMapButton), 0);
    EXPECT_EQ(stateAt({61, 51}), 2);
    screen->setZ(30);
    EXPECT_EQ(window.input().hitTest({61, 51})->z(), 31);
    screen->setTouchy(false);
    EXPECT_FALSE(window.input().hitTest({61, 51}));
    screen->setTouchy(true);
    onEvent = [this] { EXPECT_FALSE(screen->isVisible()); };
    click({241, 31});
    EXPECT_EQ(take(), Strings{"closed"});
    EXPECT_FALSE(window.input().hitTest({61, 51}));
    click({61, 51});
    set("visitedCount", "1", "CLOC01");
    set("currentLevel", "3", "CMA");
    screen->setVisible(true);
    EXPECT_EQ(stateAt({61 + 20, 71}), 2) << "opened again, it shows what is now";
    screen.reset();
    EXPECT_EQ(window.trinketCount(), 0u);
    EXPECT_EQ(app->tasks().count(), 0u);
}

TEST_F(LapTrapTest, AStateThatEndsHidesItsButton) {
    const LapTrapLayouts other(ProgressLayouts::read(
        "progress.map", "PRACTICE\nPANEL 1 10 10\nMAP CWS1 5 0 20\nMAP CMA 4 10 20\n"));
    open({"CMA"});
    EXPECT_EQ(stateAt(kFirstMapButton), 3);
    for (int i = 0; i < 5; ++i) pass(100);
    EXPECT_EQ(stateAt(kFirstMapButton), 0);
    screen->setVisible(false);
    screen->setVisible(true);
    EXPECT_EQ(stateAt(kFirstMapButton), 0) << "as before it was hidden";
    set("visitedCount", "1", "CWS1");
    click({kFirstMapButton.x + 10, kFirstMapButton.y});
    EXPECT_EQ(stateAt(kFirstMapButton), 1) << "another state";
}

TEST_F(LapTrapTest, AHintForThoseWhoDoNothing) {
    const auto ticks = [](std::uint64_t ms) { return ms * 60 / 1000; };
    for (const std::uint32_t start : {123u, 0xFFFFFF00u}) {
        machine.clock().now = start;
        open({"CMA"});
        takeSaid();
        std::uint32_t passed = 0;
        for (; passed < 8000 && said.empty(); ++passed) pass(1);
        EXPECT_EQ(said, std::vector{51});
        EXPECT_EQ(ticks(std::uint64_t{start} + passed), ticks(start) + 420);
        EXPECT_LT(ticks(std::uint64_t{start} + passed - 1), ticks(start) + 420);
        takeSaid();
        for (int i = 0; i < 20; ++i) pass(1000);
        EXPECT_EQ(takeSaid(), std::vector<int>{}) << "once";
    }
    for (const Point point : {kMusicOn, kUpperBox, levelButton(1, 1), kFirstMapButton, kClose}) {
        open({"CMA"});
        takeSaid();
        click(point);
        for (int i = 0; i < 20; ++i) pass(1000);
        EXPECT_EQ(takeSaid(), std::vector<int>{}) << point.x;
    }
}

TEST_F(LapTrapTest, WithoutWhatItNeeds) {
    memory->removePlayer("Ana");
    open({"0"});
    EXPECT_EQ(window.trinketCount(), 2u) << "the panel and its close button";
    click(kClose);
    EXPECT_EQ(take(), Strings{"closed"});
    memory.reset();
    open({"CMA"});
    EXPECT_EQ(window.trinketCount(), 2u);
    startWorld();
    open({"CMA"});
    memory.reset();
    for (const Point point : {kMusicOff, kUpperBox, levelButton(1, 2), kFirstMapButton})
        click(point);
    EXPECT_EQ(take(), Strings{"locationSelected"}) << "with the world gone";
    AOImage::setSourceLocator(nullptr);
    startWorld();
    open({"CMA"});
    EXPECT_EQ(window.trinketCount(), 2u) << "a blank panel and the player's name";
    const Strings failed = takeFailures();
    EXPECT_THAT(failed, testing::Each("SourceURL is not installed in OMAnimation"));
    EXPECT_FALSE(failed.empty());
}

TEST_F(LapTrapTest, HandlersThatDestroyIt) {
    onEvent = [this] { screen.reset(); };
    for (const Point point : {kClose, kFirstMapButton}) {
        open({"CMA"});
        click(point);
        EXPECT_FALSE(screen);
        EXPECT_EQ(window.trinketCount(), 0u);
    }
    open({"CMA"});
    click(levelButton(0, 2)); // while it refuses
    screen.reset();
    open({"CMA"});
    window.mouseDown(levelButton(1, 2));
    screen.reset();
    window.mouseUp(levelButton(1, 2));
    const auto done = saidDone;
    done();
    for (int i = 0; i < 10; ++i) pass(1000);
    EXPECT_EQ(take(), (Strings{"closed", "locationSelected"}));
}

} // namespace
