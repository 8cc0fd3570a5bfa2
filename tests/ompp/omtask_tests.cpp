// Tasks: their order in a pass, and what they may do to each other.
#include "omtask.h"

#include "frameworkfixture.h"

namespace {

using testing::ExitedWithCode;

class OMTasks : public testing_support::OMAppTest {
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

} // namespace
