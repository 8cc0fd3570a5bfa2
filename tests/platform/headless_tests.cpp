// The headless machine: its time, its input, its boxes, and what it reports.
#include "temporaryfolder.h"

#include "platform/headless/headlessplatform.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <png.h>
#include <sstream>
#include <utility>
#include <vector>

namespace platform {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using Kind = Message::Kind;

class HeadlessTest : public testing::Test {
  protected:
    /// Starts the machine with a timeline; `options` holds everything else.
    HeadlessPlatform& start(const std::string& timeline, HeadlessOptions options = {}) {
        std::istringstream input(timeline);
        options.timeline = std::get<Timeline>(parseTimeline(input));
        options.host = {folder_.path(), "", folder_.path("home")};
        options.report = &report_;
        options.notes = &notes_;
        machine_ = std::make_unique<HeadlessPlatform>(options);
        return *machine_;
    }

    /// The kinds of the messages that can be taken now.
    std::vector<Kind> takeAll() {
        std::vector<Kind> kinds;
        Message message;
        while (machine_->events().take(message)) kinds.push_back(message.kind);
        return kinds;
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

TEST_F(HeadlessTest, InputThatIsDueCanBeDiscarded) {
    HeadlessPlatform& machine =
        start("1 down 1 1\n2 key a\n2 background\n3 double 1 1\n3 command 1\n4 up 1 1\n90 quit");
    machine.clock().sleep(1000);
    Message message;
    EXPECT_FALSE(machine.events().wait(message)) << "nothing before the main loop";
    machine.mainLoopBegins();
    machine.events().captureMouse(true);
    pass(3);
    machine.events().discardInput();
    EXPECT_THAT(takeAll(), ElementsAre(Kind::Background, Kind::Command));
    pass(3);
    ASSERT_TRUE(machine.events().take(message));
    EXPECT_EQ(message.kind, Kind::MouseUp) << "what comes later stays";
    EXPECT_EQ(message.timeMs, 1004u) << "when it happened, not when it was taken";
    ASSERT_TRUE(machine.events().wait(message)) << "time moves on to it";
    EXPECT_EQ(machine.clock().loopMs(), 90u);
    EXPECT_FALSE(machine.events().wait(message));
}

TEST_F(HeadlessTest, KeepsTheMouseOnTheScreenUnlessCaptured) {
    HeadlessPlatform& machine = start("0 move -5 700\n0 move 640 480\n0 move -5 700\n",
                                      {.screen = {.width = 640, .height = 480, .depth = 8}});
    machine.mainLoopBegins();
    std::vector<Point> places;
    for (Message message; machine.events().take(message); places.push_back(message.position))
        if (places.size() == 1) machine.events().captureMouse(true);
    EXPECT_THAT(places, ElementsAre(Point{0, 479}, Point{639, 479}, Point{-5, 700}));
}

TEST_F(HeadlessTest, AnswersAreUsedUpInTheirOrder) {
    start("0 answer No\n0 answer cancel\n10 answer Retry\n10 answer Maybe\n10 answer No\n");
    EXPECT_EQ(box(boxstyle::kYesNo), Button::No) << "time 0 serves the start-up";
    machine_->mainLoopBegins();
    pass(9);
    EXPECT_EQ(box(boxstyle::kOkCancel), Button::Cancel);
    EXPECT_EQ(box(boxstyle::kYesNoCancel), Button::Yes) << "the next answer's time has not come";
    pass(6);
    EXPECT_EQ(box(boxstyle::kRetryCancel), Button::Retry);
    EXPECT_EQ(notes_.str(), "");
    EXPECT_EQ(box(boxstyle::kYesNo), Button::Yes) << "no such button";
    EXPECT_THAT(notes_.str(), HasSubstr("\"Maybe\""));
    EXPECT_EQ(box(boxstyle::kYesNo), Button::No) << "the wrong answer was used up";
    EXPECT_EQ(report_.str(), "0\tbox\tCaption\t0x4\ttext\tNo\n"
                             "9\tbox\tCaption\t0x1\ttext\tCancel\n"
                             "9\tbox\tCaption\t0x3\ttext\tYes\n"
                             "15\tbox\tCaption\t0x5\ttext\tRetry\n"
                             "15\tbox\tCaption\t0x4\ttext\tYes\n"
                             "15\tbox\tCaption\t0x4\ttext\tNo\n");
}

TEST_F(HeadlessTest, AnswersWarningsAndFileDialogs) {
    folder_.make("Start.mps", "");
    HeadlessPlatform& machine = start("0 answer checked Sair\n0 answer START.MPS\n"
                                      "0 answer start.mps\n0 answer none.mps\n");
    const WarningRequest request{"Zorbet", "Pouca mem\xF3ria", "Outra vez?", "Continuar", "Sair"};
    const WarningAnswer answer = machine.dialogs().warning(request);
    EXPECT_FALSE(answer.goOn);
    EXPECT_TRUE(answer.checked);
    const std::string path = machine.files().fullPath("START.MPS");
    const auto open = [&](std::size_t limit) {
        return machine.dialogs().openFile("Open", "*.mps", limit);
    };
    EXPECT_EQ(open(path.size() + 1), path);
    EXPECT_EQ(open(path.size()), "") << "too long";
    EXPECT_EQ(open(1000), "") << "no such file";
    EXPECT_EQ(open(1000), "") << "no answer";
    EXPECT_TRUE(machine.dialogs().warning(request).goOn);
    const std::string warning = "0\tdialog\tZorbet\tPouca mem\xC3\xB3ria\t";
    EXPECT_THAT(report_.str(), StartsWith(warning + "Sair\tchecked\n"));
    EXPECT_THAT(report_.str(), EndsWith("0\tdialog\tOpen\t*.mps\t\tunchecked\n" + warning +
                                        "Continuar\tunchecked\n"));
}

TEST_F(HeadlessTest, ReportsOneLineForEachThingThatIsNews) {
    HeadlessPlatform& machine = start("");
    for (const char* title : {"", "", "T\xEDtulo", "T\xEDtulo"}) machine.display().setTitle(title);
    machine.mainLoopBegins();
    pass(12);
    for (const int id : {-1, -1, -2})
        machine.display().setCursor(*machine.display().makeCursor(id));
    machine.display().showCursor(true);
    machine.display().showCursor(false);
    machine.display().setCursor(*machine.display().makeCursor(-3));
    machine.display().showCursor(true);
    EXPECT_FALSE(machine.display().makeCursor(8, {2, 2, {}, {1, 2, 3}}));
    box(boxstyle::kOk | boxstyle::kSystemModal | boxstyle::kTaskModal, "a\nb\tc\\n\r\n");
    EXPECT_EQ(report_.str(), "0\ttitle\t\n"
                             "0\ttitle\tT\xC3\xADtulo\n"
                             "12\tcursor\t-1\n"
                             "12\tcursor\t-2\n"
                             "12\tcursor\tnone\n"
                             "12\tcursor\t-3\n"
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
    const std::string file = folder_.path("shot.png");
    HeadlessPlatform& machine =
        start("2 background\n2 screenshot " + file, {.screen = {.width = 21, .height = 10}});
    Display& display = machine.display();
    for (int y = 0; y < 10; ++y) std::fill_n(display.screen().row(y), 21, std::uint8_t{100});
    display.present({-3, 8, 2, 99});
    display.present({50, 50, 40, 40});
    std::fill_n(display.screen().row(9), 21, std::uint8_t{255});
    machine.mainLoopBegins();
    pass(2);
    Message message;
    ASSERT_TRUE(machine.events().take(message));
    EXPECT_EQ(folder_.contents("shot.png"), "") << "the message before it goes first";
    const Rgb colour{10, 20, 30};
    display.setPalette(100, {&colour, 1}); // after it was presented
    EXPECT_TRUE(takeAll().empty());

    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    ASSERT_NE(png_image_begin_read_from_file(&image, file.c_str()), 0) << image.message;
    image.format = PNG_FORMAT_RGB;
    std::vector<Rgb> shown(21 * 10);
    ASSERT_EQ(PNG_IMAGE_SIZE(image), shown.size() * sizeof(Rgb));
    png_image_finish_read(&image, nullptr, shown.data(), 0, nullptr);
    std::vector<Rgb> expected(21 * 10);
    for (const std::size_t x : {0, 1}) expected[8 * 21 + x] = expected[9 * 21 + x] = colour;
    EXPECT_TRUE(shown == expected);
}

} // namespace
} // namespace platform
