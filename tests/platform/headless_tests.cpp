// The headless machine: its time, its input, its boxes, and what it reports.
#include "temporaryfolder.h"

#include "platform/headless/headlessplatform.h"

#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <sstream>

namespace platform {
namespace {

class HeadlessTest : public testing::Test {
  protected:
    HeadlessPlatform& start(const std::string& timeline, HeadlessOptions options = {}) {
        std::istringstream input(timeline);
        options.timeline = std::get<Timeline>(parseTimeline(input));
        options.host = {folder_.path(), "", folder_.path("home")};
        options.report = &report_;
        options.notes = &notes_;
        machine_ = std::make_unique<HeadlessPlatform>(options);
        return *machine_;
    }
    void pass(int count) {
        for (int i = 0; i < count; ++i) machine_->passEnded();
    }
    Button box(std::uint32_t style, std::string_view text = "text") {
        return machine_->dialogs().messageBox(text, "Caption", style);
    }

    TemporaryFolder folder_;
    std::ostringstream report_;
    std::ostringstream notes_;
    std::unique_ptr<HeadlessPlatform> machine_;
};

TEST_F(HeadlessTest, InputIsDiscardedOrKeptOnTheScreen) {
    HeadlessPlatform& machine =
        start("1 down 1 1\n2 key a\n2 background\n3 double 1 1\n3 command 1\n4 move -5 700\n"
              "4 move 640 480\n5 move -5 700\n90 quit",
              {.screen = {.width = 640, .height = 480, .depth = 8}});
    machine.clock().sleep(1000);
    Message message;
    EXPECT_FALSE(machine.events().wait(message)) << "nothing before the main loop";
    machine.mainLoopBegins();
    std::ostringstream taken;
    const auto takeAll = [&] {
        while (machine.events().take(message))
            taken << message.timeMs << ':' << int(message.kind) << ' ' << message.position.x << ','
                  << message.position.y << ' ';
    };
    pass(3);
    machine.events().captureMouse(true);
    machine.events().discardInput(); // of what is due
    takeAll();
    pass(1);
    takeAll();
    machine.events().captureMouse(true);
    pass(3);
    takeAll();
    using Kind = Message::Kind;
    const auto all = [](int ms, Kind kind, const char* place) {
        return std::to_string(1000 + ms) + ":" + std::to_string(int(kind)) + " " + place + " ";
    };
    EXPECT_EQ(taken.str(), all(2, Kind::Background, "0,0") + all(3, Kind::Command, "0,0") +
                               all(4, Kind::MouseMove, "0,479") +
                               all(4, Kind::MouseMove, "639,479") +
                               all(5, Kind::MouseMove, "-5,700"));
    ASSERT_TRUE(machine.events().wait(message)) << "time moves on to it";
    EXPECT_EQ(machine.clock().loopMs(), 90u);
    EXPECT_FALSE(machine.events().wait(message));
}

TEST_F(HeadlessTest, BoxesAreAnsweredInTheOrderOfTheTimeline) {
    folder_.make("Start.mps", "");
    HeadlessPlatform& machine = start(
        "0 answer No\n0 answer cancel\n0 answer checked Sair\n0 answer START.MPS\n"
        "0 answer start.mps\n0 answer none.mps\n10 answer Retry\n10 answer Maybe\n10 answer No");
    EXPECT_EQ(box(boxstyle::kYesNo), Button::No) << "time 0 serves the start-up";
    machine.mainLoopBegins();
    pass(9);
    EXPECT_EQ(box(boxstyle::kOkCancel), Button::Cancel);
    const WarningRequest request{"Zorbet", "Mem\xF3ria", "Outra vez?", "Continuar", "Sair"};
    const WarningAnswer answer = machine.dialogs().warning(request);
    EXPECT_TRUE(!answer.goOn && answer.checked);
    const std::string path = machine.files().fullPath("START.MPS");
    const auto open = [&](std::size_t limit) {
        return machine.dialogs().openFile("Open", "*.mps", limit);
    };
    EXPECT_EQ(open(path.size() + 1), path);
    EXPECT_EQ(notes_.str(), "");
    EXPECT_EQ(open(path.size()), "") << "too long";
    EXPECT_EQ(open(1000), "") << "no such file";
    EXPECT_EQ(open(1000), "") << "no answer: the next one's time has not come";
    EXPECT_TRUE(machine.dialogs().warning(request).goOn);
    EXPECT_EQ(box(boxstyle::kYesNoCancel), Button::Yes);
    pass(6);
    EXPECT_EQ(box(boxstyle::kRetryCancel), Button::Retry);
    EXPECT_EQ(box(boxstyle::kYesNo), Button::Yes) << "no such button";
    EXPECT_EQ(box(boxstyle::kYesNo), Button::No) << "the wrong answer was used up";
    const std::string boxes = "\tbox\tCaption\t", warning = "9\tdialog\tZorbet\tMem\xC3\xB3ria\t",
                      file = "9\tdialog\tOpen\t*.mps\t";
    std::string opened = path;
    for (auto at = path.size(); at-- > 0;)
        if (opened[at] == '\\') opened.insert(at, "\\");
    EXPECT_EQ(report_.str(), "0" + boxes + "0x4\ttext\tNo\n9" + boxes + "0x1\ttext\tCancel\n" +
                                 warning + "Sair\tchecked\n" + file + opened + "\tunchecked\n" +
                                 file + "\tunchecked\n" + file + "\tunchecked\n" + file +
                                 "\tunchecked\n" + warning + "Continuar\tunchecked\n9" + boxes +
                                 "0x3\ttext\tYes\n15" + boxes + "0x5\ttext\tRetry\n15" + boxes +
                                 "0x4\ttext\tYes\n15" + boxes + "0x4\ttext\tNo\n");
    const std::string refused = "\" cannot be chosen in the dialog \"Open\"; it is cancelled\n";
    EXPECT_EQ(notes_.str(), "the file \"start.mps" + refused + "the file \"none.mps" + refused +
                                "the box \"Caption\" has no button \"Maybe\"; it is answered with "
                                "\"Yes\"\n");
}

TEST_F(HeadlessTest, ReportsOneLineForEachThingThatIsNews) {
    HeadlessPlatform& machine = start("");
    Display& display = machine.display();
    for (const char* title : {"", "", "T\xEDtulo", "T\xEDtulo"}) display.setTitle(title);
    machine.mainLoopBegins();
    pass(12);
    for (const int id : {-1, -1, -2}) display.setCursor(*display.makeCursor(id));
    display.showCursor(true);
    display.showCursor(false);
    display.setCursor(*display.makeCursor(-3));
    display.showCursor(true);
    EXPECT_FALSE(display.makeCursor(8, {2, 2, {}, {1, 2, 3}}));
    box(boxstyle::kOk | boxstyle::kSystemModal | boxstyle::kTaskModal, "a\nb\tc\\n\r\n");
    EXPECT_EQ(report_.str(), "0\ttitle\t\n0\ttitle\tT\xC3\xADtulo\n12\tcursor\t-1\n12\tcursor\t-2\n"
                             "12\tcursor\tnone\n12\tcursor\t-3\n"
                             "12\tbox\tCaption\t0x3000\ta\\nb\\tc\\\\n\\r\\n\tOK\n");
}

TEST_F(HeadlessTest, TerminatesAfterItsReport) {
    const auto terminate = [&](bool ended) {
        HeadlessOptions options{.host = {folder_.path(), "", folder_.path("home")}};
        options.report = &std::cerr;
        HeadlessPlatform machine(options);
        if (ended) machine.programEnds(0);
        machine.terminate(3);
    };
    EXPECT_EXIT(terminate(false), testing::ExitedWithCode(3), "^0\tend\t3\n$");
    EXPECT_EXIT(terminate(true), testing::ExitedWithCode(3), "^0\tend\t0\n$");
}

// What golden pictures rest on: that nothing is seen which was not presented.
TEST_F(HeadlessTest, ScreenshotsShowWhatWasPresented) {
    HeadlessPlatform& machine = start("2 background\n2 screenshot " + folder_.path("shot.png") +
                                          "\n3 screenshot " + folder_.path("other.png"),
                                      {.screen = {.width = 21, .height = 10}});
    Display& display = machine.display();
    const auto draw = [&](int top, int bottom, int right, std::uint8_t colour) {
        for (int y = top; y < bottom; ++y) std::fill_n(display.screen().row(y), right, colour);
    };
    draw(0, 10, 21, 100);
    display.present({-3, 8, 2, 99});
    display.present({50, 50, 40, 40});
    draw(9, 10, 21, 255);
    machine.mainLoopBegins();
    pass(2);
    Message message;
    ASSERT_TRUE(machine.events().take(message));
    EXPECT_EQ(folder_.contents("shot.png"), "") << "the message before it goes first";
    const Rgb colour{10, 20, 30};
    display.setPalette(100, {&colour, 1}); // after it was presented
    EXPECT_FALSE(machine.events().take(message));
    draw(0, 10, 21, 0);
    draw(8, 10, 2, 100);
    display.present({0, 0, 21, 10});
    pass(1);
    EXPECT_FALSE(machine.events().take(message));
    EXPECT_NE(folder_.contents("shot.png"), "");
    EXPECT_TRUE(folder_.contents("shot.png") == folder_.contents("other.png"));
}

} // namespace
} // namespace platform
