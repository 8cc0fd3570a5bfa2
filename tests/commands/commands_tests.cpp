// The commands over resource files and sounds: what the log says, copies, what is heard, and when
// the ends of sounds are told; the menu.
#include "commands/commands.h"

#include "character/speechrecords.h"
#include "commands/menucommands.h"
#include "formats/soundbuilder.h"
#include "movie/rsmackermovie.h"
#include "nebuilder.h"
#include "resources/resources.h"
#include "scene/efwindow.h"
#include "scene/rscenprt.h"
#include "sound/animationsounds.h"
#include "sound/gamesounds.h"
#include "texts/gametexts.h"
#include "trinkets/windowfixture.h"

#include "omao.h"
#include "omsarguments.h"
#include "omwaveengine.h"
#include "ykeyword.h"

#include <sstream>

using testing_support::RiffSound;
using testing_support::toText;

namespace {

using Samples = std::vector<std::uint8_t>;

class CommandsTest : public testing_support::OMAppTest {
  protected:
    CommandsTest() {
        for (const char* name : {"a.rsc", "b.rsc", "c.rsc"}) {
            testing_support::NEBuilder library;
            library.add("WAVE", name[0], std::string("wave ") + name);
            if (name[0] == 'c')
                library.add("WAVE", 101, RiffSound{.data = Samples(3000, 50)}.build())
                    .add("WAVE", 102, RiffSound{.data = Samples(40, 60)}.build())
                    .add("WAVE", 103, "damaged");
            files.put(std::string("D:\\RSC\\") + name, library.build());
        }
        resources.setHomeDirectory("C:\\HOME\\");
        resources.start("D:\\", nullptr);
        takeLog();
        app->begin();
    }

    /// What the command adds to the log; "-" is an empty word.
    std::string run(const std::string& words) {
        std::istringstream in(words);
        std::string command;
        in >> command;
        OMSArguments::global().clear();
        for (std::string word; in >> word;) OMSArguments::global().push(word == "-" ? "" : word);
        YCommands::find(command)->invoke();
        return takeLog();
    }
    /// The text of the sound in a.rsc and the place that the log names.
    std::string load() {
        const auto stream = resources.load('a', "WAVE", kOMIStreamCache);
        const std::string log = takeLog();
        const std::size_t open = log.find('(') + 1;
        return toText(stream->readAll()).substr(0, 10) + " " +
               log.substr(open, log.find(')') - open);
    }
    /// Plays some bytes of what is queued, so many times, each with a pass of the main loop.
    void hear(std::size_t bytes, int times = 1) {
        for (; times > 0; --times) {
            device.play(bytes);
            app->pass();
        }
    }

    testing_support::MemoryWaveOut& device = machine.waveOut();
    OMWaveEngine soundEngine;
    RResources resources;
    std::optional<RGameSounds> sounds{resources};
    RMovies movies;
    EffectsWindow window{{0, 0}, "Game"};
    RGameTexts texts{""};
    RCommands commands{window, resources, *sounds, movies, texts};
};

TEST_F(CommandsTest, WhatTheLogSaysOfFiles) {
    const std::pair<const char*, const char*> rows[] = {
        {"DeactivateDLL A.rsc", "Deactivating DLL a.rsc\n"},
        {"DeactivateDLL a.rsc", ""},
        {"ActivateDLL a.RSC 1", "Activating DLL a.rsc permanently\n"},
        {"DeactivateDLL a.rsc", ""},
        {"DeactivateAllDLLs", "Deactivating DLL b.rsc\nDeactivating DLL c.rsc\n"},
        {"ActivateDLL b.rsc -", "Activating DLL b.rsc temporarily\n"},
        {"DeactivateAllDLLs 1", "Deactivating DLL a.rsc\nDeactivating DLL b.rsc\n"},
        {"ActivateDLL unknown.rsc", ""},
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
}

TEST_F(CommandsTest, CopiesInEveryWay) {
    EXPECT_EQ(load(), "wave a.rsc CD");
    for (int bits = 0; bits < 8; ++bits) {
        const bool permanent = bits & 2;
        const auto flag = [bits](int bit) { return bits & bit ? " 1" : " 0"; };
        run(std::string("CacheDLL A.RSC") + flag(1) + flag(2) + flag(4));
        EXPECT_EQ(run("CacheDLL a.rsc - 1"), "") << "cached already";
        finishCopy("a.rsc");
        EXPECT_EQ(load(), "wave a.rsc Cached");
        EXPECT_EQ(files.exists("C:\\HOME\\a.rsc"), (bits & 4) != 0);
        const std::string uncached = "Uncaching DLL a.rsc\n";
        EXPECT_EQ(run("UncacheDLL a.rsc"), permanent ? "" : uncached);
        EXPECT_EQ(run("UncacheAllDLLs"), "");
        EXPECT_EQ(run("UncacheAllDLLs 1"), permanent ? uncached : "");
        EXPECT_EQ(load(), "wave a.rsc CD");
        EXPECT_FALSE(files.exists("C:\\HOME\\a.rsc"));
    }
    run("CacheDLL a.rsc 0 1 1");
    run("CacheDLL b.rsc 1 0 1");
    app->tasks().runAll();
    resources.shutDown(); // leaves none behind
    for (const char* name : {"a.rsc", "b.rsc"})
        EXPECT_FALSE(OMCachedFile::isCached(name) ||
                     files.exists(std::string("C:\\HOME\\") + name));
}

TEST_F(CommandsTest, ACopyNeverTakesThePlaceOfAnotherFile) {
    files.put("C:\\HOME\\a.rsc", "MZ the player's own");
    EXPECT_EQ(run("CacheDLL a.rsc 0 0 1"),
              "ERROR: a.rsc is not copied to C:\\HOME\\a.rsc: move the file that lies there\n");
    EXPECT_EQ(files.text("C:\\HOME\\a.rsc"), "MZ the player's own");
    const std::string whole = files.text("D:\\RSC\\a.rsc");
    // Left by a program that ended in the midst of a copy.
    files.put("C:\\HOME\\a.rsc", whole.substr(0, whole.size() / 2));
    run("CacheDLL a.rsc 0 0 1");
    EXPECT_EQ(load(), "wave a.rsc Cached");
}

TEST_F(CommandsTest, SoundsArePausedResumedKilledAndForgotten) {
    for (const char* what : {"102", "101 1", "101", "103"}) run(std::string("PlaySound ") + what);
    EXPECT_EQ(sounds->count(), 3u) << "one is damaged";
    hear(1024, 20);
    EXPECT_EQ(sounds->count(), 1u) << "only the loop is left";
    for (const char* words : {"KillSound 77", "PauseSound 77", "PauseSound 1"}) run(words);
    device.heard.clear();
    hear(4096);
    EXPECT_EQ(device.heard, Samples{});
    for (int i = 0; i < 2; ++i) run("ResumeSound 1");
    hear(1024);
    EXPECT_EQ(device.heard, Samples(1024, 50));
    for (int i = 0; i < 2; ++i) run("KillSound 1");
    EXPECT_TRUE(sounds->count() == 0 && !device.isOpen() && machine.dialogs().boxes.empty());
    RSpeechRecords speeches(nullptr, nullptr);
    run("SetSpeechCaching 1");
    EXPECT_TRUE(speeches.caching);
}

TEST_F(CommandsTest, CompletionComesOnceAndMayUseTheHandle) {
    int handle = RGameSounds::kNoSound;
    int done = 0;
    const OMLink finish = [&] {
        ++done;
        sounds->kill(handle);
    };
    handle = sounds->play(102, finish, false);
    hear(1024);
    EXPECT_EQ(done, 1);
    for (const bool loop : {false, true}) sounds->kill(sounds->play(101, finish, loop));
    EXPECT_EQ(done, 2) << "a killed sound has ended, a loop has no completion";
    const OMLink another = [&] { handle = sounds->play(102, finish, false); };
    sounds->play(101, another, false);
    hear(1024, 12);
    sounds->play(101, finish, false);
    sounds.reset();
    EXPECT_TRUE(done == 3 && !device.isOpen()) << "the end is silent";
}

TEST_F(CommandsTest, AnAnimationPlaysASoundOnceAtATime) {
    RAnimationSounds animationSounds(resources);
    OMAnimation animation(
        window, testing_support::AseqBuilder().block(4, 4, 'a').sequence({{0, 0, -4, 0}}).image(),
        1, 0, 0);
    std::string ended;
    const auto play = [&](int id, const char* name) {
        return animationSounds.play(animation.voice(), id, [&ended, name] { ended += name; });
    };
    using enum AOSounds::Start;
    EXPECT_EQ(play(96, "missing "), Never);
    EXPECT_EQ(play(103, "damaged "), NotNow);
    for (const char* name : {"first ", "second "}) EXPECT_EQ(play(101, name), Plays);
    EXPECT_EQ(play(102, "third "), Plays);
    hear(1024, 20);
    EXPECT_EQ(ended, "first second third ");
}

TEST_F(CommandsTest, TheMenuTurnsTheFlashOnAndOffAndDoesNotAskWhenAHandlerEndsTheGame) {
    const RMenuCommands menu(*app, window);
    const auto command = [this](int number) {
        machine.events().queue.push_back(
            {.kind = platform::Message::Kind::Command, .command = number});
        app->pass();
    };
    std::string delays;
    for (const int ms : {0, 10, 3, 150, -500}) {
        window.setFlashDelay(ms);
        command(59411);
        delays += std::to_string(window.flashDelay()) + ' ';
    }
    EXPECT_EQ(delays, "10 0 7 0 100 ");
    RScenePort port;
    port.takeClass(RScenePort::kClass);
    port.attachHandler("paused", [this] { app->stop(); });
    command(59396);
    EXPECT_TRUE(!app->isRunning() && machine.dialogs().boxes.empty());
}

} // namespace
