// The music behind the scenes, as it is heard: fades, pauses, transitions, movies. Scripts show all
// else of scene ports.
#include "scene/rscenprt.h"

#include "ompp/soundfixture.h"

#include "scene/backgroundmusic.h"
#include "scene/scenepause.h"
#include "sound/streamsound.h"

#include <limits>
#include <sstream>

using namespace testing_support;

namespace {

constexpr int kNothing = -1;   ///< is heard
constexpr int kSilence = 0x80; ///< a sample

class ScenePortTest : public SoundTest {
  protected:
    ScenePortTest() {
        files.put("1", RiffSound{.data = Samples(13 * kSize, kSilence + 100)}.build());
        files.put("2", RiffSound{.data = Samples(4 * kSize, kSilence + 50)}.build());
        files.put("4", std::string_view("damaged"));
        app->begin();
        step('D', 0, 0, 0);
        pass(0);
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
    int hearAfter(int ms) {
        for (; ms > 10; ms -= 10) pass(10);
        return pass(ms);
    }
    void expect(const std::string& steps);
    void step(char what, int a, int b, int c);

    ScenePause scene{[this] { return movie; }};
    std::optional<RSoundStreams> streams{[this](int id, int mode) -> std::unique_ptr<OMIStream> {
        asked.push_back(id);
        EXPECT_EQ(mode, kOMIStreamBuffered);
        const std::string name = std::to_string(id);
        if (!files.exists(name)) return nullptr;
        return std::make_unique<OMIStreamFile>(name, mode);
    }};
    BackgroundMusic music{scene};
    bool movie = false;      ///< is current
    std::int64_t time = 123; ///< ms
    std::vector<int> asked;  ///< ids
    std::unique_ptr<RScenePort> port;
};

/// The steps between blanks, each a letter and its numbers: s(tart) id, volume, fade; x stop, fade;
/// v(olume); i(d); e(nabled); p(ause); r(esume); T, t a transition begins, ends; M, m a movie is
/// current, no more; Y, y the device is taken, given back; L, l it is lost, there again; C it is
/// closed; D, d the port is made, goes. 500 waits so many milliseconds, 500=40 hears this volume
/// then, 500=- nothing.
void ScenePortTest::expect(const std::string& steps) {
    SCOPED_TRACE(steps);
    std::istringstream words(steps);
    for (std::string word; words >> word;) {
        if (std::isdigit(static_cast<unsigned char>(word[0]))) {
            const std::size_t sign = word.find('=');
            const int now = hearAfter(std::stoi(word));
            if (sign == std::string::npos) continue;
            const std::string volume = word.substr(sign + 1);
            EXPECT_EQ(now, volume == "-" ? kNothing : std::stoi(volume)) << word;
            continue;
        }
        int n[3]{};
        std::sscanf(word.c_str() + 1, "%d,%d,%d", &n[0], &n[1], &n[2]);
        step(word[0], n[0], n[1], n[2]);
    }
}

void ScenePortTest::step(char what, int a, int b, int c) {
    switch (what) {
    case 's': return music.start(a, b, c);
    case 'x': return music.stop(a);
    case 'v': return music.setVolume(a);
    case 'i': return music.setId(a);
    case 'e': port->setProperty("isBackgroundMusicEnabled", std::to_string(a)); return;
    case 'p': return music.pause();
    case 'r': return music.resume();
    case 'T': return scene.raise(RScenePort::exists());
    case 't': return scene.lower();
    case 'M':
    case 'm': movie = what == 'M'; return;
    case 'Y': return engine.yieldDevice();
    case 'y': return engine.reclaimDevice();
    case 'L':
    case 'l': device.available = what == 'l'; return;
    case 'C': return device.close();
    case 'D': port = std::make_unique<RScenePort>(); return port->takeClass(RScenePort::kClass);
    case 'd': port.reset(); return;
    default: FAIL() << what;
    }
}

class MusicTest : public ScenePortTest, public testing::WithParamInterface<const char*> {};

TEST_P(MusicTest, IsHeardAsItMust) { expect(GetParam()); }

INSTANTIATE_TEST_SUITE_P(
    Steps, MusicTest,
    testing::Values(
        // what is written in the midst of a fade ends it; a fade goes on from where another one
        // would have ended
        "s1,80,2 1000=40 v30 0=30 2000=30 x2 1000=15 v70 2000=70 x2 1000 s1,60,0 2000=60",
        "s1,80,2 1000 i2 0=40 2000=40 i2 0=40",
        "s2,80,0 0 s1,60,2 500=15 x1 0=60 500=30 450=3 60=-",
        // fades that go nowhere, or into the past
        "s1,0,1 0=0 x1 0 0=- s1,50,-3 0=50 x-3 0=-",
        // pauses are counted, and hold the fade; also before there is music
        "s1,100,10 1000=10 p p 3000=- r 500=- r 0=10 r 1000=20",
        "s1,100,0 x0 0=- p v70 s1,70,0 500=- r 0=70",
        "s1,100,0 0=100 p 500 x1 3000=- r 500=50 600=-",
        // transitions hold the fade while there is a port, and the music plays on
        "s1,100,10 1000 T 5000=10 T t 700=10 p t 500 r 0=10 1000=20 p T 500 r 500=20 "
        "d t t 1000=30 T 1000=40 D T 1000=40 s1,100,1 1000=0 t t 500=50",
        // a movie keeps what is paused until the next time
        "M s1,100,10 1000 T t 1000=10 m 1000=10 t 1000=20 M p r 1000=- m 1000=- r 1000=30 "
        "M p r s1,60,0 0=- m s1,80,2 1000=40",
        // music of the time of a movie begins after it, unless it was stopped, or the device is
        // lost
        "Y s1,100,10 3000=- y 0 1000=10", "Y s1,100,0 x1 1100 y 0=-",
        "Y s1,100,0 e0 e1 L y 0=- l s1,100,0 0=100",
        // any other number than there is switches it off and on, with what was asked for meanwhile
        "s1,40,0 e1 0=40 e0 0=- e0 0=- s2,60,5 e0 0=- e7 0 0=30 e7 0=-",
        // what cannot play is remembered; ports come and go
        "s1,40,0 s99,50,2 0=- i4 0=- L C i2 0=- l s2,50,0 0=25 d 0=25",
        // pauses and movies that take the device may cross, with another start between
        "s1,40,0 0=40 Y 0 y 0=40", "s1,40,0 0 Y 0 p 0 y 0=- r 0=40",
        "s1,40,0 0 p 0 Y 0 y 0=- r 0=40", "s1,40,0 0 p 0 Y 0 r 0 y 0=40",
        "s1,40,0 0 Y 0 p 0 r 0 y 0=40", "s1,40,0 0 Y 0 p 0 r 0 p 0 y 0=-",
        "s1,40,0 0 Y 0 s1,40,0 0 y 0=40", "s1,40,0 0 Y 0 p 0 p 0 y 0 r 0=-",
        "s1,40,0 0 Y 0 s2,80,0 0 y 0=40", "s1,40,0 0 p 0 Y 0 s2,80,0 0 y 0 r 0=40",
        "s1,40,0 0 Y 0 s2,80,0 0 p 0 y 0=- r 0=40"));

TEST_F(ScenePortTest, FadesHaveTheirVolumeInEveryPassAlsoWhenTheClockPassesItsEnd) {
    for (const std::uint32_t now : {123u, 0xFFFFFC00u}) {
        time = now;
        pass(0);
        expect("s1,80,2 0=0 24=0 1=0 475=20 30=21 470=40 984=79 16=80 500=80 "
               "x3 1000=54 1000=27 970=1 20=1 20=-");
        scene = ScenePause(); // the time up to the next row is no time of a fade
    }
    constexpr int kLongest = std::numeric_limits<int>::max();
    music.start(1, 100, kLongest);
    EXPECT_EQ(pass(2'000'000'000), 2'000'000'000 / 1000 * 100LL / kLongest);
}

TEST_F(ScenePortTest, MusicThatPlaysIsNotBegunAnew) {
    expect("s1,100,0 0=100 s1,100,0 0=100");
    EXPECT_EQ(asked, std::vector{1});
    streams.reset();
    music.start(2, 100, 0);
    EXPECT_EQ(takeFailures(), Strings{"Stream URL is not installed in RScenePort"});
}

} // namespace
