// Animation resources that are damaged or made to do harm: what is refused and why, what is still
// usable of the others, and that neither time nor memory get out of proportion to their bytes.
#include "growth.h"
#include "trinkets/windowfixture.h"

#include "aosounds.h"
#include "omao.h"

using namespace testing_support;
using platform::Point;
using platform::Rect;

namespace {

constexpr std::size_t kOffsetsAt = 10; ///< the frame table
constexpr int kMost = 32767;

AOEntry entry(int code, int argument = 0) {
    return {0, 0, static_cast<std::int16_t>(code), static_cast<std::int16_t>(argument)};
}

/// A resource with one number written over.
Bytes patched(Bytes data, std::size_t at, std::int64_t value, int bytes = 2) {
    for (int i = 0; i < bytes; ++i)
        data.at(at + static_cast<std::size_t>(i)) = static_cast<std::byte>(value >> 8 * i);
    return data;
}

class HostileAnimationTest : public WindowTest {
  protected:
    /// Two frames and two sequences.
    static AseqBuilder small() {
        AseqBuilder builder;
        builder.frame({"abbbbb", "..c...", "...ddd"}).frame({"xy", "z."});
        builder.sequence({entry(0, 10), entry(1, 10), entry(-2), entry(-1)});
        builder.sequence({entry(-500, 7), entry(-1)});
        return builder;
    }
    static constexpr std::size_t kSequencesAt = kOffsetsAt + 2 * 4 + 4;
    static constexpr std::size_t kFramesAt = kSequencesAt + (2 + 4 * 8) + (2 + 2 * 8);

    /// Null, and `problem` says why, when it is refused.
    std::shared_ptr<AOImage> read(const Bytes& data) {
        // A copy that is exactly as large, so that every byte too many is noticed.
        const auto copy = std::make_unique<std::byte[]>(data.size());
        std::copy(data.begin(), data.end(), copy.get());
        problem.clear();
        auto image = AOImage::read({copy.get(), data.size()}, problem);
        EXPECT_EQ(image == nullptr, !problem.empty());
        return image;
    }
    /// The frame as it is drawn, as far as it fits; "-" when it is empty.
    static std::string picture(const AOImage& image, int number) {
        OMMemCanvas canvas(8, 4, 8);
        image.frame(number).draw(canvas, OMRegion(canvas.bounds()), {0, 0}, 0);
        const Rect shown =
            platform::intersection(canvas.bounds(), AOBounds(image.frameSize(number), {}, 0));
        return shown.empty() ? "-" : pixelsOf(canvas, shown);
    }
    /// What is seen of each frame, or why there is none.
    std::string outcome(const Bytes& data) {
        const auto image = read(data);
        if (!image) return problem;
        std::string text;
        for (int i = 0; i < image->frameCount(); ++i) text += picture(*image, i) + " ";
        return text + std::to_string(image->brokenFrames()) + " broken";
    }

    std::string problem;
};

constexpr const char* kWhole = "abbbbb/..c.../...ddd/ xy/z./ 0 broken";
constexpr const char* kNoSequence = "it has no sequence";
constexpr const char* kNegative = "its number of frames is negative";
constexpr const char* kTableCut = "its frame table is cut short";
constexpr const char* kSequencesCut = "its sequences are cut short";

// Cut off

TEST_F(HostileAnimationTest, WhatIsCutOffIsNamedAndTheRestIsStillSeen) {
    const Bytes whole = small().build();
    ASSERT_EQ(outcome(whole), kWhole);
    const auto image = read(whole);
    const std::size_t rows = image->packedRows(1).size(); // of the last frame
    const std::size_t lastHeader = whole.size() - rows - 6;
    for (std::size_t length = 0; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        const Bytes data(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        const std::string seen = outcome(data);
        if (length < kOffsetsAt) {
            EXPECT_EQ(seen, "its header is cut short");
        } else if (length < kSequencesAt) {
            EXPECT_EQ(seen, kTableCut);
        } else if (length < kFramesAt) {
            EXPECT_EQ(seen, kSequencesCut);
        } else if (length < kFramesAt + 6) {
            EXPECT_EQ(seen, "- - 2 broken");
        } else if (length < lastHeader) {
            // No pixel but those of the whole frame, from the first one on.
            ASSERT_TRUE(seen.ends_with("/ - 1 broken")) << seen;
            bool ended = false;
            for (std::size_t i = 0; i < 21; ++i) {
                ended |= seen[i] != kWhole[i];
                EXPECT_EQ(seen[i], ended && kWhole[i] != '/' ? '.' : kWhole[i]) << seen;
            }
        } else if (length < lastHeader + 6) {
            EXPECT_EQ(seen, "abbbbb/..c.../...ddd/ - 1 broken");
        } else {
            const std::size_t there = length - lastHeader - 6; // of 2 x y, 1 z, 0 1
            EXPECT_EQ(seen, std::string("abbbbb/..c.../...ddd/ ") +
                                (there < 2   ? "../../"
                                 : there < 3 ? "x./../"
                                 : there < 5 ? "xy/../"
                                             : "xy/z./") +
                                " 0 broken");
        }
    }
}

// Numbers

TEST_F(HostileAnimationTest, WrongNumbersAreRefusedOrCostNoMoreThanTheirFrame) {
    const std::size_t second = kSequencesAt + 2 + 4 * 8;
    const std::size_t width = kFramesAt + 2;
    const std::size_t height = kFramesAt + 4;
    const Bytes whole = small().build();
    const int size = static_cast<int>(whole.size() - kFramesAt);
    const int other = static_cast<int>(whole.size() - read(whole)->packedRows(1).size() - 6 -
                                       kFramesAt); // offset of the second frame
    struct Row {
        const char* name;
        Bytes data;
        std::string outcome;
    };
    const Row rows[] = {
        {"no sequence", patched(whole, 0, 0), kNoSequence},
        {"-1 sequences", patched(whole, 0, -1), kNoSequence},
        {"-32768 sequences", patched(whole, 0, -32768), kNoSequence},
        {"32767 sequences", patched(whole, 0, kMost), kSequencesCut},
        {"no frame: its offsets are a placement and a sequence", patched(whole, 2, 0),
         kSequencesCut},
        {"-1 frames", patched(whole, 2, -1), kNegative},
        {"-32768 frames", patched(whole, 2, -32768), kNegative},
        {"32767 frames", patched(whole, 2, kMost), kTableCut},
        {"-1 entries", patched(whole, kSequencesAt, -1), kSequencesCut},
        {"-32768 entries", patched(whole, kSequencesAt, -32768), kSequencesCut},
        {"32767 entries", patched(whole, kSequencesAt, kMost), kSequencesCut},
        {"as many entries as half of the bytes", patched(whole, second, size / 2), kSequencesCut},
        {"offset -1", patched(whole, kOffsetsAt, -1, 4), "- xy/z./ 1 broken"},
        {"the lowest offset", patched(whole, kOffsetsAt, -0x7FFFFFFF - 1, 4), "- xy/z./ 1 broken"},
        {"the highest offset", patched(whole, kOffsetsAt, 0x7FFFFFFF, 4), "- xy/z./ 1 broken"},
        {"an offset at the end", patched(whole, kOffsetsAt, size, 4), "- xy/z./ 1 broken"},
        {"half a header before the end", patched(whole, kOffsetsAt, size - 5, 4),
         "- xy/z./ 1 broken"},
        {"both the first frame", patched(whole, kOffsetsAt + 4, 0, 4),
         "abbbbb/..c.../...ddd/ abbbbb/..c.../...ddd/ 0 broken"},
        {"both the second frame", patched(whole, kOffsetsAt, other, 4), "xy/z./ xy/z./ 0 broken"},
        {"width 0", patched(whole, width, 0), "- xy/z./ 0 broken"},
        {"width -1", patched(whole, width, -1), "- xy/z./ 1 broken"},
        {"width -32768", patched(whole, width, -32768), "- xy/z./ 1 broken"},
        {"height 0", patched(whole, height, 0), "- xy/z./ 0 broken"},
        {"height -1", patched(whole, height, -1), "- xy/z./ 1 broken"},
        {"one row only", patched(whole, height, 1), "abbbbb/ xy/z./ 0 broken"},
    };
    for (const Row& row : rows) EXPECT_EQ(outcome(row.data), row.outcome) << row.name;
}

TEST_F(HostileAnimationTest, AnySwapFlagMeansTheOtherByteOrder) {
    for (const int flag : {1, 2, 0x80, 0xFF}) {
        EXPECT_EQ(outcome(patched(small().build(true), 5, flag, 1)), kWhole) << flag;
        EXPECT_EQ(outcome(patched(small().build(), 5, flag, 1)), kTableCut)
            << "two frames become 512";
    }
    EXPECT_EQ(outcome(patched(small().build(true), 5, 0, 1)), kTableCut);
}

// Rows

TEST_F(HostileAnimationTest, DamagedRowsLeaveTheirFramesInShape) {
    struct Row {
        const char* name;
        std::vector<std::uint8_t> rows; ///< of a frame of 4 x 3
        std::string seen;
    };
    const Row rows[] = {
        {"no rows", {}, "..../..../..../"},
        {"a literal that overruns", {6, 'a', 'b', 'c', 'd', 'e', 'f', 1, 'g'}, "abcd/g.../..../"},
        {"a fill that overruns", {255, 'a', 250, 255, 'b', 2, 255, 'c', 99}, "aaaa/bbcc/..../"},
        {"clear pixels that overrun", {1, 'a', 0, 250, 1, 'b'}, "a.../b.../..../"},
        {"a literal that overruns the data", {2, 'a', 'b', 200, 'c'}, "abc./..../..../"},
        {"a fill of nothing", {1, 'a', 255, 'x', 0, 255, 'b', 4}, "a.../bbbb/..../"},
        {"clear pixels, none", {1, 'a', 0, 0, 255, 'b', 4}, "a.../bbbb/..../"},
        {"nothing but tokens of nothing", {0, 0, 0, 0, 0, 0, 1, 'a'}, "..../..../..../"},
        {"tokens that do not exist", {251, 254, 255, 'a', 4}, "..../..../aaaa/"},
        {"half a fill", {255, 'a', 4, 255, 'b'}, "aaaa/..../..../"},
    };
    for (const Row& row : rows) {
        AseqBuilder builder;
        builder.frames.push_back({4, 3, row.rows});
        EXPECT_EQ(outcome(builder.sequence({}).build()), row.seen + " 0 broken") << row.name;
    }
}

TEST_F(HostileAnimationTest, TheLargestFramesTakeAsMuchAsTheirBytes) {
    AseqBuilder builder;
    builder.frames.push_back({kMost, kMost, {3, 'a', 'b', 'c', 0, 250, 251, 255, 'd', 250}});
    const auto image = builder.sequence({entry(0, 10), entry(-2)}).image();
    const AOFrame& frame = image->frame(0);
    EXPECT_LT(frame.memory(), 4096U);
    EXPECT_LT(image->unpackedFrame(0, kAOIndexPixels, 4).memory(), 4096U);
    EXPECT_EQ(picture(*image, 0), "abc...../dddddddd/......../......../");
    for (int direction = 0; direction < 8; ++direction) {
        // The corner of "a", wherever the turn takes it.
        const AOTurn turn = *AOTurnOf(direction);
        const bool right = turn.swapAxes ? turn.mirrorRows : turn.mirrorColumns;
        const bool low = turn.swapAxes ? turn.mirrorColumns : turn.mirrorRows;
        const Point at{right ? 40 - kMost : 39, low ? 30 - kMost : 29};
        OMMemCanvas canvas(80, 60, 8);
        frame.draw(canvas, OMRegion(canvas.bounds()), at, direction);
        EXPECT_EQ(*canvas.pixels().at(39, 29), 'a') << direction;
        EXPECT_TRUE(frame.hit({39, 29}, at, direction)) << direction;
        EXPECT_FALSE(frame.hit({at.x + kMost / 2, at.y + kMost / 2}, at, direction));
    }
    // It plays, too.
    OMAnimation animation(window, image, 1, -3, 0);
    for (int i = 0; i < 30; ++i) cycle();
    EXPECT_EQ(animation.boundingRectangle(), (Rect{-3, 0, kMost - 3, kMost}));
    EXPECT_EQ(backPixel(5, 1), 'd');
    EXPECT_FALSE(animation.containsPoint({0, 5}));
}

/// A resource of `count` frames that all reach to its end, each from another place on.
std::shared_ptr<AOImage> overlapping(int count) {
    AseqBuilder builder;
    for (int i = 0; i < count; ++i) builder.frames.push_back({1, 1, {1, 7}});
    Bytes data = builder.sequence({entry(0)}).build();
    const std::size_t frames = data.size() - static_cast<std::size_t>(count) * 8;
    for (std::size_t at = frames; at < data.size(); ++at)
        data[at] = std::byte{at % 2 == frames % 2 ? std::uint8_t{1} : std::uint8_t{7}};
    for (int i = 0; i < count; ++i)
        data = patched(std::move(data), kOffsetsAt + static_cast<std::size_t>(i) * 4, i * 2, 4);
    std::string problem;
    return AOImage::read(data, problem);
}

TEST_F(HostileAnimationTest, ColoursOfFramesThatOverlapChangeInProportion) {
    AOColorMap map{};
    for (std::size_t i = 0; i < map.size(); ++i) map[i] = static_cast<std::uint8_t>(i);
    map[7] = 9;
    EXPECT_LT(growthOfFour(2000, [&](int count) { (void)overlapping(count)->recoloured(map); }),
              kInProportion);
    const auto changed = overlapping(8)->recoloured(map);
    ASSERT_EQ(changed->frameCount(), 8);
    EXPECT_EQ(changed->packedRows(0)[0], 1);
    for (std::size_t i = 1; i < changed->packedRows(0).size(); i += 2)
        EXPECT_EQ(changed->packedRows(0)[i], 9) << i;
}

// Sequences

/// An animation, and sounds of which none can be played.
class HostileSequenceTest : public HostileAnimationTest, private AOSounds {
  protected:
    HostileSequenceTest() { OMAnimation::setSounds(this); }
    ~HostileSequenceTest() override { OMAnimation::setSounds(nullptr); }

    std::unique_ptr<OMAnimation> make(AOSequence sequence) {
        AseqBuilder builder;
        builder.block(10, 10, 'a').sequence(std::move(sequence)).sequence({entry(0), entry(-4)});
        auto made = std::make_unique<OMAnimation>(window, builder.image(), 1, 0, 0);
        made->playLinks().marker = [this](int) { ++markers; };
        made->playLinks().looped = [this] { ++laps; };
        made->playLinks().finished = [this] { ++ends; };
        return made;
    }
    /// It went round and did nothing worse; a good sequence plays now.
    void expectUsable(OMAnimation& animation) {
        EXPECT_LE(animation.position(), animation.sequenceLength());
        animation.setVisible(true);
        animation.setSequence(1, true);
        for (int i = 0; i < 3; ++i) cycle();
        EXPECT_EQ(animation.state(), OMAnimation::State::Held);
        EXPECT_EQ(backPixel(5, 5), 'a');
    }

    int asked = 0; ///< for a sound
    int markers = 0;
    int laps = 0;
    int ends = 0;

  private:
    bool isEnabled() const override { return true; }
    bool play(OMAnimation&, int, OMLink) override {
        ++asked;
        return false;
    }
    void stop(OMAnimation&) override {}
};

AOSequence storm(const AOEntry& of, int count, const AOEntry& last) {
    AOSequence sequence(static_cast<std::size_t>(count), of);
    sequence.push_back(last);
    return sequence;
}

TEST_F(HostileSequenceTest, WithoutFramesAStepIsAtMostTwoRounds) {
    constexpr int kStorm = 32000;
    struct Row {
        const char* name;
        AOSequence sequence;
        int rounds; ///< of one step
        int markers;
        OMAnimation::State state;
    };
    using State = OMAnimation::State;
    const Row rows[] = {
        {"loop alone", {entry(-2)}, 2, 0, State::Playing},
        {"no entry", {}, 0, 0, State::Stopped},
        {"the end alone", {entry(-1)}, 0, 0, State::Stopped},
        {"marker and loop", {entry(-500), entry(-2)}, 2, 2, State::Playing},
        {"marker without terminator", {entry(-32768)}, 0, 1, State::Stopped},
        {"loops only", storm(entry(-2), kStorm, entry(-2)), 2, 0, State::Playing},
        {"markers", storm(entry(-700), kStorm, entry(-2)), 2, 2 * kStorm, State::Playing},
        {"codes that mean nothing", storm(entry(-499), kStorm, entry(-2)), 2, 0, State::Playing},
        {"sounds", storm(entry(-101, 7), kStorm, entry(-2)), 2, 0, State::Playing},
        {"holds", storm(entry(-4), kStorm, entry(-2)), 0, 0, State::Held},
        {"frames that do not exist", {entry(99), entry(kMost), entry(-2)}, 0, 0, State::Playing},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        laps = markers = 0;
        const auto animation = make(row.sequence);
        animation->step(0);
        EXPECT_EQ(laps, row.rounds);
        EXPECT_EQ(markers, row.markers);
        EXPECT_EQ(animation->state(), row.state);
        EXPECT_TRUE(animation->boundingRectangle().empty());
        EXPECT_TRUE(takeFailures().empty());
        expectUsable(*animation);
    }
}

TEST_F(HostileSequenceTest, RepeatsWithoutFramesComeToTheirEnd) {
    for (const AOSequence& sequence :
         {AOSequence{entry(-2)}, AOSequence{entry(-500), entry(-2)}, AOSequence{}}) {
        const auto animation = make(sequence);
        animation->setRepeatCount(3);
        ends = 0;
        for (std::uint32_t clock = 0; clock < 5; ++clock) animation->step(clock);
        EXPECT_EQ(animation->state(), OMAnimation::State::Held);
        EXPECT_EQ(animation->repeatCount(), 0);
        EXPECT_EQ(ends, 1);
        expectUsable(*animation);
    }
}

TEST_F(HostileSequenceTest, SoundsThatDoNotExistHoldNothingUp) {
    const int ids[] = {0, -1, -32768, 1, kMost};
    AOSequence sequence{entry(0, 5)};
    for (const int id : ids) sequence.push_back(entry(-101, id));
    sequence.push_back(entry(0, 5));
    sequence.push_back(entry(-4));
    for (const bool sync : {true, false}) {
        asked = 0;
        ends = 0;
        const auto animation = make(sequence);
        animation->setSoundSync(sync);
        for (int i = 0; i < 20; ++i) cycle();
        EXPECT_EQ(asked, static_cast<int>(std::size(ids)));
        EXPECT_EQ(ends, 1) << "nothing is waited for";
        EXPECT_EQ(animation->state(), OMAnimation::State::Held);
        for (int i = 0, at = -1; i < static_cast<int>(std::size(ids)); ++i) {
            const auto next = animation->nextSound(at);
            ASSERT_TRUE(next);
            EXPECT_EQ(next->id, ids[i]);
            EXPECT_EQ(next->record->plays, 0);
            at = next->position;
        }
        expectUsable(*animation);
    }
}

TEST_F(HostileSequenceTest, ManySoundsTakeTimeInProportion) {
    const auto play = [&](int count) {
        AOSequence sequence;
        for (int i = 0; i < count; ++i) sequence.push_back(entry(-101, i));
        sequence.push_back(entry(0, 5));
        const auto animation = make(std::move(sequence));
        cycle();
        cycle();
        EXPECT_EQ(animation->shownPosition(), count);
    };
    EXPECT_LT(growthOfFour(8000, play), kInProportion);
}

} // namespace
