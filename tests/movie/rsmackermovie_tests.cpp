// Movies beside copies in the background, and what becomes of them when their window goes; scripts
// show all else.
#include "movie/rsmackermovie.h"
#include "platform/host/movies/hostmovie.h"
#include "platform/moviebuilder.h"
#include "trinkets/windowfixture.h"

#include "omcachedfile.h"

namespace {

using MovieTest = testing_support::OMAppTest;

struct NoSpeakers final : platform::MovieSpeakers {
    std::unique_ptr<platform::MovieSpeaker> make() override { return nullptr; }
} speakers;

TEST_F(MovieTest, CopiesWaitUnlessItWasReadBeforeAndItOutlivesItsWindow) {
    platform::HostMovies movies(files, machine.clock(), speakers);
    machine.installedMovies = &movies;
    const formats::Bytes pixels(128);
    const auto movie = testing_support::MovieBuilder{.frames = {{pixels}, {pixels}}}.build();
    files.put("m", std::string(reinterpret_cast<const char*>(movie.data()), movie.size()));
    files.put("c", "x");
    app->begin();
    RMovies shared;
    OMCachedFile::cacheInBkgd("c", nullptr, 0, false);
    for (const bool preloads : {false, true}) {
        std::optional<OMTrinketWindow> window;
        window.emplace(platform::Rect{0, 0, 640, 480}, nullptr, "Test");
        RSmackerMovie one(*window, "m", {.preload = preloads});
        one.start();
        for (int i = 0; i < 20; ++i) {
            (void)OMCachedFile::getBufferSize("c"); // waits for the worker
            app->pass();
        }
        EXPECT_EQ(OMCachedFile::find("c")->isComplete(), preloads);
        window.reset();
        app->pass();
        one.setCollecting(true);
        EXPECT_FALSE(one.isCollecting());
    }
}

} // namespace
