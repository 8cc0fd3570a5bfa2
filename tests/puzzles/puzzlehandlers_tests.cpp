// Handlers of the events of a puzzle, its answers and its containers: they may take all of it apart
// while it works.
#include "puzzlefixture.h"

#include "rtext.h"

#include <random>

using namespace testing_support;
using platform::Point;

namespace {

class PuzzleHandlerTest : public PuzzleTest {
  protected:
    const Strings answers{"a", "b", "c"};
    const Strings containers{"x", "y"};

    void makeAll(const char* containerClass, bool right) {
        reactions.clear();
        makePuzzle("q");
        makePuzzle();
        addAnswers(answers);
        addContainers(containers, containerClass);
        for (const auto& [name, value] : {std::pair{"a", "1"}, {"b", "2"}, {"c", "3"}})
            set(name, "attribute", value);
        for (const std::string& name : containers) {
            const std::string value = (name == "x") == right ? "1" : "2";
            for (const char* property : {"attribute", "value", "answerMatchString"})
                if (the(name).hasProperty(property)) set(name, property, value);
            if (auto* plainOne = dynamic_cast<PlainContainer*>(&the(name)))
                plainOne->solved = right;
        }
        if (!right) play("p", "removeAnswer", {"c"});
        play("p", "setAnswer", {"1", "1", "2020", "2", "2020", "3", "2020"});
        play("p", "setContainer", {"1", "1", "2"});
        play("p", "setPuzzleText", {"1", "1", "10", "10", "90", "Where?"});
        takeHeard();
    }
    void updateFullness() {
        for (const std::string& name : containers)
            if (lives(name))
                if (auto* one = dynamic_cast<PlainContainer*>(&the(name)))
                    one->full = one->answerCount() > 0;
    }
    void moveIfThere(const std::string& name, Point to) {
        if (!lives(name)) return;
        updateFullness();
        move(name, to);
    }
    /// Raises every event, when nobody interferes.
    void playThrough() {
        const Point x{140, 140};
        const Point y{300, 140};
        if (lives("a")) {
            pickUp("a");
            for (const Point to : {x, y, x}) dragTo(to);
            for (const std::string& name : containers)
                if (lives(name) && dynamic_cast<PlainContainer*>(&the(name)))
                    plain(name).full = true;
            release();
        }
        moveIfThere("b", y);
        moveIfThere("c", kNowhere);
        if (lives("a")) {
            pickUp("a");
            for (const Point to : {kNowhere, x}) dragTo(to);
            release();
        }
        moveIfThere("b", kNowhere);
    }
    /// As messages do, which do not come in the midst of a press or a release.
    void releaseHeld() {
        const OMTrinket* target = window.input().mouseTarget();
        if (target && target->mouseState() == OMTrinket::MouseState::Held) release();
    }
    void dragHeld(Point to) {
        const auto* held = dynamic_cast<const RAnswer*>(window.input().mouseTarget());
        if (held && held->isHeld()) dragTo(to);
    }
    using Deed = std::function<void()>;

    static Deed doing(const char* name, const char* method, std::vector<std::string> words = {}) {
        return [=] {
            OMSArguments& list = OMSArguments::global();
            list.clear();
            for (const std::string& word : words) list.push(word);
            EXPECT_TRUE(the(name).invoke(method));
        };
    }
    static Deed setting(const char* name, const char* property) {
        return [=] { set(name, property, "0"); };
    }
    static Deed dropping(const Strings& names) {
        return [=] {
            for (const std::string& name : names) drop(name);
        };
    }
    /// What handlers do while p, q, a, x and y are there.
    std::map<std::string, Deed> deeds() {
        return {
            {"drop the puzzle", dropping({"p"})},
            {"drop the answer", dropping({"a"})},
            {"drop the container", dropping({"x"})},
            {"drop the other container", dropping({"y"})},
            {"drop answer and container", dropping({"a", "x"})},
            {"drop puzzle and answer", dropping({"p", "a"})},
            {"drop container and puzzle", dropping({"x", "p"})},
            {"drop all", dropping({"a", "p", "y", "c", "x", "b"})},
            {"drop another answer", dropping({"b"})},
            {"reset", doing("p", "reset")},
            {"start", doing("p", "start")},
            {"take the answer out", doing("p", "removeAnswer", {"a"})},
            {"take the container out", doing("p", "removeContainer", {"x"})},
            {"into the other container", doing("p", "addAnswerToContainer", {"a", "y"})},
            {"into the same container", doing("p", "addAnswerToContainer", {"a", "x"})},
            {"another one into it", doing("p", "addAnswerToContainer", {"c", "x"})},
            {"out of the container", doing("p", "removeAnswerFromContainer", {"a", "x"})},
            {"into another puzzle", doing("q", "addAnswer", {"a"})},
            {"no more moves", doing("p", "anchorAnswers")},
            {"away with the containers", doing("p", "shiftContainers", {"0", "200"})},
            {"disable the container", setting("x", "enabled")},
            {"hide the answer", setting("a", "visible")},
            {"home", [] { answer("a").goHome(); }},
            {"lose the release", [this] { window.mouseReleaseLost(); }},
            {"release", [this] { releaseHeld(); }},
            {"drag on",
             [this] {
                 dragHeld({300, 140});
             }},
        };
    }
    /// What is in a container is so by all accounts, and nobody is held.
    void expectConsistent(const std::string& what) {
        for (const std::string& name : answers) {
            if (!lives(name)) continue;
            int holders = 0;
            for (const std::string& other : containers) {
                if (!lives(other) || !container(other).contains(answer(name))) continue;
                ++holders;
                EXPECT_EQ(answer(name).container(), &container(other)) << what << " " << name;
            }
            EXPECT_EQ(get(name, "isUsed"), std::to_string(holders)) << what << " " << name;
            EXPECT_FALSE(answer(name).isHeld()) << what << " " << name;
        }
        for (const std::string& name : containers)
            EXPECT_FALSE(lives(name) && container(name).isHighlighted()) << what << " " << name;
        EXPECT_EQ(window.input().mouseTarget(), nullptr) << what;
    }
    /// Who is in no container, and nobody's hand, is at home.
    void expectAtHome(const std::string& what) {
        for (const std::string& name : answers) {
            if (!lives(name) || get(name, "isUsed") == "1" || !answer(name).keeper()) continue;
            EXPECT_EQ(std::to_string(corner(name).x), get(name, "homeX")) << what << " " << name;
            EXPECT_EQ(std::to_string(corner(name).y), get(name, "homeY")) << what << " " << name;
        }
    }
    /// What is left goes on as if nothing had happened.
    void expectPlaysOn(const std::string& what) {
        reactions.clear();
        if (!lives("p")) makePuzzle();
        for (const std::string& name : containers) {
            if (!lives(name)) continue;
            play("p", "addContainer", {name});
            set(name, "enabled", "1");
            set(name, "rejectIncorrectAnswers", "0");
            the<OMTrinket>(name).place(name == "x" ? 100 : 260, 100);
        }
        for (const std::string& name : answers) {
            if (!lives(name)) continue;
            play("p", "addAnswer", {name});
            set(name, "visible", "1");
        }
        play("p", "unanchorAnswers");
        play("p", "reset");
        for (const std::string& name : answers)
            if (lives(name)) answer(name).goHome();
        for (const std::string& name : answers) {
            if (!lives(name)) continue;
            for (const std::string& target : containers) {
                if (!lives(target)) continue;
                move(name, target);
                EXPECT_TRUE(container(target).contains(answer(name)))
                    << what << ": " << name << " onto " << target;
                move(name, kNowhere);
                EXPECT_EQ(corner(name).y, 400) << what;
            }
        }
        expectConsistent(what);
    }
};

TEST_F(PuzzleHandlerTest, WhateverIsGoneOrChangedInAnyEvent) {
    const Strings events{
        "a.pickedUp",     "a.dropped",       "a.addedToContainer", "a.removedFromContainer",
        "x.answerPlaced", "x.answerRemoved", "x.answerFlyOn",      "x.answerFlyOff",
        "y.answerFlyOn",  "y.answerFlyOff",  "p.containersFull",   "p.answersUsed",
        "p.puzzleSolved", "p.puzzleWrong"};
    std::set<std::string> raised;
    for (const char* kind : {"PlainContainer", "RAttributeContainer", "RStackingContainer",
                             "RHorizontalContainer", "RFabricContainer"}) {
        for (const bool right : {true, false}) {
            for (const auto& [deed, act] : deeds()) {
                for (const std::string& event : events) {
                    const std::string what =
                        std::string(kind) + (right ? " " : " wrong ") + event + ": " + deed;
                    SCOPED_TRACE(what);
                    makeAll(kind, right);
                    int depth = 0;
                    int times = 0;
                    reactions[event] = [&, &act = act] {
                        raised.insert(event);
                        if (depth > 0 || ++times > 3) return;
                        ++depth;
                        const bool all = lives("p") && lives("a") && lives("x") && lives("y");
                        if (all) act();
                        --depth;
                    };
                    const OMUnderWay underWay;
                    playThrough();
                    expectConsistent(what);
                    if (lives("p") && deed != "take the answer out") expectAtHome(what);
                    expectPlaysOn(what);
                }
            }
        }
    }
    EXPECT_EQ(raised.size(), events.size());
}

TEST_F(PuzzleHandlerTest, WhateverIsGoneInAnEventThatAMethodRaises) {
    const Deed methods[] = {
        doing("p", "reset"),
        doing("p", "removeAnswer", {"a"}),
        doing("p", "removeAnswerFromContainer", {"a", "x"}),
        doing("p", "addAnswerToContainer", {"a", "y"}),
        doing("p", "start"), // ends a picture that somebody waits for
    };
    const Strings events{"x.answerRemoved", "a.removedFromContainer", "a.addedToContainer",
                         "y.answerPlaced",  "y.answerRemoved",        "b.removedFromContainer"};
    for (const auto& [deed, act] : deeds()) {
        for (std::size_t method = 0; method < std::size(methods); ++method) {
            for (const std::string& event : events) {
                const std::string what = event + " of " + std::to_string(method) + ": " + deed;
                SCOPED_TRACE(what);
                makeAll("RStackingContainer", true);
                play("p", "addAnswerToContainer", {"a", "x"});
                play("p", "addAnswerToContainer", {"b", "y"});
                int depth = 0;
                const auto once = [&, &act = act] {
                    const bool all = lives("p") && lives("a") && lives("x") && lives("y");
                    if (depth++ == 0 && all) act();
                };
                reactions[event] = once;
                answer("a").setCompletionLink(once);
                methods[method]();
                if (lives("a")) answer("a").setCompletionLink(nullptr);
                expectConsistent(what);
                int texts = 0;
                (void)window.findTrinket([&texts](const OMTrinket& trinket) {
                    if (dynamic_cast<const RText*>(&trinket)) ++texts;
                    return false;
                });
                EXPECT_LE(texts, 1) << what;
                expectPlaysOn(what);
            }
        }
    }
}

TEST_F(PuzzleHandlerTest, WhatAHandlerCausesIsToldOnce) {
    makeAll("PlainContainer", true);
    const std::string taken = "a.pickedUp x.answerRemoved a.removedFromContainer ";
    move("a", "x");
    takeHeard();
    reactions["a.removedFromContainer"] = [this] { window.mouseReleaseLost(); };
    pickUp("a");
    EXPECT_EQ(takeHeard(), taken) << "its event is not in the middle of another";
    window.idle();
    EXPECT_EQ(takeHeard(), "a.dropped a.addedToContainer x.answerPlaced p.puzzleSolved ");
    reactions.clear();
    reactions["x.answerFlyOff"] = doing("p", "removeContainer", {"y"});
    pickUp("a");
    dragTo(middle("y"));
    EXPECT_EQ(takeHeard(), taken + "x.answerFlyOff ") << "y is no target any more";
    release();
    expectConsistent("");
}

TEST_F(PuzzleHandlerTest, WhatIsOnItsWayOutCannotBePutAnywhere) {
    makeAll("PlainContainer", true);
    play("p", "addAnswerToContainer", {"a", "x"});
    YHeap& heap = YHeap::current();
    heap.get(heap.intern("other")).setReference(&the("a"));
    reactions["x.answerRemoved"] = [] {
        for (const char* name : {"a", "other"}) {
            play("p", "addAnswer", {name});
            play("p", "addAnswerToContainer", {name, "y"});
        }
    };
    drop("a");
    expectConsistent("");
    expectPlaysOn("");
}

TEST_F(PuzzleHandlerTest, AnythingAtAnyTime) {
    const char* kinds[] = {"PlainContainer",       "RAttributeContainer",
                           "RValueContainer",      "RStackingContainer",
                           "RHorizontalContainer", "RHorizontalValueContainer",
                           "RFabricContainer"};
    int taken = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        std::mt19937 random(seed);
        const auto one = [&random](const Strings& names) { return names[random() % names.size()]; };
        makeAll(kinds[seed % std::size(kinds)], seed % 2 == 0);
        const auto deed = [&] {
            const std::string p = random() % 4 == 0 ? "q" : "p";
            const std::string a = one(answers);
            const std::string x = one(containers);
            const auto call = [&](const char* method,
                                  std::initializer_list<std::string_view> arguments) {
                if (lives(p)) play(p, method, arguments);
            };
            switch (random() % 19) {
            case 0: return drop(a);
            case 1: return drop(x);
            case 2: return drop(p);
            case 3: return call("reset", {});
            case 4: return call("start", {});
            case 5: return call("addAnswer", {a});
            case 6: return call("removeAnswer", {a});
            case 7: return call("addContainer", {x});
            case 8: return call("removeContainer", {x});
            case 9: return call("addAnswerToContainer", {a, x});
            case 10: return call("removeAnswerFromContainer", {a, x});
            case 11: return call(random() % 2 == 0 ? "anchorAnswers" : "unanchorAnswers", {});
            case 12: return call("shiftAnswers", {"3", "-2"});
            case 13: return call("shiftContainers", {"-1", "1"});
            case 14: return lives(x) ? set(x, "enabled", random() % 2 == 0 ? "0" : "1") : void();
            case 15: return lives(a) ? answer(a).goHome() : void();
            case 16: return window.mouseReleaseLost();
            case 17: return lives(a) ? set(a, "visible", random() % 2 == 0 ? "0" : "1") : void();
            default: return lives(x) ? set(x, "rejectIncorrectAnswers", "1") : void();
            }
        };
        int depth = 0;
        onEvent = [&](const std::string&) {
            if (depth > 3 || random() % 3 != 0) return;
            ++depth;
            deed();
            --depth;
        };
        for (int step = 0; step < 150; ++step) {
            SCOPED_TRACE("seed " + std::to_string(seed) + " step " + std::to_string(step));
            const OMUnderWay underWay;
            if (random() % 10 == 0) {
                deed();
            } else if (const std::string a = one(answers); lives(a)) {
                const std::string x = one(containers);
                pickUp(a);
                dragTo({static_cast<int>(random() % 400), static_cast<int>(random() % 430)});
                if (lives(x)) dragTo(middle(x));
                release();
            }
            depth += 10; // from here on nobody interferes
            window.mouseUp(kNowhere);
            expectConsistent("");
            for (const std::string& name : answers)
                if (lives(name) && get(name, "isUsed") == "1") ++taken;
            if (testing::Test::HasFailure()) return;
            if (random() % 12 == 0) makeAll(kinds[random() % std::size(kinds)], random() % 2 == 0);
            depth -= 10;
        }
        onEvent = nullptr;
        expectPlaysOn("seed " + std::to_string(seed));
    }
    EXPECT_GT(taken, 500) << "it must have been played";
}

} // namespace
