// A damaged animation resource: its frames are unpacked, drawn and hit; it plays in a window, with
// sounds that fail, end at once or go on, while it is edited, copied, destroyed and recoloured,
// also in the middle of its own steps; what it shows is packed and shown again. The first bytes of
// an input say where it is drawn and what is done in which order, the rest is the resource.
// Positions stay within their sequences, and what is drawn is what is hit, whatever was done
// before.
#include "framecheck.h"

#include "aoimage.h"
#include "aosounds.h"
#include "formats/animation/animation.h"
#include "memorystream.h"
#include "omao.h"
#include "omsarguments.h"
#include "omtrinketwindow.h"
#include "scene/aobackground.h"

#include <array>
#include <string>

namespace {

using fuzzing::Bytes;
using fuzzing::expect;
using platform::Point;
using platform::Rect;

constexpr int kWidth = 64; ///< of the window
constexpr int kHeight = 48;
constexpr int kFrameChecks = 4;
constexpr int kPictureChecks = 4; ///< in one input
constexpr int kMostActs = 48;
constexpr int kId = 1;

/// One thing that is done to one of the animations.
struct Act {
    int what;
    int value;
};

/// What the first bytes of an input say.
struct Manner {
    int depth;
    Point at;
    int how; ///< bits
    std::vector<Act> acts;
    Bytes file;

    explicit Manner(fuzzing::Choices choices)
        : depth(choices.depth()), at{choices.word(), choices.word()}, how(choices.byte()) {
        const int count = choices.byte() % (kMostActs + 1);
        for (int i = 0; i < count; ++i) {
            const int what = choices.byte();
            acts.push_back({what, choices.word()});
        }
        file = choices.rest();
    }
};

std::shared_ptr<AOPaletteRecord> record(int shift) {
    OMDevicePalette colors{};
    for (std::size_t i = 0; i < colors.size(); ++i)
        colors[i] = {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i * 7),
                     static_cast<std::uint8_t>(shift)};
    return std::make_shared<AOPaletteRecord>(colors);
}

AOEntry entryOf(int value) {
    constexpr std::array<int, 12> kCodes{0, 1, 2, -1, -2, -3, -4, -101, -499, -500, -32768, 32767};
    const auto which = static_cast<std::size_t>(value & 0xFF) % kCodes.size();
    const auto rest = static_cast<std::int16_t>(value >> 8);
    return {rest, static_cast<std::int16_t>(-rest), static_cast<std::int16_t>(kCodes[which]), rest};
}

/// The frames alone.
void checkFrames(const AOImage& image, const Manner& manner) {
    fuzzing::FramePlace place;
    place.at = {manner.at.x % fuzzing::FrameCheck::kWidth,
                manner.at.y % fuzzing::FrameCheck::kHeight};
    place.farCorner = (manner.how & 1) != 0;
    place.clip = OMRegion(Rect{-100, -100, 100, 100});
    if ((manner.how & 2) != 0) {
        place.clip = OMRegion(Rect{1, 2, 9, 15});
        place.clip.unite(Rect{7, 0, 30, 8});
        place.clip.unite(Rect{20, 10, 21, 20});
    }
    place.depth = manner.depth;
    for (int i = 0; i < std::min(kFrameChecks, image.frameCount() + 1); ++i) {
        const AOSize size = image.frameSize(i);
        expect(size.width >= 0 && size.height >= 0, "sizes are not negative");
        fuzzing::checkRows(image.packedRows(i), size.width, size.height);
        fuzzing::FrameCheck(image, i, place).run();
    }
}

void checkImage(const AOImage& image, std::size_t size) {
    expect(image.sequences().count() >= 1, "there is a sequence");
    std::size_t entries = 0;
    for (int i = 0; i < image.sequences().count(); ++i) {
        expect(!image.sequences()[i].empty() && image.sequences()[i].back().code == AOEntry::kEnd,
               "sequences end");
        entries += image.sequences()[i].size() - 1;
    }
    expect(entries * 8 <= size, "entries come from the resource");
    expect(std::size_t(image.frameCount()) * 4 <= size, "frames come from the resource");
    expect(image.brokenFrames() <= image.frameCount(), "broken frames are frames");
}

/// What the tools take for whole can be stored, and is the same again.
void checkWhole(formats::ByteSpan file) {
    const auto whole = formats::animation::readWhole(file);
    if (!whole.ok()) return;
    expect(formats::animation::whyNotStored(whole.value).empty(), "what was stored can be stored");
    const formats::Bytes stored = formats::animation::write(whole.value);
    const auto again = formats::animation::readWhole(stored);
    expect(again.ok() && formats::animation::write(again.value) == stored,
           "what was written is read");
}

/// The animation and a copy of it in a window, and what is done to them.
class Stage final : private AOSounds {
  public:
    Stage(fuzzing::World& world, const Manner& manner, const std::shared_ptr<AOImage>& image)
        : world_(world), manner_(manner), image_(image) {
        if ((manner.how & 8) != 0) setCurrent(nullptr);
        if ((manner.how & 4) != 0)
            window_.setBackground(std::make_unique<AOBackground>(kWidth, kHeight, image));
        animations_[0] = make();
    }
    ~Stage() override {
        for (auto& animation : animations_) animation.reset();
        setCurrent(nullptr);
    }
    Stage& operator=(Stage&&) = delete;

    void run() {
        while (next_ < manner_.acts.size()) {
            doNext();
            for (const auto& animation : animations_)
                if (animation) checkPlaces(*animation);
            if (!animations_[0]) animations_[0] = make();
        }
        for (int i = 0; i < 8; ++i) idle(40 * i);
        if (animations_[0]) checkPicture(*animations_[0]);
    }

  private:
    // Sounds: some cannot be played, some end while they start, the others go on.

    Start play(AOVoice& voice, int id, OMLink done) override {
        if (id % 3 == 1) return id % 2 == 0 ? Start::Never : Start::NotNow;
        if (id % 3 == 2) {
            done();
            return Start::Plays;
        }
        sounds_.emplace_back(&voice, std::move(done));
        return Start::Plays;
    }
    void stop(AOVoice& voice) override {
        std::erase_if(sounds_, [&](const auto& sound) { return sound.first == &voice; });
    }
    void pause(AOVoice&) override {}
    void resume(AOVoice&) override {}
    void forget(AOVoice& voice) override {
        for (const auto& sound : sounds_) expect(sound.first != &voice, "a sound plays on");
    }
    void endSound() {
        if (sounds_.empty()) return;
        const OMLink done = sounds_.front().second;
        sounds_.erase(sounds_.begin());
        done();
    }

    [[nodiscard]] std::unique_ptr<OMAnimation> make() {
        const bool embedded = (manner_.how & 16) != 0;
        auto made = std::make_unique<OMAnimation>(window_, image_, kId,
                                                  embedded ? OMAnimation::kEmbedded : manner_.at.x,
                                                  embedded ? OMAnimation::kEmbedded : manner_.at.y);
        const OMLink inside = [this] { doInside(); };
        made->playLinks().looped = inside;
        made->playLinks().finished = inside;
        made->playLinks().allSoundsDone = inside;
        made->playLinks().stopAt = inside;
        made->playLinks().marker = [this](int code) {
            expect(code <= AOEntry::kFirstMarker, "markers have their codes");
            doInside();
        };
        return made;
    }

    /// In the middle of a step.
    void doInside() {
        if ((manner_.how & 32) != 0) doNext();
    }

    void doNext() {
        if (next_ >= manner_.acts.size()) return;
        const Act act = manner_.acts[next_++];
        const std::size_t which = act.what >> 7;
        if (!animations_[which]) return idle(act.value & 0xFF);
        perform(act.what & 0x7F, act.value, animations_[which]);
    }

    void idle(int ms) {
        // Handlers may run a cycle inside of the main loop's.
        if (idling_ && (manner_.how & 64) == 0) return;
        idling_ = true;
        world_.machine.clock().now += static_cast<std::uint32_t>(ms);
        window_.idle();
        idling_ = false;
    }

    void perform(int what, int value, std::unique_ptr<OMAnimation>& animation) {
        OMAnimation& a = *animation;
        const auto byte = static_cast<std::uint8_t>(value);
        const auto high = static_cast<std::uint8_t>(value >> 8);
        switch (what % 40) {
        case 0: return a.play();
        case 1: return a.pause();
        case 2: return a.resume();
        case 3: return a.stop();
        case 4: return a.forever();
        case 5: return a.setRepeatCount(value % 4 - 1);
        case 6: return a.setFramesPerSecond(value);
        case 7: return a.setSoundOn(!a.isSoundOn());
        case 8: return a.setSoundSync(!a.isSoundSync());
        case 9: return a.setCatchUp(value % 2 != 0);
        case 10: return a.setDrawDirection(value % 12 - 2);
        case 11: return a.setSequence(value % 8, high % 2 == 0);
        case 12: return a.setPosition(value);
        case 13: return a.setStopPosition(value % 16);
        case 14: {
            AOSequence entries;
            for (int i = 0; i < value % 5; ++i) entries.push_back(entryOf(value + i * 3));
            (void)a.addSequence(std::move(entries));
            return;
        }
        case 15: return a.deleteSequence(value % 8 - 1);
        case 16: return a.replaceEntry(entryOf(value), high % 16 - 1);
        case 17: return a.deletePosition(value % 16 - 1);
        case 18: return a.insertEntry(entryOf(value), high % 16 - 1);
        case 19: return (void)a.entryAt(value);
        case 20: return (void)a.nextSound(value % 16);
        case 21: return a.replaceColorIndex(byte, high);
        case 22: return a.swapColorIndices(byte, high);
        case 23: return a.setFrameNumber(value);
        case 24: return a.setSequenceNumber(value % 8);
        case 25:
            OMSArguments::global().clear();
            OMSArguments::global().push(std::to_string(value % 6));
            return a.setParam(value);
        case 26: {
            auto copy = a.duplicate();
            animations_[1].reset(static_cast<OMAnimation*>(copy.release()));
            return;
        }
        case 27: return a.place(value % 100, high % 100);
        case 28: return a.setVisible(value % 2 == 0);
        case 29: return checkPicture(a);
        case 30: return checkPacking(a, value);
        case 31:
            if (value != 0) a.setPalette(record(byte));
            return;
        case 32: return a.stamp();
        case 33: return a.unstamp();
        case 34: return animation.reset();
        case 35: return endSound();
        case 36: return window_.mouseDown({value % kWidth, high % kHeight});
        case 37: return idle(value & 0x7FFF);
        default: return idle(value & 0x3F);
        }
    }

    static void checkPlaces(const OMAnimation& a) {
        const int count = a.sequenceCount();
        expect(a.sequenceIndex() >= 0 && (a.sequenceIndex() < count || a.sequenceIndex() == 0),
               "the current sequence exists");
        expect(a.position() >= 0 && a.position() <= a.sequenceLength(),
               "the next entry is one of the sequence");
        expect(a.shownPosition() >= 0 && a.shownPosition() <= a.sequenceLength(),
               "the entry shown is one of the sequence");
        expect(a.frameNumber() >= 0 && a.frameNumber() <= a.frameCount(),
               "the frame's number is one of the sequence");
        const Rect r = a.boundingRectangle();
        constexpr int kFarthest = 2 * OMTrinket::kFarthest;
        expect(r.left > -kFarthest && r.top > -kFarthest && r.right < kFarthest &&
                   r.bottom < kFarthest && r.width() >= 0 && r.height() >= 0,
               "an animation has its place");
    }

    /// What it paints is where it is hit.
    void checkPicture(OMAnimation& a) {
        if (++pictures_ > kPictureChecks || !AOTurnOf(a.drawDirection())) return;
        const auto drawn =
            fuzzing::drawnPixels(kWidth, kHeight, manner_.depth, [&](OMMemCanvas& canvas) {
                a.paint(canvas, OMRegion(canvas.bounds()));
            });
        for (int y = 0, i = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x, ++i)
                expect(a.containsPoint({x, y}) ==
                           (drawn[static_cast<std::size_t>(i)] != fuzzing::kClear),
                       "an animation is hit where it is painted");
    }

    /// What it shows is packed and comes out again.
    void checkPacking(OMAnimation& a, int value) {
        if (++pictures_ > kPictureChecks) return;
        const auto key = static_cast<std::uint8_t>(value);
        OMMemCanvas canvas(kWidth, kHeight, manner_.depth);
        if (manner_.depth > 8)
            return expect(AOPack(canvas, {}, key).empty(), "deep canvases are not packed");
        canvas.setColor(OMColor(key));
        canvas.fillRect(canvas.bounds());
        a.paint(canvas, OMRegion(canvas.bounds()));
        const int left = (value >> 8) % kWidth;
        const Rect area{left, value % 7, left + 1 + value % 40, kHeight - value % 3};
        const Rect there =
            platform::intersection(area.empty() ? canvas.bounds() : area, canvas.bounds());
        const auto packed = AOPack(canvas, area, key);
        expect(packed.empty() == there.empty(), "what is on the canvas is packed");
        if (packed.empty()) return;
        const auto pixels = static_cast<std::size_t>(there.width() * there.height());
        expect(packed.size() <= 58 + 2 * pixels, "a packed picture is at most twice as large");
        const auto shown = OMAnimation::createFromImage(packed, 0, 0, window_);
        expect(shown != nullptr, "what was packed can be read");
        OMMemCanvas again(kWidth, kHeight, 8);
        again.setColor(OMColor(key));
        again.fillRect(again.bounds());
        shown->paintAt(again, {there.left, there.top});
        const OMPixels from = canvas.pixels();
        const OMPixels to = again.pixels();
        for (int y = there.top; y < there.bottom; ++y)
            for (int x = there.left; x < there.right; ++x)
                expect(*from.at(x, y) == *to.at(x, y), "what was packed comes out again");
    }

    fuzzing::World& world_;
    const Manner& manner_;
    std::shared_ptr<AOImage> image_;
    std::vector<std::pair<AOVoice*, OMLink>> sounds_;
    OMTrinketWindow window_{{0, 0, kWidth, kHeight}, nullptr, "Fuzz"};
    std::array<std::unique_ptr<OMAnimation>, 2> animations_;
    std::size_t next_ = 0;
    int pictures_ = 0;
    bool idling_ = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::World world;
    const Manner manner{fuzzing::Choices(data, size)};
    std::string problem;
    const auto image = AOImage::read(manner.file, problem);
    checkWhole({reinterpret_cast<const std::uint8_t*>(manner.file.data()), manner.file.size()});
    expect((image == nullptr) != problem.empty(), "what cannot be read has a problem");
    world.makeApp(); // of bitmaps, which have any depth
    if (image) checkFrames(*image, manner);
    world.makeApp(manner.depth, kWidth, kHeight);
    AOImage::setSourceLocator(
        [&](int) { return std::make_unique<testing_support::MemoryStream>(manner.file); });
    const auto located = AOImage::locate(kId);
    AOImage::setSourceLocator(nullptr);
    expect((located == nullptr) == (image == nullptr), "a resource is read alike");
    if (!image) return 0;
    checkImage(*image, manner.file.size());
    AOPaletteRecord::setCurrent(record(0));
    Stage(world, manner, located).run();
    AOPaletteRecord::setCurrent(nullptr);
    return 0;
}
