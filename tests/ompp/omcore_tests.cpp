// The framework's core: checks, the log, lists, tasks, and where files are looked for.
#include "frameworkfixture.h"

#include "omlist.h"
#include "omlog.h"
#include "omtask.h"

#include <list>
#include <random>

using namespace testing_support;

namespace {

using testing::ExitedWithCode;
using Strings = std::vector<std::string>;

TEST_F(FrameworkTest, OnlyFatalChecksEndTheProgram) {
    const std::string fits(475, 'm');
    for (const bool isLonger : {false, true}) // it stops at the first piece that does not fit
        EXPECT_EQ(OMDebug::fatalText({"a", fits + (isLonger ? "m" : ""), "f", 12}),
                  "OMDebug Fatal Error!\na\n\nf\nLine # 12\n" + (isLonger ? "" : fits));
    EXPECT_EXIT(OMDebug::require(false, "a < b", "a is too large", {"src/x.cpp", 7}),
                ExitedWithCode(255), "a < b\n\nsrc/x.cpp\nLine # 7\na is too large");
    EXPECT_FALSE(OMDebug::check(false, "two", "second"));
    EXPECT_EQ(takeFailures(), Strings{"second"});
}

TEST_F(FrameworkTest, LinesGoToTheLogInTheFirstPlaceThatCanBeWritten) {
    const auto expect = [&](const std::string& text) { EXPECT_EQ(takeLog(), text); };
    const std::string begin = "Starting Logging, Debug Level set to ALL\n\n";
    const std::string far(5000, 'x');
    OMLog::start();
    OMLog::writef(OMLog::Kind::Warning, "%s %d%%", far.c_str(), 50);
    OMLog::close();
    expect(begin + "Warning: " + far + " 50%\n\nClosing Log\n\n");
    files.writeProtected = "C:\\GAME";
    OMLog::setFallbackDirectory("C:\\HOME\\");
    OMLog::start();
    EXPECT_EQ(files.text("C:\\HOME\\zorbelog.txt"), begin);
    files.writeProtected.clear(); // asked anew for every line
    OMLog::setFallbackDirectory({});
    const std::pair<int, std::string> levels[] = {{0, "NONE\n\ne\nw\nm\n"},
                                                  {1, "ERRORS\n\nERROR: e\nw\nm\n"},
                                                  {2, "WARNINGS\n\nERROR: e\nWarning: w\nm\n"},
                                                  {4, "e\nw\nm\n"},
                                                  {3, "ALL\n\nERROR: e\nWarning: w\nm\n"}};
    for (const auto& [level, lines] : levels) {
        EXPECT_EQ(OMLog::handleCommand(59407 + level), level <= 3);
        if (level > 3) OMLog::setLevel(level);
        OMLog::write(OMLog::Kind::Error, "e");
        OMLog::write(OMLog::Kind::Warning, "w");
        OMLog::write(OMLog::Kind::Message, "m");
        expect("Debug Level changed to " + lines);
    }
}

TEST_F(FrameworkTest, TakesTheFirstDirectoryThatHoldsTheName) {
    const auto expect = [](const char* name, const std::optional<std::string>& path) {
        EXPECT_EQ(OMPathResolveFilename(name), path);
    };
    expect("a.rsc", "a.rsc"); // no directories
    for (const char* path :
         {"RSC\\both.rsc", "D:\\RSC\\BOTH.RSC", "D:\\RSC\\Cd.rsc", "RSC\\folder.rsc\\x"})
        files.put(path, path);
    OMPathAddDirectory("RSC", true); // without its backslash
    OMPathAddDirectory("D:\\RSC\\", false);
    files.put("RSC\\late.rsc", "");
    expect("Both.RSC", "RSC\\Both.RSC");
    expect("cd.rsc", "D:\\RSC\\cd.rsc");
    EXPECT_EQ(OMPathOpen("BOTH.rsc")->size(), 12U);
    expect("none.rsc", "D:\\RSC\\none.rsc"); // else the last one
    OMPathSetStrict(true);
    for (const char* name : {"none.rsc", "x/a.rsc", "folder.rsc", "late.rsc"})
        expect(name, std::nullopt); // a listing is kept
    for (const char* path : {"D:a.rsc", "x\\a.rsc"}) expect(path, path);
    OMPathAddDirectory("RSC\\", false);
    expect("late.rsc", "RSC\\late.rsc");
    EXPECT_EQ(OMPathOpen(""), nullptr);
    EXPECT_EQ(takeFailures(), Strings{"OMPathResolveFilename - invalid filename!"});
}

/// Random use of a list, also from within nested visits, against a standard list.
struct OMLists : FrameworkTest {
    void act(int depth) {
        int& item = items.at(random() % 8);
        const int limit = static_cast<int>(random() % 9);
        const auto isBelow = [&](int each) { return each < limit; };
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
        default: {
            const auto found = std::ranges::find(model, &item);
            EXPECT_EQ(list.remove(&item), found != model.end());
            if (found == model.end()) break;
            for (auto& each : next)
                if (each == found) ++each;
            model.erase(found);
        }
        }
        OMListLocator<int> locator(list);
        int* first = nullptr;
        int* last = nullptr;
        for (int* each : model) {
            EXPECT_EQ(locator.next(), each);
            if (isBelow(*each)) first = first ? first : each, last = each;
        }
        EXPECT_EQ(locator.next(), nullptr);
        EXPECT_EQ(list.count(), model.size());
        EXPECT_EQ(list.find(isBelow), first);
        EXPECT_EQ(list.findLast(isBelow), last);
        EXPECT_EQ(list.first(), model.empty() ? nullptr : model.front());
        EXPECT_EQ(list.last(), model.empty() ? nullptr : model.back());
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

TEST_F(OMAppTest, TasksRunInDescendingOrderOfPriority) {
    std::string ran;
    const auto task = [&](char name, std::uint32_t priority) {
        return std::make_unique<OMTask>([&ran, name] { ran += name; }, priority);
    };
    const auto expectPass = [&](const std::string& names) {
        app->tasks().runAll();
        EXPECT_EQ(std::exchange(ran, {}), names);
    };
    auto a = task('a', 5);
    auto b = task('b', 0);
    auto c = task('c', 5);
    expectPass("cab"); // the later one of equals runs first
    const auto d = task('d', static_cast<std::uint32_t>(-1));
    const auto e = task('e', 0x7FFFFFFF);
    const auto f = task('f', 0);
    expectPass("decafb"); // compared without a sign
    a->setPriority(0);
    expectPass("decafb"); // before the others of its new priority
    c->suspend();
    expectPass("deafb");
    c->resume();
    app->begin();
    app->pass(); // once in every pass of the main loop
    EXPECT_EQ(std::exchange(ran, {}), "decafb");
    e->setLink([&] { c.reset(), a.reset(); });
    expectPass("dfb");
    app.reset();
    EXPECT_EXIT(OMTask(nullptr, 0), ExitedWithCode(255),
                "OMTask::OMTask - must have an OMApp instance before creating an OMTask!");
}

} // namespace
