#include "movie/rsmackermovie.h"

#include "formats/soundbuilder.h"
#include "scenes/fakemovies.h"
#include "trinkets/scriptfixture.h"
#include "trinkets/windowfixture.h"

#include "omistreamfile.h"
#include "ompath.h"
#include "omsclass.h"
#include "omwaveengine.h"
#include "omwavesound.h"
#include "scene/efwindow.h"

#include <gmock/gmock.h>

using namespace testing_support;
using platform::Rect;
using testing::ElementsAre;
using Options = RSmackerMovie::Options;
using MoviePointer = std::unique_ptr<RSmackerMovie>;

namespace {

constexpr Rect kAll = FakeMovies::kAll;
constexpr Rect kScreen{0, 0, 640, 480};

class MovieTest : public FrameworkTest {
  protected:
    MovieTest() {
        machine.installedMovies = &movies;
        movies.files["plain"] = FakeMovies::plain(8);
    }
    ~MovieTest() override {
        window.reset();
        app.reset();
        OMApp::useGDI();
    }
    void begin(OMApp::DisplayMode mode = OMApp::DisplayMode::PopUp, int depth = 8,
               OMTrinketWindow::Showing showing = OMTrinketWindow::Showing::Copying) {
        if (mode == OMApp::DisplayMode::FullScreen) OMApp::useDirectDraw();
        app.emplace(mode, OMColor(), kScreen, depth);
        app->begin();
        window.emplace(kScreen, nullptr, "Test", showing);
        pass();
    }
    MoviePointer make(const std::string& file, Options options) {
        auto movie = std::make_unique<RSmackerMovie>(*window, file, std::move(options));
        movie->takeClass(RSmackerMovie::kClass);
        return movie;
    }
    /// In the colours of the window.
    static Options at(int x, int y) { return {.x = x, .y = y, .useMoviePalette = false}; }

    /// A pass of the main loop; `shown` is what it showed.
    void pass(int ms = 0) {
        machine.clock().now += static_cast<std::uint32_t>(ms);
        machine.display().presented.clear();
        app->pass();
        shown = machine.display().presented;
    }
    void nextFrame() { pass(FakeMovies::kFrameMs); }
    /// What a person sees.
    std::uint32_t seen(int x, int y) {
        const platform::Surface& screen = machine.display().shown();
        std::uint32_t value = 0;
        for (int i = 0; i < screen.bytesPerPixel(); ++i)
            value |= std::uint32_t{screen.row(y)[x * screen.bytesPerPixel() + i]} << 8 * i;
        return value;
    }
    int red(std::size_t index = 30) { return machine.display().palette()[index].red; }
    void setRed(std::uint8_t red) {
        OMPalette palette;
        palette.fill(OMColor::fromRgb8({red, 0, 0}));
        window->setPalette(palette, false);
    }
    /// Without the cursor, too.
    bool isResting() {
        EXPECT_EQ(machine.display().cursorIsShown, !window->isResting());
        return window->isResting();
    }

    FakeMovies movies{machine.clock()};
    RMovies shared;
    std::optional<OMApp> app;
    std::optional<OMTrinketWindow> window;
    OMRegion shown;
};

TEST_F(MovieTest, StraightOntoTheWindowShowsJustWhatChangedWhenItIsTime) {
    begin();
    movies.files["m"] = {{{{kAll, 'a'}}, {}},
                         {{{{2, 3, 10, 8}, 'b'}, {{8, 3, 12, 8}, 'c'}}, {}},
                         {{{{39, 19, 40, 20}, 'd'}}, {}}};
    Tile tile(*window, {90, 40, 120, 60}, 't');
    int steps = 0;
    tile.onStep = [&](std::uint32_t) { ++steps; };
    auto movie = make("m", at(100, 50));
    auto atEdge = make("plain", at(620, 470));
    EXPECT_EQ(RSmackerMovie::current(), atEdge.get());
    int finished = 0;
    movie->attachHandler("finished", [&] { ++finished; });
    pass();
    EXPECT_EQ(window->input().hitTest({110, 55}), &tile) << "not what is not seen";
    steps = 0;
    app->setWaitForMessages(true);
    movie->start();
    EXPECT_EQ(RSmackerMovie::current(), movie.get());
    EXPECT_TRUE(isResting());
    pass();
    EXPECT_EQ(shown, OMRegion({100, 50, 140, 70}));
    pass(FakeMovies::kFrameMs - 1);
    EXPECT_TRUE(shown.isEmpty()) << "not yet";
    pass(1);
    EXPECT_EQ(shown, OMRegion({102, 53, 112, 58}));
    window->mouseDown({110, 55});
    window->mouseMove({150, 55});
    EXPECT_EQ(window->input().mouseTarget(), movie.get());
    EXPECT_EQ(movie->x(), 100) << "it is not dragged about";
    atEdge->start();
    nextFrame();
    EXPECT_EQ(shown.boundingBox(), (Rect{139, 69, 640, 480})) << "clipped";
    EXPECT_EQ(finished, 1);
    EXPECT_EQ(movie->frame(), 2);
    EXPECT_TRUE(isResting()) << "for the other one";
    EXPECT_EQ(steps, 0);
    atEdge.reset();
    EXPECT_FALSE(isResting());
    pass();
    EXPECT_EQ(seen(105, 55), 't');
    EXPECT_EQ(seen(630, 475), 0U) << "no trace of it";
    movie->start();
    pass();
    EXPECT_EQ(shown, OMRegion({100, 50, 140, 70})) << "all of it, at the last frame";
    EXPECT_EQ(finished, 2);
}

TEST_F(MovieTest, TheSceneIsShownAroundItWhenAScriptWantsItShown) {
    begin();
    window.reset();
    EffectsWindow scene({0, 0}, "Test");
    scene.startTransition();
    Tile below(scene, {90, 50, 110, 60}, 'u');
    RSmackerMovie movie(scene, "plain", at(100, 50));
    movie.start();
    pass();
    EXPECT_EQ(seen(95, 55), 0U);
    EXPECT_EQ(seen(105, 55), 'a');
    scene.endTransition(false);
    EXPECT_EQ(seen(95, 55), 'u');
    pass();
    EXPECT_EQ(seen(105, 55), 'a') << "at once, all of it";
    EXPECT_EQ(shown, OMRegion({100, 50, 140, 70}));
    pass();
    EXPECT_TRUE(shown.isEmpty());
    scene.startTransition();
    Tile more(scene, {200, 50, 220, 60}, 'm');
    scene.endTransition(true);
    EXPECT_EQ(seen(205, 55), 'm');
    EXPECT_EQ(seen(95, 55), 0U) << "just what is new";
    pass();
    EXPECT_EQ(seen(105, 55), 'a');
    EXPECT_TRUE(scene.isResting());
    movie.setVisible(false);
    scene.displayScreen();
    nextFrame();
    EXPECT_EQ(seen(105, 55), 'u');
    scene.setPaletteFilter([](OMPalette& colors) { colors[20] = OMColor(0, 0, 0xFF00); });
    movies.files["m"] = FakeMovies::plain(9);
    movies.files["m"][0].red = 0x80;
    RSmackerMovie lifted(scene, "m", {});
    lifted.start();
    pass();
    EXPECT_EQ(red(20), 0) << "as all colours of the game";
}

TEST_F(MovieTest, CollectsFramesForTheWindowToComposeAmongOthers) {
    begin();
    movies.files["m"] = {{{{{0, 0, 20, 20}, 'a'}}, {}}, {{{{5, 5, 10, 10}, 'b'}}, {}}, {}};
    Tile below(*window, {100, 50, 140, 60}, 'u');
    Tile above(*window, {100, 50, 108, 70}, 'o');
    pass();
    auto movie = make("m", at(100, 50));
    movie->setZ(5);
    above.setZ(6);
    movie->setCollecting(true);
    movie->start();
    EXPECT_FALSE(isResting());
    pass();
    pass();
    EXPECT_EQ(seen(107, 55), 'o');
    EXPECT_EQ(seen(119, 69), 'a');
    EXPECT_EQ(seen(130, 55), 'u') << "what the screen showed there";
    nextFrame();
    pass();
    EXPECT_EQ(shown, OMRegion({105, 55, 110, 60})) << "just what the frame changed";
    EXPECT_EQ(seen(109, 59), 'b');
    movie->place(200, 50);
    pass();
    EXPECT_EQ(seen(209, 59), 'b');
    EXPECT_EQ(seen(109, 59), 'u');
}

TEST_F(MovieTest, GoesOverFromTheOneToTheOtherInTheMiddle) {
    begin();
    auto movie = make("plain", at(100, 50));
    movie->start();
    pass();
    movie->setCollecting(true);
    EXPECT_FALSE(isResting());
    EXPECT_EQ(RSmackerMovie::current(), nullptr);
    pass();
    EXPECT_EQ(seen(100, 50), 'a');
    nextFrame();
    Tile above(*window, {100, 50, 101, 51}, 'o');
    above.setZ(RSmackerMovie::kTopLayers[2]);
    pass();
    EXPECT_EQ(seen(100, 50), 'o');
    {
        auto straight = make("plain", at(0, 0));
        straight->start();
        auto other = make("plain", at(0, 0));
        EXPECT_EQ(RSmackerMovie::current(), other.get()) << "opened last";
        other.reset();
        EXPECT_EQ(RSmackerMovie::current(), straight.get()) << "it still has the screen";
        movie->setCollecting(false);
        EXPECT_TRUE(movie->isCollecting()) << "while another one is current";
    }
    movie->setCollecting(false);
    EXPECT_EQ(seen(100, 50), 'b') << "at once, over all others";
    EXPECT_TRUE(isResting());
    EXPECT_EQ(RSmackerMovie::current(), movie.get());
    movie->setPlaying(false);
    pass(100);
    EXPECT_EQ(seen(100, 50), 'b');
    movie->setPlaying(true);
    pass();
    EXPECT_EQ(seen(100, 50), 'c');
    movie->stop();
    pass();
    EXPECT_EQ(seen(100, 50), 'o');
    EXPECT_EQ(seen(101, 51), 0U);
    movie->setCollecting(true);
    movie->setCollecting(false);
    EXPECT_FALSE(isResting()) << "it says where frames go, not whether there are any";
    movie->setFrame(4);
    movie->start();
    movie->setCollecting(true);
    pass();
    pass();
    EXPECT_EQ(seen(101, 51), 'e');
    movie->release();
    EXPECT_FALSE(movie->isCollecting());
    pass();
    EXPECT_EQ(seen(101, 51), 0U);
}

TEST_F(MovieTest, AllStandStillBehindBoxesAndAsLongAsAnybodyHoldsThem) {
    begin();
    std::vector<int> running;
    app->setBoxLink([&](bool open) {
        shared.hold(open);
        running.push_back(movies.running);
    });
    auto movie = make("plain", at(0, 0));
    auto paused = make("plain", at(100, 0));
    auto later = make("plain", at(200, 0));
    movie->start();
    paused->start();
    paused->setPlaying(false);
    pass();
    app->alert("A box");
    shared.hold(true);
    app->about();
    EXPECT_THAT(running, ElementsAre(0, 1, 0, 0));
    later->start();
    paused->setPlaying(true);
    const int frame = movie->frame();
    pass(1000);
    EXPECT_EQ(movies.running, 0);
    EXPECT_EQ(movie->frame(), frame);
    shared.hold(false);
    EXPECT_EQ(movies.running, 3);
    shared.hold(false);
    EXPECT_FALSE(app->ask("", ""));
    EXPECT_EQ(movies.running, 3) << "one that nobody held is not held less";
}

TEST_F(MovieTest, GivesTheColoursBackThatWereThereBeforeAllMovies) {
    begin();
    movies.files["m"] = movies.files["n"] = FakeMovies::plain(9);
    movies.files["m"][0].red = 0x40;
    movies.files["m"][2].red = 0x60;
    movies.files["n"][0].red = 0x80;
    setRed(0x20);
    const int fixed = red(5);
    auto movie = make("m", at(0, 0));
    movie->start();
    pass();
    EXPECT_EQ(red(), 0x20) << "it does not use its own";
    auto collecting = make("n", {});
    collecting->setCollecting(true);
    collecting->start();
    pass();
    EXPECT_THAT((std::vector{red(), red(5)}), ElementsAre(0x80, fixed));
    movie = make("m", {});
    movie->start();
    pass();
    EXPECT_EQ(red(), 0x40);
    shared.restoreWindowPalette();
    EXPECT_EQ(red(), 0x20);
    nextFrame();
    nextFrame();
    EXPECT_EQ(red(), 0x60);
    movie->stop();
    EXPECT_EQ(red(), 0x80) << "the other one still plays";
    collecting->stop();
    EXPECT_EQ(red(), 0x20);
    setRed(0x28); // another scene, while there are movies that have ended
    shared.restoreWindowPalette();
    EXPECT_EQ(red(), 0x28);
    movie->start();
    pass();
    EXPECT_EQ(red(), 0x60) << "set again, though they are not new";
    movie.reset();
    EXPECT_EQ(red(), 0x28);
    setRed(0x30); // another scene
    movie = make("m", {});
    movie->start();
    pass();
    movie->release();
    EXPECT_EQ(red(), 0x30);
}

TEST_F(MovieTest, SignalsEachFrameOfItsListBeforeItGoesOn) {
    begin();
    auto movie = make("plain", at(0, 0));
    std::vector<int> frames;
    std::function<void(int)> act = [](int) {};
    movie->attachHandler("signal", [&] {
        frames.push_back(movie->frame());
        act(movie->frame());
    });
    const auto play = [&] {
        frames.clear();
        movie->setFrame(-3);
        movie->start();
        for (int i = 0; i < 20; ++i) nextFrame();
        return frames;
    };
    movie->invoke("addSignals", {"1", "5", "", "3"});
    EXPECT_THAT(play(), ElementsAre(0, 4)) << "an empty argument ends the list";
    movie->invoke("removeSignals", {"1"});
    movie->invoke("addSignals", {"-7", "99", "3"});
    EXPECT_THAT(play(), ElementsAre(0, 2, 4));
    act = [&](int frame) {
        if (frame == 0) movie->invoke("removeSignals", {"3"});
        if (frame == 4) movie->invoke("addSignals", {"5", "6"});
    };
    EXPECT_THAT(play(), ElementsAre(0, 4, 5)) << "changed while it plays";
    act = [&](int frame) {
        if (frame == 5 && frames.size() < 4) movie->setFrame(4);
    };
    EXPECT_THAT(play(), ElementsAre(0, 4, 5, 4, 5)) << "the frame that was written is played";
    act = [&](int) {
        movie->stop();
        movie->start();
    };
    movie->invoke("addSignals", {"-1"});
    EXPECT_THAT(play(), ElementsAre(0, 1, 2, 3, 4, 5, 6)) << "never the last one";
    movie->invoke("removeSignals", {"-1"});
    EXPECT_THAT(play(), ElementsAre());
    movie->setFrame(99);
    EXPECT_EQ(movie->frame(), 7);
}

TEST_F(MovieTest, HandlersMayDoAnythingToTheMovieThatCallsThem) {
    begin();
    movies.files["m"] = FakeMovies::plain(3);
    movies.files["m"][0].red = 0x40;
    const std::function<void(MoviePointer&)> deeds[] = {
        [](MoviePointer& movie) { movie.reset(); },
        [](MoviePointer& movie) { movie->release(); },
        [](MoviePointer& movie) { movie->stop(); },
        [](MoviePointer& movie) { movie->start(); },
        [](MoviePointer& movie) { movie->setCollecting(!movie->isCollecting()); },
        [&](MoviePointer&) { window.reset(); },
    };
    const auto playOnce = [&](const auto& deed, bool byLink, bool inSignal, bool collects) {
        window.reset();
        window.emplace(kScreen, nullptr, "Test");
        setRed(0x20);
        MoviePointer movie;
        int told = 0;
        const OMLink act = [&] {
            if (++told == 1) deed(movie);
        };
        Options options;
        if (byLink) (inSignal ? options.signal : options.finished) = act;
        movie = make("m", options);
        if (!byLink) movie->attachHandler(inSignal ? "signal" : "finished", act);
        movie->setSignal(0, true);
        movie->setCollecting(collects);
        bool complete = false;
        movie->setCompletionLink([&] { complete = true; });
        movie->start();
        for (int i = 0; i < 6; ++i) nextFrame();
        EXPECT_TRUE(told > 0 && complete);
        if (movie) movie->release();
        EXPECT_EQ(movies.openCount + movies.running, 0);
        movie.reset();
        EXPECT_EQ(RSmackerMovie::current(), nullptr);
        EXPECT_TRUE(machine.display().cursorIsShown);
        EXPECT_TRUE(!window || (!isResting() && red() == 0x20));
    };
    for (const auto& deed : deeds)
        for (int kind = 0; kind < 8; ++kind) playOnce(deed, kind & 1, kind & 2, kind & 4);
    EXPECT_EQ(app->tasks().count(), 0U);
}

TEST_F(MovieTest, IsLookedForInTheCurrentDirectoryAndThenInTheSearchPath) {
    begin();
    OMPathAddDirectory("SCRIPTS\\", false);
    OMPathAddDirectory("D:\\RSC\\", false);
    OMPathSetStrict(true);
    files.put("D:\\RSC\\m.smk", "");
    files.put("D:\\RSC\\n.smk", "");
    files.put("m.smk", "");
    for (const char* name : {"m.smk", "n.smk", "D:\\RSC\\m.smk", "lost.smk", ""})
        (void)make(name, at(0, 0));
    EXPECT_THAT(movies.requests, ElementsAre("m.smk -1", "D:\\RSC\\n.smk -1", "D:\\RSC\\m.smk -1"));
}

TEST_F(MovieTest, SoundsAndCopiesWait) {
    OMWaveEngine engine;
    begin();
    files.put("s", RiffSound{.data = std::vector<std::uint8_t>(100, 130)}.build());
    OMIStreamFile stream("s", kOMIStreamCache);
    OMWaveSound sound(stream, false);
    sound.setPlayCount(kOMSoundPlayForever);
    ASSERT_TRUE(sound.play(true));
    const auto isHeard = [&] {
        machine.waveOut().heard.clear();
        pass();
        machine.waveOut().play(1000);
        return !machine.waveOut().heard.empty();
    };
    files.put("c", "x");
    OMCachedFile::cacheInBkgd("c", nullptr, 0, false);
    const auto isCopied = [&] {
        for (int i = 0; i < 20; ++i) {
            (void)OMCachedFile::getBufferSize("c"); // waits for the worker
            pass();
        }
        return OMCachedFile::find("c")->isComplete();
    };
    auto missing = make("missing", at(0, 0));
    auto movie = make("plain", at(0, 0));
    movie->start();
    EXPECT_FALSE(isCopied());
    missing.reset();
    movie->release();
    EXPECT_FALSE(isHeard());
    movie.reset();
    EXPECT_TRUE(isHeard());
    movie = make("plain", {.extraBuffer = 5000, .preload = true});
    movie->start();
    EXPECT_TRUE(isCopied()) << "it needs the drive no more";
    EXPECT_THAT(movies.requests, ElementsAre("missing -1", "plain -1", "plain 5000 preloaded"));
}

TEST_F(MovieTest, LeavesNoTraceOnEitherPageAndSurvivesTheWindow) {
    begin(OMApp::DisplayMode::FullScreen, 8, OMTrinketWindow::Showing::Flipping);
    ASSERT_TRUE(window->isFlipping());
    auto movie = make("plain", at(0, 0));
    movie->start();
    pass();
    EXPECT_EQ(seen(5, 5), 'a');
    machine.display().setInForeground(false);
    nextFrame();
    machine.display().setInForeground(true);
    nextFrame();
    EXPECT_EQ(seen(5, 5), 'c') << "all of it, after the screen was lost";
    movie->stop();
    Tile tile(*window, {300, 300, 310, 310}, 't');
    for (int i = 0; i < 4; ++i) {
        tile.place(300 + i, 300);
        pass();
        EXPECT_EQ(seen(5, 5), 0U);
    }
    movie->start();
    window.reset();
    nextFrame();
    EXPECT_EQ(movies.running, 0);
    movie->start();
    movie->setCollecting(true);
    EXPECT_FALSE(movies.running > 0 || movie->isCollecting());
}

/// Depth, and whether windows have surfaces of that depth or bitmaps of 8 bits.
class DeepMovieTest : public MovieTest, public testing::WithParamInterface<std::pair<int, bool>> {};
INSTANTIATE_TEST_SUITE_P(Depths, DeepMovieTest,
                         testing::Values(std::pair{16, true}, std::pair{24, true},
                                         std::pair{32, true}, std::pair{32, false}));

TEST_P(DeepMovieTest, NewColoursAreSeenInTheWholePicture) {
    const auto [depth, surfaces] = GetParam();
    if (!surfaces) machine.display().enterExclusive({640, 480, depth});
    begin(surfaces ? OMApp::DisplayMode::FullScreen : OMApp::DisplayMode::PopUp, depth);
    movies.files["m"] = {{{{kAll, 'a'}}, 0x40},
                         {{{{0, 0, 2, 2}, 'b'}}, 0x80},
                         {{{{0, 0, 2, 2}, 'c'}}, {}},
                         {{{{0, 0, 2, 2}, 'd'}}, 0xC0},
                         {}};
    const auto hasRed = [&, deep = depth](int x, int y, std::uint32_t red) {
        return seen(x, y) == (deep == 16 ? red >> 3 << 10 : red << 16);
    };
    auto movie = make("m", {});
    movie->start();
    pass();
    EXPECT_TRUE(hasRed(39, 19, 0x40));
    nextFrame();
    EXPECT_EQ(shown, OMRegion(kAll));
    EXPECT_TRUE(hasRed(39, 19, 0x80));
    nextFrame();
    EXPECT_EQ(shown, OMRegion({0, 0, 2, 2}));
    movie->setCollecting(true);
    pass();
    EXPECT_TRUE(hasRed(39, 19, 0x80));
    nextFrame();
    pass();
    EXPECT_TRUE(hasRed(39, 19, 0xC0));
    movie->setCollecting(false);
    EXPECT_TRUE(hasRed(39, 19, 0xC0) && hasRed(1, 1, 0xC0));
    EXPECT_TRUE(failures.empty()) << failures.front();
}

class MovieScriptTest : public ScriptTest {
  protected:
    MovieScriptTest() {
        machine.installedMovies = &movies;
        OMSRegistry::global().registerClass(RSmackerMovie::kClass);
        window.emplace(kScreen, nullptr, "Test");
    }
    ~MovieScriptTest() override { YHeap::recreate(); }
    FakeMovies movies{machine.clock()};
    RMovies shared;
    std::optional<OMTrinketWindow> window;
};

TEST_F(MovieScriptTest, ScriptsReadWhatItIsAndWaitForItsEnd) {
    movies.files["tour.smk"] = FakeMovies::plain(3);
    run("m=RSmackerMovie tour.smk 30 20\n"
        "get m x a\nget m width b\nget m height c\nget m frames d\nget m rate e\n"
        "say a b c d e\n"
        "get m summary a\nget m summary b\nget m summary 16 c\nget m summary 20 d\n"
        "get m summary e\nget m summary -1 f\nsay a b c d e f\n"
        "get m summaryText 9 a\nget m summaryText b\nget m summaryText 17 c\nsay a\nsay b c\n"
        "play m }\nget m frame a\nsay \"played\" a\n",
        60);
    EXPECT_EQ(said(), "30 40 20 3 15\n"
                      "4000000000 4000000001 0 4000000020 0 4000000000\n"
                      "Time necessary to read from the device during SmackWaits (normally idle "
                      "time)\n"
                      "Speed of the device in bytes/second (usually around 2x the spin speed) \n"
                      "played 2\n");
}

TEST_F(MovieScriptTest, AFileThatCannotBePlayedHasZerosAndDoesNothing) {
    run("procedure ended\nsay \"ended\"\n"
        "m=RSmackerMovie gone.smk 30 20 5000 0 1\n"
        "set m finished ended\n"
        "play m addSignals 1 -1\nset m frame 3\nset m collecting 1\n"
        "play m start }\nplay m stop\nplay m release\n"
        "get m width a\nget m frames b\nget m frame c\nget m rate d\nget m summary e\n"
        "get m collecting f\nsay a b c d e f\n");
    EXPECT_EQ(said(), "0 0 0 0 0 0\n");
    EXPECT_THAT(boxes(), ElementsAre());
    int told = 0;
    const RSmackerMovie movie(*window, "gone.smk", {.finished = [&] { ++told; }});
    EXPECT_EQ(told, 1);
    EXPECT_EQ(RSmackerMovie::current(), nullptr);
}

} // namespace
