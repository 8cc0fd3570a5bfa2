// Scene ports: events, clicks on the background, the music behind the scenes and its fades.
#include "formats/picture/palette.h"
#include "scene/rscenprt.h"

#include "ompp/soundfixture.h"
#include "trinkets/windowfixture.h"

#include "scene/backgroundmusic.h"
#include "scene/efwindow.h"
#include "sound/streamsound.h"

#include <algorithm>
#include <array>
#include <limits>

using namespace testing_support;
using platform::Point;

namespace {

using Strings = std::vector<std::string>;
using Port = std::unique_ptr<RScenePort>;

constexpr int kNothing = -1;   ///< is heard
constexpr int kLouder = 1;     ///< a sound whose samples are 100 above silence
constexpr int kSofter = 2;     ///< 50 above silence
constexpr int kSilence = 0x80; ///< a sample

class ScenePortTest : public SoundTest {
  protected:
    ScenePortTest() {
        files.put("1", RiffSound{.data = Samples(13 * kSize, kSilence + 100)}.build());
        files.put("2", RiffSound{.data = Samples(4 * kSize, kSilence + 50)}.build());
        app->begin();
        pass(0);
    }

    static Port make() {
        auto made = std::make_unique<RScenePort>();
        made->takeClass(RScenePort::kClass);
        return made;
    }
    /// What is heard at the end of a pass of so many milliseconds.
    int pass(int ms) {
        time += ms;
        machine.clock().now = static_cast<std::uint32_t>(time);
        app->pass();
        heard();
        device.play(1);
        const Samples now = heard();
        return now.empty() ? kNothing : now.back() - kSilence;
    }
    int hear() { return pass(0); }
    int hearAfter(int ms) {
        for (; ms > 10; ms -= 10) pass(10);
        return pass(ms);
    }
    /// Compares every pass with the volume that the fade must have, for the given time.
    void expectFade(int from, int to, int seconds, int ms) {
        const std::int64_t begin = time;
        for (int passed = 7; passed <= ms; passed += 7) {
            const std::int64_t ticks = (begin + passed) * 60 / 1000 - begin * 60 / 1000;
            const bool over = ticks >= seconds * 60;
            const auto volume = static_cast<int>(from + ticks * (to - from) / (seconds * 60));
            ASSERT_EQ(pass(7), over ? to : volume) << passed << " ms after the beginning";
        }
    }

    ScenePause scene;
    EffectsWindow window{{0, 0}, "Game"};
    RSoundStreams streams{[this](int id, int mode) -> std::unique_ptr<OMIStream> {
        asked.push_back(id);
        EXPECT_EQ(mode, kOMIStreamBuffered);
        const std::string name = std::to_string(id);
        if (!files.exists(name)) return nullptr;
        return std::make_unique<OMIStreamFile>(name, mode);
    }};
    BackgroundMusic music{scene};
    std::int64_t time = 123; ///< ms
    std::vector<int> asked;  ///< ids
    Port port = make();
};

// Fades

TEST_F(ScenePortTest, FadesHaveTheirVolumeInEveryPass) {
    for (const std::uint32_t now : {123u, 0xFFFFFC00u}) {
        SCOPED_TRACE(now);
        time = now; // the second one passes the end of the clock
        pass(0);
        port->invoke("startBackgroundMusic", {"1", "80", "2"});
        EXPECT_EQ(hear(), 0);
        expectFade(0, 80, 2, 2100);
        port->invoke("stopBackgroundMusic", {"3"});
        expectFade(80, 0, 3, 2900);
        EXPECT_EQ(hearAfter(100), kNothing);
        EXPECT_EQ(port->getProperty("backgroundMusicVolume"), "80");
        EXPECT_EQ(port->getProperty("backgroundMusicID"), "1");
        scene = ScenePause(); // the time up to the next row is no time of a fade
    }
}

TEST_F(ScenePortTest, WhatIsWrittenInTheMiddleOfAFadeEndsIt) {
    port->invoke("startBackgroundMusic", {"1", "80", "2"});
    expectFade(0, 80, 2, 1000);
    port->setProperty("backgroundMusicVolume", "30");
    EXPECT_EQ(hear(), 30);
    EXPECT_EQ(hearAfter(2000), 30);

    port->invoke("stopBackgroundMusic", {"2"});
    hearAfter(1000);
    port->setProperty("backgroundMusicVolume", "70");
    EXPECT_EQ(hearAfter(2000), 70) << "it has not stopped";

    port->invoke("stopBackgroundMusic", {"2"});
    hearAfter(1000);
    port->invoke("startBackgroundMusic", {"1", "60"});
    EXPECT_EQ(hearAfter(2000), 60) << "it has been started again";

    port->invoke("startBackgroundMusic", {"1", "80", "2"});
    hearAfter(1000);
    port->setProperty("backgroundMusicID", "2");
    EXPECT_EQ(hear(), 40) << "at once at the volume that there is";
    EXPECT_EQ(hearAfter(2000), 40);
    port->setProperty("backgroundMusicID", "2");
    EXPECT_EQ(asked, (std::vector{1, 2})) << "the same id does nothing";

    port->invoke("startBackgroundMusic", {"1", "60", "2"});
    hearAfter(500);
    port->invoke("stopBackgroundMusic", {"1"});
    expectFade(60, 0, 1, 900); // from where the other would have ended
    EXPECT_EQ(hearAfter(200), kNothing);
}

TEST_F(ScenePortTest, FadesThatGoNowhereEndAndLongOnesDoNotOverflow) {
    music.start(kLouder, 0, 1);
    EXPECT_EQ(hear(), 0);
    music.stop(1);
    hear();
    EXPECT_EQ(hear(), kNothing) << "it was silent already";
    music.start(kLouder, 50, -3);
    EXPECT_EQ(hear(), 50);
    music.stop(-3);
    EXPECT_EQ(hear(), kNothing);
    music.start(kLouder, 100, std::numeric_limits<int>::max());
    EXPECT_EQ(pass(2'000'000'000), 2'000'000'000 / 1000 * 100LL / std::numeric_limits<int>::max());
}

// Pauses

TEST_F(ScenePortTest, PausesAreCountedAndHoldTheFade) {
    port->invoke("startBackgroundMusic", {"1", "100", "10"});
    EXPECT_EQ(hearAfter(1000), 10);
    port->invoke("pauseBackgroundMusic");
    port->invoke("pauseBackgroundMusic");
    EXPECT_EQ(hearAfter(3000), kNothing);
    port->invoke("resumeBackgroundMusic");
    EXPECT_EQ(hearAfter(500), kNothing);
    port->invoke("resumeBackgroundMusic");
    EXPECT_EQ(hear(), 10);
    port->invoke("resumeBackgroundMusic"); // not below 0
    EXPECT_EQ(hearAfter(1000), 20);

    port->invoke("pauseBackgroundMusic");
    hearAfter(500);
    port->invoke("stopBackgroundMusic", {"1"}); // begins when the music goes on
    EXPECT_EQ(hearAfter(3000), kNothing);
    port->invoke("resumeBackgroundMusic");
    EXPECT_EQ(hearAfter(500), 50) << "half way from 100 to 0";
    EXPECT_EQ(hearAfter(600), kNothing);

    port->invoke("pauseBackgroundMusic");
    port->setProperty("backgroundMusicVolume", "70");
    port->invoke("startBackgroundMusic", {});
    EXPECT_EQ(hearAfter(500), kNothing) << "the pause was before the music";
    port->invoke("resumeBackgroundMusic");
    EXPECT_EQ(hear(), 70);
}

TEST_F(ScenePortTest, TransitionsHoldTheFadeAndTheMusicPlaysOn) {
    const auto transition = [&](bool begins) {
        begins ? scene.raise(RScenePort::exists()) : scene.lower();
    };
    music.start(kLouder, 100, 10);
    hearAfter(1000);
    transition(true);
    EXPECT_EQ(hearAfter(5000), 10);
    transition(true);
    transition(false);
    EXPECT_EQ(hearAfter(700), 10) << "the outer one goes on";
    music.pause(); // both hold it; either is enough
    transition(false);
    hearAfter(500);
    music.resume();
    EXPECT_EQ(hear(), 10);
    EXPECT_EQ(hearAfter(1000), 20);
    music.pause();
    transition(true);
    hearAfter(500);
    music.resume();
    EXPECT_EQ(hearAfter(500), 20);
    port.reset(); // as the script of a scene goes
    transition(false);
    transition(false); // not below 0
    EXPECT_EQ(hearAfter(1000), 30);
    transition(true);
    EXPECT_EQ(hearAfter(1000), 40) << "nothing is paused without a port";
    port = make();
    transition(true);
    EXPECT_EQ(hearAfter(1000), 40);
    music.start(kLouder, 100, 1); // begins when the transition ends
    EXPECT_EQ(hearAfter(1000), 0);
    transition(false);
    transition(false);
    EXPECT_EQ(hearAfter(500), 50);
}

TEST_F(ScenePortTest, AMovieKeepsWhatIsPausedUntilTheNextTime) {
    bool movie = true;
    scene = ScenePause([&] { return movie; });
    music.start(kLouder, 100, 10);
    hearAfter(1000);
    scene.raise(true);
    scene.lower();
    EXPECT_EQ(hearAfter(1000), 10);
    movie = false;
    EXPECT_EQ(hearAfter(1000), 10);
    scene.lower();
    EXPECT_EQ(hearAfter(1000), 20);

    movie = true;
    music.pause();
    music.resume();
    EXPECT_EQ(hearAfter(1000), kNothing);
    movie = false;
    EXPECT_EQ(hearAfter(1000), kNothing);
    music.resume();
    EXPECT_EQ(hearAfter(1000), 30);

    movie = true;
    music.pause();
    music.resume();
    music.start(kLouder, 60, 0);
    EXPECT_EQ(hear(), kNothing);
    movie = false;
    music.start(kLouder, 80, 2); // the same sound
    EXPECT_EQ(hearAfter(1000), 40);
}

TEST_F(ScenePortTest, PausesAndMoviesThatTakeTheDeviceMayCross) {
    const struct {
        /// p(ause), r(esume), y(ield the device), b(ack), s(tart again), n(ext music)
        const char* steps;
        bool plays;
    } rows[] = {
        {"yb", true},   {"ypb", false},  {"ypbr", true},   {"pyb", false},  {"pybr", true},
        {"pyrb", true}, {"yprb", true},  {"yprpb", false}, {"ysb", true},   {"yppbr", false},
        {"ynb", true},  {"pynbr", true}, {"ynpb", false},  {"ynpbr", true},
    };
    for (const auto& row : rows) {
        music.start(kLouder, 40, 0);
        ASSERT_EQ(hear(), 40) << row.steps;
        for (const char step : std::string(row.steps)) {
            if (step == 'p') music.pause();
            if (step == 'r') music.resume();
            if (step == 'y') engine.yieldDevice();
            if (step == 'b') engine.reclaimDevice();
            if (step == 's') music.start(kLouder, 40, 0);
            if (step == 'n') music.start(kSofter, 80, 0);
            hear();
        }
        EXPECT_EQ(hear(), row.plays ? 40 : kNothing) << row.steps;
        music.stop(0);
        for (int i = 0; i < 3; ++i) music.resume();
    }
}

TEST_F(ScenePortTest, MusicThatIsStartedDuringAMovieBeginsAfterIt) {
    engine.yieldDevice();
    music.start(kLouder, 100, 10);
    EXPECT_EQ(hearAfter(3000), kNothing);
    engine.reclaimDevice();
    hear();
    EXPECT_EQ(hearAfter(1000), 10) << "the fade began with it";
    music.stop(0);

    engine.yieldDevice();
    music.start(kLouder, 100, 0);
    music.stop(1);
    hearAfter(1100);
    engine.reclaimDevice();
    EXPECT_EQ(hear(), kNothing) << "it was stopped meanwhile";

    engine.yieldDevice();
    music.start(kLouder, 100, 0);
    music.setEnabled(false);
    music.setEnabled(true);
    device.available = false;
    engine.reclaimDevice();
    EXPECT_EQ(hear(), kNothing) << "the device is lost";
    device.available = true;
    music.start(kLouder, 100, 0);
    EXPECT_EQ(hear(), 100);
}

// The sound

TEST_F(ScenePortTest, TheLastArgumentSaysWhichOnesCount) {
    using Arguments = std::initializer_list<std::string_view>;
    const struct {
        Arguments arguments;
        int id;
        int volume;
        int heard;
    } rows[] = {
        {{}, 1, 40, 40},
        {{"2"}, 2, 40, 20},
        {{"2", "90"}, 2, 90, 45},
        {{"", "90"}, 0, 90, kNothing},
        {{"", "", "1"}, 0, 0, kNothing},
        {{"2", "", "1"}, 2, 0, 0},
        {{"2", "300", ""}, 2, 100, 50},
        {{"2", "-5"}, 2, 0, 0},
        {{"-1"}, -1, 40, kNothing},
        {{"65535"}, -1, 40, kNothing},
    };
    for (const auto& row : rows) {
        music.start(kLouder, 40, 0);
        asked.clear();
        port->invoke("startBackgroundMusic", row.arguments);
        EXPECT_EQ(port->getProperty("backgroundMusicID"), std::to_string(row.id));
        EXPECT_EQ(port->getProperty("backgroundMusicVolume"), std::to_string(row.volume));
        EXPECT_EQ(hear(), row.heard) << row.id << ' ' << row.volume;
    }
    EXPECT_EQ(asked, std::vector<int>{}) << "no id for nothing";
}

TEST_F(ScenePortTest, MusicThatPlaysIsNotBegunAnew) {
    files.put("3", RiffSound{.data = {200, 201, 202, 203, 204, 205, 206, 207}}.build());
    music.start(3, 100, 0);
    for (int i = 0; i < 12; ++i) {
        if (i % 4 == 3) music.start(3, 100, 0);
        device.play(kSize);
        engine.service();
    }
    const Samples all = heard();
    for (std::size_t i = 0; i < all.size(); ++i) EXPECT_EQ(all[i], 200 + i % kSize);
    EXPECT_EQ(asked, std::vector{3});
}

TEST_F(ScenePortTest, WritingAnotherValueTogglesTheMusic) {
    const auto write = [&](const char* value) {
        port->setProperty("isBackgroundMusicEnabled", value);
        return *port->getProperty("isBackgroundMusicEnabled") + (hear() > 0 ? " heard" : "");
    };
    music.start(kLouder, 40, 0);
    EXPECT_EQ(write("1"), "1 heard");
    EXPECT_EQ(write("0"), "0");
    EXPECT_EQ(music.id(), kLouder);
    EXPECT_EQ(write("0"), "0");
    port->invoke("startBackgroundMusic", {"2", "60", "5"});
    EXPECT_EQ(write("0"), "0");
    EXPECT_EQ(write("7"), "1 heard");
    EXPECT_EQ(hear(), 30) << "the id and the volume that were asked for meanwhile, without a fade";
    EXPECT_EQ(write("7"), "0") << "7 is not what is stored";
}

TEST_F(ScenePortTest, WhatCannotPlayIsRemembered) {
    music.start(kLouder, 40, 0);
    port->invoke("startBackgroundMusic", {"99", "50", "2"});
    EXPECT_EQ(hear(), kNothing);
    EXPECT_EQ(music.id(), 99);
    EXPECT_EQ(music.volume(), 50);
    EXPECT_EQ(takeFailures(), Strings{});
    RSoundStreams::setCurrent(nullptr);
    music.setId(kSofter);
    EXPECT_EQ(takeFailures(), Strings{"Stream URL is not installed in RScenePort"});
    EXPECT_EQ(hear(), kNothing);
    RSoundStreams::setCurrent(&streams);
    files.put("4", std::string_view("damaged"));
    music.setId(4);
    EXPECT_EQ(hear(), kNothing);
    takeFailures();
    device.available = false;
    device.close();
    music.setId(kSofter);
    EXPECT_EQ(hear(), kNothing);
    device.available = true;
    port->invoke("startBackgroundMusic", {});
    EXPECT_EQ(hear(), 25) << "the device is there now";
    port.reset();
    EXPECT_EQ(hear(), 25) << "ports come and go";
}

// Events

TEST_F(ScenePortTest, AllPortsAreToldInTheirOrderWhateverTheyDo) {
    std::array<Port, 4> ports{make(), make(), make(), make()};
    std::string told;
    Port late;
    const auto listen = [&](std::size_t i, OMLink after) {
        ports.at(i)->attachHandler("paused", [&told, i, after] {
            told += std::to_string(i);
            after();
        });
    };
    listen(0, [&] { ports[2].reset(); });
    listen(1, [&] {
        late = make();
        late->attachHandler("paused", [&] { told += "late"; });
        ports[1].reset();
        if (told.size() < 6) RScenePort::tellPaused();
    });
    listen(2, nullptr);
    listen(3, nullptr);
    RScenePort::tellPaused();
    EXPECT_EQ(told, "0103late3");
}

TEST_F(ScenePortTest, ClicksArriveInWhateverOrderPortsGo) {
    AseqBuilder picture;
    picture.block(640, 480, 'p').sequence({{0, 0, -1, 0}, {0, 0, 0, 0}});
    window.setBackgroundLocator(
        [bytes = picture.build()](int) { return std::make_unique<MemoryStream>(bytes); });
    window.setPaletteLocator(
        [](int) { return std::make_unique<MemoryStream>(Bytes(formats::picture::kPaletteSize)); });
    port.reset();
    std::string told;
    window.input().defaults().mouseDown = [&](Point) { told += "-"; };
    const auto click = [&] {
        window.mouseDown({30, 30});
        window.mouseUp({30, 30});
        return std::exchange(told, {});
    };
    std::array order{0, 1, 2};
    do {
        std::array<Port, 3> ports;
        for (std::size_t i = 0; i < ports.size(); ++i) {
            ports.at(i) = make();
            ports.at(i)->attachHandler("backgroundClicked", [&, i] { told += std::to_string(i); });
        }
        std::string all = "012";
        for (const int gone : order) {
            window.setBackground(nullptr);
            EXPECT_EQ(click(), all);
            window.restorePalette(1, 1); // a new background knows nobody
            EXPECT_EQ(click(), all);
            ports.at(static_cast<std::size_t>(gone)).reset();
            std::erase(all, static_cast<char>('0' + gone));
        }
        EXPECT_EQ(click(), "-") << "what was there before";
    } while (std::ranges::next_permutation(order).found);
}

} // namespace
