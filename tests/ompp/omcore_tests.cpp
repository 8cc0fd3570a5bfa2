// The framework's core: checks, the log, lists, tasks, the debug window, and where files are looked
// for.
#include "frameworkfixture.h"

#include "omdebugwindow.h"
#include "omlist.h"
#include "omlog.h"
#include "omtask.h"

#include <list>
#include <random>

namespace {

using testing::ExitedWithCode;
using testing_support::FrameworkTest;
using testing_support::OMAppTest;
using Strings = std::vector<std::string>;

// Checks that end the program and checks that only answer

TEST_F(FrameworkTest, FatalTextsStopAtTheFirstPieceThatDoesNotFit) {
    const auto expect = [](const std::string& condition, const std::string& message,
                           const std::string& file, const std::string& text) {
        EXPECT_EQ(OMDebug::fatalText({condition, message, file, 12}),
                  "OMDebug Fatal Error!\n" + text);
    };
    expect("a == b", "why", "src/x.cpp", "a == b\n\nsrc/x.cpp\nLine # 12\nwhy");
    const std::string fits(475, 'm');
    expect("a", fits, "f", "a\n\nf\nLine # 12\n" + fits);
    expect("a", fits + "m", "f", "a\n\nf\nLine # 12\n");
    expect("a", "m", std::string(600, 'f'), "a\n\n");
    expect(std::string(490, 'c'), "m", "f", std::string(490, 'c'));
    expect(std::string(491, 'c'), "m", "f", "");
}

TEST_F(FrameworkTest, OnlyFatalChecksEndTheProgram) {
    OMDebug::require(true, "fine", "");
    EXPECT_EXIT(OMDebug::require(false, "a < b", "a is too large", {"src/x.cpp", 7}),
                ExitedWithCode(255),
                "OMDebug Fatal Error!\na < b\n\nsrc/x.cpp\nLine # 7\na is too large");
    EXPECT_TRUE(OMDebug::check(true, "one", "first"));
    EXPECT_FALSE(OMDebug::check(false, "two", "second"));
    EXPECT_EQ(takeFailures(), Strings{"second"});
    EXPECT_TRUE(machine.dialogs().boxes.empty());
}

// The log file: its lines, its level, and where it lies

class OMLogs : public FrameworkTest {
  protected:
    OMLogs() { taken(); }
    ~OMLogs() override {
        OMLog::setLevel(OMLog::kAll);
        OMLog::setFallbackDirectory({});
    }
    std::string taken() { return files.take("zorbelog.txt"); }
    static void write(const std::string& line) { OMLog::write(OMLog::Kind::Message, line); }
};

TEST_F(OMLogs, TheLevelDecidesAboutPrefixesOnly) {
    const std::pair<int, std::string> rows[] = {
        {0, "NONE\n\ne\nw\nm\n"},
        {1, "ERRORS\n\nERROR: e\nw\nm\n"},
        {2, "WARNINGS\n\nERROR: e\nWarning: w\nm\n"},
        {3, "ALL\n\nERROR: e\nWarning: w\nm\n"},
        {4, "e\nw\nm\n"},
        {-1, "e\nw\nm\n"},
    };
    for (const auto& [level, lines] : rows) {
        EXPECT_EQ(OMLog::handleCommand(59407 + level), level >= 0 && level <= 3);
        if (level < 0 || level > 3) OMLog::setLevel(level);
        OMLog::write(OMLog::Kind::Error, "e");
        OMLog::write(OMLog::Kind::Warning, "w");
        write("m");
        EXPECT_EQ(taken(), "Debug Level changed to " + lines);
    }
}

TEST_F(OMLogs, BeginsAndEndsWithARunInTheFirstPlaceThatCanBeWritten) {
    write("before");
    OMLog::start();
    OMLog::writef(OMLog::Kind::Warning, "%s %d%%", std::string(5000, 'x').c_str(), 50);
    OMLog::close();
    const std::string begin = "Starting Logging, Debug Level set to ALL\n\n";
    EXPECT_EQ(taken(), begin + "Warning: " + std::string(5000, 'x') + " 50%\n\nClosing Log\n\n");

    files.writeProtected = "C:\\GAME";
    write("lost");
    OMLog::setFallbackDirectory("C:\\HOME\\");
    OMLog::start();
    write("kept");
    EXPECT_EQ(files.text("C:\\HOME\\zorbelog.txt"), begin + "kept\n");
    files.writeProtected.clear();
    write("here");
    EXPECT_EQ(taken(), "here\n") << "asked anew for every line";
    files.writeProtected = "C:";
    write("nowhere");
}

// Where files are looked for

TEST_F(FrameworkTest, TakesTheFirstDirectoryThatHoldsTheName) {
    const auto expect = [](const char* name, const std::optional<std::string>& path) {
        EXPECT_EQ(OMPathResolveFilename(name), path);
    };
    expect("a.rsc", "a.rsc"); // no directories
    files.put("RSC\\both.rsc", "local");
    files.put("D:\\RSC\\BOTH.RSC", "cd");
    files.put("D:\\RSC\\Cd.rsc", "cd");
    files.put("RSC\\folder.rsc\\x", "");
    OMPathAddDirectory("RSC", true); // without its backslash
    OMPathAddDirectory("D:\\RSC\\", false);
    files.put("RSC\\late.rsc", "");
    files.questions = 0;
    expect("Both.RSC", "RSC\\Both.RSC");
    EXPECT_EQ(files.questions, 0) << "a listing is kept";
    expect("cd.rsc", "D:\\RSC\\cd.rsc");
    EXPECT_EQ(OMPathOpen("BOTH.rsc")->size(), 5U);
    expect("none.rsc", "D:\\RSC\\none.rsc"); // else the last one
    OMPathSetStrict(true);
    for (const char* name : {"none.rsc", "x/a.rsc", "folder.rsc", "late.rsc"})
        expect(name, std::nullopt);
    EXPECT_EQ(OMPathOpen("none.rsc"), nullptr);
    expect("D:a.rsc", "D:a.rsc");
    expect("x\\a.rsc", "x\\a.rsc");
    OMPathAddDirectory("RSC\\", false);
    expect("late.rsc", "RSC\\late.rsc");
    EXPECT_TRUE(failures.empty());
    expect("", std::nullopt);
    EXPECT_EQ(takeFailures(), Strings{"OMPathResolveFilename - invalid filename!"});
}

// Lists of things that others own, which may change while they are gone through: random use, also
// from within nested visits, against a standard list

class OMLists : public FrameworkTest {
  protected:
    void remove(int* item) {
        const auto found = std::ranges::find(model, item);
        EXPECT_EQ(list.remove(item), found != model.end());
        if (found == model.end()) return;
        for (auto& each : next)
            if (each == found) ++each;
        model.erase(found);
    }
    void act(int depth) {
        int& item = items.at(random() % 8);
        const int limit = static_cast<int>(random() % 9);
        switch (random() % 6) {
        case 0:
            if (model.size() < 12) list.append(&item), model.push_back(&item);
            break;
        case 1: {
            const auto isBehind = [&](int other) { return other > limit; };
            auto place = model.end();
            while (place != model.begin() && isBehind(**std::prev(place))) --place;
            list.insertInOrder(&item, isBehind), model.insert(place, &item);
            break;
        }
        case 2:
            if (depth < OMList<int>::kApplyDepth) visit(depth + 1);
            break;
        default: remove(&item);
        }
        OMListLocator<int> locator(list);
        for (const int* each : model) EXPECT_EQ(locator.next(), each);
        EXPECT_EQ(locator.next(), nullptr);
        EXPECT_EQ(list.count(), model.size());
        const auto isSmaller = [&](const int* each) { return *each < limit; };
        const auto first = std::ranges::find_if(model, isSmaller);
        const auto last = std::find_if(model.rbegin(), model.rend(), isSmaller);
        const auto isBelow = [&](int each) { return each < limit; };
        EXPECT_EQ(list.find(isBelow), first == model.end() ? nullptr : *first);
        EXPECT_EQ(list.findLast(isBelow), last == model.rend() ? nullptr : *last);
    }
    void visit(int depth) {
        next.push_back(model.begin()); // what comes next is known before a visit
        list.apply([&](const int& item) {
            ASSERT_NE(next.back(), model.end());
            EXPECT_EQ(&item, *next.back()++);
            act(depth);
        });
        EXPECT_EQ(next.back(), model.end());
        next.pop_back();
    }

    std::array<int, 8> items{1, 2, 3, 4, 5, 6, 7, 8};
    OMList<int> list;
    std::list<int*> model;
    std::vector<std::list<int*>::iterator> next; ///< of each running visit
    std::mt19937 random{20261126};
};

TEST_F(OMLists, AnyUseIsThatOfAStandardList) {
    for (int step = 0; step < 3000 && !HasFailure(); ++step) {
        act(0);
        EXPECT_EQ(list.first(), model.empty() ? nullptr : model.front());
        EXPECT_EQ(list.last(), model.empty() ? nullptr : model.back());
        if (step % 100 == 0) list.clear(), model.clear();
    }
    list.append(items.data());
    const auto nest = [this](int depth, auto& self) -> void {
        list.apply([&](int&) { depth > 1 ? self(depth - 1, self) : list.clear(); });
    };
    EXPECT_EXIT(nest(4, nest), ExitedWithCode(255), "tos > 1(.|\n)*too many nested calls to apply");
    nest(3, nest);
    EXPECT_TRUE(list.empty());
}

// Tasks: their order in a pass, and what they may do to each other

class OMTasks : public OMAppTest {
  protected:
    std::unique_ptr<OMTask> task(char name, std::uint32_t priority) {
        return std::make_unique<OMTask>([this, name] { ran += name; }, priority);
    }
    /// The names of the tasks of one pass, in order.
    std::string pass() {
        ran.clear();
        app->tasks().runAll();
        return ran;
    }
    std::string ran;
};

TEST_F(OMTasks, RunInDescendingOrderOfPriority) {
    const auto a = task('a', 5);
    const auto b = task('b', 0);
    const auto c = task('c', 5);
    EXPECT_EQ(pass(), "cab") << "the later one of equals runs first";
    const auto d = task('d', static_cast<std::uint32_t>(-1));
    const auto e = task('e', 0x7FFFFFFF);
    const auto f = task('f', 0);
    EXPECT_EQ(pass(), "decafb") << "compared without a sign";
    a->setPriority(0);
    EXPECT_EQ(pass(), "decafb") << "before the others of its new priority";
    d->setPriority(3);
    EXPECT_EQ(pass(), "ecdafb");
    c->suspend();
    d->setLink(nullptr);
    EXPECT_EQ(pass(), "eafb");
    c->resume();
    EXPECT_EQ(pass(), "ecafb") << "in its old place";
    app->begin();
    ran.clear();
    for (int i = 0; i < 2; ++i) app->pass();
    EXPECT_EQ(ran, "ecafbecafb") << "once in every pass of the main loop";
    app->setWaitForMessages(true);
    app->pass();
    EXPECT_EQ(ran, "ecafbecafb") << "no work while the program waits";
}

TEST_F(OMTasks, MayEndThemselvesAndOthers) {
    const auto a = task('a', 1);
    auto b = task('b', 2);
    auto c = task('c', 3);
    std::unique_ptr<OMTask> late;
    c->setLink([&] {
        ran += 'c';
        b.reset();
        c.reset();
    });
    EXPECT_EQ(pass(), "ca");
    EXPECT_EQ(app->tasks().count(), 1U);
    a->setLink([&] {
        ran += 'a';
        if (!late) late = task('l', 0);
    });
    pass();
    EXPECT_EQ(pass(), "al");
}

TEST_F(OMTasks, NeedAnApplication) {
    app.reset();
    EXPECT_EXIT(OMTask(nullptr, 0), ExitedWithCode(255),
                "OMDebug Fatal Error!\nOMApp::getApp\\(\\) == NULL(.|\n)*"
                "OMTask::OMTask - must have an OMApp instance before creating an OMTask!");
    OMSetPlatform(nullptr);
    EXPECT_EXIT(OMTask(nullptr, 0), ExitedWithCode(255),
                "OMDebug Fatal Error!\n!OMApp::isInitialized\\(\\)(.|\n)*"
                "OMTask::OMTask - global instances of OMTask are not allowed!");
}

// The debug window: its lines, its size, its coming and going

/// To which the test does what a person would do; it shows itself in `seen`.
struct Native final : platform::TextWindow {
    Native(const platform::Rect& where, platform::TextWindowOwner& itsOwner, std::string& text)
        : owner(itsOwner), place(where), seen(text) {}
    int lineHeight() const override { return 20; }
    platform::Rect rectangle() const override { return place; }
    bool isMinimised() const override { return minimised; }
    void move(platform::Point to) override {
        place = platform::shifted(place, to.x - place.left, to.y - place.top);
    }
    void show(std::span<const std::string> lines, std::size_t fresh) override {
        seen = std::to_string(fresh) + ":";
        for (const std::string& line : lines) seen += line + "/";
    }
    platform::TextWindowOwner& owner;
    platform::Rect place;
    std::string& seen;
    bool minimised = false;
};

TEST_F(OMAppTest, DebugWindowShowsTheNewestLinesThatItHasRoomFor) {
    std::string seen;
    Native* native = nullptr;
    OMDebugWindow window;
    const auto shown = [&](std::string_view text) {
        window.showText(text);
        return std::exchange(seen, {});
    };
    const auto resized = [&](int height) {
        native->place.bottom = native->place.top + height;
        native->owner.resized();
        return std::exchange(seen, {});
    };
    window.move(7, 8);
    EXPECT_EQ(shown("lost"), "") << "it cannot be opened";
    EXPECT_EQ(window.position(), platform::Rect{});
    machine.openWindow = [&](const platform::TextWindowRequest& request,
                             platform::TextWindowOwner& owner) {
        EXPECT_EQ(request.className + request.title, "OMDebugWindowOMDebug");
        auto made = std::make_unique<Native>(request.rectangle, owner, seen);
        native = made.get();
        return made;
    };
    EXPECT_EQ(shown("if\nx>5 is true\n\n[interrupt]"), "1:if/x>5 is true//[interrupt]/");
    EXPECT_EQ(shown("a\n"), "1:if/x>5 is true//[interrupt]/a/");
    EXPECT_EQ(window.position(), (platform::Rect{50, 50, 350, 450}));
    window.move(-10, 20);
    EXPECT_EQ(window.position(), (platform::Rect{-10, 20, 290, 420}));
    for (int i = 0; i < 15; ++i) shown("b");
    EXPECT_EQ(shown("c").substr(0, 6), "1:x>5 ") << "of 20 lines the 21st goes";
    EXPECT_EQ(resized(79), "0:b/b/c/");
    resized(400);
    EXPECT_EQ(shown("d"), "1:b/b/c/d/") << "what was dropped is gone";
    EXPECT_EQ(resized(19), "0:");
    EXPECT_EQ(shown("no room"), "0:");
    resized(20);
    EXPECT_EQ(shown("e"), "1:e/");
    EXPECT_EQ(shown("f"), "1:f/");
    native->minimised = true;
    EXPECT_EQ(shown("g"), "");
    native->owner.damaged();
    EXPECT_EQ(seen, "");
    native->minimised = false;
    native->owner.damaged();
    EXPECT_EQ(seen, "0:g/");

    window.destroy();
    window.destroy();
    EXPECT_EQ(shown("new"), "1:new/");
    native->owner.closed();
    app.reset();
    EXPECT_EXIT(window.show("text"), ExitedWithCode(255),
                "OMDebugWindowCreate - must have an OMApp instance before using OMDebugWindow!");
    app.emplace(OMApp::DisplayMode::PopUp, OMColor(), platform::Rect{0, 0, 640, 480}, 8);
    EXPECT_EQ(shown("newest"), "1:newest/");
    app.reset();
    EXPECT_EQ(shown("open already"), "1:newest/open already/");
}

} // namespace
