// What the log says of the end of a run of the map game, after how many steps, with which sound.
#include "activities/rmap.h"

#include "trinkets/windowfixture.h"

#include "omeffectsounds.h"
#include "omsclass.h"

#include <gmock/gmock.h>

using namespace testing_support;

namespace {

struct Sounds final : OMEffectSounds {
    int playEffect(int id, OMLink) override { return played = id; }
    void endEffect(int) override {}
    int played = 0;
};

class MapTest : public WindowTest {
  protected:
    MapTest() {
        map.takeClass(RMap::kClass);
        map.setCellsH(5);
        map.setCellsV(5);
        map.setMoveDelay(10);
        map.setFinishX(4);
        map.setTerrain("00000000000030010000");
        map.setOffMapSoundID(66);
        OMSArguments::global().clear();
        OMSArguments::global().push("3");
        map.setProperty("trapSoundID", "33");
        map.attachHandler("finished", [this] { ++ends; });
        app->begin();
    }
    /// How many passes of a millisecond it takes to the end.
    int run(const std::vector<MapMove>& moves, MapCell start) {
        map.setStartX(start.x);
        map.setStartY(start.y);
        map.clearMoves();
        for (const MapMove& move : moves) map.addMove(move.direction, move.length);
        int passes = 0;
        ends = 0;
        map.move([this] { ++ends; });
        for (; ends == 0 && passes < 999; ++passes) {
            machine.clock().now += 1;
            app->pass();
        }
        return passes;
    }

    RMap map{window};
    int ends = 0;
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
    Sounds sounds;
    OMEffectSounds::setCurrent(&sounds);
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(run(row.moves, row.start), row.ms);
        EXPECT_EQ(ends, 2);
        EXPECT_EQ(std::exchange(sounds.played, 0), row.sound);
        EXPECT_THAT(files.text("zorbelog.txt"),
                    testing::EndsWith(std::string("\n") + row.report + "\n"));
    }
    OMEffectSounds::setCurrent(nullptr);
    run({{2, 9}}, {4, 4});
    run({{2, 4}}, {0, 2});
    EXPECT_EQ(takeFailures(), (Strings{"Sound URL is not installed in RMap",
                                       "Extended Sound URL is not installed in RMap"}));
}

} // namespace
