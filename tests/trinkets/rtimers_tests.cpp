#include "scriptfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::IsEmpty;
using testing_support::ScriptTest;

constexpr int kTickMs = 101; ///< every pass of that length is a counted tick

class RTimers : public ScriptTest {
  protected:
    /// Runs the script up to where it is blocked; no counted tick has passed then.
    void begin(const std::string& text) {
        pass(1); // the first tick only records the time
        run(text);
        EXPECT_THAT(boxes(), IsEmpty());
        said();
    }
    /// The counted tick, from 1, in which something is said; 0 when it is not within `limit`.
    int ticksUntilSaid(int limit = 100) {
        for (int tick = 1; tick <= limit; ++tick) {
            pass(1, kTickMs);
            if (!said().empty()) return tick;
        }
        return 0;
    }
};

const std::string kHandler = "procedure p\n[\nsay P RECEIVER\n]\n";

TEST_F(RTimers, TicksCountAfterMoreThanAHundredMilliseconds) {
    const struct {
        int stepMs;
        int passes; ///< until the 10th counted tick
    } rows[] = {{101, 10}, {100, 20}, {50, 30}, {1, 1010}};
    for (const auto& row : rows) {
        engine = nullptr;
        engine = std::make_unique<YEngine>();
        machine.clock().now = 0;
        run("schedule 1 p\nwait\n" + kHandler);
        machine.clock().now = static_cast<std::uint32_t>(row.stepMs);
        for (int done = 1; done < row.passes; ++done) pass(1, row.stepMs);
        EXPECT_EQ(said(), "") << row.stepMs;
        pass(1, row.stepMs);
        EXPECT_EQ(said(), "P schedule\n") << row.stepMs;
        thread.reset();
    }
}

TEST_F(RTimers, ScheduleFiresOnceWhenItsTicksAreExceeded) {
    const struct {
        const char* seconds;
        int tick; ///< counted ones; 0 for never
    } rows[] = {
        {"1", 10},      {"2", 19}, {"0.1", 1},  {"1.2", 11},
        {"half*2", 10}, {"0", 0},  {"word", 0}, {"-1", 1},
    };
    for (const auto& row : rows) {
        engine = nullptr;
        engine = std::make_unique<YEngine>();
        machine.clock().now = 0;
        run(std::string("half=0.5\nschedule ") + row.seconds + " p\nwait\n" + kHandler);
        machine.clock().now = kTickMs;
        EXPECT_EQ(ticksUntilSaid(30), row.tick) << row.seconds;
        EXPECT_EQ(ticksUntilSaid(30), 0) << row.seconds << " again";
        EXPECT_TRUE(thread->isWaiting()) << row.seconds;
        thread.reset();
    }
}

TEST_F(RTimers, AScheduleIsReplacedDroppedOrSuspended) {
    begin("schedule 1 p\nschedule 2 q\nwait\n" + kHandler + "procedure q\n[\nsay Q\n]\n");
    machine.clock().now += kTickMs;
    pass(18, kTickMs);
    EXPECT_EQ(said(), "");
    pass(1, kTickMs);
    EXPECT_EQ(said(), "Q\n");
    for (const char* statement : {"drop schedule", "suspend"}) {
        begin("schedule 1 p\n" + std::string(statement) + "\nwait\n" + kHandler);
        EXPECT_EQ(ticksUntilSaid(), 0) << statement;
    }
}

TEST_F(RTimers, OnlyProceduresCanBeScheduled) {
    for (const std::string word : {"word", "5", "\"+9999\"", "\"+99999999999\""}) {
        run("schedule 1 " + word + "\nidle 1 " + word + "\nsay on\n");
        EXPECT_EQ(boxes().size(), 2U) << word;
        EXPECT_EQ(said(), "on\n");
        EXPECT_EQ(ticksUntilSaid(), 0);
    }
}

TEST_F(RTimers, IdleRepeatsUntilItIsDropped) {
    begin("n=0\nidle 2 p\nwait\n"
          "procedure p\n[\nn=n+1\nsay P RECEIVER\nif n=3\n[\ndrop idle\n]\n]\n");
    machine.clock().now += kTickMs;
    // The handler's first statement runs in the tick, `say` in the next pass.
    for (int round = 1; round <= 3; ++round) {
        pass(18, kTickMs);
        EXPECT_EQ(said(), round == 1 ? "" : "P idle\n") << round;
        pass(1, kTickMs);
        EXPECT_EQ(said(), "") << round;
    }
    pass(1, kTickMs);
    EXPECT_EQ(said(), "P idle\n");
    EXPECT_EQ(ticksUntilSaid(), 0);
}

TEST_F(RTimers, AScheduleStartsIdlingAnew) {
    begin("schedule 1 s\nidle 1 p\nwait\nprocedure s\n[\nsay S\n]\n" + kHandler);
    machine.clock().now += kTickMs;
    pass(9, kTickMs);
    EXPECT_EQ(said(), "");
    pass(1, kTickMs);
    EXPECT_EQ(said(), "S\n");
    pass(9, kTickMs);
    EXPECT_EQ(said(), "");
    pass(1, kTickMs);
    EXPECT_EQ(said(), "P idle\n");
}

TEST_F(RTimers, PauseBlocksForNineTenthsOfItsSeconds) {
    // Milliseconds until it goes on; even the shortest pause ends the turn.
    const std::pair<const char*, int> rows[] = {{"1", 900},       {"half", 450}, {"0.001", 1},
                                                {"2.0005", 1800}, {"-5", 1},     {"0", 0},
                                                {"word", 0}};
    for (const auto& [seconds, expected] : rows) {
        run(std::string("half=0.5\npause ") + seconds + "\nsay on\n", 1);
        int ms = 0;
        for (pass(1); said().empty() && ms < 3000; ++ms) pass(1);
        EXPECT_EQ(ms, expected) << seconds;
    }
}

TEST_F(RTimers, TheClockMayWrap) {
    machine.clock().now = 0xFFFFFF00U;
    begin("schedule 1 p\nwait\n" + kHandler);
    EXPECT_EQ(ticksUntilSaid(), 11) << "the first of these passes comes too soon to count";
}

TEST_F(RTimers, ThereIsOneDeadlineForAllPauses) {
    begin("schedule 0.1 p\npause 1\nsay main\nprocedure p\n[\nsay P\npause 0.1\nsay Q\n]\n");
    pass(300);
    EXPECT_EQ(said(), "P\nQ\nmain\n") << "the handler's pause replaced the other one";
    begin("schedule 0.1 p\npause 0.5\nsay main\nprocedure p\n[\nsay P\npause 1\nsay Q\n]\n");
    pass(900);
    EXPECT_EQ(said(), "P\n");
    pass(200);
    EXPECT_EQ(said(), "Q\nmain\n");
}

TEST_F(RTimers, APauseThatEndsDuringAHandlerIsOver) {
    begin("schedule 0.1 p\npause 0.5\nsay main\nwait\nprocedure p\n[\nsay P\nwait\nsay Q\n]\n");
    pass(600);
    EXPECT_EQ(said(), "P\n");
    EXPECT_TRUE(thread->isWaiting()) << "the handler waits for nothing that comes with time";
}

} // namespace
