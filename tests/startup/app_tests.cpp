// The whole program from its start to its end, on a machine in memory.
#include "app.h"

#include "carriedtexts.h"
#include "frameworkfixture.h"

#include "omapp.h"
#include "omappinitterm.h"
#include "startup/memoryexhaustion.h"

#include <new>

using testing_support::MemoryPlatform;
using MessageKind = platform::Message::Kind;

namespace {

class AppTest : public testing_support::FrameworkTest {
  protected:
    AppTest() {
        OMSetPlatform(&large);
        put("RSC\\resource.map", "MAINMAP\n1\na.rsc\nRRGB 5\nENDFILE\n");
        put("Startup.mps", "quit\n");
        carryTexts(large);
    }
    ~AppTest() override {
        OMApp::useGDI();
        OMSetPlatform(&machine);
    }
    void put(const char* name, const std::string& text) { large.files().put(name, text); }
    std::string text(const char* name) { return large.files().text(name); }
    bool has(const char* name, const char* part) {
        return text(name).find(part) != std::string::npos;
    }
    /// Runs the program with these settings.
    void run(const std::string& settings = "UseDirectDraw=1\r\n", int code = 0) {
        put("ZORBET.INI", "[Zorbet Voyages - CD]\r\n" + settings);
        large.display().presented.clear();
        EXPECT_EQ(RGameMain(1), code);
    }

    MemoryPlatform large{{800, 600, 8}};
};

TEST_F(AppTest, AScreenThatRefusesToSwitchIsDrawnOnAsItIs) {
    for (const bool refuses : {false, true}) {
        large.display().refusesExclusive = refuses;
        run("UseDirectDraw=1\r\nDisplayFullScreen=1\r\n");
        EXPECT_TRUE(has("zorbelog.txt",
                        refuses ? "unable to switch to requested resolution and color depth, "
                                  "using GDI\n"
                                : "Displaying Full Screen using DirectDraw\n"));
        EXPECT_EQ(large.display().presented.boundingBox(),
                  (refuses ? platform::Rect{0, 0, 800, 600} : platform::Rect{0, 0, 640, 480}));
        EXPECT_EQ(large.display().mode(), (platform::ScreenMode{800, 600, 8})) << "as it was";
        EXPECT_TRUE(takeFailures().empty());
    }
}

TEST_F(AppTest, AStartIsToldInTheLog) {
    run("");
    EXPECT_EQ(text("zorbelog.txt"), R"(Starting Logging, Debug Level set to ALL

Data file is: C:\GAME\ZORBET.DAT
World Memory - starting up!
Using for .INI file: C:\GAME\ZORBET.INI
CD Drive not found
Using CD Drive: D:\
Free memory: 67108864
WAVE driver is available
Current screen size is 800 X 600
Current screen bit depth: 8
DirectDraw is available
Using GDI
HD Free Space on Drive C: 1073741824
World Memory shutting down
World Memory - writing data file, sDataFileActive: 0
World Memory - reading data file, sDataFileActive: 1

Closing Log

)");
}

TEST_F(AppTest, AMachineThatIsRefusedLosesNothing) {
    const std::string saved = "informColorsWarning\n5\nGLOBAL_END\n";
    put("ZORBET.DAT", saved);
    large.waveOut().available = false;
    run("");
    EXPECT_TRUE(has("zorbelog.txt", "WAVE driver is not available\nWorld Memory shutting down\n"));
    EXPECT_EQ(text("ZORBET.BAK"), saved);
    EXPECT_TRUE(has("ZORBET.DAT", "informColorsWarning\n5\n"));
}

TEST_F(AppTest, ADamagedWorldIsKeptBesideBeforeItIsReplaced) {
    const std::string damaged = "GLOBAL_END\n" + std::string(100, '\1');
    put("ZORBET.DAT", damaged);
    run();
    EXPECT_EQ(text("ZORBET.BAD"), damaged);
    const std::string saved = text("ZORBET.DAT");
    run();
    EXPECT_EQ(text("ZORBET.DAT"), saved) << "two saves are the same";
}

TEST_F(AppTest, AScriptThatIsMissingEndsTheProgramButNotTheWorld) {
    put("Startup.mps", "yield off\nworld=RWorldPort 0\nplay world activateDataFile\n"
                       "play world activatePlayer \"Ana\"\nrelay \"nosuch.mps\"\n");
    large.atEnd = [&] {
        std::fputs(has("ZORBET.DAT", "playerName\nAna\n") ? "Ana is saved" : "Ana is lost", stderr);
    };
    EXPECT_EXIT(run(), testing::ExitedWithCode(1), "Ana is saved");
}

TEST_F(AppTest, EveryEndIsToldWhileScriptsCanHearIt) {
    const auto expectEnd = [&](const std::string& more, MessageKind kind = MessageKind::Null,
                               int command = 0) {
        SCOPED_TRACE(more + std::to_string(command));
        put("Startup.mps", "yield off\nprocedure bye\n[\nget port backgroundMusicID id\n"
                           "say \"bye\" id\nquit\n]\nprocedure leave\n[\nquit\nsay \"never\"\n]\n"
                           "port=RScenePort 0\nset port exittingGame bye\n"
                           "set port spacebarPressed leave\n" +
                               more);
        large.files().erase("debug.txt");
        large.events().queue.resize(2); // while the script begins
        large.events().queue.push_back({.kind = kind, .command = command});
        run();
        EXPECT_EQ(text("debug.txt"), "bye -1\n");
    };
    large.dialogs().answer = platform::Button::Yes;
    put("other.mps", "say \"never\"\n");
    expectEnd("", MessageKind::Quit);           // the window is closed
    expectEnd("", MessageKind::Command, 59396); // the exit screen
    EXPECT_EQ(large.dialogs().boxes.size(), 1u);
    expectEnd("quit\n");
    expectEnd("quit \"other.mps\"\n");       // it has another one read
    expectEnd("", MessageKind::Command, 32); // a handler quits
    EXPECT_EQ(large.dialogs().boxes.size(), 1u);
}

TEST_F(AppTest, WithoutMemoryThePersonIsToldAndTheProcessEnds) {
    const auto exhaust = [] {
        const RMemoryHandler handler;
        std::get_new_handler()();
    };
    EXPECT_EXIT(exhaust(), testing::ExitedWithCode(1),
                testing_support::toText(large.modules().resources.at({"TEXT", 1021})));
}

TEST_F(AppTest, PartsOfTheProgramMayBeginBeforeItAndEndAfterIt) {
    static std::string done;
    static MemoryPlatform* computer = nullptr;
    computer = &large;
    const OMAppInitTerm first([] { done += computer->files().exists("zorbelog.txt") ? "?" : "a"; },
                              [] { done += "A"; });
    const OMAppInitTerm second([] { done += "b"; }, nullptr);
    const OMAppInitTerm third(nullptr, [] { done += "C"; });
    run();
    EXPECT_EQ(done, "abCA");
}

} // namespace
