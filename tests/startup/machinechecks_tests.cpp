// What the start looks at: each check passed and failed, warnings answered and switched off.
#include "startup/machinechecks.h"

#include "carriedtexts.h"
#include "frameworkfixture.h"

#include "omwaveengine.h"

using testing_support::MemoryPlatform;

namespace {

constexpr auto kPopUp = OMApp::DisplayMode::PopUp;
using Driver = platform::HostDisplay::Driver;
using Strings = std::vector<std::string>;

class MachineChecksTest : public testing_support::FrameworkTest {
  protected:
    MachineChecksTest() { configuration.homeDirectory = "C:\\GAME\\"; }
    ~MachineChecksTest() override { OMApp::useGDI(); }

    auto check(MemoryPlatform& computer) {
        OMSetPlatform(&computer);
        carryTexts(computer);
        computer.dialogs().boxes.clear();
        OMWaveEngine engine;
        const auto mode = RCheckMachine(
            configuration, engine,
            {.read = [this](std::string_view name) { return switches[std::string(name)]; },
             .write = [this](std::string_view name,
                             std::string_view value) { switches[std::string(name)] = value; }});
        OMSetPlatform(&machine);
        return mode;
    }
    static void expectBoxes(MemoryPlatform& computer, const std::vector<int>& texts) {
        const auto text = [&](int id) {
            return testing_support::toText(computer.modules().resources.at({"TEXT", id}));
        };
        Strings expected;
        for (const int id : texts) expected.push_back(text(id));
        if (texts == std::vector{1022})
            expected[0] += "C" + text(1023) + "10" + text(1024) + "C" + text(1025);
        Strings shown;
        for (const auto& box : computer.dialogs().boxes) shown.push_back(box.text);
        EXPECT_EQ(shown, expected);
    }

    /// `logged` is among other lines.
    void expectStart(
        const platform::ScreenMode& screen, const std::vector<int>& boxes, bool runs,
        const std::string& logged = "",
        const std::function<void(MemoryPlatform&)>& lack = [](MemoryPlatform&) {}) {
        SCOPED_TRACE(logged);
        MemoryPlatform computer(screen);
        lack(computer);
        EXPECT_EQ(check(computer), runs ? std::optional(kPopUp) : std::nullopt);
        expectBoxes(computer, boxes);
        const std::string log = computer.files().text("zorbelog.txt");
        EXPECT_NE(log.find(logged), std::string::npos) << log;
        OMApp::useGDI();
    }

    RConfiguration configuration;
    std::map<std::string, std::string> switches{{"informResolutionWarning", "1"},
                                                {"informColorsWarning", "1"},
                                                {"informDirectDrawNotFoundWarning", "1"},
                                                {"informDirectDrawSwitchFailedWarning", "1"}};
};

TEST_F(MachineChecksTest, EveryMachineIsRunOnOrRefusedAsItShould) {
    const platform::ScreenMode usual{640, 480, 8};
    expectStart(usual, {1010}, false, "ERROR: x386 found, cannot run\n",
                [](auto& c) { c.machine().intel386 = true; });
    expectStart(usual, {1020}, false, "Free memory: 8388607\n",
                [](auto& c) { c.machine().memory = 8'388'607; });
    expectStart(usual, {}, true, "WAVE driver is available\n",
                [](auto& c) { c.machine().memory = 8'388'608; });
    expectStart(usual, {1019}, false, "Free memory: 67108864\nWAVE driver is not available\n",
                [](auto& c) { c.waveOut().available = false; });
    expectStart(usual, {}, true,
                "Warning: No sound is heard (unplugged). The game goes on silently; to hear it, "
                "connect a sound device or start the sound server, and start the game again\n"
                "WAVE driver is not available\nCurrent screen",
                [](auto& c) { c.waveOut().silence = "unplugged"; });
    expectStart(usual, {}, true, "", [](auto& c) { c.files().space = 10'485'760; });
    expectStart(usual, {1022}, false, "", [](auto& c) { c.files().space = 10'485'759; });
    expectStart({800, 600, 8}, {1015}, true,
                "Current screen size is 800 X 600\nCurrent screen bit depth: 8\n"
                "DirectDraw is available\nUsing GDI\n");
    expectStart({640, 480, 32}, {1017}, true);
    expectStart({640, 480, 4}, {1018}, false);
    expectStart({639, 600, 16}, {1016}, false);
    expectStart({800, 479, 8}, {1016}, false);
    configuration.useDirectDraw = true;
    expectStart({800, 600, 16}, {}, true, "Displaying in upper left corner using DirectDraw\n");
    expectStart(usual, {1002}, true,
                "DirectDraw is not available\nWarning: Trying to use DirectDraw, but unable to "
                "load DLL, using GDI\n",
                [](auto& c) { c.display().setDriver(Driver::None); });
    configuration.displayFullScreen = true;
    expectStart(usual, {1001}, true,
                "Warning: Trying to use DirectDraw, but unable to switch to requested resolution "
                "and color depth, using GDI\n",
                [](auto& c) { c.display().setDriver(Driver::FixedMode); });
}

TEST_F(MachineChecksTest, WarningsStopOrAreSwitchedOff) {
    MemoryPlatform computer({800, 600, 16});
    computer.dialogs().warningAnswer = {.goOn = false, .checked = false};
    EXPECT_EQ(check(computer), std::nullopt);
    expectBoxes(computer, {1015}); // the first one ends it
    EXPECT_EQ(switches["informResolutionWarning"], "1");
    computer.dialogs().warningAnswer = {.goOn = true, .checked = true};
    EXPECT_EQ(check(computer), kPopUp);
    expectBoxes(computer, {1015, 1017});
    EXPECT_EQ(switches["informColorsWarning"], "0");
    EXPECT_EQ(check(computer), kPopUp);
    expectBoxes(computer, {});
}

} // namespace
