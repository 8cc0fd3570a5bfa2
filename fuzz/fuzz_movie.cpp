// A damaged movie, played. The first bytes of an input say what is done with it, the rest is the
// file. Whatever is in it, rectangles lie in the picture and cover what changed in it, and sound
// comes in whole samples while the movie runs.
#include "fuzzmachine.h"

#include "platform/host/movies/hostmovie.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

using fuzzing::Bytes;
using fuzzing::Choices;
using fuzzing::expect;
using platform::Rect;

constexpr const char* kName = "movie.smk";
constexpr std::int64_t kMostPixels = 1 << 18; ///< of one input, so that none takes long
constexpr int kMostActs = 64;
constexpr int kMostFrames = 1000;

/// Takes a few bytes whenever it is asked.
class Speaker final : public platform::MovieSpeaker {
  public:
    bool open(const platform::SoundFormat& format) override {
        expect(!open_, "a speaker is opened once");
        blockSize_ = static_cast<std::size_t>(format.blockSize());
        expect(blockSize_ >= 1 && blockSize_ <= 4, "speakers play 8 or 16 bits, mono or stereo");
        open_ = true;
        return format.rate % 16 != 15;
    }
    void close() override { queued_ = 0; }
    void write(std::span<const std::uint8_t> samples) override {
        expect(samples.size() % blockSize_ == 0, "sound comes in whole samples");
        queued_ += samples.size();
    }
    [[nodiscard]] std::size_t bytesQueued() override {
        if (!paused_) queued_ -= std::min<std::size_t>(queued_, 64);
        return queued_;
    }
    void pause() override { paused_ = true; }
    void restart() override { paused_ = false; }
    void drop() override { queued_ = 0; }

  private:
    bool open_ = false;
    bool paused_ = false;
    std::size_t blockSize_ = 1;
    std::size_t queued_ = 0;
};

class Speakers final : public platform::MovieSpeakers {
  public:
    [[nodiscard]] std::unique_ptr<platform::MovieSpeaker> make() override {
        return std::make_unique<Speaker>();
    }
};

/// What somebody sees who copies no more than the rectangles.
class Viewer {
  public:
    explicit Viewer(const platform::Surface& picture) : seen_(picture) {}

    void look(platform::Movie& movie) {
        bool any = false;
        while (const auto rect = movie.takeChanged()) {
            any = true;
            copy(movie.picture(), *rect);
        }
        if (any) expect(isSame(movie.picture()), "the rectangles cover what changed");
    }

  private:
    void copy(const platform::Surface& picture, const Rect& rect) {
        expect(!rect.empty() && intersection(rect, picture.bounds()) == rect,
               "a rectangle lies in the picture");
        for (int y = rect.top; y < rect.bottom; ++y)
            std::copy_n(picture.row(y) + rect.left, rect.width(), seen_.row(y) + rect.left);
    }
    [[nodiscard]] bool isSame(const platform::Surface& picture) const {
        for (int y = 0; y < picture.height(); ++y)
            if (!std::equal(picture.row(y), picture.row(y) + picture.width(), seen_.row(y)))
                return false;
        return true;
    }

    platform::Surface seen_;
};

struct Act {
    int what;
    int value;
};

std::vector<Act> readActs(Choices& choices) {
    std::vector<Act> acts(static_cast<std::size_t>(choices.byte() % kMostActs));
    for (Act& act : acts) {
        act.what = choices.byte();
        act.value = choices.word();
    }
    return acts;
}

void perform(const Act& act, platform::Movie& movie, platform::Clock& clock, Viewer& viewer) {
    switch (act.what % 8) {
    case 0: movie.run(act.value % 4 != 0); break;
    case 1: clock.sleep(static_cast<std::uint32_t>(act.value & 0xFFF)); break;
    case 2: movie.goTo(std::min(act.value, kMostFrames)); break;
    case 3: viewer.look(movie); break;
    case 4: movie.addBlitTime(static_cast<std::uint32_t>(act.value & 0xFF)); break;
    default:
        static_cast<void>(movie.wait());
        if (movie.hasNewPalette()) movie.clearNewPalette();
        movie.doFrame();
        if (act.what & 8) viewer.look(movie);
        movie.nextFrame();
        break;
    }
    const int frame = movie.frame();
    expect(frame >= 0 && frame < movie.frameCount(), "the current frame is one of the movie's");
    const auto summary = movie.summary();
    const auto fact = [&](platform::MovieFact which) {
        return summary.at(static_cast<std::size_t>(which));
    };
    expect(fact(platform::MovieFact::HighestExtraUse) <= fact(platform::MovieFact::ExtraMemory),
           "no more is read ahead than the buffer holds");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzzing::World world;
    Choices choices(data, size);
    const bool preload = choices.byte() % 2 != 0;
    const int extraBuffer = choices.word();
    const std::vector<Act> acts = readActs(choices);
    world.files.put(kName, choices.rest());
    platform::Clock& clock = world.machine.clock();
    Speakers speakers;
    platform::HostMovies movies(world.files, clock, speakers);
    const auto movie = movies.open({kName, preload, extraBuffer});
    if (!movie) return 0;
    expect(movie->width() >= 1 && movie->height() >= 1 && movie->frameTime() >= 1,
           "an open movie has a size and a speed");
    if (std::int64_t{movie->width()} * movie->height() > kMostPixels) return 0;
    Viewer viewer(movie->picture());
    for (const Act& act : acts) perform(act, *movie, clock, viewer);
    return 0;
}
