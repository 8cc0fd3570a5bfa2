// Events of containers: their order in a puzzle that is played, and handlers that destroy whom they
// like.
#include "puzzles/containerfixture.h"

#include "ommultitrinket.h"
#include "puzzles/rpuzzle.h"
#include "yheap.h"

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

/// A puzzle with a container and an answer beside it, which lie in variables, and a mouse.
class PlayedContainerTest : public PuzzleContainerTest {
  protected:
    PlayedContainerTest() { YHeap::recreate(); }
    ~PlayedContainerTest() override { YHeap::recreate(); }

    static void keep(const std::string& name, std::unique_ptr<OMScriptableObject> object) {
        YHeap& heap = YHeap::current();
        heap.get(heap.intern(name)).setObject(std::move(object));
    }
    static bool lives(const std::string& name) { return OMScriptableObject::named(name); }
    /// A property; 0 of who is gone.
    static std::string told(const std::string& name, const char* property) {
        return lives(name) ? OMScriptableObject::named(name)->getProperty(property).value_or("")
                           : "0";
    }

    void begin(std::size_t kind) {
        YHeap::recreate();
        heard.clear();
        keep("container", std::move(allKinds("-1 100 50 60 40 -3")[kind])); // below the answer
        keep("answer", answer(20, 10, 300, 300, "1"));
        puzzle = make<RPuzzle>("0");
        puzzle->addContainer("container");
        puzzle->addAnswer("answer");
        for (const char* event : {"answerFlyOn", "answerFlyOff", "answerPlaced", "answerRemoved"})
            hear("container", event);
        for (const char* event :
             {"pickedUp", "dropped", "addedToContainer", "removedFromContainer"})
            hear("answer", event);
    }
    void hear(const char* name, const char* event) {
        OMScriptableObject::named(name)->attachHandler(event, [this, event] {
            heard += std::string(event) + " ";
            const auto react = onEvent;
            if (react) react(event);
        });
    }
    void drag(Point from, Point to) {
        window.mouseMove(from);
        window.mouseDown(from);
        window.mouseMove(to);
    }
    static constexpr Point kHome{305, 305};
    static constexpr Point kMiddle{130, 70};
    /// Where the answer is in the container, of any kind.
    static Point inside() {
        const Rect r =
            dynamic_cast<OMTrinket&>(*OMScriptableObject::named("answer")).boundingRectangle();
        return {r.left + 1, r.top + 1};
    }

    std::unique_ptr<RPuzzle> puzzle;
    std::string heard;
    std::function<void(const std::string&)> onEvent;
};

// ------------------------------------------------------------------------ without a puzzle

TEST_F(PlayedContainerTest, AnswersAndContainersGoInAnyOrder) {
    for (auto& container : allKinds("-1 100 50 60 40 3")) {
        int removed = 0;
        container->attachHandler("answerRemoved", [&] { ++removed; });
        Answer a = answer(10, 10, 110, 60);
        put(*a, *container);
        a.reset();
        EXPECT_EQ(removed, 1);
        EXPECT_EQ(container->answerCount(), 0);
        a = answer(10, 10, 110, 60);
        put(*a, *container);
        const std::string place = placeOf(*a);
        container.reset();
        EXPECT_EQ(removed, 1);
        EXPECT_FALSE(a->isUsed());
        EXPECT_EQ(placeOf(*a), place);
        take(*a);
    }
}

/// Every event of every kind, with a handler that destroys what it can.
TEST_F(PlayedContainerTest, HandlersDestroyWhatTheyLike) {
    enum { kContainer = 1, kAnswer = 2, kOther = 4 };
    for (std::size_t kind = 0; kind < 6; ++kind)
        for (const std::string event :
             {"answerPlaced", "answerRemoved", "answerFlyOn", "answerFlyOff"})
            for (int victims = kContainer; victims <= (kContainer | kAnswer | kOther); ++victims) {
                SCOPED_TRACE(event + " " + std::to_string(kind) + " " + std::to_string(victims));
                auto all = allKinds("-1 100 50 60 40 3");
                std::unique_ptr<RContainer>& c = all[kind];
                c->setLockCorrectAnswers(true);
                Answer a = answer(10, 10, 110, 60, "1");
                Answer other = answer(10, 10, 110, 60, "1");
                const bool single = kind < 2;
                if (!single) put(*other, *c);
                if (event == "answerRemoved") put(*a, *c);
                int calls = 0;
                c->attachHandler(event, [&] {
                    if (++calls > 1) return;
                    if (victims & kOther) other.reset();
                    if (victims & kAnswer) a.reset();
                    if (victims & kContainer) c.reset();
                });
                const OMUnderWay underWay;
                if (event == "answerPlaced") {
                    a->setContainer(c.get());
                    c->placeAnswer(*a);
                } else if (event == "answerRemoved") {
                    c->removeAnswer(*a);
                    if (a) a->setContainer(nullptr);
                } else if (event == "answerFlyOn") {
                    c->answerFliesOn(*a);
                } else {
                    c->answerFliesOff(*a);
                }
                EXPECT_GE(calls, 1);
                EXPECT_EQ(!c, (victims & kContainer) != 0);
                EXPECT_EQ(!a, (victims & kAnswer) != 0);
                if (!c) {
                    EXPECT_TRUE(!a || !a->isUsed());
                    EXPECT_TRUE(!other || !other->isUsed());
                } else {
                    const int left =
                        (a && a->isUsed() ? 1 : 0) + (other && other->isUsed() ? 1 : 0);
                    EXPECT_EQ(c->answerCount(), left);
                    c->offset(1, 1);
                }
            }
}

// ------------------------------------------------------------------------ through a puzzle

TEST_F(PlayedContainerTest, EventsInTheirOrder) {
    for (std::size_t kind = 0; kind < 6; ++kind) {
        SCOPED_TRACE(kind);
        begin(kind);
        drag(kHome, kMiddle);
        EXPECT_EQ(std::exchange(heard, {}), "pickedUp answerFlyOn ");
        const std::string on = kind == 5 ? "" : "1"; // cloth looks as it is covered
        EXPECT_EQ(told("container", "highlighted"), on);
        window.mouseUp(kMiddle);
        EXPECT_EQ(std::exchange(heard, {}), "dropped addedToContainer answerPlaced ");
        EXPECT_NE(told("container", "highlighted"), "1");
        drag(inside(), {400, 400});
        EXPECT_EQ(std::exchange(heard, {}),
                  "pickedUp answerRemoved removedFromContainer answerFlyOff ");
        window.mouseUp({400, 400});
        EXPECT_EQ(std::exchange(heard, {}), "dropped ");
        drag(kHome, kMiddle);
        window.mouseUp(kMiddle);
        window.mouseMove(inside());
        heard.clear();
        window.mouseDown(inside());
        window.mouseUp(inside());
        EXPECT_EQ(std::exchange(heard, {}), "pickedUp answerRemoved removedFromContainer dropped "
                                            "addedToContainer answerPlaced ");
    }
}

TEST_F(PlayedContainerTest, ItMovesWithAGroup) {
    begin(0);
    drag(kHome, kMiddle);
    window.mouseUp(kMiddle);
    OMMultiTrinket panel(window);
    panel.addTrinket("container", 0);
    panel.offset(11, 7);
    EXPECT_EQ(told("container", "x") + "," + told("container", "y"), "111,57");
    EXPECT_EQ(told("answer", "x") + "," + told("answer", "y"), "131,72");
}

TEST_F(PlayedContainerTest, HandlersDestroyWhatThePuzzleHas) {
    for (std::size_t kind = 0; kind < 6; ++kind)
        for (const std::string event :
             {"answerFlyOn", "answerFlyOff", "answerPlaced", "answerRemoved", "addedToContainer",
              "removedFromContainer"})
            for (const int victims : {1, 2, 3, 4, 7}) {
                SCOPED_TRACE(event + " " + std::to_string(kind) + " " + std::to_string(victims));
                begin(kind);
                onEvent = [&](const std::string& what) {
                    if (what != event) return;
                    onEvent = nullptr;
                    if (victims & 1) keep("container", nullptr);
                    if (victims & 2) keep("answer", nullptr);
                    if (victims & 4) puzzle.reset();
                };
                drag(kHome, kMiddle);
                window.mouseUp(kMiddle);
                if (lives("answer")) drag(inside(), {400, 400});
                window.mouseUp({400, 400});
                EXPECT_FALSE(onEvent) << "it was raised";
                EXPECT_EQ(lives("container"), (victims & 1) == 0);
                EXPECT_EQ(lives("answer"), (victims & 2) == 0);
                // Without a puzzle, too, the player takes out what is in.
                EXPECT_EQ(told("container", "answerCount"), "0");
                EXPECT_EQ(told("answer", "isUsed"), "0");
                onEvent = nullptr;
            }
}

} // namespace
