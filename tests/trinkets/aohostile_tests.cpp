// Animation resources that are damaged or made to do harm: what is refused and why, what is still
// usable of the others, and that neither time nor memory get out of proportion to their bytes.
#include "../../fuzz/framecheck.h"
#include "growth.h"
#include "trinkets/windowfixture.h"

#include "aosounds.h"
#include "omao.h"

using namespace testing_support;
using platform::Rect;

namespace {

constexpr std::size_t kOffsetsAt = 10; ///< the frame table
constexpr int kMost = 32767;

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
    const std::size_t second = whole.size() - read(whole)->packedRows(1).size(); // its rows
    const std::string first = "abbbbb/..c.../...ddd/ ";
    const std::pair<std::size_t, std::string> rows[] = {
        {0, "its header is cut short"},
        {kOffsetsAt - 1, "its header is cut short"},
        {kOffsetsAt, kTableCut},
        {kSequencesAt - 1, kTableCut},
        {kSequencesAt, kSequencesCut},
        {kFramesAt - 1, kSequencesCut},
        {kFramesAt, "- - 2 broken"},
        {kFramesAt + 5, "- - 2 broken"},
        {kFramesAt + 6, "....../....../....../ - 1 broken"},
        {kFramesAt + 6 + 6, "abbbbb/....../....../ - 1 broken"},
        {second - 1, first + "- 1 broken"},
        {second, first + "../../ 0 broken"},
        {second + 2, first + "x./../ 0 broken"},
        {second + 3, first + "xy/../ 0 broken"},
        {second + 5, first + "xy/z./ 0 broken"},
        {whole.size(), kWhole},
    };
    const auto cut = [&](std::size_t length) {
        return Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    };
    for (const auto& [length, expected] : rows) EXPECT_EQ(outcome(cut(length)), expected) << length;
    for (std::size_t length = 0; length < whole.size(); ++length) (void)outcome(cut(length));
}

TEST_F(HostileAnimationTest, EveryByteMayBeWrong) {
    const Bytes whole = small().build();
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (const int value : {0, 1, 0x7F, 0x80, 0xFB, 0xFF})
            (void)outcome(patched(whole, at, value, 1));
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
    const struct {
        const char* name;
        Bytes data;
        std::string outcome;
    } rows[] = {
        {"no sequence", patched(whole, 0, 0), kNoSequence},
        {"32767 sequences", patched(whole, 0, kMost), kSequencesCut},
        {"no frame: its offsets are a placement and a sequence", patched(whole, 2, 0),
         kSequencesCut},
        {"-1 frames", patched(whole, 2, -1), kNegative},
        {"32767 frames", patched(whole, 2, kMost), kTableCut},
        {"-1 entries", patched(whole, kSequencesAt, -1), kSequencesCut},
        {"32767 entries", patched(whole, kSequencesAt, kMost), kSequencesCut},
        {"as many entries as half of the bytes", patched(whole, second, size / 2), kSequencesCut},
        {"offset -1", patched(whole, kOffsetsAt, -1, 4), "- xy/z./ 1 broken"},
        {"the highest offset", patched(whole, kOffsetsAt, 0x7FFFFFFF, 4), "- xy/z./ 1 broken"},
        {"an offset at the end", patched(whole, kOffsetsAt, size, 4), "- xy/z./ 1 broken"},
        {"half a header", patched(whole, kOffsetsAt, size - 5, 4), "- xy/z./ 1 broken"},
        {"both the first frame", patched(whole, kOffsetsAt + 4, 0, 4),
         "abbbbb/..c.../...ddd/ abbbbb/..c.../...ddd/ 0 broken"},
        {"both the second frame", patched(whole, kOffsetsAt, other, 4), "xy/z./ xy/z./ 0 broken"},
        {"width -1", patched(whole, width, -1), "- xy/z./ 1 broken"},
        {"height 0", patched(whole, height, 0), "- xy/z./ 0 broken"},
        {"height -1", patched(whole, height, -1), "- xy/z./ 1 broken"},
        {"one row only", patched(whole, height, 1), "abbbbb/ xy/z./ 0 broken"},
    };
    for (const auto& row : rows) EXPECT_EQ(outcome(row.data), row.outcome) << row.name;
}

TEST_F(HostileAnimationTest, AnySwapFlagMeansTheOtherByteOrder) {
    for (const int flag : {1, 2, 0x80, 0xFF}) {
        EXPECT_EQ(outcome(patched(small().build(std::endian::big), 5, flag, 1)), kWhole) << flag;
        EXPECT_EQ(outcome(patched(small().build(), 5, flag, 1)), kTableCut)
            << "two frames become 512";
    }
    EXPECT_EQ(outcome(patched(small().build(std::endian::big), 5, 0, 1)), kTableCut);
}

// Rows

TEST_F(HostileAnimationTest, WhatOverrunsARowIsNotInTheNext) {
    const std::pair<std::vector<std::uint8_t>, const char*> rows[] = {
        {{6, 'a', 'b', 'c', 'd', 'e', 'f', 1, 'g'}, "abcd/g.../..../ 0 broken"},
        {{255, 'a', 250, 255, 'b', 2, 255, 'c', 99}, "aaaa/bbcc/..../ 0 broken"},
        {{1, 'a', 0, 250, 1, 'b'}, "a.../b.../..../ 0 broken"},
        {{0, 0, 0, 0, 1, 'a'}, "..../..../a.../ 0 broken"}, // tokens of nothing end a row
    };
    for (const auto& [packed, seen] : rows) {
        AseqBuilder builder;
        builder.frames.push_back({4, 3, packed});
        EXPECT_EQ(outcome(builder.sequence({}).build()), seen);
    }
}

TEST_F(HostileAnimationTest, TheLargestFramesTakeAsMuchAsTheirBytes) {
    AseqBuilder builder;
    builder.frames.push_back({kMost, kMost, {3, 'a', 'b', 'c', 0, 250, 251, 255, 'd', 250}});
    const auto image = builder.sequence({entry(0, 10), entry(-2)}).image();
    EXPECT_LT(image->frame(0).memory(), 4096U);
    EXPECT_LT(image->unpackedFrame(0, kAOIndexPixels, 4).memory(), 4096U);
    EXPECT_EQ(picture(*image, 0), "abc...../dddddddd/......../......../");
    for (const bool farCorner : {false, true})
        fuzzing::FrameCheck(*image, 0, {{3, 4}, farCorner, OMRegion(Rect{0, 0, 99, 99}), 16}).run();
    // It plays, too.
    OMAnimation animation(window, image, 1, -3, 0);
    for (int i = 0; i < 30; ++i) cycle();
    EXPECT_EQ(animation.boundingRectangle(), (Rect{-3, 0, kMost - 3, kMost}));
    EXPECT_EQ(backPixel(5, 1), 'd');
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
    Start play(AOVoice&, int, OMLink) override {
        ++asked;
        return Start::Never;
    }
    void stop(AOVoice&) override {}
    void pause(AOVoice&) override {}
    void resume(AOVoice&) override {}
    void forget(AOVoice&) override {}
};

AOSequence storm(const AOEntry& of, int count, const AOEntry& last) {
    AOSequence sequence(static_cast<std::size_t>(count), of);
    sequence.push_back(last);
    return sequence;
}

TEST_F(HostileSequenceTest, WithoutFramesAStepIsAtMostTwoRounds) {
    constexpr int kStorm = 32000;
    using State = OMAnimation::State;
    const struct {
        const char* name;
        AOSequence sequence;
        int rounds; ///< of one step
        int markers;
        State state;
    } rows[] = {
        {"no entry", {}, 0, 0, State::Stopped},
        {"marker and loop", {entry(-500), entry(-2)}, 2, 2, State::Playing},
        {"the lowest marker", {entry(-32768)}, 0, 1, State::Stopped},
        {"no markers", {entry(-499), entry(-5), entry(-2)}, 2, 0, State::Playing},
        {"markers", storm(entry(-700), kStorm, entry(-2)), 2, 2 * kStorm, State::Playing},
        {"sounds", storm(entry(-101, 7), kStorm, entry(-2)), 2, 0, State::Playing},
        {"frames that do not exist", {entry(99), entry(kMost), entry(-2)}, 0, 0, State::Playing},
    };
    for (const auto& row : rows) {
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
    for (const AOSequence& sequence : {AOSequence{entry(-500), entry(-2)}, AOSequence{}}) {
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
    const std::vector<int> ids{0, -1, -32768, 1, kMost};
    AOSequence sequence{entry(0, 5)};
    for (const int id : ids) sequence.push_back(entry(-101, id));
    sequence.push_back(entry(0, 5));
    sequence.push_back(entry(-4));
    for (const bool sync : {true, false}) {
        asked = ends = 0;
        const auto animation = make(sequence);
        animation->setSoundSync(sync);
        for (int i = 0; i < 20; ++i) cycle();
        EXPECT_EQ(asked, 5);
        EXPECT_EQ(ends, 1) << "nothing is waited for";
        std::vector<int> found;
        for (auto next = animation->nextSound(-1); next;
             next = animation->nextSound(next->position)) {
            found.push_back(next->id);
            EXPECT_EQ(next->frame, 1) << "one lies before it";
            EXPECT_EQ(next->record->plays, 0);
        }
        EXPECT_EQ(found, ids);
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
