// Movies beside copies in the background, and what becomes of them when their window goes; scripts
// show all else.
#include "movie/rsmackermovie.h"

#include "trinkets/windowfixture.h"

#include "omcachedfile.h"
#include "omsclass.h"

namespace {

/// A single frame.
struct OneFrame final : platform::Movie {
    OneFrame(bool& run, const bool& due) : runs(run), isDue(due) {}
    ~OneFrame() override { runs = false; }
    int width() const override { return 4; }
    int height() const override { return 4; }
    int frameCount() const override { return 1; }
    int frameTime() const override { return 1; }
    int frame() const override { return 0; }
    void run(bool on) override { runs = on; }
    bool wait() override { return !runs || !isDue; }
    bool hasNewPalette() const override { return false; }
    void clearNewPalette() override {}
    const std::array<platform::Rgb, 256>& palette() const override { return colors; }
    void doFrame() override {}
    const platform::Surface& picture() const override { return surface; }
    std::optional<platform::Rect> takeChanged() override { return std::nullopt; }
    void nextFrame() override {}
    void goTo(int) override {}
    void addBlitTime(std::uint32_t) override {}
    platform::MovieSummary summary() const override { return {}; }

    bool& runs;
    const bool& isDue;
    std::array<platform::Rgb, 256> colors{};
    platform::Surface surface{4, 4, 8};
};

class MovieTest : public testing_support::OMAppTest, private platform::Movies {
  protected:
    MovieTest() {
        machine.installedMovies = this;
        files.put("m", "");
        app->begin();
    }
    auto start(RSmackerMovie::Options options) {
        auto movie = std::make_unique<RSmackerMovie>(*window, "m", std::move(options));
        movie->takeClass(RSmackerMovie::kClass);
        movie->start();
        return movie;
    }
    std::unique_ptr<platform::Movie> open(const platform::MovieRequest&) override {
        return std::make_unique<OneFrame>(runs, isDue);
    }
    void openWindow() { window.emplace(platform::Rect{0, 0, 640, 480}, nullptr, "Test"); }

    bool runs = false;
    bool isDue = false;
    RMovies shared;
    std::optional<OMTrinketWindow> window;
};

TEST_F(MovieTest, CopiesWaitUnlessItWasReadBefore) {
    openWindow();
    files.put("c", "x");
    OMCachedFile::cacheInBkgd("c", nullptr, 0, false);
    for (const bool preloads : {false, true}) {
        const auto movie = start({.preload = preloads});
        for (int i = 0; i < 20; ++i) {
            (void)OMCachedFile::getBufferSize("c"); // waits for the worker
            app->pass();
        }
        EXPECT_EQ(OMCachedFile::find("c")->isComplete(), preloads);
    }
}

TEST_F(MovieTest, OutlivesItsWindow) {
    for (const bool inHandler : {false, true}) {
        openWindow();
        isDue = inHandler;
        const auto movie =
            start({.finished = inHandler ? OMLink([this] { window.reset(); }) : OMLink(nullptr)});
        if (!inHandler) window.reset();
        app->pass();
        EXPECT_FALSE(window || runs);
        movie->start();
        movie->setCollecting(true);
        EXPECT_FALSE(runs || movie->isCollecting());
    }
}

} // namespace
