// The script commands over resource files, from their words to the log and the copies.
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
#include <sstream>
#include <thread>

using testing_support::FrameworkTest;
using testing_support::NEBuilder;
using testing_support::toText;

namespace {

using Strings = std::vector<std::string>;

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

    /// What the command adds to the log; "-" is an empty word.
    std::string run(const std::string& words) {
        std::istringstream in(words);
        std::string command;
        in >> command;
        OMSArguments::global().clear();
        for (std::string word; in >> word;) OMSArguments::global().push(word == "-" ? "" : word);
        const YKeyword* keyword = YCommands::find(command);
        if (!keyword) return "no such command";
        keyword->invoke();
        return takeLog();
    }
    std::string takeLog() {
        const std::string text = files.text("zorbelog.txt");
        files.erase("zorbelog.txt");
        return text;
    }
    /// The text of the sound in a.rsc and the place that the log names.
    std::string load() {
        const auto stream = resources.load('a', "WAVE", kOMIStreamCache);
        const std::string log = takeLog();
        const std::size_t open = log.find('(') + 1;
        return toText(stream->readAll()).substr(0, 10) + " " +
               log.substr(open, log.find(')') - open);
    }
    void copy() {
        for (int pass = 0; pass < 20000; ++pass) {
            const OMCachedFile* file = OMCachedFile::find("a.rsc");
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

TEST_F(ResourceCommandsTest, WhatTheLogSays) {
    const std::pair<const char*, const char*> rows[] = {
        {"DeactivateDLL A.rsc", "Deactivating DLL a.rsc\n"},
        {"DeactivateDLL a.rsc", ""},
        {"ActivateDLL a.RSC 1", "Activating DLL a.rsc permanently\n"},
        {"DeactivateDLL a.rsc", ""},
        {"DeactivateAllDLLs", "Deactivating DLL b.rsc\nDeactivating DLL c.rsc\n"},
        {"ActivateDLL b.rsc -", "Activating DLL b.rsc temporarily\n"},
        {"DeactivateAllDLLs 1", "Deactivating DLL a.rsc\nDeactivating DLL b.rsc\n"},
        {"ActivateDLL unknown.rsc", ""},
        {"DeactivateDLL unknown.rsc", ""},
        {"ActivateDLL", ""},
        {"CacheDLL unknown.rsc", ""},
        {"UncacheDLL unknown.rsc", ""},
        {"CacheDLL a.rsc", "Caching DLL a.rsc immediately temporarily to memory\n"},
        {"CacheDLL b.rsc 0 1", "Caching DLL b.rsc immediately permanently to memory\n"},
        {"CacheDLL c.rsc 1 0 1",
         "Caching DLL c.rsc in the background temporarily to the Hard Drive\n"},
        {"UncacheAllDLLs", "Uncaching DLL a.rsc\nUncaching DLL c.rsc\n"},
        {"UncacheAllDLLs 1", "Uncaching DLL b.rsc\n"},
    };
    for (const auto& [words, log] : rows) EXPECT_EQ(run(words), log) << words;
    EXPECT_TRUE(failures.empty());
}

TEST_F(ResourceCommandsTest, CopiesInEveryWay) {
    EXPECT_EQ(load(), "wave a.rsc CD");
    for (int bits = 0; bits < 8; ++bits) {
        const bool permanent = bits & 2;
        const bool disk = bits & 4;
        const auto flag = [bits](int bit) { return bits & bit ? " 1" : " 0"; };
        run(std::string("CacheDLL A.RSC") + flag(1) + flag(2) + flag(4));
        EXPECT_EQ(run("CacheDLL a.rsc - 1"), "") << "cached already";
        copy();
        EXPECT_EQ(load(), "wave a.rsc Cached");
        EXPECT_EQ(files.exists("C:\\HOME\\a.rsc"), disk);
        const std::string uncached = "Uncaching DLL a.rsc\n";
        EXPECT_EQ(run("UncacheDLL a.rsc"), permanent ? "" : uncached);
        EXPECT_EQ(run("UncacheAllDLLs"), "");
        EXPECT_EQ(run("UncacheAllDLLs 1"), permanent ? uncached : "");
        EXPECT_EQ(load(), "wave a.rsc CD");
        EXPECT_FALSE(files.exists("C:\\HOME\\a.rsc"));
    }
    run("CacheDLL a.rsc 0 1 1");
    run("CacheDLL b.rsc 1 0 1");
    app.tasks().runAll();
    resources.shutDown(); // leaves none behind
    EXPECT_FALSE(OMCachedFile::isCached("a.rsc") || OMCachedFile::isCached("b.rsc"));
    EXPECT_FALSE(files.exists("C:\\HOME\\a.rsc") || files.exists("C:\\HOME\\b.rsc"));
    EXPECT_TRUE(failures.empty());
}

TEST_F(ResourceCommandsTest, TheGameGoesOnWhenACopyFails) {
    for (const char* how : {"0 0 0", "1 0 0", "0 0 1", "1 0 1"}) {
        const bool disk = how[4] == '1';
        files.readsUntilError = disk ? 9 : 1;
        files.bytesUntilFull = disk ? 3 : 1000;
        run(std::string("CacheDLL a.rsc ") + how);
        copy();
        EXPECT_EQ(load(), "wave a.rsc CD");
        EXPECT_EQ(run("UncacheDLL a.rsc"), "");
    }
    EXPECT_EQ(failures.size(), 4U);
}

TEST_F(ResourceCommandsTest, ACopyNeverTakesThePlaceOfAnotherFile) {
    files.put("C:\\HOME\\a.rsc", "MZ the player's own");
    EXPECT_EQ(run("CacheDLL a.rsc 0 0 1"),
              "ERROR: a.rsc is not copied to C:\\HOME\\a.rsc: move the file that lies there\n");
    EXPECT_EQ(files.text("C:\\HOME\\a.rsc"), "MZ the player's own");
    EXPECT_EQ(load(), "wave a.rsc CD");
    testing_support::Bytes left = testing_support::toBytes(files.text("D:\\RSC\\a.rsc"));
    left.resize(left.size() / 2); // by a program that ended in the midst of a copy
    files.put("C:\\HOME\\a.rsc", left);
    run("CacheDLL a.rsc 0 0 1");
    EXPECT_EQ(load(), "wave a.rsc Cached");
}

TEST_F(ResourceCommandsTest, StreamedSoundsAreReadPieceByPiece) {
    resources.addStreamedSound('a');
    resources.addStreamedSound('a');
    EXPECT_FALSE(resources.loadSound('a')->isWhole());
    EXPECT_TRUE(resources.loadSound('b')->isWhole());
    resources.removeStreamedSound('a');
    EXPECT_TRUE(resources.loadSound('a')->isWhole());
    resources.addStreamedSound('a'); // one that is in memory already is not
    run("CacheDLL a.rsc");
    EXPECT_TRUE(resources.loadSound('a')->isWhole());
    EXPECT_EQ(takeFailures(), Strings{"OMIStreamDLL16::OMIStreamDLL16 - instances of memory cached "
                                      "DLL's must use kOMIStreamCache!"});
}

} // namespace
