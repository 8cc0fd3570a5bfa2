// Containers for one answer, and what all containers have in common: which answers they take, where
// these come to rest, and who is locked.
#include "puzzles/containerfixture.h"

#include <gmock/gmock.h>
#include <iterator>
#include <sstream>

using namespace testing_support;
using platform::Rect;

namespace {

/// An answer that has neither value nor attribute.
class Pebble final : public RAnswer {
  public:
    static const OMSClass kClass;
    using RAnswer::RAnswer;
};
const OMSClass Pebble::kClass{"Pebble", &RAnswer::kClass, {}};

class OneAnswerTest : public PuzzleContainerTest {
  protected:
    std::unique_ptr<Pebble> pebble(int x, int y) {
        AseqBuilder builder;
        builder.block(10, 10, 'p').sequence({entry(AOEntry::kHold), entry(0, 100)});
        auto made = std::make_unique<Pebble>(window, builder.image(), 1, x, y);
        made->takeClass(Pebble::kClass);
        return made;
    }
    static bool accepts(RContainer& container, RAnswer& answer) {
        return hit(container, answer).accepted;
    }
};

// ------------------------------------------------------------------------ what is taken

TEST_F(OneAnswerTest, TheEffectiveRectangleMustMeetTheContainer) {
    struct Row {
        int x, y; // of 20 x 10 pixels
        int left, top, right, bottom;
        int score; // 0: refused
    };
    const Row rows[] = {
        {110, 60, 0, 0, 0, 0, 200},   {90, 60, 0, 0, 0, 0, 100},     {80, 60, 0, 0, 0, 0, 0},
        {110, 90, 0, 0, 0, 0, 0},     {159, 89, 0, 0, 0, 0, 1},      {160, 50, 0, 0, 0, 0, 0},
        {81, 41, 0, 0, 0, 0, 1},      {110, 40, 0, 0, 0, 0, 0},      {90, 60, 0, 0, 10, 0, 0},
        {90, 60, 0, 0, 9, 0, 10},     {76, 60, 0, 0, -5, 0, 10},     {155, 45, 3, 0, 0, 3, 4},
        {110, 60, 20, 0, 0, 0, 0},    {110, 60, 30, 0, 10, 0, 0},    {110, 60, 0, 6, 0, 6, 0},
        {300, 300, 0, 0, 0, 0, 0},    {110, 60, 5, 2, 5, 2, 10 * 6}, {150, 40, -60, 0, 0, 0, 0},
        {200, 55, -60, 0, 0, 0, 200},
    };
    for (const auto& container : allKinds("-1 100 50 60 40 3")) {
        SCOPED_TRACE(typeid(*container).name());
        for (const Row& row : rows) {
            const Answer a = answer(20, 10, row.x, row.y);
            setInsets(*a, row.left, row.top, row.right, row.bottom);
            const bool wide = row.x == 200; // 80 pixels, more than a row has
            const RContainer::Hit found = hit(*container, *a);
            const bool isRow = dynamic_cast<RHorizontalContainer*>(container.get()) ||
                               dynamic_cast<RHorizontalValueContainer*>(container.get());
            EXPECT_EQ(found.score, row.score) << row.x << " " << row.y;
            EXPECT_EQ(found.accepted, row.score > 0 && !(wide && isRow)) << row.x << " " << row.y;
            container->setEnabled(false);
            EXPECT_FALSE(hit(*container, *a).accepted);
            container->setEnabled(true);
        }
    }
}

TEST_F(OneAnswerTest, ValuesAreComparedAsNumbers) {
    struct Row {
        const char* answer;
        const char* container;
        bool right;
    };
    const Row rows[] = {
        {"3", "3", true},        {"2", "3", false},
        {"03", "3", true},       {" 3", "3", true},
        {"3 apples", "3", true}, {"-3", "-3", true},
        {"apples", "0", true},   {"apples", "1", false},
        {"3", "3.9", true},      {"3", "three", false},
        {"0", "three", true},    {"3.9", "3", true},
        {"+3", "3", true},       {"99999999999", "2147483647", true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.answer) + " in " + row.container);
        const auto container = make<RValueContainer>("-1 100 50 60 40");
        container->setProperty("value", row.container);
        const Answer a = answer(20, 10, 110, 60, row.answer);
        container->setRejectIncorrectAnswers(true);
        EXPECT_EQ(accepts(*container, *a), row.right);
        container->setRejectIncorrectAnswers(false);
        EXPECT_TRUE(accepts(*container, *a));
        EXPECT_FALSE(container->isFull());
        EXPECT_FALSE(container->isSolved());
        put(*a, *container);
        EXPECT_EQ(container->getProperty("isFull"), "1");
        EXPECT_EQ(container->getProperty("isSolved"), row.right ? "1" : "0");
        EXPECT_EQ(container->getProperty("answerCount"), "1");
        const Answer another = answer(20, 10, 110, 60, row.container);
        EXPECT_FALSE(accepts(*container, *another)) << "it has one";
        take(*a);
        EXPECT_TRUE(accepts(*container, *another));
    }
    const auto container = make<RValueContainer>("-1 100 50 60 40");
    const Answer a = answer(20, 10, 110, 60);
    container->setRejectIncorrectAnswers(true);
    container->setValue(7);
    a->setProperty("attribute", "7");
    EXPECT_TRUE(accepts(*container, *a)) << "the attribute is the value";
    a->setProperty("value", "8");
    EXPECT_FALSE(accepts(*container, *a));
    for (const char* name : {"answerCount", "isFull", "isSolved"}) {
        EXPECT_TRUE(container->setProperty(name, "1"));
        EXPECT_EQ(container->getProperty(name), "0");
    }
}

TEST_F(OneAnswerTest, WhatHasNoValueIsNeverRight) {
    const auto p = pebble(110, 60);
    const auto value = make<RValueContainer>("-1 100 50 60 40");
    const auto attribute = make<RAttributeContainer>("-1 100 50 60 40");
    for (RContainer* container :
         {static_cast<RContainer*>(value.get()), static_cast<RContainer*>(attribute.get())}) {
        container->setRejectIncorrectAnswers(true);
        EXPECT_FALSE(accepts(*container, *p)); // not even by 0 or the empty text
        container->setRejectIncorrectAnswers(false);
        EXPECT_TRUE(accepts(*container, *p));
        put(*p, *container);
        EXPECT_TRUE(container->isFull());
        EXPECT_FALSE(container->isSolved());
        take(*p);
    }
}

TEST_F(OneAnswerTest, AttributesAreComparedLetterForLetter) {
    const auto container = make<RAttributeContainer>("-1 100 50 60 40");
    container->setRejectIncorrectAnswers(true);
    container->setProperty("attribute", "Porto");
    const Answer a = answer(20, 10, 110, 60);
    for (const char* text : {"porto", "Porto ", "Port", ""}) {
        a->setProperty("attribute", text);
        EXPECT_FALSE(accepts(*container, *a)) << text;
    }
    a->setProperty("attribute", "Porto");
    EXPECT_TRUE(accepts(*container, *a));
    put(*a, *container);
    EXPECT_TRUE(container->isSolved());
    a->setProperty("attribute", "Faro");
    EXPECT_FALSE(container->isSolved());
    a->setProperty("tag", "Porto");
    container->setProperty("answerProperty", "tag");
    EXPECT_TRUE(container->isSolved());
    container->setProperty("answerProperty", "weight");
    EXPECT_FALSE(container->isSolved());
    container->setProperty("attribute", "");
    EXPECT_FALSE(container->isSolved()) << "no such property is not an empty one";
}

// ------------------------------------------------------------------------ hot points

TEST_F(OneAnswerTest, AHotPointDecidesInsteadOfTheRectangle) {
    struct Row {
        int x, y; // of 20 x 10 pixels
        int hotX, hotY;
        bool inside;
    };
    const Row rows[] = {
        {110, 60, 0, 0, true},        {90, 60, 10, 0, true},    {90, 60, 9, 0, false},
        {90, 60, 69, 29, true},       {90, 60, 70, 29, false},  {90, 60, 69, 30, false},
        {300, 300, -200, -250, true}, {110, 60, 0, -11, false}, {110, 60, 0, -10, true},
    };
    const auto container = make<RAttributeContainer>("-1 100 50 60 40");
    for (const Row& row : rows) {
        const Answer a = answer(20, 10, row.x, row.y);
        setInsets(*a, 3, 3, 3, 3); // count for nothing
        a->setHotPointX(row.hotX);
        a->setHotPointY(row.hotY);
        a->setUsingHotPoint(true);
        for (const bool compares : {false, true}) { // there is no picture to compare with
            container->setDoPixelCompare(compares);
            const RContainer::Hit found = hit(*container, *a);
            EXPECT_EQ(found.accepted, row.inside) << row.x << " " << row.hotX << " " << row.hotY;
            EXPECT_EQ(found.score, row.inside ? 1 : 0);
        }
        container->setAttributeText("x");
        container->setRejectIncorrectAnswers(true);
        EXPECT_FALSE(accepts(*container, *a));
        container->setRejectIncorrectAnswers(false);
    }
    EXPECT_TRUE(machine.dialogs().boxes.empty());
}

TEST_F(OneAnswerTest, PixelsOfThePictureAreCompared) {
    pictures[7].frame({"aa..", "aa..", "....", "..aa"}).sequence({entry(-2), entry(0, 100)});
    const auto container = make<RAttributeContainer>("7 100 50 3");
    container->setDoPixelCompare(true);
    const Answer a = answer(20, 10, 90, 45);
    a->setUsingHotPoint(true);
    std::string drawn;
    for (int y = -1; y <= 4; ++y) {
        for (int x = -1; x <= 4; ++x) {
            a->setHotPointX(10 + x);
            a->setHotPointY(5 + y);
            const RContainer::Hit found = hit(*container, *a);
            EXPECT_EQ(found.accepted, found.score > 0);
            drawn += found.accepted ? 'a' : '.';
        }
        drawn += '/';
    }
    EXPECT_EQ(drawn, "....../.aa.../.aa.../....../...aa./....../");

    a->setUsingHotPoint(false);
    const auto p = pebble(95, 45);
    EXPECT_FALSE(accepts(*container, *a));
    EXPECT_FALSE(accepts(*container, *p));
    EXPECT_FALSE(accepts(*container, *a));
    EXPECT_TRUE(machine.dialogs().boxes.empty()) << "a box in a drag would end it in its middle";
    app->pass();
    app->pass();
    ASSERT_EQ(machine.dialogs().boxes.size(), 1u) << "once, not for each step of a drag";
    EXPECT_EQ(machine.dialogs().boxes[0].text, "RAttributeContainer attempting pixel comparison: "
                                               "RAnswer must have hot point enabled");
    EXPECT_EQ(machine.dialogs().boxes[0].style, 0x2000u);
    container->setProperty("doPixelCompare", "1");
    EXPECT_FALSE(accepts(*container, *a));
    app->pass();
    EXPECT_EQ(machine.dialogs().boxes.size(), 2u);
    container->setProperty("doPixelCompare", "0");
    EXPECT_TRUE(accepts(*container, *a)) << "its rectangle counts again";
    EXPECT_EQ(machine.dialogs().boxes.size(), 2u);
}

// ------------------------------------------------------------------------ places

TEST_F(OneAnswerTest, TheMiddleComesToTheMiddle) {
    struct Row {
        int width, height;
        int left, top, right, bottom;
        const char* place;
    };
    const Row rows[] = {
        {20, 10, 0, 0, 0, 0, "120,65"},  {21, 11, 0, 0, 0, 0, "119,64"},
        {60, 40, 0, 0, 0, 0, "100,50"},  {65, 45, 0, 0, 0, 0, "98,48"}, // rounded toward zero
        {50, 10, 5, 0, 5, 0, "105,65"},  {20, 10, 5, 2, 0, 1, "117,64"},
        {20, 10, 0, 0, 5, 3, "122,66"},  {20, 10, -4, 0, 0, 0, "122,65"},
        {20, 10, 30, 0, 0, 0, "105,65"}, // nothing of it counts
    };
    for (const Row& row : rows) {
        for (const char* attribute : {"", "x"}) {
            std::unique_ptr<RContainer> container;
            if (*attribute)
                container = make<RAttributeContainer>("-1 100 50 60 40 30");
            else
                container = make<RValueContainer>("-1 100 50 60 40 30");
            const Answer a = answer(row.width, row.height, 7, 7);
            setInsets(*a, row.left, row.top, row.right, row.bottom);
            a->setSnapSound(55);
            put(*a, *container);
            EXPECT_EQ(placeOf(*a), row.place) << row.width << " " << row.left;
            EXPECT_EQ(a->z(), 31);
            EXPECT_EQ(takePlayed(), std::vector<int>{55});
            take(*a);
            EXPECT_EQ(placeOf(*a), row.place) << "until somebody moves it";
            EXPECT_EQ(a->getProperty("isUsed"), "0");
        }
    }
}

TEST_F(OneAnswerTest, AnAnswerIsAnchoredAtAPoint) {
    const auto container = make<RAttributeContainer>("-1 100 50 61 41");
    const auto placed = [&](int left, int top, bool anchors, bool usesHotPoint) {
        const Answer a = answer(20, 10, 300, 300);
        setInsets(*a, left, top, 1, 2);
        a->setHotPointX(4);
        a->setHotPointY(9);
        a->setUsingHotPoint(usesHotPoint);
        container->setAnchorAnswerAtPoint(anchors);
        put(*a, *container);
        return placeOf(*a);
    };
    container->setAnswerAnchorPointX(7);
    container->setAnswerAnchorPointY(-3);
    EXPECT_EQ(placed(0, 0, true, false), "107,47");
    EXPECT_EQ(placed(5, 3, true, false), "107,47");
    EXPECT_EQ(placed(-5, 3, true, true), "103,38");
    EXPECT_EQ(placed(0, 0, false, true), "117,57") << "121 and 66, with its insets, less the point";
    EXPECT_EQ(placed(0, 0, false, false), "121,66");
}

// ------------------------------------------------------------------------ locked, disabled, moved

TEST_F(OneAnswerTest, RightAnswersAreLocked) {
    for (const auto& container : allKinds("-1 100 50 60 40")) {
        const Answer right = answer(10, 10, 110, 60, "3");
        const Answer wrong = answer(10, 10, 110, 60, "4");
        for (const Answer* a : {&right, &wrong}) (*a)->setAttributeText((*a)->value());
        container->setProperty("value", "3");
        container->setProperty("attribute", "3");
        container->setProperty("answerMatchString", "3");
        container->setProperty("correctSegments", "3");
        container->setLockCorrectAnswers(true);
        put(*wrong, *container);
        EXPECT_FALSE(container->isSolved());
        EXPECT_TRUE(wrong->isMovable());
        take(*wrong);
        put(*right, *container);
        EXPECT_TRUE(container->isSolved());
        const bool locks = dynamic_cast<RValueContainer*>(container.get()) ||
                           dynamic_cast<RAttributeContainer*>(container.get()) ||
                           dynamic_cast<RFabricContainer*>(container.get());
        EXPECT_EQ(right->isMovable(), !locks);
        container->setProperty("enabled", "5");
        EXPECT_EQ(container->getProperty("enabled"), "1");
        EXPECT_TRUE(right->isMovable());
        container->setProperty("enabled", "0");
        EXPECT_FALSE(right->isMovable());
        take(*right);
        EXPECT_TRUE(right->isMovable());
        EXPECT_FALSE(accepts(*container, *right));
        put(*wrong, *container); // by a script
        EXPECT_FALSE(wrong->isMovable());
        wrong->anchor();
        take(*wrong);
        EXPECT_FALSE(wrong->isMovable()) << "not only held by the container";
        put(*wrong, *container);
        container->setEnabled(true);
        EXPECT_TRUE(wrong->isMovable());
    }
}

TEST_F(OneAnswerTest, AnswersGoWhereTheirContainerGoes) {
    for (const auto& container : allKinds("-1 100 50 60 40 3")) {
        EXPECT_FALSE(container->isMovable());
        const Answer a = answer(10, 10, 300, 300);
        const Answer outside = answer(10, 10, 20, 20);
        put(*a, *container);
        const int dx = a->x() - 100;
        const int dy = a->y() - 50;
        const auto expectAt = [&](int x, int y) {
            EXPECT_EQ(placeOf(*container), std::to_string(x) + "," + std::to_string(y));
            EXPECT_EQ(placeOf(*a), std::to_string(x + dx) + "," + std::to_string(y + dy));
        };
        container->setX(130);
        expectAt(130, 50);
        container->setY(-20);
        expectAt(130, -20);
        container->place(200, 100);
        expectAt(200, 100);
        container->offset(-3, 8);
        expectAt(197, 108);
        const int z = a->z();
        container->setZ(20);
        container->setVisible(false);
        container->setVisible(true);
        expectAt(197, 108);
        EXPECT_EQ(a->z(), z + 17);

        container->setMovable(true);
        window.mouseMove({198, 145});
        window.mouseDown({198, 145}); // beside the answers
        window.mouseMove({208, 140});
        window.mouseUp({208, 140});
        expectAt(207, 103);
        EXPECT_EQ(placeOf(*outside), "20,20");
        take(*a);
        container->place(0, 0);
        EXPECT_EQ(placeOf(*a), std::to_string(207 + dx) + "," + std::to_string(103 + dy));
    }
}

TEST_F(OneAnswerTest, WhatLeavesADisabledContainerIsFree) {
    for (auto& container : allKinds("-1 100 50 60 40 3")) {
        const Answer a = answer(10, 10, 300, 300);
        put(*a, *container);
        container->setEnabled(false);
        EXPECT_FALSE(a->isMovable());
        take(*a);
        EXPECT_TRUE(a->isMovable());
        put(*a, *container);
        EXPECT_FALSE(a->isMovable());
        container.reset();
        EXPECT_TRUE(a->isMovable());
        EXPECT_FALSE(a->isUsed());
    }
}

TEST_F(OneAnswerTest, ItIsHighlightedUnderADraggedAnswer) {
    pictures[7].block(60, 40, 'a').block(60, 40, 'b');
    pictures[7].sequence({entry(AOEntry::kHold), entry(0, 100)});
    pictures[7].sequence({entry(AOEntry::kHold), entry(1, 100)});
    const auto container = make<RValueContainer>("7 100 50 3");
    const Answer a = answer(20, 10, 110, 60);
    std::vector<std::string> seen;
    for (const char* event : {"answerFlyOn", "answerFlyOff"})
        container->attachHandler(event, [&, event] {
            seen.push_back(event + std::to_string(container->sequenceNumber()));
        });
    container->answerFliesOn(*a);
    container->answerFliesOff(*a);
    EXPECT_EQ(seen, (std::vector<std::string>{"answerFlyOn2", "answerFlyOff1"}));
    container->setProperty("highlighted", "1");
    EXPECT_EQ(container->sequenceNumber(), 2);
    container->setProperty("highlighted", "0");
    EXPECT_EQ(container->sequenceNumber(), 1);
    const auto plain = make<RValueContainer>("-1 100 50 60 40");
    plain->setProperty("highlighted", "1");
    EXPECT_EQ(plain->getProperty("highlighted"), "1");
    EXPECT_EQ(plain->sequenceNumber(), 1);
    EXPECT_TRUE(takeFailures().empty());
}

TEST_F(OneAnswerTest, CopiesAreEmptyAndHaveTheSettings) {
    std::istringstream words(
        "value attribute answerMatchString correctSegments deltaZ slideSound droppedSound "
        "solvedAnswerCount answerProperty anchorAnswerAtPoint answerAnchorPointX "
        "answerAnchorPointY doPixelCompare infoVerticalOffset lockCorrectAnswers "
        "rejectIncorrectAnswers enabled highlighted x y z width height");
    const std::vector<std::string> settings(std::istream_iterator<std::string>(words), {});
    for (const auto& container : allKinds("-1 100 50 60 40 3")) {
        for (const std::string& name : settings) {
            const std::string before = container->getProperty(name).value_or("");
            if (before == "0" || before == "1")
                container->setProperty(name, before == "0" ? "1" : "0");
            if (before == "-1") container->setProperty(name, "9");
        }
        std::map<std::string, std::string> told;
        for (const std::string& name : settings)
            told[name] = container->getProperty(name).value_or("none");
        const Answer a = answer(10, 10, 110, 60, "1");
        put(*a, *container);
        const std::unique_ptr<OMScriptableObject> copied = container->makeDuplicate();
        auto* copy = dynamic_cast<RContainer*>(copied.get());
        ASSERT_TRUE(copy);
        EXPECT_EQ(copy->answerCount(), 0);
        for (const std::string& name : settings)
            EXPECT_EQ(copy->getProperty(name).value_or("none"), told[name]) << name;
        copy->place(0, 0);
        EXPECT_EQ(a->container(), container.get());
        EXPECT_NE(a->x(), 0);
    }
}

TEST_F(OneAnswerTest, WhatTheyAreMadeOf) {
    pictures[7].block(30, 20, 'a').sequence({entry(0, 100)});
    pictures[7].x = 5;
    pictures[7].y = 6;
    pictures[7].depth = 7;
    const auto made = [this](const char* words) {
        const auto c = make<RValueContainer>(words);
        const Rect r = c->boundingRectangle();
        return placeOf(*c) + " " + std::to_string(r.width()) + "x" + std::to_string(r.height()) +
               " " + std::to_string(c->z());
    };
    EXPECT_EQ(made("7"), "5,6 30x20 7");
    EXPECT_EQ(made("7 9"), "5,6 30x20 9");
    EXPECT_EQ(made("7 40 50 8"), "40,50 30x20 8");
    EXPECT_EQ(made("7 40 50 300 200 8"), "40,50 30x20 8");
    EXPECT_EQ(made("-1 40 50 300 200 8"), "40,50 300x200 8");
    EXPECT_EQ(made("-1 40 50 300 200"), "40,50 300x200 0");
    EXPECT_EQ(made("99 40 50 300 200 8"), "40,50 300x200 8");
    EXPECT_EQ(made("-1 40 50 -300 200 8"), "40,50 0x200 8");
    EXPECT_EQ(made("-1 40 50 8"), "40,50 0x0 8");
}

TEST_F(OneAnswerTest, WithoutSoundsAndResources) {
    uninstallSounds();
    const auto stack = make<RStackingContainer>("-1 100 50 60 40");
    const auto row = make<RHorizontalContainer>("-1 100 50 60 40");
    const auto sums = make<RHorizontalValueContainer>("-1 100 50 60 40");
    std::vector<Answer> all;
    for (RContainer* container :
         {static_cast<RContainer*>(stack.get()), static_cast<RContainer*>(row.get()),
          static_cast<RContainer*>(sums.get())}) {
        for (int i = 0; i < 3; ++i) {
            all.push_back(answer(10, 10, 110 + 10 * i, 60));
            put(*all.back(), *container);
        }
        take(*all[all.size() - 3]);
        put(*all[all.size() - 3], *container);
    }
    EXPECT_TRUE(takeFailures().empty()) << "without numbers there are none to be played";
    stack->setDroppedSound(5);
    row->setSlideSound(5);
    sums->setSlideSound(5);
    take(*all[1]);
    all[4]->place(0, 50);
    take(*all[4]);
    put(*all[4], *row);
    all[7]->place(0, 50);
    take(*all[7]);
    put(*all[7], *sums);
    const std::string message = "Extended Sound URL is not installed in RContainer";
    EXPECT_THAT(takeFailures(), testing::AllOf(testing::Each(message), testing::SizeIs(3)));

    AOImage::setSourceLocator(nullptr);
    const auto container = make<RValueContainer>("7 100 50 60 40 3");
    EXPECT_EQ(container->boundingRectangle(), (Rect{100, 50, 160, 90}));
    EXPECT_EQ(takeFailures(), Strings{"Source URL not installed in OMAnimation"});
}

} // namespace
