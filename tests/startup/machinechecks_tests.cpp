// What the start looks at: each check passed and failed, warnings answered and switched off.
#include "startup/machinechecks.h"

#include "carriedtexts.h"
#include "frameworkfixture.h"

#include "omwaveengine.h"

#include <functional>
#include <map>

using testing_support::FrameworkTest;
using testing_support::MemoryPlatform;

namespace {

using Mode = OMApp::DisplayMode;
using Strings = std::vector<std::string>;

/// A machine to be looked at, and what is to be seen then.
struct Case {
    const char* name;
    platform::ScreenMode screen{640, 480, 8};
    bool surfaces = false;
    bool fullScreen = false;
    std::function<void(MemoryPlatform&)> lack = [](MemoryPlatform&) {};
    std::vector<int> texts; ///< of the boxes, in their order
    std::optional<Mode> mode;
    std::string logged; ///< among other lines
};

class MachineChecksTest : public FrameworkTest {
  protected:
    ~MachineChecksTest() override {
        OMApp::useGDI();
        OMSetPlatform(&machine);
    }

    std::optional<Mode> check(MemoryPlatform& computer, bool surfaces, bool fullScreen) {
        OMSetPlatform(&computer);
        carryTexts(computer);
        RConfiguration configuration;
        configuration.homeDirectory = "C:\\GAME\\";
        configuration.useDirectDraw = surfaces;
        configuration.displayFullScreen = fullScreen;
        OMWaveEngine engine;
        const auto mode = RCheckMachine(
            configuration, engine,
            {.read = [this](std::string_view name) { return switches[std::string(name)]; },
             .write = [this](std::string_view name,
                             std::string_view value) { switches[std::string(name)] = value; }});
        OMSetPlatform(&machine);
        return mode;
    }
    static Strings boxes(MemoryPlatform& computer) {
        Strings texts;
        for (const auto& box : computer.dialogs().boxes) texts.push_back(box.text);
        return texts;
    }
    static std::string text(int id) {
        for (const platform::ProgramResource& resource : carriedTexts().resources())
            if (resource.id == id) return testing_support::toText(resource.bytes);
        ADD_FAILURE() << "no text " << id;
        return {};
    }

    std::map<std::string, std::string> switches{{"informResolutionWarning", "1"},
                                                {"informColorsWarning", "1"},
                                                {"informDirectDrawNotFoundWarning", "1"},
                                                {"informDirectDrawSwitchFailedWarning", "1"}};
};

using Driver = platform::HostDisplay::Driver;

TEST_F(MachineChecksTest, EveryMachineIsRunOnOrRefusedAsItShould) {
    const Case cases[] = {
        {.name = "386",
         .lack = [](MemoryPlatform& c) { c.machine().intel386 = true; },
         .texts = {1010},
         .logged = "ERROR: x386 found, cannot run\n"},
        {.name = "memory",
         .lack = [](MemoryPlatform& c) { c.machine().memory = 8'388'607; },
         .texts = {1020},
         .logged = "Free memory: 8388607\n"},
        {.name = "just enough memory",
         .lack = [](MemoryPlatform& c) { c.machine().memory = 8'388'608; },
         .mode = Mode::PopUp,
         .logged = "WAVE driver is available\n"},
        {.name = "sound",
         .lack = [](MemoryPlatform& c) { c.waveOut().available = false; },
         .texts = {1019},
         .logged = "Free memory: 67108864\nWAVE driver is not available\n"},
        {.name = "silence",
         .lack = [](MemoryPlatform& c) { c.waveOut().silence = "unplugged"; },
         .mode = Mode::PopUp,
         .logged = "Warning: No sound is heard (unplugged). The game goes on silently; to hear it, "
                   "connect a sound device or start the sound server, and start the game again\n"
                   "WAVE driver is not available\nCurrent screen"},
        {.name = "large screen",
         .screen = {800, 600, 8},
         .texts = {1015},
         .mode = Mode::PopUp,
         .logged = "Current screen size is 800 X 600\nCurrent screen bit depth: 8\n"
                   "DirectDraw is available\nUsing GDI\n"},
        {.name = "deep", .screen = {640, 480, 32}, .texts = {1017}, .mode = Mode::PopUp},
        {.name = "shallow", .screen = {640, 480, 4}, .texts = {1018}},
        {.name = "narrow", .screen = {639, 600, 16}, .texts = {1016}},
        {.name = "low", .screen = {800, 479, 8}, .texts = {1016}},
        {.name = "surfaces",
         .screen = {800, 600, 16},
         .surfaces = true,
         .mode = Mode::PopUp,
         .logged = "Displaying in upper left corner using DirectDraw\n"},
        {.name = "no driver",
         .surfaces = true,
         .lack = [](MemoryPlatform& c) { c.display().setDriver(Driver::None); },
         .texts = {1002},
         .mode = Mode::PopUp,
         .logged = "DirectDraw is not available\n"
                   "Warning: Trying to use DirectDraw, but unable to load DLL, using GDI\n"},
        {.name = "fixed mode",
         .surfaces = true,
         .fullScreen = true,
         .lack = [](MemoryPlatform& c) { c.display().setDriver(Driver::FixedMode); },
         .texts = {1001},
         .mode = Mode::PopUp,
         .logged = "Warning: Trying to use DirectDraw, but unable to switch to requested "
                   "resolution and color depth, using GDI\n"},
    };
    for (const Case& row : cases) {
        SCOPED_TRACE(row.name);
        MemoryPlatform computer(row.screen);
        row.lack(computer);
        EXPECT_EQ(check(computer, row.surfaces, row.fullScreen), row.mode);
        Strings expected;
        for (const int id : row.texts) expected.push_back(text(id));
        EXPECT_EQ(boxes(computer), expected);
        EXPECT_NE(computer.files().text("zorbelog.txt").find(row.logged), std::string::npos)
            << computer.files().text("zorbelog.txt");
        OMApp::useGDI();
    }
}

TEST_F(MachineChecksTest, AFullDriveIsNamed) {
    MemoryPlatform computer;
    computer.files().space = 10'485'760;
    EXPECT_EQ(check(computer, false, false), Mode::PopUp);
    computer.files().space -= 1;
    EXPECT_EQ(check(computer, false, false), std::nullopt);
    EXPECT_EQ(boxes(computer),
              Strings{text(1022) + "C" + text(1023) + "10" + text(1024) + "C" + text(1025)});
    EXPECT_EQ(computer.dialogs().boxes.front().style, platform::boxstyle::kIconStop);
}

TEST_F(MachineChecksTest, WarningsStopOrAreSwitchedOff) {
    MemoryPlatform computer({800, 600, 16});
    computer.dialogs().warningAnswer = {.goOn = false, .checked = false};
    EXPECT_EQ(check(computer, false, false), std::nullopt);
    EXPECT_EQ(boxes(computer), Strings{text(1015)}) << "the first one ends it";
    EXPECT_EQ(switches["informResolutionWarning"], "1");

    computer.dialogs().boxes.clear();
    computer.dialogs().warningAnswer = {.goOn = true, .checked = true};
    EXPECT_EQ(check(computer, false, false), Mode::PopUp);
    EXPECT_EQ(boxes(computer), (Strings{text(1015), text(1017)}));
    EXPECT_EQ(switches["informColorsWarning"], "0");

    computer.dialogs().boxes.clear();
    EXPECT_EQ(check(computer, false, false), Mode::PopUp);
    EXPECT_EQ(boxes(computer), Strings{});
}

} // namespace
