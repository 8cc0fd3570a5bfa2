// The whole program from its start to its end, on a machine in memory.
#include "app.h"

#include "frameworkfixture.h"

#include "omapp.h"

using testing_support::FrameworkTest;
using testing_support::MemoryPlatform;

namespace {

class AppTest : public FrameworkTest {
  protected:
    AppTest() {
        OMSetPlatform(&large);
        large.files().put("RSC\\resource.map", std::string("MAINMAP\n1\na.rsc\nRRGB 5\nENDFILE\n"));
        large.files().put("Startup.mps", std::string("quit\n"));
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
    platform::Rect shown() { return large.display().presented.boundingBox(); }

    MemoryPlatform large{{800, 600, 8}};
};

TEST_F(AppTest, TheConfigurationChoosesTheBackEnd) {
    constexpr platform::Rect kScreen{0, 0, 800, 600};
    constexpr platform::Rect kGame{0, 0, 640, 480};
    struct Row {
        const char* settings;
        bool possible;
        const char* logged;
        platform::Rect shown;
    };
    const Row rows[] = {
        {"", true, "Using GDI\n", kScreen},
        {"UseDirectDraw=0\r\nDisplayFullScreen=1\r\n", true, "Using GDI\n", kScreen},
        {"UseDirectDraw=1\r\n", true, "Displaying in upper left corner using DirectDraw\n", kGame},
        {"UseDirectDraw=1\r\nDisplayFullScreen=1\r\n", true,
         "Displaying Full Screen using DirectDraw\n", kGame},
        {"UseDirectDraw=1\r\nDisplayFullScreen=1\r\n", false,
         "Trying to use DirectDraw, but unable to switch to requested resolution and color depth, "
         "using GDI\n",
         kScreen},
    };
    for (const Row& row : rows) {
        large.display().refusesExclusive = !row.possible;
        EXPECT_NE(run(row.settings).find(row.logged), std::string::npos) << row.settings;
        EXPECT_EQ(shown(), row.shown) << row.settings;
        EXPECT_EQ(large.display().mode(), (platform::ScreenMode{800, 600, 8})) << "as it was";
        EXPECT_TRUE(takeFailures().empty()) << row.settings;
    }
}

} // namespace
