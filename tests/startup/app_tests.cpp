// The whole program from its start to its end, on a machine in memory.
#include "app.h"

#include "carriedtexts.h"
#include "frameworkfixture.h"

#include "omapp.h"
#include "omappinitterm.h"
#include "startup/memoryexhaustion.h"

#include <new>

using testing_support::FrameworkTest;
using testing_support::MemoryPlatform;

namespace {

class AppTest : public FrameworkTest {
  protected:
    AppTest() {
        OMSetPlatform(&large);
        large.files().put("RSC\\resource.map", std::string("MAINMAP\n1\na.rsc\nRRGB 5\nENDFILE\n"));
        large.files().put("Startup.mps", std::string("quit\n"));
        carryTexts(large);
    }
    ~AppTest() override {
        OMApp::useGDI();
        OMSetPlatform(&machine);
    }
    /// Runs the program with these settings; the log.
    std::string run(const std::string& settings) {
        large.files().put("ZORBET.INI", "[Zorbet Voyages - CD]\r\n" + settings);
        large.display().presented.clear();
        EXPECT_EQ(RGameMain(1), 0);
        return large.files().text("zorbelog.txt");
    }
    /// A text of the program.
    std::string text(int id) {
        return testing_support::toText(large.modules().resources.at({"TEXT", id}));
    }

    MemoryPlatform large{{800, 600, 8}};
};

TEST_F(AppTest, AScreenThatRefusesToSwitchIsDrawnOnAsItIs) {
    for (const bool refuses : {false, true}) {
        large.display().refusesExclusive = refuses;
        const std::string log = run("UseDirectDraw=1\r\nDisplayFullScreen=1\r\n");
        EXPECT_NE(log.find(refuses ? "unable to switch to requested resolution and color depth, "
                                     "using GDI\n"
                                   : "Displaying Full Screen using DirectDraw\n"),
                  std::string::npos);
        EXPECT_EQ(large.display().presented.boundingBox(),
                  (refuses ? platform::Rect{0, 0, 800, 600} : platform::Rect{0, 0, 640, 480}));
        EXPECT_EQ(large.display().mode(), (platform::ScreenMode{800, 600, 8})) << "as it was";
        EXPECT_TRUE(takeFailures().empty());
    }
}

TEST_F(AppTest, AStartIsToldInTheLog) {
    EXPECT_EQ(run(""), "Starting Logging, Debug Level set to ALL\n\n"
                       "Data file is: C:\\GAME\\ZORBET.DAT\n"
                       "World Memory - starting up!\n"
                       "Using for .INI file: C:\\GAME\\ZORBET.INI\n"
                       "CD Drive not found\n"
                       "Using CD Drive: D:\\\n"
                       "Free memory: 67108864\n"
                       "WAVE driver is available\n"
                       "Current screen size is 800 X 600\n"
                       "Current screen bit depth: 8\n"
                       "DirectDraw is available\n"
                       "Using GDI\n"
                       "HD Free Space on Drive C: 1073741824\n"
                       "World Memory shutting down\n"
                       "World Memory - writing data file, sDataFileActive: 0\n"
                       "World Memory - reading data file, sDataFileActive: 1\n"
                       "\nClosing Log\n\n");
}

TEST_F(AppTest, AMachineThatIsRefusedLosesNothing) {
    const std::string saved = "informColorsWarning\n5\nGLOBAL_END\n";
    large.files().put("ZORBET.DAT", saved);
    large.waveOut().available = false;
    const std::string log = run("");
    EXPECT_NE(log.find("WAVE driver is not available\nWorld Memory shutting down\n"),
              std::string::npos)
        << log;
    EXPECT_EQ(large.files().text("ZORBET.BAK"), saved);
    EXPECT_NE(large.files().text("ZORBET.DAT").find("informColorsWarning\n5\n"), std::string::npos);
}

TEST_F(AppTest, ADamagedWorldIsKeptBesideBeforeItIsReplaced) {
    const std::string damaged = "GLOBAL_END\n" + std::string(100, '\1');
    large.files().put("ZORBET.DAT", damaged);
    run("");
    EXPECT_EQ(large.files().text("ZORBET.BAD"), damaged);
    const std::string saved = large.files().text("ZORBET.DAT");
    run("");
    EXPECT_EQ(large.files().text("ZORBET.DAT"), saved) << "two saves are the same";
}

TEST_F(AppTest, AScriptThatIsMissingEndsTheProgramButNotTheWorld) {
    large.files().put("Startup.mps",
                      std::string("yield off\nworld=RWorldPort 0\nplay world activateDataFile\n"
                                  "play world activatePlayer \"Ana\"\nrelay \"nosuch.mps\"\n"));
    const auto saved = [&] {
        large.files().put("ZORBET.INI", "[Zorbet Voyages - CD]\r\nUseDirectDraw=1\r\n");
        large.atEnd = [&] {
            std::fputs(large.files().text("ZORBET.DAT").find("playerName\nAna\n") !=
                               std::string::npos
                           ? "Ana is saved"
                           : "Ana is lost",
                       stderr);
        };
        (void)RGameMain(1);
    };
    EXPECT_EXIT(saved(), testing::ExitedWithCode(1), "Ana is saved");
}

TEST_F(AppTest, EveryEndIsToldWhileScriptsCanHearIt) {
    const std::string script = "yield off\n"
                               "procedure bye\n[\nget port backgroundMusicID id\n"
                               "say \"bye\" id\nquit\n]\n"
                               "procedure leave\n[\nquit\nsay \"never\"\n]\n"
                               "port=RScenePort 0\nset port exittingGame bye\n"
                               "set port spacebarPressed leave\n";
    const auto send = [&](platform::Message::Kind kind, int command = 0) {
        large.events().queue.resize(2); // while the script begins
        large.events().queue.push_back({.kind = kind, .command = command});
    };
    using Kind = platform::Message::Kind;
    const struct {
        const char* what;
        OMLink happens;
        const char* more; ///< in the script
    } rows[] = {
        {"the window is closed", [&] { send(Kind::Quit); }, ""},
        {"the exit screen", [&] { send(Kind::Command, 59396); }, ""},
        {"the script quits", nullptr, "quit\n"},
        {"it has another one read", nullptr, "quit \"other.mps\"\n"},
        {"a handler quits", [&] { send(Kind::Command, 32); }, ""},
    };
    large.dialogs().answer = platform::Button::Yes;
    large.files().put("other.mps", std::string("say \"never\"\n"));
    for (const auto& row : rows) {
        large.files().put("Startup.mps", script + row.more);
        large.files().erase("debug.txt");
        row.happens();
        run("UseDirectDraw=1\r\n");
        EXPECT_EQ(large.files().text("debug.txt"), "bye -1\n") << row.what;
    }
    EXPECT_EQ(large.dialogs().boxes.size(), 1u) << "the exit screen only";
}

TEST_F(AppTest, WithoutMemoryThePersonIsToldAndTheProcessEnds) {
    const auto exhaust = [] {
        const RMemoryHandler handler;
        std::get_new_handler()();
    };
    EXPECT_EXIT(exhaust(), testing::ExitedWithCode(1), text(1021));
}

TEST_F(AppTest, PartsOfTheProgramMayBeginBeforeItAndEndAfterIt) {
    static std::string done;
    static MemoryPlatform* computer = nullptr;
    computer = &large;
    large.files().erase("zorbelog.txt");
    const OMAppInitTerm first([] { done += computer->files().exists("zorbelog.txt") ? "?" : "a"; },
                              [] { done += "A"; });
    const OMAppInitTerm second([] { done += "b"; }, nullptr);
    const OMAppInitTerm third(nullptr, [] { done += "C"; });
    run("UseDirectDraw=1\r\n");
    EXPECT_EQ(done, "abCA");
}

} // namespace
