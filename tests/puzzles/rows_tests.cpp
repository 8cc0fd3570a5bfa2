// Stacks and rows: their rules one by one, and long random plays that are compared with a model.
#include "puzzles/containerfixture.h"

#include "puzzles/rhcont.h"
#include "puzzles/rscont.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <numeric>

using namespace testing_support;
using platform::Rect;

namespace {

class StackTest : public PuzzleContainerTest {};
class RowTest : public PuzzleContainerTest {
  protected:
    /// Puts an answer where its left edge is at `x`.
    static void putAt(RAnswer& answer, RContainer& container, int x) {
        answer.place(x, container.y());
        put(answer, container);
    }
};

// ------------------------------------------------------------------------ stacks

TEST_F(StackTest, AnswersRestOnEachOther) {
    const auto stack = make<RStackingContainer>("-1 100 50 60 100 30");
    stack->setDroppedSound(8);
    stack->setValue(9);
    const Answer low = answer(21, 40, 0, 0, "4");
    const Answer high = answer(20, 60, 0, 0, "5");
    low->setZ(12);
    put(*low, *stack);
    EXPECT_EQ(placeOf(*low), "119,110");
    EXPECT_EQ(low->z(), 12) << "depths stay";
    EXPECT_FALSE(stack->isFull());
    const Answer tooHigh = answer(20, 61, 110, 60, "1");
    EXPECT_FALSE(hit(*stack, *tooHigh).accepted);
    setInsets(*tooHigh, 0, 0, 0, 1);
    EXPECT_TRUE(hit(*stack, *tooHigh).accepted);
    put(*high, *stack);
    EXPECT_EQ(placeOf(*high), "120,50");
    EXPECT_TRUE(stack->isFull());
    EXPECT_TRUE(stack->isSolved());
    EXPECT_EQ(stack->getProperty("answerValue"), "9");
    for (const auto& [count, solved] : {std::pair{1, false}, {2, true}, {0, false}, {-1, true}}) {
        stack->setSolvedAnswerCount(count);
        EXPECT_EQ(stack->isSolved(), solved) << count;
    }
    take(*low);
    EXPECT_EQ(placeOf(*high), "120,90");
    EXPECT_EQ(takePlayed(), std::vector<int>{8});
    EXPECT_FALSE(stack->isSolved());
    take(*high);
    EXPECT_TRUE(takePlayed().empty()) << "nothing fell";
    EXPECT_EQ(placeOf(*high), "120,90");
}

TEST_F(StackTest, ValuesAreAddedUp) {
    const auto stack = make<RStackingContainer>("-1 100 50 60 100");
    EXPECT_TRUE(stack->isSolved()) << "nothing is 0";
    std::vector<Answer> all;
    for (const char* value : {"2147483647", "2147483647", "apples", "-7 pears"}) {
        all.push_back(answer(10, 10, 0, 0, value));
        put(*all.back(), *stack);
    }
    EXPECT_EQ(stack->answerValue(), 2147483647) << "no further";
    take(*all[0]);
    EXPECT_EQ(stack->answerValue(), 2147483640);
    stack->setProperty("answerValue", "3");
    EXPECT_EQ(stack->answerValue(), 2147483640);
    all[1]->setProperty("value", "7");
    EXPECT_TRUE(stack->isSolved());
}

TEST_F(StackTest, AnswersThatChangeTheirSizeInIt) {
    const auto stack = make<RStackingContainer>("-1 100 50 60 100");
    std::vector<Answer> all;
    for (int i = 0; i < 3; ++i) {
        all.push_back(answer(10, 20, 0, 0));
        put(*all.back(), *stack);
    }
    all[1]->setExtraBottom(15);
    take(*all[1]);
    EXPECT_EQ(placeOf(*all[2]), "125,110") << "it falls as far as the other one was high then";
    put(*all[1], *stack);
    EXPECT_EQ(placeOf(*all[1]), "125,105");
    EXPECT_FALSE(stack->isFull());
}

// ------------------------------------------------------------------------ rows

TEST_F(RowTest, AnswersLieInTheOrderOfTheirMiddles) {
    const auto row = make<RHorizontalContainer>("-1 100 50 100 40 30");
    std::map<char, Answer> letters;
    for (const char letter : {'a', 'b', 'c', 'd'}) {
        letters[letter] = answer(20, 11, 300, 300);
        letters[letter]->setAttributeText(std::string(1, letter));
    }
    const auto reads = [&] {
        std::string text;
        for (const auto& [letter, a] : letters)
            if (a->isUsed()) text += letter + std::to_string(a->x()) + " ";
        return row->answerMatchString() + ": " + text;
    };
    putAt(*letters['b'], *row, 170);
    EXPECT_EQ(reads(), "b: b100 ");
    EXPECT_EQ(placeOf(*letters['b']), "100,64") << "halves are rounded toward zero";
    EXPECT_EQ(letters['b']->z(), 31);
    putAt(*letters['a'], *row, 99);
    EXPECT_EQ(reads(), "ab: a100 b120 ");
    putAt(*letters['c'], *row, 120);
    EXPECT_EQ(reads(), "abc: a100 b120 c140 ") << "behind one whose middle is the same";
    setInsets(*letters['d'], 0, 0, 1, 0);
    putAt(*letters['d'], *row, 120);
    EXPECT_EQ(reads(), "adbc: a100 b139 c159 d120 ") << "half a pixel farther left";
    take(*letters['d']);
    take(*letters['a']);
    EXPECT_EQ(reads(), "bc: b139 c159 ") << "the gap stays";
    row->setDeltaZ(-5);
    setInsets(*letters['a'], -2, 0, 4, 0);
    putAt(*letters['a'], *row, 190);
    EXPECT_EQ(reads(), "bca: a142 b100 c120 ");
    EXPECT_EQ(letters['a']->z(), 25);
}

TEST_F(RowTest, OthersThatMoveAreHeardOnce) {
    const auto row = make<RHorizontalContainer>("-1 100 50 100 40");
    row->setSlideSound(8);
    std::vector<Answer> all;
    for (int i = 0; i < 4; ++i) {
        all.push_back(answer(20, 10, 300, 300));
        all.back()->setSnapSound(1);
    }
    const auto heardAt = [&](int which, int x) {
        putAt(*all[static_cast<std::size_t>(which)], *row, x);
        return takePlayed();
    };
    EXPECT_EQ(heardAt(0, 150), std::vector<int>{1}) << "that it moves itself is no matter";
    EXPECT_EQ(heardAt(1, 170), std::vector<int>{1});
    EXPECT_EQ(heardAt(2, 100), (std::vector<int>{1, 8}));
    take(*all[2]);
    EXPECT_TRUE(takePlayed().empty());
    EXPECT_EQ(heardAt(2, 105), std::vector<int>{1}) << "into the gap that it had left";
    take(*all[2]);
    EXPECT_EQ(heardAt(3, 190), (std::vector<int>{1, 8})) << "the gap is closed";
}

TEST_F(RowTest, TheRightTexts) {
    const auto row = make<RHorizontalContainer>("-1 100 50 100 40");
    const Answer m = answer(10, 10, 0, 0);
    const Answer ar = answer(10, 10, 0, 0);
    m->setAttributeText("m");
    ar->setAttributeText("ar");
    EXPECT_FALSE(row->isSolved()) << "there is no match";
    row->invoke("addAnswerMatch", {"mar"});
    row->invoke("addAnswerMatch", {"arm"});
    putAt(*m, *row, 100);
    EXPECT_FALSE(row->isSolved());
    putAt(*ar, *row, 150);
    EXPECT_TRUE(row->isSolved());
    take(*m);
    putAt(*m, *row, 180);
    EXPECT_EQ(row->getProperty("answerMatchString"), "arm");
    EXPECT_TRUE(row->isSolved());
    row->setProperty("answerMatchString", "Arm");
    EXPECT_EQ(row->getProperty("answerMatchString"), "arm");
    EXPECT_FALSE(row->isSolved());
    row->invoke("addAnswerMatch", {"arm"});
    EXPECT_TRUE(row->isSolved());
    row->invoke("dumpAnswerMatches");
    EXPECT_FALSE(row->isSolved());
    const std::string log = files.text("zorbelog.txt");
    EXPECT_THAT(log, testing::HasSubstr("Arm"));
    row->setProperty("answerMatchString", "");
    take(*m);
    take(*ar);
    EXPECT_TRUE(row->isSolved()) << "an empty row reads as nothing";
}

TEST_F(RowTest, WhoMovesARowInItsEvent) {
    const auto row = make<RHorizontalContainer>("-1 100 50 100 40");
    const Answer first = answer(20, 10, 0, 0);
    const Answer second = answer(20, 10, 0, 0);
    putAt(*first, *row, 100);
    row->setSlideSound(8);
    row->attachHandler("answerPlaced", [&] { row->offset(7, 9); });
    putAt(*second, *row, 180);
    EXPECT_EQ(placeOf(*first), "107,74");
    EXPECT_EQ(placeOf(*second), "127,74");
    EXPECT_TRUE(takePlayed().empty()) << "nothing slid in it";
    row->attachHandler("answerPlaced", [&] { take(*second); });
    take(*second);
    second->place(190, 60);
    put(*second, *row);
    EXPECT_EQ(placeOf(*second), "190,60") << "it was taken out before it came to its place";
    EXPECT_FALSE(second->isUsed());
    EXPECT_EQ(row->answerCount(), 1);
}

// ------------------------------------------------------------------------ random plays

/// What an answer is, as the test knows it, without asking it.
struct Piece {
    int id;
    int x, y, width, height;
    int left, top, right, bottom; ///< insets
    int value;

    [[nodiscard]] int effectiveLeft() const { return x + left; }
    [[nodiscard]] int effectiveTop() const { return y + top; }
    [[nodiscard]] int effectiveWidth() const { return width - left - right; }
    [[nodiscard]] int effectiveHeight() const { return height - top - bottom; }
    [[nodiscard]] int doubleMiddle() const { return 2 * effectiveLeft() + effectiveWidth(); }
};

int common(int from, int length, int otherFrom, int otherLength) {
    return std::max(0,
                    std::min(from + length, otherFrom + otherLength) - std::max(from, otherFrom));
}

/// Plays at random, and has a model tell after each step where everything is.
template <class Container>
class RandomPlay : public PuzzleContainerTest {
  protected:
    static constexpr bool kIsStack = std::is_same_v<Container, RStackingContainer>;
    static constexpr int kSound = 8;

    virtual void modelPlaces(Piece& piece) = 0;
    virtual void modelRemoves(std::size_t index) = 0;
    virtual int length(const Piece& piece) const = 0; ///< in the direction of the container

    int below(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    [[nodiscard]] int capacity() const { return kIsStack ? area.height() : area.width(); }
    [[nodiscard]] int used() const {
        int sum = 0;
        for (const int id : inside) sum += lengthWhenPlaced.at(id);
        return sum;
    }

    void play(unsigned seed, int steps) {
        random.seed(seed);
        answers.clear();
        pieces.clear();
        inside.clear();
        area = {100 + below(60), 50 + below(60), 0, 0};
        area.right = area.left + 60 + below(90);
        area.bottom = area.top + 60 + below(90);
        container = make<Container>("-1 " + std::to_string(area.left) + " " +
                                    std::to_string(area.top) + " " + std::to_string(area.width()) +
                                    " " + std::to_string(area.height()) + " 30");
        setSound();
        enabled = true;
        isHeard = false;
        takePlayed();
        for (int i = 0; i < steps && !HasFailure(); ++i) {
            step();
            check("seed " + std::to_string(seed) + " step " + std::to_string(i));
        }
    }

    void step() {
        switch (below(12)) {
        case 0: makeAnswer(); break;
        case 1: destroyAnswer(); break;
        case 2:
        case 3: moveContainer(); break;
        case 4: container->setEnabled(enabled = below(3) != 0); break;
        case 5:
        case 6:
        case 7: pickUp(); break;
        default: drop(); break;
        }
    }

    void makeAnswer() {
        if (pieces.size() >= 14) return;
        Piece piece{nextId++, below(400), below(300), 4 + below(40), 4 + below(40), 0,
                    0,        0,          0,          below(19) - 9};
        if (below(2) == 0) {
            piece.left = below(5) - 2;
            piece.top = below(5) - 2;
            piece.right = below(5) - 2;
            piece.bottom = below(5) - 2;
        }
        Answer made =
            answer(piece.width, piece.height, piece.x, piece.y, std::to_string(piece.value));
        setInsets(*made, piece.left, piece.top, piece.right, piece.bottom);
        made->setAttributeText(std::to_string(piece.id) + ".");
        answers[piece.id] = std::move(made);
        pieces[piece.id] = piece;
    }
    /// A random one, or -1.
    int some(bool isInside) {
        std::vector<int> ids;
        for (const auto& [id, piece] : pieces)
            if ((std::ranges::find(inside, id) != inside.end()) == isInside) ids.push_back(id);
        return ids.empty() ? -1
                           : ids[static_cast<std::size_t>(below(static_cast<int>(ids.size())))];
    }
    void leave(int id) {
        const auto index = static_cast<std::size_t>(std::ranges::find(inside, id) - inside.begin());
        modelRemoves(index);
        inside.erase(inside.begin() + static_cast<std::ptrdiff_t>(index));
    }
    void destroyAnswer() {
        const int id = some(below(3) != 0);
        if (id < 0) return;
        if (std::ranges::find(inside, id) != inside.end()) leave(id);
        pieces.erase(id);
        answers.erase(id);
    }
    void moveContainer() {
        const int dx = below(41) - 20;
        const int dy = below(41) - 20;
        if (below(2) == 0)
            container->offset(dx, dy);
        else
            container->place(area.left + dx, area.top + dy);
        area = {area.left + dx, area.top + dy, area.right + dx, area.bottom + dy};
        for (const int id : inside) {
            pieces[id].x += dx;
            pieces[id].y += dy;
        }
    }
    void pickUp() {
        const int id = some(true);
        if (id < 0) return;
        leave(id);
        take(*answers[id]);
        moveAnywhere(id);
    }
    void moveAnywhere(int id) {
        Piece& piece = pieces[id];
        piece.x = area.left - 50 + below(area.width() + 100);
        piece.y = area.top - 50 + below(area.height() + 100);
        answers[id]->place(piece.x, piece.y);
    }
    void drop() {
        const int id = some(false);
        if (id < 0) return makeAnswer();
        moveAnywhere(id);
        Piece& piece = pieces[id];
        const int score =
            common(piece.effectiveLeft(), piece.effectiveWidth(), area.left, area.width()) *
            common(piece.effectiveTop(), piece.effectiveHeight(), area.top, area.height());
        const bool fits = used() + length(piece) <= capacity();
        const RContainer::Hit found = hit(*container, *answers[id]);
        EXPECT_EQ(found.score, score);
        EXPECT_EQ(found.accepted, enabled && fits && score > 0);
        if (!found.accepted && below(20) != 0) return; // a script may put it in all the same
        lengthWhenPlaced[id] = length(piece);
        modelPlaces(piece);
        put(*answers[id], *container);
    }

    void check(const std::string& where) {
        SCOPED_TRACE(where);
        int sum = 0;
        std::string text;
        for (const int id : inside) {
            sum += pieces[id].value;
            text += std::to_string(id) + ".";
        }
        for (const auto& [id, piece] : pieces) {
            const RGraphicAnswer& a = *answers[id];
            EXPECT_EQ(placeOf(a), std::to_string(piece.x) + "," + std::to_string(piece.y)) << id;
            const bool isInside = std::ranges::find(inside, id) != inside.end();
            EXPECT_EQ(a.container(), isInside ? container.get() : nullptr) << id;
        }
        EXPECT_EQ(container->answerCount(), static_cast<int>(inside.size()));
        EXPECT_EQ(container->isFull(), used() >= capacity());
        checkSums(sum, text);
        EXPECT_EQ(takePlayed(), std::vector<int>(std::exchange(isHeard, false) ? 1 : 0, kSound));
    }

    void setSound() {
        if constexpr (kIsStack)
            container->setDroppedSound(kSound);
        else
            container->setSlideSound(kSound);
    }
    void checkSums(int sum, const std::string& text) {
        if constexpr (std::is_same_v<Container, RHorizontalContainer>) {
            EXPECT_EQ(container->answerMatchString(), text);
            container->setAnswerMatchString(text);
            EXPECT_TRUE(container->isSolved());
        } else {
            EXPECT_EQ(container->answerValue(), sum);
            container->setValue(sum + 1);
            EXPECT_FALSE(container->isSolved());
            container->setValue(sum);
            EXPECT_TRUE(container->isSolved());
        }
    }

    std::mt19937 random;
    Rect area{};
    bool enabled = true;
    bool isHeard = false; ///< in this step
    int nextId = 1;
    std::unique_ptr<Container> container;
    std::map<int, Answer> answers;
    std::map<int, Piece> pieces;
    std::map<int, int> lengthWhenPlaced;
    std::vector<int> inside; ///< from the bottom up, or from left to right
};

class RandomStackTest : public RandomPlay<RStackingContainer> {
  protected:
    int length(const Piece& piece) const override { return piece.effectiveHeight(); }
    void modelPlaces(Piece& piece) override {
        piece.x = area.left + (area.width() - piece.effectiveWidth()) / 2 - piece.left;
        piece.y = area.bottom - used() - piece.effectiveHeight() - piece.top;
        inside.push_back(piece.id);
    }
    void modelRemoves(std::size_t index) override {
        for (std::size_t i = index + 1; i < inside.size(); ++i) {
            pieces[inside[i]].y += lengthWhenPlaced[inside[index]];
            isHeard = true;
        }
    }
};

template <class Container>
class RandomRow : public RandomPlay<Container> {
  protected:
    int length(const Piece& piece) const override { return piece.effectiveWidth(); }
    void modelPlaces(Piece& piece) override {
        std::vector<int>& row = this->inside;
        const Rect& frame = this->area;
        const auto before = std::ranges::find_if(
            row, [&](int id) { return this->pieces[id].doubleMiddle() > piece.doubleMiddle(); });
        row.insert(before, piece.id);
        piece.y = frame.top + (frame.height() - piece.effectiveHeight()) / 2 - piece.top;
        // From the left edge on; a row that is too long sticks out on the left.
        int x = std::min(frame.left, frame.right - this->used());
        for (const int id : row) {
            Piece& each = this->pieces[id];
            if (&each != &piece && each.effectiveLeft() != x) this->isHeard = true;
            each.x = x - each.left;
            x += each.effectiveWidth();
        }
    }
    void modelRemoves(std::size_t) override {}
};
using RandomRowTest = RandomRow<RHorizontalContainer>;
using RandomValueRowTest = RandomRow<RHorizontalValueContainer>;

constexpr unsigned kSeeds = 12;
constexpr int kSteps = 1500;

TEST_F(RandomStackTest, IsAsTheModelSays) {
    for (unsigned seed = 1; seed <= kSeeds && !HasFailure(); ++seed) play(seed, kSteps);
}

TEST_F(RandomRowTest, IsAsTheModelSays) {
    for (unsigned seed = 1; seed <= kSeeds && !HasFailure(); ++seed) play(seed, kSteps);
}

TEST_F(RandomValueRowTest, IsAsTheModelSays) {
    for (unsigned seed = 1; seed <= kSeeds && !HasFailure(); ++seed) play(seed, kSteps);
}

} // namespace
