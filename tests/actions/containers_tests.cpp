#include "actionfixture.h"

#include "actions/delayact.h"
#include "actions/rcompositeaction.h"
#include "actions/rqueue.h"
#include "actions/rrandomaction.h"

#include <random>

using namespace testing_support;

namespace {

using Strings = std::vector<std::string>;

class ContainerTest : public ActionTest {};

} // namespace

TEST_F(ContainerTest, AQueueGoesThroughItsMembersInRounds) {
    RQueue queue(3, true);
    RQueue first(1, true);
    RQueue second(1, true);
    add(first, {"DelayAction", "10"});
    add(second, {"DelayAction", "5"});
    watch(queue, "queue");
    watch(first, "first");
    watch(second, "second");
    ASSERT_TRUE(queue.add(first) && queue.add(second));
    add(queue, {"EmptyAction"});
    begin();
    queue.start();
    EXPECT_TRUE(queue.isActive());
    queue.start();
    EXPECT_EQ(boxes(), Strings{"RQueue - start method ignored, already running!"});
    // Whatever a member's end starts comes before its own event.
    EXPECT_EQ(after(100), "10 first; 15 second; 25 first; 30 second; 40 first; 45 queue; "
                          "45 second; ");

    RQueue endless(0, true);
    EXPECT_EQ(endless.repeatCount(), 1);
    endless.setRepeatCount(RQueue::kForever);
    add(endless, {"DelayAction", "1"});
    add(endless, {"EmptyAction"});
    watch(endless, "endless");
    endless.start();
    EXPECT_EQ(after(500), "");
    EXPECT_TRUE(endless.isActive());
}

TEST_F(ContainerTest, WhatTakesNoTimeTakesNone) {
    RQueue nothing(1, true);
    RCompositeAction neither(true);
    RRandomAction none(false, true);
    watch(nothing, "empty");
    watch(neither, "empty");
    watch(none, "empty");
    for (Action* action : std::initializer_list<Action*>{&nothing, &neither, &none})
        action->start();
    EXPECT_EQ(after(0), "0 empty; 0 empty; 0 empty; ");

    // Many that end at once do not pile up, and without end they leave time to others.
    RQueue many(2, true);
    for (int i = 0; i < 1000; ++i) add(many, {"EmptyAction"});
    watch(many, "many");
    many.start();
    pass(50);
    EXPECT_FALSE(many.isActive());
    RQueue endless(RQueue::kForever, true);
    add(endless, {"EmptyAction"});
    RQueue outer(RQueue::kForever, true);
    outer.add(endless);
    outer.start();
    pass(10);
    EXPECT_TRUE(endless.isActive());
    outer.halt();
    EXPECT_FALSE(endless.isActive() || outer.isActive());
}

TEST_F(ContainerTest, MembersMayHaltAndStartEachOtherWithoutEnd) {
    run("outer=RQueue -1\n"
        "inner=RQueue 1\n"
        "play inner add VerbAction \"inner\" 1 halt\n"
        "play outer add \"inner\"\n"
        "play outer start\n"
        "one=RCompositeAction 1\n"
        "two=RCompositeAction 1\n"
        "play one add VerbAction \"two\" 1 halt\n"
        "play one add VerbAction \"two\" 1 start\n"
        "play two add VerbAction \"one\" 1 halt\n"
        "play two add VerbAction \"one\" 1 start\n"
        "play one start\n"
        "say \"still here\"\n",
        20);
    EXPECT_EQ(said(), "still here\n");
}

TEST_F(ContainerTest, HaltingAQueueGoesOnWithWhatMayNotBeInterrupted) {
    RQueue queue(1, true);
    watch(queue, "queue");
    add(queue, {"DelayAction", "100"});
    add(queue, {"DelayAction", "100"});
    add(queue, {"DelayAction", "20", "0"});
    add(queue, {"DelayAction", "10"});
    EXPECT_FALSE(queue.isInterruptible());
    queue.start();
    pass(5);
    begin();
    queue.halt();
    EXPECT_TRUE(queue.isActive());
    queue.halt(); // on the one that may not
    EXPECT_EQ(after(25), "");
    queue.halt();
    EXPECT_FALSE(queue.isActive());
    EXPECT_EQ(after(200), "");
    queue.start();
    pass(1);
    queue.clearForScript();
    EXPECT_EQ(queue.actionCount(), 4);
    pass(25);
    queue.clearForScript();
    EXPECT_EQ(queue.actionCount(), 0);
    EXPECT_TRUE(queue.isInterruptible());
    queue.start();
    EXPECT_NE(after(0), "");
}

TEST_F(ContainerTest, ACompositeHasFinishedWithItsLastMember) {
    RCompositeAction all(true);
    watch(all, "all");
    add(all, {"DelayAction", "30"});
    add(all, {"DelayAction", "10", "0"});
    add(all, {"EmptyAction"});
    begin();
    all.start();
    EXPECT_EQ(after(100), "30 all; ");
    all.start();
    begin();
    all.halt();
    EXPECT_TRUE(all.isActive());
    EXPECT_EQ(after(100), "10 all; ");

    RCompositeAction easy(true);
    watch(easy, "easy");
    add(easy, {"DelayAction", "30"});
    easy.start();
    easy.pause();
    EXPECT_EQ(after(100), "");
    easy.resume();
    easy.halt();
    EXPECT_FALSE(easy.isActive());
    EXPECT_EQ(after(100), "");
}

TEST_F(ContainerTest, ARandomActionUsesAllBeforeOneComesAgain) {
    RQueue members[3] = {RQueue{1, true}, RQueue{1, true}, RQueue{1, true}};
    RRandomAction random(true, true);
    std::string drawn;
    for (int i = 0; i < 3; ++i) {
        members[i].takeClass(RQueue::kClass);
        members[i].attachHandler("finished", [&drawn, i] { drawn += std::to_string(i); });
        random.add(members[i]);
    }
    for (int cycle = 0; cycle < 20; ++cycle) {
        drawn.clear();
        for (int i = 0; i < 3; ++i) random.start();
        std::ranges::sort(drawn);
        EXPECT_EQ(drawn, "012");
    }
    random.start(); // two are left to be drawn
    for (RQueue& member : members) random.remove(member);
    random.add(members[1]);
    drawn.clear();
    random.start();
    EXPECT_EQ(drawn, "1");
    random.setUseAllBeforeRepeat(false);
    add(random, {"DelayAction", "10", "0"});
    for (int i = 0; i < 50 && !random.isActive(); ++i) random.start();
    ASSERT_TRUE(random.isActive());
    random.halt();
    EXPECT_TRUE(random.isActive());
    pass(20);
    EXPECT_FALSE(random.isActive());
}

TEST_F(ContainerTest, PauseHoldsWhatRunsNow) {
    RQueue outer(1, true);
    RCompositeAction middle(true);
    RRandomAction inner(false, true);
    add(inner, {"DelayAction", "20"});
    middle.add(inner);
    add(middle, {"RandomDelayAction", "10", "10"});
    outer.add(middle);
    add(outer, {"DelayAction", "5"});
    watch(outer, "outer");
    watch(inner, "inner");
    begin();
    outer.start();
    pass(8);
    outer.pause();
    outer.pause();
    EXPECT_EQ(after(100), "");
    outer.resume();
    outer.resume();
    EXPECT_EQ(after(100), "120 inner; 125 outer; ");

    // Whatever was paused or resumed by itself in between.
    outer.start();
    outer.pause();
    inner.resume();
    outer.pause();
    EXPECT_EQ(after(100), "");
    outer.resume();
    pass(5);
    outer.pause();
    outer.remove(middle); // the one that was paused
    EXPECT_EQ(after(100), "");
    outer.resume();
    EXPECT_EQ(after(100), "418 outer; ");
}

TEST_F(ContainerTest, MembersComeAndGoWhileItRuns) {
    auto queue = std::make_unique<RQueue>(1, true);
    watch(*queue, "queue");
    auto gone = std::make_unique<RQueue>(1, true);
    add(*gone, {"DelayAction", "50"});
    watch(*gone, "gone");
    add(*queue, {"DelayAction", "10"});
    queue->add(*gone);
    add(*queue, {"DelayAction", "5"});
    begin();
    queue->start();
    pass(20);
    gone.reset(); // at the cursor, which goes back to the first
    EXPECT_EQ(queue->actionCount(), 2);
    EXPECT_EQ(after(50), "35 queue; ");

    RCompositeAction all(true);
    watch(all, "all");
    auto last = std::make_unique<RQueue>(1, true);
    add(*last, {"DelayAction", "50"});
    all.add(*last);
    add(all, {"EmptyAction"});
    all.start();
    last.reset(); // the only one that was still running
    begin();
    EXPECT_EQ(after(5), "0 all; ");

    // A member destroys its container, which had it destroy itself.
    const OMUnderWay underWay;
    RQueue own(1, true);
    add(own, {"EmptyAction"});
    watch(own, "own", [&] { queue.reset(); });
    queue->clear();
    queue->add(own);
    begin();
    queue->start();
    EXPECT_EQ(after(5), "0 queue; 0 own; ");

    auto itself = std::make_unique<RQueue>(1, true);
    add(*itself, {"EmptyAction"});
    bool completed = false;
    itself->setCompletionLink([&] {
        completed = true;
        itself.reset();
    });
    watch(*itself, "never");
    itself->start();
    EXPECT_TRUE(completed);
    EXPECT_EQ(after(5), "");
}

TEST_F(ContainerTest, AMemberOfSeveralTellsTheLastThatAddedIt) {
    RQueue outer(1, true);
    RQueue inner(1, true);
    RCompositeAction other(true);
    watch(outer, "outer");
    watch(other, "other");
    EXPECT_FALSE(outer.add(outer));
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(outer.add(inner) && other.add(inner));
    EXPECT_FALSE(inner.add(outer));
    add(inner, {"DelayAction", "5", "0"});
    outer.start();
    // It waits for ends that are told to the other one, and goes on with what may not be halted.
    for (int i = 0; i < 2; ++i) pass(20), outer.halt();
    EXPECT_FALSE(outer.isActive() || outer.isInterruptible());
    begin();
    other.start(); // the member once, with a box for the second time
    EXPECT_EQ(after(10), "5 other; ");
    other.clear();
    outer.start();
    EXPECT_EQ(after(20), "20 outer; ");

    std::vector<std::unique_ptr<RQueue>> chain;
    chain.push_back(std::make_unique<RQueue>(1, true));
    for (int i = 1; i < ActionContainer::kMaxNesting; ++i) {
        chain.push_back(std::make_unique<RQueue>(1, true));
        EXPECT_TRUE(chain[i]->add(*chain[i - 1]));
    }
    RQueue tooMuch(1, true);
    EXPECT_FALSE(tooMuch.add(*chain.back()));
    chain[5]->remove(*chain[4]);
    EXPECT_TRUE(tooMuch.add(*chain.back()));
    tooMuch.clear();
    EXPECT_TRUE(chain[5]->add(*chain[4]));
    EXPECT_FALSE(chain.front()->add(tooMuch));
}

TEST_F(ContainerTest, ScriptsAddByTypeAndByVariable) {
    run("inner=RQueue 1 0\n"
        "outer=RQueue 1\n"
        "play outer add \"inner\"\n"
        "play inner add DelayAction 5\n"
        "get inner isInterruptible i\n"
        "get outer isInterruptible o\n"
        "get outer actionCount n\n"
        "drop inner\n"
        "get outer actionCount rest\n"
        "play outer add \"outer\"\n"
        "play outer add Nothing 1\n"
        "play outer add DelayAction\n"
        "say i o n rest\n");
    EXPECT_EQ(said(), "0 0 1 0\n");
    EXPECT_EQ(boxes(), (Strings{"RQueue - cannot add outer", "Unknown action or container: Nothing",
                                "DelayAction - not enough parameters",
                                "Unknown action or container: DelayAction"}));
    // A synchronous play waits for the end, and for a halt.
    run("q=RQueue 1\n"
        "play q add DelayAction 20\n"
        "play q add DelayAction 1\n"
        "other=RQueue 1\n"
        "play other add VerbAction \"q\" 1 add EmptyAction\n"
        "play other add DelayAction 5\n"
        "play other add VerbAction \"q\" 1 resume\n"
        "play other start\n"
        "play q start\nplay q resume }\n"
        "say \"over\"\n",
        15);
    EXPECT_EQ(said(), "");
    pass(10);
    EXPECT_EQ(said(), "over\n");
}

// Whatever is started, halted, added, removed, copied and destroyed when, by whichever handler:
// nothing is left running that nobody knows, and containers come to an end when they are halted.
TEST_F(ContainerTest, AnyOrderOfChangesEndsWell) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&](unsigned count) { return random() % count; };
        std::vector<std::unique_ptr<ActionContainer>> all(6);
        int depth = 0;
        std::function<void()> change = [&] {
            if (depth > 3) return;
            ++depth;
            const OMUnderWay underWay;
            std::unique_ptr<ActionContainer>& each = all[below(6)];
            const bool interruptible = below(4) != 0;
            if (!each) {
                if (below(3) == 0)
                    each = std::make_unique<RCompositeAction>(interruptible);
                else if (below(2) == 0)
                    each = std::make_unique<RQueue>(1 + static_cast<int>(below(2)), interruptible);
                else
                    each = std::make_unique<RRandomAction>(below(2) == 0, interruptible);
                each->takeClass(ActionContainer::kClass);
                each->attachHandler("finished", [&] {
                    if (below(2) == 0) change();
                });
            }
            ActionContainer* container = each.get();
            switch (below(13)) {
            case 0: each.reset(); break;
            case 1: container->halt(); break;
            case 2: container->pause(); break;
            case 3: container->resume(); break;
            case 4: container->clear(); break;
            case 5:
            case 6:
                if (!container->isActive()) container->start();
                break;
            case 7: add(*container, {"EmptyAction"}); break;
            case 8:
                if (const auto& other = all[below(6)]) container->add(*other);
                break;
            case 9:
                all[below(6)].reset(
                    static_cast<ActionContainer*>(container->makeDuplicate().release()));
                break;
            default: add(*container, {"RandomDelayAction", "0", "6"}); break;
            }
            --depth;
        };
        for (int i = 0; i < 200; ++i) {
            change();
            pass(1);
        }
        for (auto& each : all)
            if (each) each->attachHandler("finished", nullptr);
        for (int i = 0; i < 6; ++i) {
            for (auto& each : all)
                if (each) {
                    each->resume();
                    each->halt();
                }
            pass(100);
        }
        for (auto& each : all)
            EXPECT_FALSE(each && each->isActive()) << "still active, seed " << seed;
        boxes();
        machine.dialogs().boxes.clear();
    }
}
