// Movies beside copies in the background, and what becomes of them when their window goes; scripts
// show all else.
#include "movie/rsmackermovie.h"

#include "trinkets/windowfixture.h"

#include "omcachedfile.h"
#include "omsclass.h"

#include <optional>
#include <utility>

using namespace testing_support;

namespace {

/// A single frame.
struct OneFrame final : platform::Movie {
    OneFrame(int& count, const bool& due) : running(count), isDue(due) {}
    ~OneFrame() override { OneFrame::run(false); }
    int width() const override { return 4; }
    int height() const override { return 4; }
    int frameCount() const override { return 1; }
    int frameTime() const override { return 1; }
    int frame() const override { return 0; }
    void run(bool on) override { running += int{on} - int{std::exchange(runs, on)}; }
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

    int& running;
    const bool& isDue;
    bool runs = false;
    std::array<platform::Rgb, 256> colors{};
    platform::Surface surface{4, 4, 8};
};

class MovieTest : public OMAppTest, private platform::Movies {
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
        return std::make_unique<OneFrame>(running, isDue);
    }
    void openWindow() { window.emplace(platform::Rect{0, 0, 640, 480}, nullptr, "Test"); }

    int running = 0;
    bool isDue = false;
    RMovies shared;
    std::optional<OMTrinketWindow> window;
};

TEST_F(MovieTest, CopiesWaitUnlessItWasReadBefore) {
    openWindow();
    files.put("c", "x");
    OMCachedFile::cacheInBkgd("c", nullptr, 0, false);
    for (const bool preloads : {false, true}) {
        RSmackerMovie::Options options;
        options.preload = preloads;
        const auto movie = start(options);
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
        RSmackerMovie::Options options;
        if (inHandler) options.finished = [this] { window.reset(); };
        const auto movie = start(options);
        if (!inHandler) window.reset();
        app->pass();
        EXPECT_FALSE(window);
        EXPECT_EQ(running, 0);
        movie->start();
        movie->setCollecting(true);
        EXPECT_FALSE(running > 0 || movie->isCollecting());
    }
}

} // namespace
