// The headless machine: what an input file may say, its time, input and boxes, what it reports, and
// the device that nobody hears.
#include "moviebuilder.h"
#include "temporaryfolder.h"

#include "platform/headless/headlessplatform.h"
#include "platform/host/screen/boxbuttons.h"
#include "platform/host/screen/pointers.h"
#include "platform/host/visit/visitrecorder.h"

#include <deque>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace platform {
namespace {

/// All that is read, an event after the other: its time and text or key; or the fault and its line.
std::string parsed(const std::string& text) {
    std::istringstream input(text);
    const auto result = parseVisit(input);
    if (const auto* error = std::get_if<TimelineError>(&result))
        return std::to_string(error->line) + ": " + error->text;
    std::ostringstream out;
    for (const auto& [timeMs, what] : std::get<Visit>(result).timeline) {
        out << timeMs << ' ';
        if (const auto* answer = std::get_if<TimelineAnswer>(&what))
            out << answer->button << (answer->checked ? " checked\n" : "\n");
        else if (const auto* shot = std::get_if<TimelineScreenshot>(&what))
            out << shot->file << '\n';
        else if (const auto& message = std::get<Message>(what); message.kind != Message::Kind::Key)
            out << lineOf(0, message).substr(2) << '\n';
        else {
            const KeyPress& key = message.key;
            out << std::hex << key.code << std::dec << (key.control ? "^\n" : "\n");
        }
    }
    return out.str();
}

TEST(Timeline, ReadsEvents) {
    std::string keys; // a blank may be one; UTF-8, Latin-1
    for (const char* key : {"A ", " ", "\xC3\xA3", "\xE3", "\xC3", "Ctrl-c", "Ctrl-Z", "Ctrl-5",
                            "Ctrl--", "  Enter", "Ctrl-Enter", "F12"})
        keys += parsed(std::string("7 key ") + key).substr(2);
    EXPECT_EQ(keys, "41\n20\ne3\ne3\nc3\n3^\n1a^\n35^\n2d^\ne802\ne802^\ne81a\n");
    EXPECT_EQ(
        parsed("\xEF\xBB\xBF# begins with a byte order mark\r\n"
               "3 screenshot my shots/\xC3\xA3.png \n\r\n  \t\n1 answer Sair\n  # 5 command 9\n"
               "1 answer checked N\xC3\xA3o sair  \n2 answer unchecked\n4294967295 \tanswer\tOk"),
        "1 Sair\n1 N\xE3o sair checked\n2 unchecked\n3 my shots/\xC3\xA3.png\n4294967295 Ok\n");
    EXPECT_EQ(
        parsed("9 click 1 -2\n10 drag 3 4 5 6 7 8\n11 key a Tab"),
        "9 move 1 -2\n10 move 3 4\n11 61\n109 down 1 -2\n110 down 3 4\n111 e801\n209 up 1 -2\n"
        "210 move 5 6\n310 move 7 8\n410 up 7 8\n");
}

TEST(Timeline, RefusesBadLinesByNumber) {
    const std::pair<std::string, std::vector<std::string>> rows[] = {
        {"the line does not begin with a time in milliseconds", {"quit", "4294967296 quit"}},
        {"unknown event \"Quit\"", {"5 Quit"}},
        {"\"quit\" wants nothing after it", {"5 quit now"}},
        {"\"move\" wants two numbers, x and y",
         {"5 move 1", "5 move 1 2 3", "5 move 99999999999 2"}},
        {"\"drag\" wants two positions or more, each of two numbers, x and y",
         {"5 drag", "5 drag 1 2", "5 drag 1 2 3", "5 drag 1 2 3 4 5", "5 drag 1 2 3 x"}},
        {"what follows in the line would come after the last millisecond that there is",
         {"4294967096 click 1 2"}},
        {"\"key\" wants one Latin-1 character or the name of a key",
         {"5 key ", "5 key Ctrl-", "5 key F13", "5 key \xE2\x82\xAC", "5 key \x01",
          "5 key Shift-a"}},
        {"\"keys\" wants \"on\" or \"off\"", {"5 keys", "5 keys yes", "5 keys on off"}},
        {"this wants one word: \"seed N\", \"step N\" of at most 60000, \"scene NAME\", \"language "
         "TAG\", \"data "
         "BYTES\" of two hexadecimal digits each; or \"turns MS*COUNT\" and further ones",
         {"seed", "step 60001", "scene ", "data 012", "data 0x", "data -1", "turns", "turns 1*",
          "turns 0*2", "turns 1*0", "turns 1*2*3", "turns 1 x"}},
        {"\"command\" wants a number from 0 to 65535", {"5 command 65536", "5 command -1"}},
        {"\"answer\" wants the text of a button", {"5 answer \xE2\x82\xAC"}},
        {"\"screenshot\" wants a file name", {"5 screenshot"}}};
    for (const auto& [fault, lines] : rows)
        for (const std::string& line : lines)
            EXPECT_EQ(parsed("# first\n1 quit\n\n" + line + "\n7 nonsense\n"), "4: " + fault)
                << line;
}

/// What a program does that goes by chance, and what it sees of the machine.
class ChanceProgram {
  public:
    ChanceProgram(Clock& clock, Events& events, Dialogs& dialogs)
        : clock_(clock), events_(events), dialogs_(dialogs), beganMs_(clock.milliseconds()) {}
    void turn() {
        for (Message message; chance(3) && events_.take(message);)
            seen << now() << ": " << lineOf(message.timeMs - beganMs_, message) << '\n';
        if (chance(9)) clock_.sleep(3);
        if (chance(20)) clock_.wasBusy(500);
        if (chance(9)) events_.captureMouse(chance(2));
        if (chance(12)) events_.discardInput();
        if (events_.releaseWasDropped()) seen << now() << ": dropped\n";
        if (chance(30)) {
            const Button button = dialogs_.messageBox("?", "?", boxstyle::kYesNo);
            seen << now() << ": " << buttonText(button) << events_.quitWaits() << '\n';
        }
    }
    std::ostringstream seen;

  private:
    bool chance(unsigned times) { return chance_() % times == 0; }
    std::uint32_t now() const { return clock_.milliseconds() - beganMs_; }

    Clock& clock_;
    Events& events_;
    Dialogs& dialogs_;
    std::uint32_t beganMs_;
    std::minstd_rand chance_{7};
};

TEST(VisitRecorder, WhatItWroteIsSeenAgain) {
    TemporaryFolder folder;
    std::ostringstream person{"9 answer No\n", std::ios::ate}; // what somebody does, by chance
    std::minstd_rand chance(3);
    for (int ms = 0; ms < 3000; ms += static_cast<int>(chance() % 9)) {
        constexpr const char* kDone[] = {
            "move -9 40", "down 3 4",   "up 900 4",   "double 7 8",
            "key Ctrl-q", "key \xE3",   "key  ",      "key Ctrl-Shift-Tab",
            "keys on",    "keys off",   "speech on",  "speech off",
            "command 9",  "background", "foreground", "expose",
            "nothing",    "up 1 1"};
        person << ms << ' ' << kDone[chance() % std::size(kDone)] << '\n';
    }
    person << "2000 close\n";
    std::istringstream done(person.str());
    std::ostringstream ignored;
    HeadlessOptions options{.host = {folder.path(), "", folder.path("home")},
                            .timeline = std::get<Visit>(parseVisit(done)).timeline,
                            .report = &ignored,
                            .notes = &ignored};
    const std::string file = folder.path("visit.input");
    const std::string data("\0\xFF saved", 8);
    std::string seen;
    {
        HeadlessPlatform machine(options);
        VisitWriter writer(file);
        ASSERT_TRUE(writer.open() && !VisitWriter(file).open()) << "nothing is replaced";
        writer.begin(5, "harbour", "en", data);
        auto& display = dynamic_cast<HostDisplay&>(machine.display());
        HostDesk desk("");
        VisitRecorder recorder(writer, machine.clock(), machine.events(), machine.dialogs(),
                               display, desk);
        machine.mainLoopBegins();
        recorder.mainLoopBegins();
        ChanceProgram program(recorder.clock(), recorder.events(), recorder.dialogs());
        for (int i = 0; i < 700; ++i, recorder.passEnded()) {
            program.turn();
            machine.clock().sleep(chance() % 9);
        }
        seen = program.seen.str();
    }
    std::ifstream written(file);
    const auto visit = std::get<Visit>(parseVisit(written));
    EXPECT_TRUE(visit.seed == 5u && visit.scene == "harbour" && visit.language == "en" &&
                visit.data == data);
    options.timeline = visit.timeline;
    options.turns = visit.turns;
    HeadlessPlatform machine(options);
    machine.mainLoopBegins();
    ChanceProgram program(machine.clock(), machine.events(), machine.dialogs());
    for (int i = 0; i < 700; ++i, machine.passEnded()) program.turn();
    EXPECT_EQ(program.seen.str(), seen);
    Message end;
    while (machine.events().take(end)) {
    }
    EXPECT_EQ(end.kind, Message::Kind::Quit);
    for (const char* mark : {"dropped", "Yes0", "No1", "key", "quit"})
        EXPECT_NE(seen.find(mark), std::string::npos) << mark;
}

class HeadlessTest : public testing::Test {
  protected:
    HeadlessPlatform& start(const std::string& timeline, HeadlessOptions options = {}) {
        std::istringstream input(timeline);
        options.timeline = std::get<Visit>(parseVisit(input)).timeline;
        options.host = {folder_.path(), "", folder_.path("home")};
        options.report = &report_;
        options.notes = &notes_;
        return machine_.emplace(options);
    }
    void pass(int count) {
        for (int i = 0; i < count; ++i) machine_->passEnded();
    }
    Button box(std::uint32_t style, std::string_view text = "text") {
        return machine_->dialogs().messageBox(text, "Caption", style);
    }

    TemporaryFolder folder_;
    std::ostringstream report_, notes_;
    std::optional<HeadlessPlatform> machine_;
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
    for (const int ms : {3, 1, 3}) { // the button is captured, or not
        pass(ms);
        machine.events().captureMouse(ms == 3);
        if (taken.str().empty()) machine.events().discardInput(); // of what is due
        while (machine.events().take(message))
            taken << message.timeMs << ' ' << message.command << ' ' << message.position.x << ','
                  << message.position.y << '\n';
    }
    EXPECT_EQ(taken.str(), "1002 0 0,0\n1003 1 0,0\n1004 0 0,479\n1004 0 639,479\n1005 0 -5,700\n");
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
    for (const std::size_t limit : {1, 0, 1000, 1000})
        EXPECT_EQ(machine.dialogs().openFile("Open", "*.mps", path.size() + limit),
                  limit == 1 ? path : "");
    EXPECT_TRUE(machine.dialogs().warning(request).goOn) << "the next one's time has not come";
    pass(6);
    EXPECT_EQ(box(boxstyle::kRetryCancel), Button::Retry);
    EXPECT_EQ(box(boxstyle::kYesNo), Button::Yes) << "no such button";
    EXPECT_EQ(box(boxstyle::kYesNo), Button::No) << "the wrong answer was used up";
    const std::string refused = "\" cannot be chosen in the dialog \"Open\"; it is cancelled\n";
    EXPECT_EQ(notes_.str(),
              "the file \"start.mps" + refused + "the file \"none.mps" + refused +
                  R"(the box "Caption" has no button "Maybe"; it is answered with "Yes")"
                  "\n");
}

TEST_F(HeadlessTest, ReportsOneLineForEachThingThatIsNews) {
    Display& display = start("").display();
    for (const char* title : {"", "", "T\xEDtulo", "T\xEDtulo"}) display.setTitle(title);
    machine_->mainLoopBegins();
    pass(12);
    for (const int id : {-1, -1, -2}) display.setCursor(*display.makeCursor(id));
    display.showCursor(false);
    display.showCursor(true);
    EXPECT_FALSE(display.makeCursor(8, {2, 2, {}, {1, 2, 3}}));
    box(boxstyle::kOk | boxstyle::kSystemModal | boxstyle::kTaskModal, "a\nb\tc\\n\r\n");
    for (const int code : {3, 0}) machine_->programEnds(code);
    EXPECT_EQ(report_.str(), "0\ttitle\t\n0\ttitle\tT\xC3\xADtulo\n12\tcursor\t-1\n12\tcursor\t-2\n"
                             "12\tcursor\tnone\n12\tcursor\t-2\n"
                             "12\tbox\tCaption\t0x3000\ta\\nb\\tc\\\\n\\r\\n\tOK\n12\tend\t3\n");
    EXPECT_EXIT(machine_->terminate(3), testing::ExitedWithCode(3), "");
}

TEST(HeadlessWaveOut, PlaysAndRecordsWhatTheTimeIsWorth) {
    const TemporaryFolder folder;
    std::ostringstream notes;
    VirtualClock clock;
    WaveFolder recordings{folder.path("sound"), notes};
    HeadlessWaveOut device{clock, recordings};
    std::deque<formats::Bytes> data;
    std::deque<WaveBuffer> buffers;
    const auto write = [&](std::size_t size) {
        data.emplace_back(size, std::uint8_t(size));
        device.write(buffers.emplace_back(WaveBuffer{.data = data.back()}));
        return buffers.back().prepared;
    };
    const auto doneAfter = [&](std::uint32_t ms) {
        clock.sleep(ms);
        device.poll();
        return std::ranges::count(buffers, true, &WaveBuffer::done);
    };
    for (const int rate : {0, 192'000, -1, 999, 192'001, 0x7FFFFFFF, 1000})
        EXPECT_EQ(device.open(rate), rate == 1000 || rate == 192'000) << rate;
    for (const std::size_t size : {10, 0, 20}) EXPECT_TRUE(write(size));
    EXPECT_EQ(doneAfter(9), 1) << "the one without data";
    EXPECT_EQ(doneAfter(1), 2);
    device.pause();
    EXPECT_EQ(doneAfter(100), 2);
    device.restart();
    EXPECT_EQ(doneAfter(19), 2);
    {
        const WaveOutHold hold(device);
        data.back().back() = 99; // what waits may be changed
    }
    EXPECT_EQ(doneAfter(1), 3);
    EXPECT_EQ(doneAfter(500), 3) << "time without data is lost";
    write(5);
    EXPECT_EQ(doneAfter(4), 3);
    EXPECT_EQ(doneAfter(1), 4);
    write(50);
    doneAfter(10);
    device.reset();
    EXPECT_EQ(doneAfter(0), 5);
    formats::Bytes heard;
    for (const auto& each : data) heard.insert(heard.end(), each.begin(), each.end());
    heard.resize(45);
    EXPECT_FALSE(device.open(0)) << "which closes it, too";
    EXPECT_FALSE(write(1));
    EXPECT_EQ(folder.contents("sound/001-1000.wav"), testing_support::recordingOf({1000}, heard));
    EXPECT_EQ(notes.str(), "");
    std::filesystem::remove_all(folder.path("sound"));
    folder.make("sound", "a file where the folder should be");
    device.open(2000);
    for (int i = 0; i < 2; ++i) {
        write(10);
        doneAfter(10);
    }
    EXPECT_EQ(notes.str(),
              "recording " + folder.path("sound/002-2000.wav") + " cannot be written\n");
}

TEST(Pointers, AreEnlargedWithFinerSlantsAndPointWithTheSameSpot) {
    const CursorImage large = enlarged({3, 3, {1, 2}, {1, 0, 0, 0, 1, 0, 0, 0, 1}}, 2);
    EXPECT_EQ(large.hotSpot, (Point{3, 5}));
    EXPECT_EQ(large.pixels,
              (std::vector<std::uint32_t>{1, 1, 0, 0, 0, 0, 1, 1, 1, 0, 0, 0, 0, 1, 1, 1, 0, 0,
                                          0, 0, 1, 1, 1, 0, 0, 0, 0, 1, 1, 1, 0, 0, 0, 0, 1, 1}));
}

} // namespace
} // namespace platform
