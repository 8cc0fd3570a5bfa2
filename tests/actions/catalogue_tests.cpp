#include "actionfixture.h"

#include "actions/rcompositeaction.h"
#include "actions/rqueue.h"
#include "actions/sndact.h"
#include "formats/sound/wave.h"
#include "ranimation.h"
#include "sound/streamsound.h"

using namespace testing_support;

namespace {

using Strings = std::vector<std::string>;

class CatalogueTest : public ActionTest {
  protected:
    /// The object in a script variable.
    template <class Object>
    static Object& named(const char* name) {
        return dynamic_cast<Object&>(*OMScriptableObject::named(name));
    }
    /// A queue with that action, which notes its end.
    RQueue& queueOf(std::initializer_list<const char*> arguments) {
        queue = std::make_unique<RQueue>(1, true);
        add(*queue, arguments);
        watch(*queue, "done");
        begin();
        return *queue;
    }

    std::unique_ptr<RQueue> queue;
};

} // namespace

TEST_F(CatalogueTest, EachTypeTellsWhatItWasCreatedFrom) {
    struct Row {
        std::initializer_list<const char*> arguments;
        const char* report; ///< behind "Creating "
    };
    run("anim=RAnimation 1 0\nguide=RCharacter 1 0 0 0\nbay=RMap 0 0\n");
    const Row rows[] = {
        {{"AnimAction", "5", "1", "2", "3", "4", "1"},
         "AnimAction, resID: 5, x: 1, y: 2, z: 3, repeatCount: 4, interruptible: 1"},
        {{"AnimAction", "5", "1", "2", "3", "4"},
         "AnimAction, resID: 5, x: 1, y: 2, z: 3, repeatCount: 4, interruptible: (container "
         "specified)"},
        {{"AnimAction", "5", "3", "4", "0"},
         "AnimAction, resID: 5, z: 3, repeatCount: 4, interruptible: 0"},
        {{"AnimAction", "5", "3", "4"},
         "AnimAction, resID: 5, z: 3, repeatCount: 4, interruptible: (container specified)"},
        {{"PlayAnimAction", "anim", "1"},
         "PlayAnimAction, RAnimation variable name: anim, interruptible: 1"},
        {{"CharacterAnimAction", "guide", "7", "2", "0", "1"},
         "CharacterAnimAction, RCharacter variable name: guide, animID: 7, repeatCount: 2, "
         "showSettleWhenDone: 0, interruptible: 1"},
        {{"CharacterAnimAction", "guide", "7"},
         "CharacterAnimAction, RCharacter variable name: guide, animID: 7, repeatCount: (1), "
         "showSettleWhenDone: (TRUE), interruptible: (container specified)"},
        {{"CharacterSpeechAction", "guide", "9", "0"},
         "CharacterSpeechAction, RCharacter variable name: guide, speechSoundID: 9, interruptible: "
         "0"},
        {{"MapAction", "bay", "1"}, "MapAction - RMap variable name: bay, interruptible: 1"},
        {{"DelayAction", "500", "0"}, "DelayAction, delayTime (in ms): 500, interruptible: 0"},
        {{"DelayAction", "500"},
         "DelayAction, delayTime (in ms): 500, interruptible: (container specified)"},
        {{"RandomDelayAction", "5", "9", "1"},
         "RandomDelayAction, min delay time (ms): 5, max delay time (ms): 9, interruptible: 1"},
        {{"EmptyAction", "1"}, "EmptyAction - interruptible: 1"},
        {{"EmptyAction"}, "EmptyAction - interruptible (container specified)"},
        {{"MoveXAction", "anim", "anim", "1", "2", "3", "4", "1"},
         "MoveXAction - RAnimation variable name: anim, OMTrinket variable name: anim, initial X: "
         "1, X velocity: 2, X acceleration: 3, final X: 4, interruptible: 1"},
        {{"MoveYAction", "anim", "anim", "1", "2", "3", "4"},
         "MoveYAction - RAnimation variable name: anim, OMTrinket variable name: anim, initial Y: "
         "1, Y velocity: 2, Y acceleration: 3, final Y: 4, interruptible: (container specified)"},
        {{"MoveXYAction", "anim", "anim", "1", "2", "3", "4", "5", "6", "7", "8", "0"},
         "MoveXYAction - RAnimation variable name: anim, OMTrinket variable name: anim, initial X: "
         "1, X velocity: 2, X acceleration: 3, final X: 4, initial Y: 5, Y velocity: 6, Y "
         "acceleration: 7, final Y: 8, interruptible: 0"},
        {{"MovieAction", "a.smk", "9", "0", "1", "1"},
         "MovieAction, filename: a.smk, extraBufferMemory: 9, useMoviePalette: 0, cache: 1, "
         "canInterrupt: 1"},
        {{"MovieAction", "a.smk"},
         "MovieAction, filename: a.smk, extraBufferMemory: (SMACKAUTOEXTRA), useMoviePalette: "
         "(TRUE), cache: (FALSE), canInterrupt: (containerSpecified)"},
        {{"SoundAction", "7", "1", "0"}, "SoundAction, sound ID: 7, streamed: 1, interruptible: 0"},
        {{"SoundAction", "7"},
         "SoundAction, sound ID: 7, streamed: (FALSE), interruptible: (container specified)"},
        {{"VerbAction", "anim", "1", "setX"},
         "VerbAction, object variable name: anim, interruptible: 1, verb: setX"},
        {{"VerbAction", "anim", "0", "setX", "5", "b c"},
         "VerbAction, object variable name: anim, interruptible: 0, verb: setX, parameters: 5 b "
         "c "},
        {{"PropertyAction", "anim", "x", "9", "1"},
         "PropertyAction, object variable name: anim, property: x, value: 9, interruptible: 1"},
    };
    takeReports();
    for (const Row& row : rows) {
        RQueue container(1, false);
        add(container, row.arguments);
        EXPECT_EQ(takeReports(), Strings{std::string("Creating ") + row.report});
        const bool tells = !std::string_view(row.report).ends_with("pecified)");
        const bool may = std::string_view(row.report).find("nterrupt") != std::string_view::npos &&
                         tells && container.isInterruptible();
        EXPECT_EQ(container.isInterruptible(), may) << row.report;
    }
}

TEST_F(CatalogueTest, WrongParametersAreRefused) {
    run("anim=RAnimation 1 0\nqueue=RQueue 1\n");
    const std::initializer_list<const char*> tooFew[] = {
        {"AnimAction", "1", "2"},
        {"PlayAnimAction"},
        {"CharacterAnimAction", "c"},
        {"CharacterSpeechAction", "c"},
        {"DelayAction"},
        {"RandomDelayAction", "1"},
        {"MapAction"},
        {"MoveXAction", "anim", "anim", "1", "2", "3"},
        {"MoveYAction", "anim", "anim", "1", "2", "3"},
        {"MoveXYAction", "anim", "anim", "1", "2", "3", "4", "5", "6", "7"},
        {"MovieAction"},
        {"SoundAction"},
        {"VerbAction", "anim", "1"},
        {"PropertyAction", "anim", "x"},
    };
    RQueue container(1, true);
    for (const auto& arguments : tooFew) {
        const std::string type = *arguments.begin();
        add(container, arguments);
        EXPECT_EQ(boxes(), (Strings{type + " - not enough parameters",
                                    "Unknown action or container: " + type}));
    }
    struct Row {
        std::initializer_list<const char*> arguments;
        const char* warning;
    };
    const Row unknown[] = {
        {{"PlayAnimAction", "queue"}, "PlayAnimAction - unknown object: queue"},
        {{"CharacterAnimAction", "anim", "1"}, "CharacterAnimAction - unknown object: anim"},
        {{"CharacterSpeechAction", "none", "1"}, "CharacterSpeechAction - unknown object: none"},
        {{"MapAction", "anim"}, "MapAction - unknown map: anim"},
        {{"MoveXAction", "none", "anim", "1", "2", "3", "4"},
         "MoveXAction - unknown animation: none"},
        {{"MoveYAction", "anim", "queue", "1", "2", "3", "4"},
         "MoveYAction - unknown trinket: queue"},
        {{"MoveXYAction", "anim", "none", "1", "2", "3", "4", "5", "6", "7", "8"},
         "MoveXYAction - unknown trinket: none"},
        {{"VerbAction", "none", "1", "start"}, "VerbAction - unknown object: none"},
        {{"PropertyAction", "none", "x", "1"}, "PropertyAction - unknown object: none"},
    };
    for (const Row& row : unknown) {
        takeReports();
        add(container, row.arguments);
        const Strings shown = boxes();
        ASSERT_EQ(shown.size(), 2u);
        EXPECT_EQ(shown[0], row.warning);
        EXPECT_EQ(takeReports(), shown);
    }
    EXPECT_EQ(container.actionCount(), 0);
}

TEST_F(CatalogueTest, DelaysPassInVirtualTime) {
    machine.clock().now = 0xFFFFFF00; // the clock wraps in the middle
    Action& delay = queueOf({"DelayAction", "1000"});
    delay.start();
    EXPECT_EQ(after(400), "");
    delay.pause();
    EXPECT_EQ(after(250), "");
    delay.resume();
    EXPECT_EQ(after(1000), "1250 done; ");
    delay.start();
    pass(10);
    delay.halt();
    EXPECT_EQ(after(2000), "");
    queueOf({"DelayAction", "-5"}).start();
    EXPECT_EQ(after(3), "0 done; ");
    for (int i = 0; i < 50; ++i) {
        queueOf({"RandomDelayAction", "3", "6"}).start();
        const std::string done = after(10);
        EXPECT_TRUE(done == "3 done; " || done == "4 done; " || done == "5 done; ") << done;
    }
    queueOf({"RandomDelayAction", "3", "3"}).start();
    EXPECT_EQ(after(10), "3 done; ");
    queueOf({"RandomDelayAction", "-2147483648", "2147483647"}).start();
    EXPECT_EQ(takeReports().size(), 54u);
}

TEST_F(CatalogueTest, MovesGoToThePixelWithEachFrame) {
    struct Row {
        const char* numbers[4]; ///< initial, velocity, acceleration, final
        const char* places;     ///< after each frame; what is behind the end is the same
    };
    const Row rows[] = {
        {{"0", "10", "0", "25"}, "0 10 20 25 "},
        {{"0", "10", "0", "20"}, "0 10 20 20 "},
        {{"50", "-3", "-2", "40"}, "50 47 42 40 "},
        {{"0", "1", "1", "8"}, "0 1 3 6 8 "},
        {{"7", "5", "0", "7"}, "7 "},
        {{"0", "5", "-3", "4"}, "0 4 "},
    };
    run("anim=RAnimation 1 0\nsign=RHotSpot 1 2 10 10\n");
    auto& anim = named<RAnimation>("anim");
    auto& sign = named<OMTrinket>("sign");
    for (const char* type : {"MoveXAction", "MoveYAction"})
        for (const Row& row : rows) {
            anim.stop();
            Action& move = queueOf({type, "anim", "sign", row.numbers[0], row.numbers[1],
                                    row.numbers[2], row.numbers[3]});
            move.start();
            std::string places;
            int last = 1 << 20;
            for (int i = 0; i < 150 && move.isActive(); ++i) {
                const int place = *type && type[4] == 'X' ? sign.x() : sign.y();
                if (place != last) places += std::to_string(place) + " ";
                last = place;
                pass(1);
            }
            const int place = type[4] == 'X' ? sign.x() : sign.y();
            if (place != last || move.isActive()) places += std::to_string(place) + " ";
            std::string expected = row.places;
            if (expected == "0 10 20 20 ") expected = "0 10 20 ";
            EXPECT_EQ(places, expected) << type;
            EXPECT_FALSE(move.isActive());
            EXPECT_EQ(anim.state(), OMAnimation::State::Stopped);
        }
}

TEST_F(CatalogueTest, MovesShareAnAnimationAndOutliveTheirObjects) {
    run("anim=RAnimation 1 0\nsign=RHotSpot 0 0 10 10\n");
    auto& anim = named<RAnimation>("anim");
    auto& sign = named<OMTrinket>("sign");
    RCompositeAction both(true);
    watch(both, "both");
    add(both, {"MoveXAction", "anim", "sign", "0", "10", "0", "15"});
    add(both, {"MoveYAction", "anim", "sign", "0", "10", "0", "35"});
    both.start();
    pass(200);
    EXPECT_FALSE(both.isActive());
    EXPECT_EQ((std::pair{sign.x(), sign.y()}), (std::pair{15, 35}));
    EXPECT_EQ(anim.frameNotification(), 0);

    Action& diagonal =
        queueOf({"MoveXYAction", "anim", "sign", "0", "10", "0", "15", "0", "10", "0", "35"});
    diagonal.start();
    pass(25);
    EXPECT_EQ((std::pair{sign.x(), sign.y()}), (std::pair{15, 30}));
    diagonal.pause();
    pass(100);
    EXPECT_EQ(sign.y(), 30);
    diagonal.resume();
    diagonal.halt(); // ends at the final place
    EXPECT_EQ(sign.y(), 35);
    EXPECT_EQ(anim.state(), OMAnimation::State::Stopped);

    diagonal.start();
    pass(15);
    run("drop sign\n", 20); // another script: all is gone
    EXPECT_FALSE(queue->isActive());
    run("anim=RAnimation 1 0\nsign=RHotSpot 0 0 10 10\n");
    queueOf({"MoveXAction", "anim", "sign", "0", "10", "0", "95"}).start();
    pass(15);
    delete OMScriptableObject::named("anim"); // as `drop` does
    EXPECT_TRUE(queue->isActive()) << "nothing happens in the end of another object";
    pass(1);
    EXPECT_FALSE(queue->isActive());
    EXPECT_EQ(named<OMTrinket>("sign").x(), 95);
}

TEST_F(CatalogueTest, AnimationsPlayOnceOrAsOftenAsAsked) {
    run("anim=RAnimation 2 0\n");
    const std::size_t before = window.trinketCount();
    Action& shown = queueOf({"AnimAction", "2", "30", "40", "7", "1"});
    shown.start();
    ASSERT_EQ(window.trinketCount(), before + 1);
    OMTrinket* picture = window.findTrinket([](const OMTrinket& each) { return each.z() == 7; });
    ASSERT_TRUE(picture);
    EXPECT_EQ((std::pair{picture->x(), picture->y()}), (std::pair{30, 40}));
    pass(5);
    shown.pause();
    EXPECT_EQ(after(100), "");
    shown.resume();
    EXPECT_NE(after(100), "");
    EXPECT_EQ(window.trinketCount(), before);

    Action& endless = queueOf({"AnimAction", "1", "0", "-1"});
    endless.start();
    EXPECT_EQ(after(100), "");
    EXPECT_EQ(window.trinketCount(), before + 1);
    endless.halt();
    EXPECT_EQ(window.trinketCount(), before);
    endless.start();
    queue.reset(); // with what it shows
    EXPECT_EQ(window.trinketCount(), before);
    for (const char* none : {"-1", "77"}) {
        queueOf({"AnimAction", none, "0", "1"}).start();
        EXPECT_EQ(after(0), "0 done; ");
    }

    // Several may wait for one animation, also for one that a move stops.
    run("anim=RAnimation 1 0\n");
    RCompositeAction both(true);
    add(both, {"PlayAnimAction", "anim"});
    add(both, {"PlayAnimAction", "anim"});
    add(both, {"MoveXAction", "anim", "anim", "0", "9", "0", "9"});
    both.start();
    pass(100);
    EXPECT_FALSE(both.isActive());
    RQueue last(1, true);
    add(last, {"PlayAnimAction", "anim"});
    last.start();
    delete OMScriptableObject::named("anim");
    EXPECT_TRUE(last.isActive());
    last.pause();
    pass(5);
    EXPECT_TRUE(last.isActive());
    last.resume();
    pass(1);
    EXPECT_FALSE(last.isActive());
    run("anim=RAnimation 2 0\n");

    // One that has come to rest while it was paused stays so.
    Action& rests = queueOf({"PlayAnimAction", "anim"});
    rests.start();
    rests.pause();
    named<RAnimation>("anim").play();
    pass(100);
    EXPECT_FALSE(rests.isActive());
    EXPECT_NE(named<RAnimation>("anim").state(), OMAnimation::State::Playing);
    log.clear();

    named<RAnimation>("anim").stop();
    Action& played = queueOf({"PlayAnimAction", "anim"});
    played.start();
    EXPECT_NE(after(100), "");
    played.start();
    played.halt();
    EXPECT_EQ(named<RAnimation>("anim").state(), OMAnimation::State::Stopped);
    played.start();
    AOImage::setSourceLocator(nullptr);
    queueOf({"AnimAction", "2", "0", "1"}).start();
    EXPECT_EQ(failedChecks, Strings{"Source URL is not installed in AnimAction"});
}

TEST_F(CatalogueTest, CallsAndPropertiesReachTheirObject) {
    run("sign=RHotSpot 0 0 10 10\n");
    auto& sign = named<OMTrinket>("sign");
    queueOf({"VerbAction", "sign", "1", "offset", "30", "4"}).start();
    EXPECT_EQ((std::pair{sign.x(), sign.y()}), (std::pair{30, 4}));
    queueOf({"PropertyAction", "sign", "x", "50"}).start();
    EXPECT_EQ(sign.x(), 50);
    EXPECT_EQ(boxes(), Strings{});
    queueOf({"VerbAction", "sign", "1", "sing"}).start();
    queueOf({"PropertyAction", "sign", "colour", "red"}).start();
    EXPECT_EQ(boxes(), (Strings{"VerbAction, verb not supported: sing",
                                "PropertyAction, property not found: colour"}));
    EXPECT_EQ(after(0), "0 done; 0 done; 0 done; 0 done; ");
    // A verb that destroys the queue that it is in.
    run("q=RQueue 1\n"
        "play q add VerbAction \"q\" 1 clear\n"
        "play q add EmptyAction\n"
        "play q start\n"
        "get q actionCount n\n"
        "get q isActive a\n"
        "say n a\n");
    EXPECT_EQ(said(), "0 0\n");
}

TEST_F(CatalogueTest, SoundsTellTheirEnd) {
    RSoundStreams streams([](int id, int) -> std::unique_ptr<OMIStream> {
        if (id != 5) return nullptr;
        return std::make_unique<MemoryStream>(
            testing_support::toBytes(formats::sound::writeRiff(formats::Bytes(2205, 140), 22050)));
    });
    machine.waveOut().bytesPerMs = 22;
    for (const char* streamed : {"0", "1"}) {
        Action& sound = queueOf({"SoundAction", "5", streamed});
        sound.start();
        pass(50);
        sound.pause();
        EXPECT_EQ(after(1000), "");
        sound.resume();
        EXPECT_NE(after(1500), "") << streamed;
        sound.start();
        sound.halt();
        EXPECT_EQ(after(1000), "");
    }
    for (const char* none : {"-1", "6"}) {
        queueOf({"SoundAction", none}).start();
        EXPECT_EQ(after(0), "0 done; ");
    }
    RSoundStreams::setCurrent(nullptr);
    queueOf({"SoundAction", "5"}).start();
    EXPECT_EQ(failedChecks, Strings{"Stream URL is not installed in SoundAction"});
}
