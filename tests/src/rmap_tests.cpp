// The map game: how far a run goes, when its steps come, what it leaves on the screen, and who is
// told of its end.
#include "activities/rmap.h"

#include "trinkets/windowfixture.h"

#include "omao.h"
#include "omeffectsounds.h"
#include "omsclass.h"

#include <gmock/gmock.h>

#include <limits>

using namespace testing_support;
using platform::Rect;
using testing::EndsWith;

namespace {

TEST(MapBoardTest, ItsSizeAndItsTerrain) {
    MapBoard board;
    const auto traps = [&board] {
        std::string all;
        for (int y = 0; y < board.rows(); ++y)
            for (int x = 0; x < board.columns(); ++x) all += std::to_string(board.trapAt({x, y}));
        return all;
    };
    EXPECT_FALSE(board.contains({0, 0}));
    board.setColumns(3);
    board.setRows(2);
    board.setTerrain("1x9/:20000");
    EXPECT_EQ(traps(), "109002");
    board.setTerrain("5");
    board.setColumns(3);
    EXPECT_EQ(traps(), "500000");
    board.setRows(1);
    EXPECT_EQ(traps(), "000");
    constexpr int kHuge = std::numeric_limits<int>::max();
    board.setColumns(kHuge);
    board.setRows(kHuge);
    EXPECT_EQ(board.columns() + board.rows(), 1000 + 250);
    EXPECT_EQ(board.trapAt({999, 249}), 0);
    board.setColumns(-kHuge);
    EXPECT_FALSE(board.contains({0, 0}));
}

struct Sounds final : OMEffectSounds {
    int playEffect(int id, OMLink) override { return played = id; }
    void endEffect(int) override {}
    int played = 0;
};

// What the pictures of these numbers are.
constexpr int kMapPicture = 1;  // 60 x 50
constexpr int kFlag = 2;        // 7 x 4
constexpr int kLargeFlag = 3;   // 15 x 12
constexpr int kFirstArrow = 10; // 3 x 3, one for each direction, with two frames
constexpr int kMissing = 99;

/// A board of 5 x 5 cells of 10 x 8 pixels at 20, 10; an arrow on its first cell lies at 23, 12.
class MapTest : public WindowTest {
  protected:
    MapTest() {
        AOImage::setSourceLocator([](int id) -> std::unique_ptr<OMIStream> {
            if (id == kMissing) return nullptr;
            AseqBuilder builder;
            if (id == kMapPicture) builder.block(60, 50, 'm');
            if (id == kFlag) builder.block(7, 4, 'f');
            if (id == kLargeFlag) builder.block(15, 12, 'l');
            if (id >= kFirstArrow) builder.block(3, 3, 'a').block(3, 3, 'b');
            AOSequence frames{entry(AOEntry::kHold)};
            for (int i = 0; i < std::ssize(builder.frames); ++i) frames.push_back(entry(i, 100));
            return std::make_unique<MemoryStream>(builder.sequence(frames).build());
        });
        make();
        app->begin();
    }
    ~MapTest() override {
        map.reset();
        AOImage::setSourceLocator(nullptr);
    }

    void make() {
        map = std::make_unique<RMap>(window);
        map->takeClass(RMap::kClass);
        map->place(20, 10);
        map->setCellsH(5);
        map->setCellsV(5);
        map->setCellSizeH(10);
        map->setCellSizeV(8);
        map->setMoveDelay(10);
        for (int i = 0; i < MapWalk::kDirections; ++i)
            set("directionGraphicID", i, kFirstArrow + i);
        map->attachHandler("finished", [this] {
            heard.emplace_back("finished");
            if (const auto then = onFinished) then();
        });
    }
    void set(const char* name, int index, int value) {
        OMSArguments::global().clear();
        OMSArguments::global().push(std::to_string(index));
        map->setProperty(name, std::to_string(value));
    }
    void queue(const std::vector<MapMove>& moves, MapCell start = {}) {
        map->setStartX(start.x);
        map->setStartY(start.y);
        map->clearMoves();
        for (const MapMove& move : moves) map->addMove(move.direction, move.length);
    }
    OMLink tells(const char* who) {
        return [this, who] { heard.emplace_back(who); };
    }
    /// Passes of a millisecond.
    void pass(int count) {
        for (; count > 0; --count) {
            machine.clock().now += 1;
            app->pass();
        }
    }
    /// How many passes it takes until something is heard.
    int passesUntilHeard() {
        int passes = 0;
        for (heard.clear(); heard.empty() && passes < 999; ++passes) pass(1);
        return passes;
    }
    void run() {
        map->move(nullptr);
        pass(200);
        heard.clear();
    }
    std::string placeOf(int slot) {
        const OMTrinket* member = map->member(slot);
        return member ? std::to_string(member->x()) + "," + std::to_string(member->y()) : "none";
    }
    /// The slots of both trails that are taken, with their places.
    std::string trails() {
        std::string all;
        for (int slot = 100; slot < 300; ++slot)
            if (map->member(slot)) all += std::to_string(slot) + ":" + placeOf(slot) + " ";
        return all;
    }
    int frameOf(int slot) { return static_cast<OMAnimation*>(map->member(slot))->frameNumber(); }
    Strings take() { return std::exchange(heard, {}); }

    Sounds sounds;
    std::unique_ptr<RMap> map;
    std::function<void()> onFinished;
    Strings heard;
};

TEST_F(MapTest, HowARunEnds) {
    struct Row {
        MapCell start;
        std::vector<MapMove> moves;
        const char* report;
        int ms;
        int sound;
    };
    const Row rows[] = {
        {{0, 0}, {{2, 4}}, "Hit the finish!", 40, 0},
        {{3, 0}, {{2, 1}, {1, 2}}, "Didn't hit anything...", 30, 0}, // over the finish
        {{4, 4}, {{2, 9}}, "Ran off the board!", 10, 66},
        {{0, 0}, {{5, 3}}, "Ran off the board!", 10, 66},
        {{3, 3}, {{6, 1}, {1, 1}}, "Ran off the board!", 20, 66},
        {{-1, 1}, {{2, 1}}, "Didn't hit anything...", 10, 0}, // from beside the board
        {{0, 2}, {{2, 4}}, "Hit trap 3", 20, 33},
        {{0, 4}, {{0, 1}}, "Hit trap 1", 10, 0}, // which has no sound
        {{2, 2}, {{1, 1}}, "Didn't hit anything...", 10, 0},
        {{0, 0}, {{1, 0}, {2, 4}, {1, -7}}, "Hit the finish!", 40, 0},
        {{4, 0}, {{2, 0}}, "Hit the finish!", 10, 0}, // without a step
    };
    set("trapSoundID", 3, 33);
    map->setOffMapSoundID(66);
    map->setFinishX(4);
    map->setTerrain("00000000000030010000");
    OMEffectSounds::setCurrent(&sounds);
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        queue(row.moves, row.start);
        map->move(tells("done"));
        EXPECT_EQ(passesUntilHeard(), row.ms);
        EXPECT_EQ(take(), (Strings{"finished", "done"}));
        EXPECT_EQ(std::exchange(sounds.played, 0), row.sound);
        EXPECT_THAT(files.text("zorbelog.txt"), EndsWith(std::string("\n") + row.report + "\n"));
    }
    OMEffectSounds::setCurrent(nullptr);
    for (const Row& row : {rows[2], rows[6], rows[7]}) {
        queue(row.moves, row.start);
        run();
    }
    EXPECT_EQ(takeFailures(), (Strings{"Sound URL is not installed in RMap",
                                       "Extended Sound URL is not installed in RMap"}));
}

// Time

TEST_F(MapTest, StepsKeepTheirTimes) {
    map->setCellsH(100);
    queue({{2, 90}});
    map->move(nullptr);
    // Passes, and the steps that were made after them.
    const auto expectAfter = [this](int passes, std::size_t steps) {
        pass(passes);
        EXPECT_EQ(map->memberCount(), steps) << "at " << machine.clock().now;
    };
    expectAfter(9, 0);
    expectAfter(1, 1);
    machine.clock().now += 34; // late: one in each pass until it has caught up
    expectAfter(1, 2);
    expectAfter(2, 4);
    expectAfter(2, 4);
    expectAfter(1, 5); // after 50 ms
    map->setMoveDelay(3);
    expectAfter(3, 6);
    map->setMoveDelay(-5);
    expectAfter(4, 10);
    map->setMoveDelay(20);
    expectAfter(19, 10);
    expectAfter(1, 11);
}

TEST_F(MapTest, APauseDelaysWhatIsLeft) {
    queue({{2, 2}});
    map->pause(); // without a run
    map->move(tells("done"));
    pass(4);
    map->resume();
    pass(3);
    map->pause();
    pass(50);
    map->pause();
    pass(50);
    map->resume();
    EXPECT_EQ(passesUntilHeard(), 13);
    map->move(nullptr);
    map->pause();
    map->move(nullptr);
    EXPECT_EQ(passesUntilHeard(), 20) << "a new run is not paused";
}

// Who is told

TEST_F(MapTest, ARunThatIsStopped) {
    queue({{2, 4}});
    map->move(tells("first"));
    pass(15);
    map->move(tells("second"));
    EXPECT_EQ(take(), Strings{"first"}) << "and no event";
    pass(9);
    EXPECT_EQ(trails(), "200:33,12 ");
    pass(1);
    EXPECT_EQ(trails(), "100:33,12 200:33,12 ") << "from the start, in the other trail";
    map->setCompletionLink(tells("who resumed"));
    map->resumeForScript();
    map->interruptMove();
    pass(100);
    EXPECT_EQ(take(), (Strings{"second", "who resumed"}));
    map->move([this] { map->interruptMove(); });
    map->move(tells("third"));
    EXPECT_EQ(take(), Strings{"third"}) << "stopped by who waited for the one before";
    map->move(tells("fourth"));
    map->clearMoves();
    map->move(tells("nothing"));
    EXPECT_EQ(take(), (Strings{"finished", "nothing"})) << "and the run goes on";
    EXPECT_EQ(passesUntilHeard(), 40);
    queue({{2, 2}, {2, 2}});
    map->move(nullptr);
    pass(15);
    queue({{1, 1}});
    EXPECT_EQ(passesUntilHeard(), 15) << "the move that was under way, and the new one";
}

TEST_F(MapTest, HandlersThatMoveAndDestroy) {
    queue({{2, 1}});
    onFinished = [this] {
        onFinished = nullptr;
        map->move(tells("second"));
    };
    map->move(tells("first"));
    pass(20);
    EXPECT_EQ(take(), (Strings{"finished", "first", "finished", "second"}));
    OMSWatch watch(map.get());
    map->move([&] { heard.emplace_back(watch ? "is there" : "is gone"); });
    map.reset();
    EXPECT_EQ(take(), Strings{"is gone"});
    make();
    queue({{2, 1}});
    map->move([this] { map.reset(); });
    pass(20);
    EXPECT_FALSE(map);
    onFinished = [this] { map.reset(); };
    for (const bool moves : {true, false}) {
        make();
        if (moves) queue({{2, 1}});
        heard.clear();
        map->move(tells("done"));
        pass(20);
        EXPECT_EQ(take(), (Strings{"finished", "done"}));
    }
    EXPECT_EQ(app->tasks().count(), 0u);
}

// The pictures

TEST_F(MapTest, AnArrowForEachDirection) {
    std::string places;
    for (int direction = 0; direction < MapWalk::kDirections; ++direction) {
        queue({{direction, 1}}, {2, 2});
        run();
        const int slot = direction % 2 == 0 ? RMap::kFirstTrail : RMap::kSecondTrail;
        places += placeOf(slot) + " ";
        EXPECT_EQ(static_cast<OMAnimation*>(map->member(slot))->resourceId(),
                  kFirstArrow + direction);
    }
    EXPECT_EQ(places, "43,20 43,36 53,28 33,28 53,20 33,20 53,36 33,36 ");
}

TEST_F(MapTest, TrailsTakeTurns) {
    queue({{2, 3}});
    run();
    EXPECT_EQ(frameOf(202), 1);
    queue({{1, 1}, {6, 1}});
    run();
    EXPECT_EQ(trails(), "100:23,20 101:33,28 200:33,12 201:43,12 202:53,12 ");
    EXPECT_EQ(frameOf(101), 1);
    EXPECT_EQ(frameOf(202), 2);
    set("directionGraphicID", 1, kMissing);
    set("directionGraphicID", 6, kFlag);
    run();
    EXPECT_EQ(trails(), "100:23,20 101:33,28 201:31,28 ") << "its slot stays empty";
    set("directionGraphicID", 1, RMap::kNone);
    run();
    EXPECT_EQ(trails(), "100:31,28 201:31,28 ");
    EXPECT_EQ(frameOf(201), 1) << "it has but one";

    map->setCellsH(200);
    map->setMoveDelay(0);
    queue({{2, 103}});
    run();
    EXPECT_EQ(map->memberCount(), 101u) << "a long trail loses its beginning";
    EXPECT_EQ(placeOf(200), "1033,12");
    EXPECT_EQ(placeOf(203), "63,12");
}

TEST_F(MapTest, MarkersLieInTheMiddleOfTheirCells) {
    map->setZ(30);
    map->setStartGraphicID(kLargeFlag);
    EXPECT_EQ(placeOf(RMap::kStartSlot), "18,8") << "halves are rounded toward zero";
    map->setMapGraphicID(kMapPicture);
    map->setFinishGraphicID(kFlag);
    map->setFinishX(2);
    map->setFinishY(1);
    EXPECT_EQ(placeOf(RMap::kMapSlot) + " " + placeOf(RMap::kFinishSlot), "20,10 41,20");
    map->setCellSizeH(8);
    map->setCellSizeV(7);
    EXPECT_EQ(placeOf(RMap::kStartSlot) + " " + placeOf(RMap::kFinishSlot), "17,8 36,18");
    map->setX(0); // that of the start, which sticks out
    map->setTouchy(false);
    queue({{2, 1}});
    run();
    EXPECT_EQ(placeOf(RMap::kMapSlot) + " " + placeOf(RMap::kFirstTrail), "3,10 13,12");
    EXPECT_FALSE(map->member(RMap::kFirstTrail)->isTouchy());
    EXPECT_EQ(map->member(RMap::kMapSlot)->z(), 30);
    EXPECT_EQ(map->member(RMap::kFirstTrail)->z(), 31);
    map->setStartX(std::numeric_limits<int>::min());
    EXPECT_EQ(placeOf(RMap::kStartSlot), "-8000000,8");

    map->setMapGraphicID(kMissing);
    map->setStartGraphicID(RMap::kNone);
    EXPECT_EQ(map->memberCount(), 2u) << "the finish and an arrow";
    make();
    map->setFinishX(3);
    map->setFinishGraphicID(kFlag);
    map->offset(5, 5);
    EXPECT_EQ(map->x(), 56);
    map->setFinishGraphicID(RMap::kNone);
    EXPECT_EQ(map->x(), 25) << "where the map's picture would be";
    map->setMapGraphicID(kMapPicture);
    EXPECT_EQ(map->boundingRectangle(), (Rect{25, 15, 85, 65}));
}

} // namespace
