// Movies beside copies in the background, and what becomes of them when their window goes; scripts
// show all else.
#include "movie/rsmackermovie.h"

#include "trinkets/windowfixture.h"

#include "omcachedfile.h"

namespace {

/// Of a frame that is never due.
struct OneFrame final : platform::Movie {
    explicit OneFrame(bool& run) : runs(run) {}
    int width() const override { return 4; }
    int height() const override { return 4; }
    int frameCount() const override { return 1; }
    int frameTime() const override { return 1; }
    int frame() const override { return 0; }
    void run(bool on) override { runs = on; }
    bool wait() override { return true; }
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
    std::array<platform::Rgb, 256> colors{};
    platform::Surface surface{4, 4, 8};
};

class MovieTest : public testing_support::OMAppTest, protected platform::Movies {
  protected:
    std::unique_ptr<platform::Movie> open(const platform::MovieRequest&) override {
        return std::make_unique<OneFrame>(runs);
    }
    bool runs = false;
};

TEST_F(MovieTest, CopiesWaitUnlessItWasReadBeforeAndItOutlivesItsWindow) {
    machine.installedMovies = this;
    files.put("m", "");
    files.put("c", "x");
    app->begin();
    RMovies shared;
    OMCachedFile::cacheInBkgd("c", nullptr, 0, false);
    for (const bool preloads : {false, true}) {
        std::optional<OMTrinketWindow> window;
        window.emplace(platform::Rect{0, 0, 640, 480}, nullptr, "Test");
        RSmackerMovie movie(*window, "m", {.preload = preloads});
        movie.start();
        for (int i = 0; i < 20; ++i) {
            (void)OMCachedFile::getBufferSize("c"); // waits for the worker
            app->pass();
        }
        EXPECT_EQ(OMCachedFile::find("c")->isComplete(), preloads);
        EXPECT_TRUE(runs);
        window.reset();
        app->pass();
        movie.setCollecting(true);
        EXPECT_FALSE(runs || movie.isCollecting());
    }
}

} // namespace
