// What the log says of actions and which parameters are refused; any order of changes.
#include "actions/rcompositeaction.h"
#include "actions/rqueue.h"
#include "actions/rrandomaction.h"
#include "commands/vocabulary.h"
#include "movie/rsmackermovie.h"
#include "omsarguments.h"
#include "omsexception.h"
#include "omtrinketwindow.h"
#include "omunderway.h"
#include "trinkets/scriptfixture.h"

#include <random>
#include <sstream>

using namespace testing_support;
using Strings = std::vector<std::string>;

namespace {

class ActionTest : public ScriptTest {
  protected:
    ActionTest() {
        OMSobException::setNotification(
            [this](const OMSobException& report) { reports.push_back(report.text()); });
    }
    ~ActionTest() override {
        if (thread) thread->unload();
        thread.reset();
        OMSobException::setNotification(nullptr);
    }

    /// What `play container add WORDS` does.
    static void add(ActionContainer& container, const std::string& words) {
        OMSArguments& list = OMSArguments::global();
        list.clear();
        std::istringstream in(words);
        for (std::string word; in >> word;) list.push(word);
        container.addFromScript();
    }

    OMTrinketWindow window{{0, 0, 100, 80}, nullptr, "Test"};
    RScriptClasses classes;
    RMovies movies;
    Strings reports;
};

constexpr const char* kMay = ", interruptible: 1";
constexpr const char* kMayNot = ", interruptible: 0";
constexpr const char* kOpen = ", interruptible: (container specified)";

TEST_F(ActionTest, WhatIsReportedAndWhatIsRefused) {
    run("anim=RGraphicAnswer -1 0 0 0\nguide=RCharacter -1 0 0 0\nbay=RMap 0 0\nqueue=RQueue 1\n");
    struct Row {
        std::string words;
        std::string report; ///< behind the type
        std::string end{};  ///< of the report
    };
    const Row rows[] = {
        {"AnimAction 5 1 2 3 4 1", ", resID: 5, x: 1, y: 2, z: 3, repeatCount: 4", kMay},
        {"AnimAction 5 1 2 3 4", ", resID: 5, x: 1, y: 2, z: 3, repeatCount: 4", kOpen},
        {"AnimAction 5 3 4 0", ", resID: 5, z: 3, repeatCount: 4", kMayNot},
        {"AnimAction 5 3 4", ", resID: 5, z: 3, repeatCount: 4", kOpen},
        {"PlayAnimAction anim 1", ", RAnimation variable name: anim", kMay},
        {"CharacterAnimAction guide 7 2 0 1",
         ", RCharacter variable name: guide, animID: 7, repeatCount: 2, showSettleWhenDone: 0",
         kMay},
        {"CharacterAnimAction guide 7",
         ", RCharacter variable name: guide, animID: 7, repeatCount: (1), showSettleWhenDone: "
         "(TRUE)",
         kOpen},
        {"CharacterSpeechAction guide 9 0", ", RCharacter variable name: guide, speechSoundID: 9",
         kMayNot},
        {"MapAction bay 1", " - RMap variable name: bay", kMay},
        {"DelayAction 500 0", ", delayTime (in ms): 500", kMayNot},
        {"DelayAction 500", ", delayTime (in ms): 500", kOpen},
        {"RandomDelayAction 5 9 1", ", min delay time (ms): 5, max delay time (ms): 9", kMay},
        {"EmptyAction 1", " - interruptible: 1"},
        {"EmptyAction", " - interruptible (container specified)"},
        {"MoveXAction anim anim 1 2 3 4 1",
         " - RAnimation variable name: anim, OMTrinket variable name: anim, initial X: 1, X "
         "velocity: 2, X acceleration: 3, final X: 4",
         kMay},
        {"MoveXYAction anim anim 1 2 3 4 5 6 7 8 0",
         " - RAnimation variable name: anim, OMTrinket variable name: anim, initial X: 1, X "
         "velocity: 2, X acceleration: 3, final X: 4, initial Y: 5, Y velocity: 6, Y acceleration: "
         "7, final Y: 8",
         kMayNot},
        {"MovieAction a.smk 9 0 1 1",
         ", filename: a.smk, extraBufferMemory: 9, useMoviePalette: 0, cache: 1, canInterrupt: 1"},
        {"MovieAction a.smk",
         ", filename: a.smk, extraBufferMemory: (SMACKAUTOEXTRA), useMoviePalette: (TRUE), cache: "
         "(FALSE), canInterrupt: (containerSpecified)"},
        {"SoundAction 7 1 0", ", sound ID: 7, streamed: 1", kMayNot},
        {"SoundAction 7", ", sound ID: 7, streamed: (FALSE)", kOpen},
        {"VerbAction anim 1 setX", ", object variable name: anim, interruptible: 1, verb: setX"},
        {"VerbAction anim 0 setX 5 b c",
         ", object variable name: anim, interruptible: 0, verb: setX, parameters: 5 b c "},
        {"PropertyAction anim x 9 1", ", object variable name: anim, property: x, value: 9", kMay},
        {"PlayAnimAction queue", " - unknown object: queue"},
        {"CharacterAnimAction anim 1", " - unknown object: anim"},
        {"CharacterSpeechAction none 1", " - unknown object: none"},
        {"MapAction anim", " - unknown map: anim"},
        {"MoveXAction none anim 1 2 3 4", " - unknown animation: none"},
        {"MoveYAction anim queue 1 2 3 4", " - unknown trinket: queue"},
        {"MoveXYAction anim none 1 2 3 4 5 6 7 8", " - unknown trinket: none"},
        {"VerbAction none 1 start", " - unknown object: none"},
        {"PropertyAction none x 1", " - unknown object: none"},
    };
    boxes();
    const auto check = [this](const Row& row) {
        RQueue container(1, false);
        reports.clear();
        add(container, row.words);
        const std::string type = row.words.substr(0, row.words.find(' '));
        const std::string told = row.report + row.end;
        if (const Strings warned = boxes(); !warned.empty()) {
            EXPECT_EQ(warned, (Strings{type + told, "Unknown action or container: " + type}));
            EXPECT_EQ(reports, warned);
            EXPECT_EQ(container.actionCount(), 0);
        } else {
            EXPECT_EQ(reports, Strings{"Creating " + type + told});
            EXPECT_EQ(container.isInterruptible(), told.find("ible: 1") != std::string::npos ||
                                                       told.find("upt: 1") != std::string::npos)
                << told;
        }
    };
    for (const Row& row : rows) check(row);
    for (const char* words :
         {"AnimAction 1 2", "PlayAnimAction", "CharacterAnimAction c", "CharacterSpeechAction c",
          "DelayAction", "RandomDelayAction 1", "MapAction", "MoveXAction anim anim 1 2 3",
          "MoveYAction anim anim 1 2 3", "MoveXYAction anim anim 1 2 3 4 5 6 7", "MovieAction",
          "SoundAction", "VerbAction anim 1", "PropertyAction anim x"})
        check({words, " - not enough parameters"});
}

// Whatever is started, halted, added, removed, copied and destroyed when, by whichever handler:
// nothing is left running that nobody knows, and containers come to an end when they are halted.
TEST_F(ActionTest, AnyOrderOfChangesEndsWell) {
    for (unsigned seed = 1; seed <= 150; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&](unsigned count) { return random() % count; };
        std::vector<std::unique_ptr<ActionContainer>> all(6);
        int depth = 0;
        std::function<void()> change = [&] {
            if (depth > 3) return;
            ++depth;
            const OMUnderWay underWay;
            std::unique_ptr<ActionContainer>& each = all[below(6)];
            const bool interruptible = below(4) != 0;
            if (!each) {
                if (below(3) == 0)
                    each = std::make_unique<RCompositeAction>(interruptible);
                else if (below(2) == 0)
                    each = std::make_unique<RQueue>(1 + static_cast<int>(below(2)), interruptible);
                else
                    each = std::make_unique<RRandomAction>(below(2) == 0, interruptible);
                each->takeClass(ActionContainer::kClass);
                each->attachHandler("finished", [&] {
                    if (below(2) == 0) change();
                });
            }
            ActionContainer* container = each.get();
            switch (below(13)) {
            case 0: each.reset(); break;
            case 1: container->halt(); break;
            case 2: container->pause(); break;
            case 3: container->resume(); break;
            case 4: container->clear(); break;
            case 5:
            case 6:
                if (!container->isActive()) container->start();
                break;
            case 7: add(*container, "EmptyAction"); break;
            case 8:
                if (const auto& other = all[below(6)]) container->add(*other);
                break;
            case 9:
                all[below(6)].reset(
                    static_cast<ActionContainer*>(container->makeDuplicate().release()));
                break;
            default: add(*container, "RandomDelayAction 0 6"); break;
            }
            --depth;
        };
        for (int i = 0; i < 200; ++i) {
            change();
            pass(1);
        }
        for (auto& each : all)
            if (each) each->attachHandler("finished", nullptr);
        for (int i = 0; i < 6; ++i) {
            for (auto& each : all)
                if (each) {
                    each->resume();
                    each->halt();
                }
            pass(100);
        }
        for (auto& each : all)
            EXPECT_FALSE(each && each->isActive()) << "still active, seed " << seed;
        boxes();
        machine.dialogs().boxes.clear();
    }
}

} // namespace
