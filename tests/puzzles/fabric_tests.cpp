// Pieces of cloth that are covered bit by bit.
#include "puzzles/containerfixture.h"

#include "puzzles/rfabriccontainer.h"

#include <algorithm>

using namespace testing_support;
using platform::Rect;

namespace {

class FabricTest : public PuzzleContainerTest {
  protected:
    static constexpr int kCloth = 7; ///< 40 x 20, four segments
    static constexpr int kInfo = 8;  ///< 11 x 6, three frames

    FabricTest() {
        for (const auto& [id, width, height, frames] :
             {std::array{kCloth, 40, 20, 5}, std::array{kInfo, 11, 6, 3}}) {
            AOSequence all{entry(AOEntry::kHold)};
            for (int i = 0; i < frames; ++i) {
                pictures[id].block(width, height, static_cast<char>('a' + i));
                all.push_back(entry(i, 100));
            }
            pictures[id].sequence(all);
        }
    }
    std::unique_ptr<RFabricContainer> cloth(const std::string& words = "7 100 50 30") {
        return make<RFabricContainer>(words);
    }
    Answer patch(const std::string& value) { return answer(6, 10, 110, 55, value); }
    /// The information animation, or null.
    OMAnimation* info() {
        return static_cast<OMAnimation*>(window.findTrinket([](OMTrinket& each) {
            const auto* animation = dynamic_cast<OMAnimation*>(&each);
            return animation && animation->resourceId() == kInfo;
        }));
    }
};

TEST_F(FabricTest, AnswersCoverTheFirstFreeSegments) {
    const auto c = cloth();
    const Answer one = patch("1");
    const Answer two = patch("2");
    const Answer none = patch("pears");
    put(*one, *c);
    EXPECT_EQ(placeOf(*one), "102,55") << "in the middle of the first";
    EXPECT_EQ(one->z(), 31);
    EXPECT_EQ(c->frameNumber(), 2);
    put(*two, *c);
    EXPECT_EQ(placeOf(*two), "117,55") << "of the second and third";
    EXPECT_EQ(c->frameNumber(), 4);
    EXPECT_FALSE(c->isFull());
    take(*one);
    EXPECT_EQ(c->frameNumber(), 3);
    EXPECT_EQ(placeOf(*two), "117,55");
    const Answer another = patch("2");
    EXPECT_FALSE(hit(*c, *another).accepted) << "two are free, but not side by side";
    const Answer negative = patch("-3");
    EXPECT_TRUE(hit(*c, *negative).accepted);
    put(*negative, *c);
    EXPECT_EQ(placeOf(*negative), "102,55");
    put(*none, *c);
    EXPECT_EQ(placeOf(*none), "132,55");
    EXPECT_TRUE(c->isFull());
    EXPECT_EQ(c->frameNumber(), 5);
    EXPECT_FALSE(hit(*c, *one).accepted);
    take(*two);
    one->setValue("99999999999");
    EXPECT_FALSE(hit(*c, *one).accepted);
}

TEST_F(FabricTest, SegmentsOfUnevenWidths) {
    const auto c = cloth("-1 100 50 103 40");
    std::vector<Answer> all;
    std::string places;
    for (int i = 0; i < 11; ++i) { // a script may put one in too many
        all.push_back(answer(10, 10, 0, 0));
        put(*all.back(), *c);
        places += std::to_string(all.back()->x()) + " ";
    }
    EXPECT_EQ(places, "100 110 120 130 141 151 161 172 182 192 192 ");
}

TEST_F(FabricTest, TheRightNumberOfSegments) {
    const auto c = cloth();
    EXPECT_EQ(c->getProperty("correctSegments"), "0");
    EXPECT_TRUE(c->isSolved());
    for (const char* wrong : {"5", "-1", "99999999999"}) {
        c->setProperty("correctSegments", wrong);
        ASSERT_EQ(machine.dialogs().boxes.size(), 1u);
        EXPECT_EQ(machine.dialogs().boxes[0].text,
                  "RFabricContainer: correctSegments out of range");
        machine.dialogs().boxes.clear();
        EXPECT_EQ(c->correctSegments(), 0);
    }
    c->setProperty("correctSegments", "4");
    c->setProperty("correctSegments", "3");
    EXPECT_TRUE(machine.dialogs().boxes.empty());
    c->setRejectIncorrectAnswers(true);
    c->setLockCorrectAnswers(true);
    const Answer two = patch("2");
    const Answer another = patch("2");
    const Answer one = patch("1");
    put(*two, *c);
    EXPECT_FALSE(c->isSolved());
    EXPECT_TRUE(two->isMovable());
    EXPECT_FALSE(hit(*c, *another).accepted);
    c->setRejectIncorrectAnswers(false);
    EXPECT_TRUE(hit(*c, *another).accepted);
    put(*one, *c);
    EXPECT_TRUE(c->isSolved());
    EXPECT_FALSE(two->isMovable());
    EXPECT_FALSE(one->isMovable());

    const auto area = cloth("-1 100 50 60 40");
    area->setProperty("correctSegments", "10");
    EXPECT_EQ(area->correctSegments(), 10);
    area->setProperty("correctSegments", "11");
    EXPECT_EQ(area->correctSegments(), 10);
    pictures[9].block(40, 20, 'a').sequence({entry(AOEntry::kHold), entry(0, 100)});
    const auto still = cloth("9 100 50");
    still->setProperty("correctSegments", "10");
    EXPECT_EQ(still->correctSegments(), 10);
}

TEST_F(FabricTest, TheInformationFollows) {
    const auto c = cloth();
    c->setInfoAOID(kInfo);
    ASSERT_TRUE(info());
    EXPECT_EQ(placeOf(*info()), "114,70");
    EXPECT_EQ(info()->z(), 31);
    EXPECT_EQ(info()->frameNumber(), 1);
    c->setInfoVerticalOffset(4);
    EXPECT_EQ(placeOf(*info()), "114,74");
    c->setInfoVerticalOffset(-4);
    EXPECT_EQ(placeOf(*info()), "114,40");
    const Answer one = patch("1");
    const Answer three = patch("3");
    put(*one, *c);
    EXPECT_EQ(info()->frameNumber(), 2);
    put(*three, *c);
    EXPECT_EQ(info()->frameNumber(), 3) << "its last";
    take(*three);
    take(*one);
    EXPECT_EQ(info()->frameNumber(), 1);
    c->offset(10, 20);
    EXPECT_EQ(placeOf(*info()), "124,60");
    c->setZ(40);
    EXPECT_EQ(info()->z(), 41);
    c->setVisible(false);
    EXPECT_FALSE(info()->isVisible());
    c->setVisible(true);
    EXPECT_TRUE(info()->isVisible());
    c->setInfoAOID(99);
    EXPECT_FALSE(info());
    EXPECT_EQ(c->getProperty("infoAOID"), "99");
    c->setInfoAOID(kInfo);
    const auto copy = c->makeDuplicate();
    c->setInfoAOID(-1);
    ASSERT_TRUE(info()) << "the copy has its own";
    EXPECT_EQ(placeOf(*info()), "124,60");
}

TEST_F(FabricTest, NoTwoAnswersCoverOneSegment) {
    constexpr int kSegments = 10;
    for (unsigned seed = 1; seed <= 10; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&](int count) {
            return static_cast<int>(random() % static_cast<unsigned>(count));
        };
        const auto c = cloth("-1 100 50 200 40");
        int x = 100;
        std::vector<Answer> answers;
        std::map<RAnswer*, std::pair<int, int>> runs; // first segment and number
        for (int step = 0; step < 1000 && !HasFailure(); ++step) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " step " << step);
            if (below(10) == 0) {
                const int dx = below(21) - 10;
                c->offset(dx, 0);
                x += dx;
            }
            if (!answers.empty() && below(5) < 2) {
                const auto index =
                    static_cast<std::size_t>(below(static_cast<int>(answers.size())));
                runs.erase(answers[index].get());
                if (below(2) == 0) take(*answers[index]);
                answers.erase(answers.begin() + static_cast<std::ptrdiff_t>(index));
            } else {
                const int length = 1 + below(4);
                Answer a = answer(8, 10, x + 5, 55, std::to_string(length));
                const auto isFree = [&](int segment) {
                    return std::ranges::none_of(runs, [&](const auto& run) {
                        return segment >= run.second.first &&
                               segment < run.second.first + run.second.second;
                    });
                };
                int found = -1;
                for (int first = kSegments - length; first >= 0; --first) {
                    bool free = true;
                    for (int i = 0; i < length; ++i) free = free && isFree(first + i);
                    if (free) found = first;
                }
                ASSERT_EQ(hit(*c, *a).accepted, found >= 0);
                if (found < 0) continue;
                put(*a, *c);
                runs[a.get()] = {found, length};
                answers.push_back(std::move(a));
            }
            int covered = 0;
            for (const auto& [a, run] : runs) {
                covered += run.second;
                ASSERT_EQ(a->x(), x + 20 * run.first + (20 * run.second - 8) / 2);
            }
            ASSERT_EQ(c->isFull(), covered == kSegments);
            c->setCorrectSegments(covered);
            ASSERT_TRUE(c->isSolved());
        }
    }
}

} // namespace
