// What is heard of sounds of scripts, and when their ends are told.
#include "../ompp/nebuilder.h"
#include "../trinkets/scriptfixture.h"
#include "../trinkets/windowfixture.h"
#include "formats/soundbuilder.h"

#include "character/speechrecords.h"
#include "commands/commands.h"
#include "movie/rsmackermovie.h"
#include "omao.h"
#include "omwaveengine.h"
#include "resources/resources.h"
#include "scene/efwindow.h"
#include "sound/animationsounds.h"
#include "sound/gamesounds.h"

using testing_support::AseqBuilder;
using testing_support::Bytes;
using testing_support::NEBuilder;
using testing_support::RiffSound;
using testing_support::ScriptTest;

namespace {

using Samples = std::vector<std::uint8_t>;
using Strings = std::vector<std::string>;

formats::Bytes sound(std::size_t length, std::uint8_t sample) {
    return RiffSound{.data = Samples(length, sample)}.build();
}

Bytes library() {
    return NEBuilder()
        .add("WAVE", 101, sound(3000, 50))
        .add("WAVE", 102, sound(40, 60))
        .add("WAVE", 103, testing_support::toBytes("damaged"))
        .build();
}

class SoundCommandsTest : public ScriptTest {
  protected:
    SoundCommandsTest() {
        machine.files().put("RSC\\sounds.rsc", library());
        resources.start("", [](const formats::map::SequenceSound&) {});
    }
    /// Plays some bytes of what is queued, with a pass of the main loop.
    void hear(std::size_t bytes) {
        device.play(bytes);
        pass(1);
    }

    OMWaveEngine soundEngine;
    RResources resources;
    std::unique_ptr<RGameSounds> sounds = std::make_unique<RGameSounds>(resources);
    RMovies movies;
    EffectsWindow game{{0, 0}, "Game"};
    RCommands commands{game, resources, *sounds, movies};
    testing_support::MemoryWaveOut& device = machine.waveOut();
};

TEST_F(SoundCommandsTest, ADamagedSoundHasAHandleAndWhatHasEndedIsForgotten) {
    run("PlaySound 102\nPlaySound 101 1\nPlaySound 101\nPlaySound 103\nsay RESULT\n");
    EXPECT_EQ(said(), "3\n");
    EXPECT_EQ(boxes(), Strings{});
    EXPECT_EQ(sounds->count(), 3u);
    for (int i = 0; i < 20; ++i) hear(1024);
    EXPECT_EQ(sounds->count(), 1u) << "only the loop is left";
}

TEST_F(SoundCommandsTest, ScriptsKillPauseAndResume) {
    run("PlaySound 101 1\nPlaySound 101\nKillSound 1\nKillSound 1\nKillSound 77\nPauseSound 77\n");
    EXPECT_EQ(sounds->count(), 1u);
    run("PauseSound 0\n");
    device.heard.clear();
    hear(4096);
    EXPECT_EQ(device.heard, Samples{});
    run("ResumeSound 0\nResumeSound 0\n");
    hear(1024);
    EXPECT_EQ(device.heard, Samples(1024, 50));
    run("KillSound 0\n");
    EXPECT_EQ(sounds->count(), 0u);
    EXPECT_FALSE(device.isOpen());
    RSpeechRecords speeches(nullptr, nullptr);
    run("SetSpeechCaching 1\n");
    EXPECT_TRUE(speeches.caching);
}

TEST_F(SoundCommandsTest, CompletionComesOnceAndMayUseTheHandle) {
    int handle = RGameSounds::kNoSound;
    int done = 0;
    const auto finish = [&] {
        ++done;
        sounds->pause(handle);
        sounds->kill(handle);
    };
    handle = sounds->play(102, finish, false);
    hear(1024);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(sounds->count(), 0u);

    handle = sounds->play(101, finish, false);
    hear(0);
    sounds->kill(handle);
    EXPECT_EQ(done, 2) << "a killed sound has ended";
    sounds->kill(sounds->play(
        101, [&] { ++done; }, false));
    EXPECT_EQ(done, 3) << "also one that nobody has heard";
    done = 2;
    handle = sounds->play(101, finish, true);
    hear(0);
    sounds->kill(handle);
    EXPECT_EQ(done, 2) << "a loop has no completion";
    sounds->play(
        101, [&] { sounds->play(102, finish, false); }, false);
    for (int i = 0; i < 12; ++i) hear(1024);
    EXPECT_EQ(done, 3);
    sounds->play(101, finish, false);
    sounds.reset();
    EXPECT_EQ(done, 3) << "the end is silent";
    EXPECT_FALSE(device.isOpen());
}

TEST_F(SoundCommandsTest, AnAnimationPlaysASoundOnceAtATime) {
    OMTrinketWindow window({0, 0, 100, 80}, nullptr, "");
    RAnimationSounds animationSounds(resources);
    const auto image = AseqBuilder().block(4, 4, 'a').sequence({{0, 0, -4, 0}}).image();
    OMAnimation a(window, image, 1, 0, 0);
    OMAnimation b(window, image, 1, 0, 0);
    Strings ended;
    const auto note = [&](const char* name) { return [&ended, name] { ended.push_back(name); }; };
    using Start = AOSounds::Start;
    EXPECT_EQ(animationSounds.play(a.voice(), 101, note("a")), Start::Plays);
    EXPECT_EQ(animationSounds.play(b.voice(), 101, note("b")), Start::Plays);
    EXPECT_EQ(animationSounds.play(b.voice(), 99, note("missing")), Start::Never);
    EXPECT_EQ(animationSounds.play(b.voice(), 103, note("damaged")), Start::NotNow);
    EXPECT_EQ(animationSounds.play(b.voice(), 101, note("b again")), Start::Plays);
    EXPECT_EQ(ended, Strings{"b"}) << "the new one takes its place";
    EXPECT_EQ(animationSounds.play(b.voice(), 102, note("b too")), Start::Plays);
    animationSounds.stop(b.voice());
    for (int i = 0; i < 20; ++i) hear(1024);
    {
        OMAnimation gone(window, image, 1, 0, 0);
        EXPECT_TRUE(gone.voice().play(101, note("gone")));
    }
    EXPECT_EQ(soundEngine.soundingCount(), 0u);
    EXPECT_EQ(ended, (Strings{"b", "a"}));
    EXPECT_EQ(boxes(), Strings{"WAVE resource 99 not found."});
}

} // namespace
