#include "trinkets/windowfixture.h"

#include "omao.h"
#include "omsarguments.h"

using namespace testing_support;
using Failures = std::vector<std::string>;

namespace {

class EditTest : public WindowTest {
  protected:
    /// Frames 0 to 3 are blocks of the colours a to d; sequence 0 shows a, b and c.
    EditTest() {
        AseqBuilder builder;
        for (const char color : {'a', 'b', 'c', 'd'}) builder.block(10, 10, color);
        builder.sequence({entry(0, 10), entry(1, 10), entry(2, 10), entry(-2)});
        builder.sequence({entry(-101, 7), entry(3, 10), entry(-101, 8), entry(1), entry(-2)});
        image = builder.image();
        animation = make();
        other = make();
    }
    std::unique_ptr<OMAnimation> make() {
        return std::make_unique<OMAnimation>(window, image, 1, 0, 0);
    }
    static std::string codesOf(const OMAnimation& a) {
        std::string text;
        for (int i = 0; i < a.sequenceLength(); ++i)
            text += std::to_string(a.entryAt(i)->code) + " ";
        return text;
    }
    static char shown(OMAnimation& a) {
        OMMemCanvas canvas(20, 20, 8);
        a.paintAt(canvas, {0, 0});
        return static_cast<char>(*canvas.pixels().at(0, 0));
    }
    /// The frames of the next steps, ten milliseconds apart.
    std::string play(OMAnimation& a, int steps) {
        std::string text;
        for (int i = 0; i < steps; ++i, now += 10) {
            a.step(now);
            text += shown(a);
        }
        return text;
    }

    std::shared_ptr<AOImage> image;
    std::unique_ptr<OMAnimation> animation;
    std::unique_ptr<OMAnimation> other;
    std::uint32_t now = 0;
};

TEST_F(EditTest, WrongIndicesFailTheirCheckAndChangeNothing) {
    OMAnimation& a = *animation;
    const struct {
        std::vector<int> wrong;
        std::function<void(int)> edit;
        const char* failure = "Invalid sequence position";
    } rows[] = {
        {{-2, 4}, [&](int at) { a.deletePosition(at); }},
        {{-2, 4}, [&](int at) { a.replaceEntry(entry(3), at); }},
        {{-2, -1, 5}, [&](int at) { a.insertEntry(entry(3), at); }},
        {{-2, -1, 5}, [&](int at) { EXPECT_FALSE(a.entryAt(at)); }},
        {{-2, 2}, [&](int index) { a.deleteSequence(index); }, "Invalid sequence"},
    };
    for (const auto& row : rows)
        for (const int place : row.wrong) {
            row.edit(place);
            EXPECT_EQ(takeFailures(), Failures{row.failure}) << place;
        }
    EXPECT_EQ(codesOf(a), "0 1 2 -2 ");
    EXPECT_EQ(a.sequenceCount(), 2);
    EXPECT_EQ(a.entryAt(4), entry(-1)) << "the end may be looked at";
}

TEST_F(EditTest, InsertingAndDeletingConcernTheAnimationAndItsCopies) {
    animation->insertEntry(entry(3, 10), 4);
    animation->deletePosition(1);
    const auto copy = animation->makeDuplicate();
    animation->deletePosition(0);
    EXPECT_EQ(codesOf(*animation), "2 -2 3 ");
    EXPECT_EQ(codesOf(dynamic_cast<OMAnimation&>(*copy)), "0 2 -2 3 ");
    EXPECT_EQ(codesOf(*other), "0 1 2 -2 ");
    EXPECT_EQ(codesOf(*make()), "0 1 2 -2 ");
}

TEST_F(EditTest, AReplacedEntryIsSeenByAllWhoShareTheSequence) {
    const auto apart = make();
    apart->insertEntry(entry(-77), 3); // has its own copy from now on
    const auto elsewhere = make();
    elsewhere->setSequence(1, true);
    cycle();
    EXPECT_EQ(play(*animation, 1), "a");
    animation->replaceEntry(entry(3, 10)); // the current one
    EXPECT_EQ(shown(*animation), 'd');
    EXPECT_EQ(shown(*other), 'd');
    EXPECT_EQ(shown(*apart), 'a');
    EXPECT_EQ(shown(*elsewhere), 'd') << "its own first frame";
    EXPECT_EQ(shown(*make()), 'd');
    EXPECT_GT(workOfCycle().shown, 0u);
    apart->replaceEntry(entry(2, 10), 0);
    EXPECT_EQ(codesOf(*apart), "2 1 2 -77 -2 ");
    EXPECT_EQ(codesOf(*animation), "3 1 2 -2 ");
}

TEST_F(EditTest, PlaybackGoesOnWithTheEntryThatWasNext) {
    EXPECT_EQ(play(*animation, 1), "a");
    animation->insertEntry(entry(3, 10), 0);
    EXPECT_EQ(shown(*animation), 'a');
    EXPECT_EQ(animation->frameNumber(), 2);
    EXPECT_EQ(play(*animation, 2), "bc");
    animation->deletePosition(0);
    EXPECT_EQ(play(*animation, 2), "ab");
    animation->insertEntry(entry(3, 10), animation->position());
    EXPECT_EQ(play(*animation, 2), "dc");
    animation->deletePosition(); // the frame shown, the last one
    EXPECT_EQ(codesOf(*animation), "0 1 3 -2 ");
    EXPECT_EQ(play(*animation, 2), "ab");
}

TEST_F(EditTest, HandlersMayDeleteTheEntryThatCalledThem) {
    animation->insertEntry(entry(-500), 1);
    animation->playLinks().marker = [this](int) { animation->deletePosition(); };
    EXPECT_EQ(play(*animation, 1), "a");
    now += 10;
    animation->step(now);
    animation->step(++now);
    EXPECT_EQ(codesOf(*animation), "0 1 2 -2 ");
    EXPECT_EQ(shown(*animation), 'b');
}

TEST_F(EditTest, AnEntryThatIsInsertedWhereOneRunsIsNotRunForIt) {
    animation->insertEntry(entry(-500), 1);
    int told = 0;
    animation->playLinks().marker = [&](int) {
        if (++told < 5) animation->insertEntry(entry(-501), animation->position());
    };
    EXPECT_EQ(play(*animation, 2), "ab");
    EXPECT_EQ(told, 1);
}

TEST_F(EditTest, DeletingTheFrameShownKeepsTheHoldBehindIt) {
    animation->insertEntry(entry(-4), 1);
    int holds = 0;
    animation->playLinks().finished = [&] { ++holds; };
    play(*animation, 1);
    animation->step(now += 10);
    EXPECT_EQ(holds, 1);
    animation->deletePosition(0);
    EXPECT_EQ(shown(*animation), 'b');
    animation->play();
    animation->step(now += 10);
    EXPECT_EQ(holds, 1) << "it was passed already";
}

TEST_F(EditTest, ScriptsWriteFieldsOfTheEntryShown) {
    animation->takeClass(OMAnimation::kClass);
    play(*animation, 1);
    const auto write = [&](std::string_view field, std::string_view value) {
        OMSArguments::global().clear();
        OMSArguments::global().push(field);
        animation->setProperty("param", value);
    };
    write("1", "3");
    write("2", "40");
    EXPECT_EQ(shown(*animation), 'd');
    EXPECT_EQ(animation->x(), 40);
    EXPECT_EQ(shown(*other), 'a') << "another's sequence";
}

TEST_F(EditTest, SequencesComeAndGo) {
    EXPECT_EQ(animation->addSequence({}), 2);
    EXPECT_EQ(animation->addSequence({entry(3, 10), entry(-2)}), 3);
    EXPECT_EQ(other->sequenceCount(), 2);
    animation->setSequence(2, true);
    EXPECT_EQ(animation->entryAt(0), entry(-1));
    EXPECT_EQ(animation->sequenceLength(), 0);
    animation->setSequence(3, true);
    EXPECT_EQ(play(*animation, 2), "dd");
    animation->deleteSequence(0);
    EXPECT_EQ(animation->sequenceIndex(), 2) << "the same as before";
    EXPECT_EQ(play(*animation, 1), "d");
    const int next = animation->position();
    animation->deleteSequence(1); // its neighbour
    EXPECT_EQ(animation->sequenceIndex(), 1);
    EXPECT_EQ(animation->position(), next);
    animation->deleteSequence();
    EXPECT_EQ(animation->sequenceIndex(), 0);
    animation->deleteSequence(0);
    EXPECT_EQ(animation->sequenceCount(), 0);
    EXPECT_EQ(takeFailures(), Failures{});

    play(*animation, 3); // without any sequence it stands still
    animation->insertEntry(entry(0), 0);
    animation->deletePosition();
    EXPECT_EQ(takeFailures(), (Failures{"Invalid sequence", "Invalid sequence position"}));
    EXPECT_EQ(animation->addSequence({entry(1), entry(-4)}), 0);
    animation->setSequence(0, true);
    EXPECT_EQ(shown(*animation), 'b');
}

TEST_F(EditTest, ColourIndicesChangeForOneAnimationOnly) {
    animation->replaceColorIndex('a', 'x');
    EXPECT_EQ(shown(*animation), 'x');
    EXPECT_EQ(shown(*other), 'a');
    animation->swapColorIndices('x', 'b');
    EXPECT_EQ(play(*animation, 3), "bxc");
    const auto copy = animation->makeDuplicate();
    animation->replaceColorIndex('c', 'y');
    EXPECT_EQ(shown(dynamic_cast<OMAnimation&>(*copy)), 'c');
    EXPECT_EQ(play(*other, 3), "abc");
    // The sequences are still those of all.
    other->replaceEntry(entry(3, 10), 0);
    EXPECT_EQ(codesOf(*animation), "3 1 2 -2 ");
}

TEST_F(EditTest, FramesThatShareTheirDataAreSwappedOnce) {
    AseqBuilder builder;
    builder.frame({"ab"}).frame({"ab"}).sequence({entry(-4), entry(0), entry(1)});
    Bytes data = builder.build();
    data[14] = std::byte{0}; // the second frame is the first
    std::string problem;
    OMAnimation a(window, AOImage::read(data, problem), 1, 0, 0);
    a.swapColorIndices('a', 'b');
    EXPECT_EQ(shown(a), 'b');
}

} // namespace
