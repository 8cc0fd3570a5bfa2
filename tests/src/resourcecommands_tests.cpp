// The script commands over resource files, from their arguments to the log and the copies.
#include "frameworkfixture.h"
#include "nebuilder.h"

#include "commands/commands.h"
#include "movie/rsmackermovie.h"
#include "omapp.h"
#include "omistreamdll16.h"
#include "omsarguments.h"
#include "resources/resources.h"
#include "scene/efwindow.h"
#include "sound/gamesounds.h"
#include "ykeyword.h"

#include <chrono>
#include <thread>

using testing_support::FrameworkTest;
using testing_support::NEBuilder;
using testing_support::toText;

namespace {

using Strings = std::vector<std::string>;

constexpr const char* kLog = "zorbelog.txt";

class ResourceCommandsTest : public FrameworkTest {
  protected:
    ResourceCommandsTest() {
        for (const char* name : {"a.rsc", "b.rsc", "c.rsc"})
            files.put(std::string("D:\\RSC\\") + name,
                      NEBuilder().add("WAVE", name[0], std::string("wave ") + name).build());
        resources.setHomeDirectory("C:\\HOME\\");
        resources.start("D:\\", nullptr);
        takeLog();
    }

    /// What the command adds to the log.
    std::string run(std::string_view command, const Strings& texts = {}) {
        OMSArguments::global().clear();
        for (const std::string& text : texts) OMSArguments::global().push(text);
        const YKeyword* keyword = YCommands::find(command);
        if (!keyword) return "no such command";
        keyword->invoke();
        return takeLog();
    }
    std::string takeLog() {
        const std::string text = files.text(kLog);
        files.erase(kLog);
        return text;
    }
    /// The text of a file's one sound and the place that the log names.
    std::string load(int id) {
        const auto stream = resources.load(id, "WAVE", kOMIStreamCache);
        const std::string log = takeLog();
        const std::size_t open = log.find('(') + 1;
        return toText(stream->readAll()).substr(0, 10) + " " +
               log.substr(open, log.find(')') - open);
    }
    void runTasks(std::string_view name) {
        for (int pass = 0; pass < 20000; ++pass) {
            const OMCachedFile* file = OMCachedFile::find(name);
            if (!file || file->isComplete()) return;
            app.tasks().runAll();
            std::this_thread::sleep_for(std::chrono::microseconds(50));
        }
    }

    OMApp app{OMApp::DisplayMode::PopUp, OMColor(), {0, 0, 640, 480}, 8};
    RResources resources;
    RGameSounds sounds{resources};
    RMovies movies;
    EffectsWindow window{{0, 0}, "Game"};
    RCommands commands{window, resources, sounds, movies};
};

TEST_F(ResourceCommandsTest, ActivateAndDeactivate) {
    EXPECT_EQ(run("DeactivateDLL", {"A.rsc"}), "Deactivating DLL a.rsc\n");
    EXPECT_EQ(run("DeactivateDLL", {"a.rsc"}), "");
    EXPECT_EQ(run("ActivateDLL", {"a.RSC", "1"}), "Activating DLL a.rsc permanently\n");
    EXPECT_EQ(run("DeactivateDLL", {"a.rsc"}), "");
    EXPECT_EQ(run("DeactivateAllDLLs"), "Deactivating DLL b.rsc\nDeactivating DLL c.rsc\n");
    EXPECT_EQ(run("ActivateDLL", {"b.rsc", ""}), "Activating DLL b.rsc temporarily\n");
    EXPECT_EQ(run("DeactivateAllDLLs", {"1"}), "Deactivating DLL a.rsc\nDeactivating DLL b.rsc\n");
    EXPECT_EQ(run("ActivateDLL", {"unknown.rsc"}) + run("DeactivateDLL", {"unknown.rsc"}), "");
    EXPECT_EQ(run("ActivateDLL"), "");
}

TEST_F(ResourceCommandsTest, CacheInEveryWay) {
    EXPECT_EQ(load('a'), "wave a.rsc CD");
    for (int bits = 0; bits < 8; ++bits) {
        const bool background = bits & 1;
        const bool permanent = bits & 2;
        const bool disk = bits & 4;
        const auto flag = [](bool set) { return std::string(set ? "1" : "0"); };
        const std::string expected = std::string("Caching DLL a.rsc") +
                                     (background ? " in the background" : " immediately") +
                                     (permanent ? " permanently" : " temporarily") +
                                     (disk ? " to the Hard Drive\n" : " to memory\n");
        EXPECT_EQ(run("CacheDLL", {"A.RSC", flag(background), flag(permanent), flag(disk)}),
                  expected);
        EXPECT_EQ(run("CacheDLL", {"a.rsc", "", "1"}), "") << "cached already";
        runTasks("a.rsc");
        EXPECT_EQ(load('a'), "wave a.rsc Cached");
        EXPECT_EQ(files.exists("C:\\HOME\\a.rsc"), disk);

        const std::string uncached = "Uncaching DLL a.rsc\n";
        EXPECT_EQ(run("UncacheDLL", {"a.rsc"}), permanent ? "" : uncached);
        EXPECT_EQ(run("UncacheAllDLLs"), "");
        EXPECT_EQ(run("UncacheAllDLLs", {"1"}), permanent ? uncached : "");
        EXPECT_EQ(load('a'), "wave a.rsc CD");
        EXPECT_FALSE(files.exists("C:\\HOME\\a.rsc"));
    }
    EXPECT_EQ(run("CacheDLL", {"a.rsc"}), "Caching DLL a.rsc immediately temporarily to memory\n");
    EXPECT_EQ(run("CacheDLL", {"unknown.rsc"}) + run("UncacheDLL", {"unknown.rsc"}), "");
    EXPECT_TRUE(failures.empty());
}

TEST_F(ResourceCommandsTest, UncacheAllSparesThePermanent) {
    run("CacheDLL", {"a.rsc"});
    run("CacheDLL", {"b.rsc", "0", "1"});
    run("CacheDLL", {"c.rsc", "1", "0", "1"});
    EXPECT_EQ(run("UncacheAllDLLs"), "Uncaching DLL a.rsc\nUncaching DLL c.rsc\n");
    EXPECT_EQ(run("UncacheAllDLLs", {"1"}), "Uncaching DLL b.rsc\n");
}

TEST_F(ResourceCommandsTest, TheGameGoesOnWhenACopyFails) {
    struct Row {
        const char* background;
        const char* disk;
        std::size_t reads;
        std::size_t space;
    };
    for (const Row& row : {Row{"0", "0", 1, 1000}, Row{"1", "0", 1, 1000}, Row{"0", "1", 9, 3},
                           Row{"1", "1", 9, 3}}) {
        files.readsUntilError = row.reads;
        files.bytesUntilFull = row.space;
        run("CacheDLL", {"a.rsc", row.background, "0", row.disk});
        runTasks("a.rsc");
        EXPECT_EQ(load('a'), "wave a.rsc CD");
        EXPECT_EQ(run("UncacheDLL", {"a.rsc"}), "");
    }
    EXPECT_EQ(failures.size(), 4U);
}

TEST_F(ResourceCommandsTest, ACopyNeverTakesThePlaceOfAnotherFile) {
    files.put("C:\\HOME\\a.rsc", "MZ the player's own");
    EXPECT_EQ(run("CacheDLL", {"a.rsc", "0", "0", "1"}),
              "ERROR: a.rsc is not copied to C:\\HOME\\a.rsc: move the file that lies there\n");
    EXPECT_EQ(files.text("C:\\HOME\\a.rsc"), "MZ the player's own");
    EXPECT_EQ(load('a'), "wave a.rsc CD");
    testing_support::Bytes left = testing_support::toBytes(files.text("D:\\RSC\\a.rsc"));
    left.resize(left.size() / 2); // by a program that ended in the midst of a copy
    files.put("C:\\HOME\\a.rsc", left);
    run("CacheDLL", {"a.rsc", "0", "0", "1"});
    EXPECT_EQ(load('a'), "wave a.rsc Cached");
}

TEST_F(ResourceCommandsTest, ShutDownLeavesNoCopyBehind) {
    run("CacheDLL", {"a.rsc", "0", "1", "1"});
    run("CacheDLL", {"b.rsc", "1", "0", "1"});
    app.tasks().runAll();
    resources.shutDown();
    EXPECT_FALSE(OMCachedFile::isCached("a.rsc") || OMCachedFile::isCached("b.rsc"));
    EXPECT_FALSE(files.exists("C:\\HOME\\a.rsc") || files.exists("C:\\HOME\\b.rsc"));
    EXPECT_TRUE(failures.empty());
}

TEST_F(ResourceCommandsTest, StreamedSoundsAreReadPieceByPiece) {
    resources.addStreamedSound('a');
    resources.addStreamedSound('a');
    EXPECT_FALSE(resources.loadSound('a')->isWhole());
    EXPECT_TRUE(resources.loadSound('b')->isWhole());
    resources.removeStreamedSound('a');
    EXPECT_TRUE(resources.loadSound('a')->isWhole());

    // One that is in memory already is not.
    resources.addStreamedSound('a');
    run("CacheDLL", {"a.rsc"});
    EXPECT_TRUE(resources.loadSound('a')->isWhole());
    EXPECT_EQ(takeFailures(), Strings{"OMIStreamDLL16::OMIStreamDLL16 - instances of memory cached "
                                      "DLL's must use kOMIStreamCache!"});
}

} // namespace
