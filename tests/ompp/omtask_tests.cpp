#include "omtask.h"

#include "frameworkfixture.h"
#include "omapp.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing_support::FrameworkTest;

class OMTasks : public FrameworkTest {
  protected:
    std::unique_ptr<OMTask> task(char name, std::uint32_t priority) {
        return std::make_unique<OMTask>([this, name] { ran += name; }, priority);
    }
    /// The names of the tasks of one pass, in order.
    std::string pass() {
        ran.clear();
        app.tasks().runAll();
        return ran;
    }

    OMApp app{OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8};
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
}

TEST_F(OMTasks, SuspendedTasksKeepTheirPlace) {
    const auto a = task('a', 1);
    const auto b = task('b', 1);
    const auto c = task('c', 1);
    b->suspend();
    EXPECT_EQ(pass(), "ca");
    EXPECT_TRUE(b->isSuspended());
    b->resume();
    EXPECT_EQ(pass(), "cba");
    b->setLink(nullptr);
    EXPECT_EQ(pass(), "ca");
    b->setLink([this] { ran += 'B'; });
    EXPECT_EQ(pass(), "cBa");
}

TEST_F(OMTasks, TasksMayEndThemselvesAndOthers) {
    auto a = task('a', 1);
    auto b = task('b', 2);
    auto c = task('c', 3);
    auto d = task('d', 4);
    d->setLink([&] {
        ran += 'd';
        d.reset();
    });
    EXPECT_EQ(pass(), "dcba");
    EXPECT_EQ(pass(), "cba");
    c->setLink([&] {
        ran += 'c';
        b.reset();
        c.reset();
    });
    EXPECT_EQ(pass(), "ca");
    EXPECT_EQ(app.tasks().count(), 1U);
    std::unique_ptr<OMTask> late;
    a->setLink([&] {
        ran += 'a';
        if (!late) late = task('l', 0);
    });
    pass();
    EXPECT_EQ(pass(), "al");
}

TEST_F(OMTasks, RunOnceInEveryPassOfTheMainLoop) {
    const auto a = task('a', 0);
    app.begin();
    for (int i = 0; i < 3; ++i) app.pass();
    EXPECT_EQ(ran, "aaa");
    app.setWaitForMessages(true);
    app.pass();
    EXPECT_EQ(ran, "aaa") << "no work while the program waits";
}

TEST(OMTaskDeath, TasksNeedAnApplication) {
    testing_support::MemoryPlatform machine;
    EXPECT_EXIT(OMTask(nullptr, 0), ExitedWithCode(255),
                "OMDebug Fatal Error!\n!OMApp::isInitialized\\(\\)(.|\n)*"
                "OMTask::OMTask - global instances of OMTask are not allowed!");
    OMSetPlatform(&machine);
    EXPECT_EXIT(OMTask(nullptr, 0), ExitedWithCode(255),
                "OMDebug Fatal Error!\nOMApp::getApp\\(\\) == NULL(.|\n)*"
                "OMTask::OMTask - must have an OMApp instance before creating an OMTask!");
    OMSetPlatform(nullptr);
}

} // namespace
