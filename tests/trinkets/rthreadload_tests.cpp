#include "scriptfixture.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;
using testing::IsEmpty;
using testing_support::ScriptTest;
using testing_support::TextStream;

class RThreadLoad : public ScriptTest {
  protected:
    void addScripts() {
        put("a.mps", "yield off\nsay a\nx=left\nrelay \"b.mps\"\nsay never\n");
        put("b.mps", "yield off\nsay b x\nn=1\n");
        put("sub.mps", "yield off\nsay sub\nexit\nsay never\n");
    }
};

TEST_F(RThreadLoad, RelayReplacesTheScript) {
    addScripts();
    load("a.mps");
    int started = 0;
    int unloaded = 0;
    thread->setStartedLink([&] { ++started; });
    thread->setUnloadedLink([&] { ++unloaded; });
    pass(8);
    EXPECT_EQ(said(), "a\nb x\n") << "with fresh variables";
    EXPECT_THAT(engine->threadStack(), IsEmpty());
    EXPECT_EQ(thread->scriptName(), "b.mps");
    EXPECT_EQ(started, 1);
    EXPECT_EQ(unloaded, 1);
}

TEST_F(RThreadLoad, CalledScriptsComeBackToTheStart) {
    addScripts();
    run("say main count\ncall \"sub.mps\"\nsay never\n", 2);
    EXPECT_EQ(said(), "main count\n");
    EXPECT_THAT(engine->threadStack(), ElementsAre("test.mps"));
    EXPECT_EQ(thread->scriptName(), "sub.mps");
    pass(2);
    EXPECT_EQ(said(), "sub\n");
    EXPECT_THAT(engine->threadStack(), IsEmpty());
    EXPECT_EQ(thread->scriptName(), "test.mps");
    pass(2);
    EXPECT_EQ(said(), "main count\n") << "from its start";
}

TEST_F(RThreadLoad, ExitWithoutACallerUnloads) {
    put("forgets.mps", "yield off\nwhat=\"stack\"\ndrop script what\nexit\n");
    for (const char* text : {"x=1\nexit\nsay never\n", "call \"forgets.mps\"\n"}) {
        run(text, 10);
        EXPECT_FALSE(thread->isLoaded());
        EXPECT_EQ(value("x"), "<none>");
        thread->run();
        pass(3);
        EXPECT_FALSE(thread->isRunning()) << "there is nothing to run";
        EXPECT_TRUE(app->isRunning());
    }
}

TEST_F(RThreadLoad, QuitAsksTheApplication) {
    addScripts();
    run("quit\nsay never\n");
    EXPECT_FALSE(app->isRunning());
    EXPECT_FALSE(thread->isLoaded());
    run("quit \"b.mps\"\n", 2);
    EXPECT_EQ(thread->scriptName(), "b.mps");
    EXPECT_EQ(said(), "");
}

TEST_F(RThreadLoad, TheProgramMaySwitchScripts) {
    addScripts();
    put("main.mps", "yield off\nsay main\nwait\n");
    load("main.mps");
    pass(3);
    thread->switchToScript("main.mps");
    EXPECT_FALSE(engine->isSwitching()) << "it is the current one";
    thread->callScript("b.mps");
    EXPECT_TRUE(engine->isSwitching());
    pass(4);
    EXPECT_EQ(said(), "main\nb x\n");
    EXPECT_THAT(engine->threadStack(), ElementsAre("main.mps"));
    thread->switchToScript("main.mps");
    pass(4);
    EXPECT_EQ(said(), "main\n");
    EXPECT_THAT(engine->threadStack(), ElementsAre("main.mps")) << "not a return";
}

TEST_F(RThreadLoad, ThreadsShareVariablesAndWaitForSwitches) {
    put("one.mps", "yield off\nshared=1\nwait\n");
    put("two.mps", "yield off\nsay two shared\nshared=shared+1\nwait\n");
    load("one.mps");
    pass(3);
    YThread second(*engine, "two.mps");
    second.run();
    int lost = 0;
    second.setUnloadedLink([&] { ++lost; });
    pass(3);
    EXPECT_EQ(said(), "two 1\n");
    EXPECT_EQ(value("shared"), "2");
    // Another script for the first thread takes all variables with it.
    thread->switchToScript("two.mps");
    pass(3);
    EXPECT_EQ(said(), "two shared\n");
    EXPECT_FALSE(second.isLoaded());
    EXPECT_EQ(lost, 1);
    second.loadScript("one.mps");
    second.run();
    pass(3);
    EXPECT_EQ(value("shared"), "1");
}

TEST_F(RThreadLoad, UnloadingWhileARunningInstructionLooksOn) {
    YCommands::add("Unload", [this] { thread->unload(); });
    YCommands::add("Reload", [this] {
        thread->loadScript("next.mps");
        thread->run();
    });
    put("next.mps", "say next\n");
    for (const char* pace : {"", "yield off\n", "debug f\ndebug on\n"}) {
        start(std::string(pace) + "Unload\nsay never\n", 10);
        EXPECT_FALSE(thread->isLoaded());
        start(std::string(pace) + "x=1\nReload\nsay never\n", 10);
        EXPECT_THAT(said(), testing::HasSubstr("next"));
        thread = nullptr;
    }
}

TEST_F(RThreadLoad, ScriptsAreChosenByHandOrNotAtAll) {
    put("chosen.mps", "say chosen\n");
    machine.dialogs().chosen = "chosen.mps";
    load(nullptr);
    pass(3);
    EXPECT_EQ(said(), "chosen\n");
    EXPECT_THAT(machine.dialogs().asked, ElementsAre("Script *.mps 128"));
    machine.dialogs().chosen.clear();
    load(nullptr);
    EXPECT_FALSE(thread->isLoaded());
    load("");
    EXPECT_FALSE(thread->isLoaded());
    pass(3);
    EXPECT_EQ(said(), "");
}

TEST_F(RThreadLoad, LocatorsFindWhatIsNoFile) {
    put("inc", "say included\n");
    load("far.mps", [](std::string_view name) {
        return std::make_unique<TextStream>("say from " + std::string(name) + "\rinclude inc\r");
    });
    pass(5);
    EXPECT_EQ(said(), "from far.mps\nincluded\n");
    EXPECT_EQ(thread->scriptName(), "far.mps");
}

TEST_F(RThreadLoad, BrokenScriptsAreShownAndNotRun) {
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {"say 1\nsay \"open  \nsay 2\n", {"Unquote say \"open  ...", "2: \"open"}},
        {"Boop\npause\n", {"Boop is undefined", "2: pause"}},
        {"say 1\ninclude test.mps\n", {"2: test.mps"}}, // itself, on and on
    };
    for (const auto& [text, shown] : rows) {
        start(text);
        EXPECT_FALSE(thread->isLoaded());
        EXPECT_EQ(said(), "");
        EXPECT_EQ(boxes(), shown);
    }
}

TEST_F(RThreadLoad, TheLargestScriptIsRun) {
    start("say 1\n;" + std::string(65535 - 7, 'x'));
    EXPECT_EQ(said(), "1\n");
    start("");
    EXPECT_TRUE(thread->isLoaded()) << "an empty one is a script";
}

using RThreadLoadDeath = RThreadLoad;

TEST_F(RThreadLoadDeath, UnreadableScriptsEndTheProgram) {
    const auto nothing = [](std::string_view) { return std::unique_ptr<OMIStream>(); };
    const auto huge = [](std::string_view) {
        return std::make_unique<TextStream>(std::string(65536, ';'));
    };
    put("long.mps", std::string(65536, ';'));
    put("includes.mps", "include none\n");
    put("includesbinary.mps", "include binary\n");
    machine.files().put("binary", "\2" + std::string(70000, ';'));
    const struct {
        const char* name;
        YScriptLocator locator;
        const char* message;
    } rows[] = {
        {"none.mps", nullptr, "can't find none.mps"},
        {"none.mps", nothing, "unknown script"},
        {"far.mps", huge, "Script too long"},
        {"long.mps", nullptr, "Script too long"},
        {"includes.mps", nullptr, "can't find none"},
        {"includes.mps", nothing, "unknown script"},
        {"includesbinary.mps", nullptr, "Script too long"},
    };
    for (const auto& row : rows)
        EXPECT_EXIT(load(row.name, row.locator), ExitedWithCode(1), row.message) << row.name;
    put("relays.mps", "relay gone\n");
    load("relays.mps");
    EXPECT_EXIT(pass(3), ExitedWithCode(1), "can't find gone");
}

} // namespace
