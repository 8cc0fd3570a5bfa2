// Puzzles: what a drop leads to, what is heard of it and in which order, and what belongs to one.
#include "puzzlefixture.h"

#include <random>

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

class RPuzzleTest : public PuzzleTest {};

// The rules of a drop

TEST_F(RPuzzleTest, ADropInEveryState) {
    const Strings targets{"", "x", "y"};
    std::set<std::string> seen; // states of the puzzle after a drop that was taken
    for (int state = 0; state < 32; ++state) {
        const bool bIsUsed = (state & 16) != 0;
        for (const std::string& target : targets) {
            makePuzzle();
            addAnswers({"a", "b"});
            addContainers({"x", "y"});
            if (bIsUsed) play("p", "addAnswerToContainer", {"b", "y"});
            plain("x").full = (state & 1) != 0;
            plain("x").solved = (state & 2) != 0;
            plain("y").full = (state & 4) != 0;
            plain("y").solved = (state & 8) != 0;
            takeHeard();
            move("a", target.empty() ? kNowhere : middle(target));

            const bool full = (state & 5) == 5;
            const bool solved = (state & 10) == 10;
            std::string expected = "a.pickedUp ";
            if (target.empty()) {
                expected += "a.dropped ";
                if (solved) expected += "p.puzzleSolved ";
            } else {
                expected += target + ".answerFlyOn a.dropped a.addedToContainer " + target +
                            ".answerPlaced ";
                std::string events;
                if (full) events += "p.containersFull ";
                if (bIsUsed) events += "p.answersUsed ";
                if (solved) events += "p.puzzleSolved ";
                if (!solved && (full || bIsUsed)) events += "p.puzzleWrong ";
                expected += events;
                seen.insert(events);
            }
            EXPECT_EQ(takeHeard(), expected) << state << target;
            EXPECT_EQ(get("a", "isUsed"), target.empty() ? "0" : "1");
            EXPECT_EQ(get("p", "areAnswersUsed"), !target.empty() && bIsUsed ? "1" : "0");
            EXPECT_EQ(get("p", "areContainersFull"), full ? "1" : "0");
            EXPECT_EQ(get("p", "isSolved"), solved ? "1" : "0");
            if (target.empty()) {
                EXPECT_EQ(corner("a"), (Point{20, 400}));
            }
        }
    }
    EXPECT_EQ(seen.size(), 8u);
}

TEST_F(RPuzzleTest, OfContainersThatAcceptTheFirstWithTheHighestScoreIsTheTarget) {
    std::mt19937 random(7);
    const Strings names{"x", "y", "v", "w"};
    makePuzzle();
    addAnswers({"a"});
    addContainers(names);
    for (const std::string& name : names) the<OMTrinket>(name).place(200, 100); // in one place
    const auto shake = [&] {
        for (const std::string& name : names) {
            plain(name).accepts = random() % 3 != 0;
            plain(name).score = static_cast<int>(random() % 4) - 1;
        }
    };
    const auto best = [&] {
        std::string found;
        std::int64_t highest = 0;
        for (const std::string& name : names)
            if (plain(name).accepts && *plain(name).score > highest) {
                highest = *plain(name).score;
                found = name;
            }
        return found;
    };
    for (int round = 0; round < 60; ++round) {
        pickUp("a");
        std::string hover = round == 0 ? "" : "x"; // it is taken out of x from the second on
        takeHeard();
        for (int step = 0; step < 5; ++step) {
            shake();
            std::string expected;
            if (const std::string now = best(); now != hover) {
                if (!hover.empty()) expected += hover + ".answerFlyOff ";
                if (!now.empty()) expected += now + ".answerFlyOn ";
                hover = now;
            }
            dragTo({220 + step, 120 + round % 40});
            EXPECT_EQ(takeHeard(), expected);
        }
        shake(); // what counts is the drop
        const std::string target = best();
        release();
        EXPECT_EQ(takeHeard().find("a.dropped "), 0u);
        for (const std::string& name : names)
            EXPECT_EQ(container(name).contains(answer("a")), name == target) << round << name;
        play("p", "addAnswerToContainer", {"a", "x"});
        answer("a").place(220, 120);
    }
}

TEST_F(RPuzzleTest, PickedUpOutOfAContainerAndPutBack) {
    makePuzzle();
    addAnswers({"a", "b"});
    addContainers({"x", "y"});
    const std::string taken = "a.pickedUp x.answerRemoved a.removedFromContainer ";
    const std::string put = "a.dropped a.addedToContainer x.answerPlaced ";
    move("a", "x");
    takeHeard();
    move("a", "x"); // its target from the beginning on
    EXPECT_EQ(takeHeard(), taken + put);
    pickUp("a");
    EXPECT_EQ(get("x", "answerCount") + get("a", "isUsed"), "00");
    dragTo(kNowhere);
    dragTo(middle("y"));
    dragTo(middle("x"));
    release();
    EXPECT_EQ(takeHeard(),
              taken + "x.answerFlyOff y.answerFlyOn y.answerFlyOff x.answerFlyOn " + put);
    move("a", kNowhere);
    EXPECT_EQ(takeHeard(), taken + "x.answerFlyOff a.dropped ");
    EXPECT_EQ(corner("a"), (Point{20, 400}));

    move("a", "x");
    takeHeard();
    pickUp("a");
    plain("x").accepts = false; // no way back
    dragTo({middle("x").x + 1, middle("x").y});
    release();
    EXPECT_EQ(takeHeard(), taken + "x.answerFlyOff a.dropped ");
}

TEST_F(RPuzzleTest, LockAndRejectCountForContainersThatAreAddedAfterwards) {
    makePuzzle();
    addAnswers({"x", "y", "v"});
    set("p", "rejectIncorrectAnswers", "1");
    make("before", "RAttributeContainer", {"-1", "20", "20", "60", "60"});
    addContainers({"cx", "cy"}, "RAttributeContainer");
    set("cx", "attribute", "x");
    set("cy", "attribute", "y");
    EXPECT_EQ(get("before", "rejectIncorrectAnswers") + get("cx", "rejectIncorrectAnswers") +
                  get("cx", "lockCorrectAnswers"),
              "010");
    set("p", "lockCorrectAnswers", "1");
    play("p", "addContainer", {"cy"}); // a second time: the flags count, the container once
    EXPECT_EQ(get("cx", "lockCorrectAnswers") + get("cy", "lockCorrectAnswers"), "01");
    takeHeard();
    move("y", "cx");
    EXPECT_EQ(takeHeard(), "y.pickedUp y.dropped ");
    EXPECT_EQ(corner("y"), (Point{60, 400}));
    move("y", "cy");
    move("x", "cx");
    EXPECT_EQ(takeHeard(), "y.pickedUp cy.answerFlyOn y.dropped y.addedToContainer cy.answerPlaced "
                           "x.pickedUp cx.answerFlyOn x.dropped x.addedToContainer cx.answerPlaced "
                           "p.containersFull p.puzzleSolved ");
    EXPECT_EQ(get("y", "movable") + get("x", "movable"), "01");
    move("v", kNowhere);
    EXPECT_EQ(takeHeard(), "v.pickedUp v.dropped p.puzzleSolved ") << "once more";
}

TEST_F(RPuzzleTest, WhoIsHeldWhenTheReleaseIsLostIsDropped) {
    makePuzzle();
    addAnswers({"a"});
    addContainers({"x"});
    pickUp("a");
    dragTo(middle("x"));
    window.mouseReleaseLost();
    window.idle();
    EXPECT_EQ(get("a", "isUsed"), "1");
    takeHeard();
    pickUp("a");
    dragTo(kNowhere);
    window.mouseReleaseLost();
    window.idle();
    EXPECT_EQ(corner("a"), (Point{20, 400}));
    window.mouseUp(kNowhere);
    EXPECT_EQ(takeHeard(),
              "a.pickedUp x.answerRemoved a.removedFromContainer x.answerFlyOff a.dropped ");
}

// What belongs to a puzzle

TEST_F(RPuzzleTest, WithoutAnythingItIsUsedFullAndSolved) {
    makePuzzle();
    for (const char* state : {"areAnswersUsed", "areContainersFull", "isSolved"}) {
        EXPECT_EQ(get("p", state), "1");
        set("p", state, "0"); // accepted and ignored
        EXPECT_EQ(get("p", state), "1");
    }
    addContainers({"x"});
    EXPECT_EQ(get("p", "areContainersFull") + get("p", "isSolved"), "00");
    EXPECT_EQ(get("p", "areAnswersUsed"), "1");
    addAnswers({"a"});
    EXPECT_EQ(get("p", "areAnswersUsed"), "0");
    drop("x");
    drop("a");
    for (const char* state : {"areAnswersUsed", "areContainersFull", "isSolved"})
        EXPECT_EQ(get("p", state), "1");
    for (const char* property : {"lockCorrectAnswers", "rejectIncorrectAnswers", "scrambleAnswers",
                                 "puzzleTextColorIndex"}) {
        EXPECT_EQ(get("p", property), "0");
        set("p", property, "1");
        EXPECT_EQ(get("p", property), "1");
    }
}

TEST_F(RPuzzleTest, NamesOfNothingChangeNothing) {
    makePuzzle();
    addAnswers({"a"});
    addContainers({"x"});
    make("other", "RHotSpot", {"0", "0", "10", "10"});
    for (const char* method : {"addAnswer", "removeAnswer", "addContainer", "removeContainer"})
        for (const char* name : {"nobody", "", "other", "p"}) play("p", method, {name});
    play("p", "addAnswer", {"x"});
    play("p", "addContainer", {"a"});
    for (const char* method : {"addAnswerToContainer", "removeAnswerFromContainer"}) {
        play("p", method);
        play("p", method, {"a"});
        play("p", method, {"a", "nobody"});
        play("p", method, {"nobody", "x"});
        play("p", method, {"x", "a"});
    }
    play("p", "removeAnswerFromContainer", {"a", "x"}); // where it is not
    EXPECT_EQ(takeHeard(), "");
    move("a", "x");
    EXPECT_EQ(get("a", "isUsed"), "1");
    EXPECT_TRUE(failedChecks.empty());
}

TEST_F(RPuzzleTest, IntoContainersAndOutOfThemByScript) {
    makePuzzle();
    addAnswers({"a", "b"});
    addContainers({"x", "y"});
    plain("x").accepts = false; // nobody is asked
    plain("x").full = plain("y").full = true;
    play("p", "addAnswerToContainer", {"a", "x"});
    EXPECT_EQ(takeHeard(), "a.addedToContainer x.answerPlaced ") << "no event of the puzzle";
    play("p", "addAnswerToContainer", {"a", "x"});
    EXPECT_EQ(takeHeard(), "");
    play("p", "addAnswerToContainer", {"a", "y"});
    EXPECT_EQ(get("x", "answerCount") + get("y", "answerCount"), "01");
    EXPECT_EQ(takeHeard(),
              "x.answerRemoved a.removedFromContainer a.addedToContainer y.answerPlaced ");
    play("p", "removeAnswerFromContainer", {"a", "x"});
    EXPECT_EQ(takeHeard(), "");
    answer("a").place(300, 300);
    play("p", "removeAnswerFromContainer", {"a", "y"});
    EXPECT_EQ(takeHeard(), "y.answerRemoved a.removedFromContainer ");
    EXPECT_EQ(corner("a"), (Point{20, 400}));

    play("p", "addAnswerToContainer", {"a", "x"});
    play("p", "addAnswerToContainer", {"b", "y"});
    EXPECT_EQ(get("p", "areAnswersUsed"), "1");
    takeHeard();
    play("p", "reset");
    EXPECT_EQ(takeHeard(), "x.answerRemoved a.removedFromContainer y.answerRemoved "
                           "b.removedFromContainer ");
    EXPECT_EQ(get("p", "areAnswersUsed"), "0");
    EXPECT_EQ(corner("b"), (Point{60, 400}));
    answer("b").place(300, 300);
    play("p", "reset");
    EXPECT_EQ(corner("b"), (Point{300, 300})) << "only those in containers go home";
}

TEST_F(RPuzzleTest, AnswersThatAreTakenOutAreNobodys) {
    makePuzzle();
    addAnswers({"a", "b"});
    addContainers({"x"});
    move("a", "x");
    const Point place = corner("a");
    takeHeard();
    play("p", "removeAnswer", {"a"});
    EXPECT_EQ(takeHeard(), "x.answerRemoved a.removedFromContainer ");
    EXPECT_EQ(corner("a"), place);
    play("p", "removeAnswer", {"a"});
    move("a", kNowhere);
    EXPECT_EQ(takeHeard(), "a.pickedUp a.dropped ") << "and stays there";
    EXPECT_NE(corner("a"), (Point{20, 400}));
    play("p", "addAnswer", {"a"});
    play("p", "addAnswer", {"a"}); // counts once
    move("a", "x");
    EXPECT_EQ(get("a", "isUsed"), "1");
    EXPECT_EQ(get("x", "answerCount"), "1");
    takeHeard();
    drop("a"); // out of its container
    EXPECT_EQ(takeHeard(), "x.answerRemoved ");
    EXPECT_EQ(get("x", "answerCount"), "0");
    pickUp("b");
    dragTo(middle("x"));
    drop("b"); // out of the player's hand
    release();
    EXPECT_EQ(get("p", "areAnswersUsed"), "1");
}

TEST_F(RPuzzleTest, ContainersThatAreTakenOutTakeNothing) {
    makePuzzle();
    addAnswers({"a", "b"});
    addContainers({"x", "y"});
    move("a", "x");
    play("p", "removeContainer", {"x"});
    EXPECT_EQ(get("x", "answerCount"), "1");
    EXPECT_EQ(get("a", "isUsed"), "1");
    takeHeard();
    move("b", "x");
    EXPECT_EQ(takeHeard(), "b.pickedUp b.dropped ");
    move("a", "y"); // it knows where it was
    EXPECT_EQ(get("x", "answerCount") + get("y", "answerCount"), "01");
    play("p", "addContainer", {"x"});
    pickUp("b");
    dragTo(middle("x"));
    drop("x"); // under the answer
    drop("y"); // with an answer
    EXPECT_EQ(get("a", "isUsed"), "0");
    takeHeard();
    dragTo(kNowhere);
    release();
    EXPECT_EQ(takeHeard(), "b.dropped p.puzzleSolved ") << "as there are no containers";
    play("p", "addContainer", {"x"});
    EXPECT_EQ(get("p", "isSolved"), "1");
}

TEST_F(RPuzzleTest, TwoPuzzles) {
    makePuzzle("q");
    makePuzzle();
    addAnswers({"a", "b"});
    addContainers({"x"});
    play("q", "addContainer", {"x"});
    play("q", "addAnswer", {"a"}); // which leaves p
    plain("x").full = true;
    takeHeard();
    move("a", "x");
    EXPECT_EQ(takeHeard(), "a.pickedUp x.answerFlyOn a.dropped a.addedToContainer x.answerPlaced "
                           "q.containersFull q.answersUsed q.puzzleWrong ");
    EXPECT_EQ(get("p", "areAnswersUsed"), "0");
    play("p", "reset");
    EXPECT_EQ(get("a", "isUsed"), "1") << "another's";
    play("p", "removeAnswer", {"a"});
    EXPECT_EQ(get("a", "isUsed"), "1");
    move("b", "x");
    EXPECT_EQ(get("x", "answerCount"), "2");
    play("q", "addAnswer", {"b"});
    play("q", "removeContainer", {"x"});
    drop("p");
    drop("q"); // what they had goes on without them
    takeHeard();
    move("b", kNowhere);
    EXPECT_EQ(takeHeard(), "b.pickedUp x.answerRemoved b.removedFromContainer b.dropped ");
    EXPECT_NE(corner("b"), (Point{60, 400}));
    EXPECT_EQ(get("x", "answerCount"), "1");
}

TEST_F(RPuzzleTest, ShiftedAndAnchored) {
    makePuzzle();
    addAnswers({"a", "b"});
    addContainers({"x", "y"});
    move("a", "x");
    const Point inside = corner("a");
    play("p", "shiftAnswers", {"5", "-7"});
    EXPECT_EQ(corner("b"), (Point{65, 393}));
    EXPECT_EQ(corner("a"), inside);
    play("p", "shiftContainers", {"-3", "2"});
    EXPECT_EQ(corner("x"), (Point{97, 102}));
    EXPECT_EQ(corner("y"), (Point{257, 102}));
    EXPECT_EQ(corner("a"), (Point{inside.x - 3, inside.y + 2}));
    play("p", "anchorAnswers");
    takeHeard();
    move("a", "y");
    move("b", "y");
    EXPECT_EQ(takeHeard(), "");
    play("p", "unanchorAnswers");
    move("a", "y");
    move("b", kNowhere);
    EXPECT_EQ(get("y", "answerCount"), "1");
    EXPECT_EQ(corner("b"), (Point{60, 400})) << "home has not been shifted";
}

} // namespace
