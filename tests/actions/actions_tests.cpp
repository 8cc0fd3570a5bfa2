// What the log says of actions, and which parameters are refused.
#include "actions/rqueue.h"
#include "commands/vocabulary.h"
#include "movie/rsmackermovie.h"
#include "omsarguments.h"
#include "omsexception.h"
#include "omtrinketwindow.h"
#include "trinkets/scriptfixture.h"

#include <sstream>

using Strings = std::vector<std::string>;

namespace {

using ActionTest = testing_support::ScriptTest;

constexpr const char* kMay = ", interruptible: 1";
constexpr const char* kMayNot = ", interruptible: 0";
constexpr const char* kOpen = ", interruptible: (container specified)";

TEST_F(ActionTest, WhatIsReportedAndWhatIsRefused) {
    OMTrinketWindow window{{0, 0, 100, 80}, nullptr, "Test"};
    RScriptClasses classes;
    RMovies movies;
    Strings reports;
    OMSobException::setNotification(
        [&](const OMSobException& report) { reports.push_back(report.text()); });
    run("anim=RGraphicAnswer -1 0 0 0\nguide=RCharacter -1 0 0 0\nbay=RMap 0 0\nqueue=RQueue 1\n");
    struct Row {
        std::string words;
        std::string report; ///< behind the type
        std::string end{};  ///< of the report
    };
    std::vector<Row> rows{
        {"AnimAction 5 1 2 3 4 1", ", resID: 5, x: 1, y: 2, z: 3, repeatCount: 4", kMay},
        {"AnimAction 5 1 2 3 4", ", resID: 5, x: 1, y: 2, z: 3, repeatCount: 4", kOpen},
        {"AnimAction 5 3 4 0", ", resID: 5, z: 3, repeatCount: 4", kMayNot},
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
        {"RandomDelayAction 5 9 1", ", min delay time (ms): 5, max delay time (ms): 9", kMay},
        {"EmptyAction", " - interruptible (container specified)"},
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
        {"VerbAction none 1 start", " - unknown object: none"},
        {"PropertyAction none x 1", " - unknown object: none"},
    };
    for (const char* words :
         {"AnimAction 1 2", "PlayAnimAction", "CharacterAnimAction c", "CharacterSpeechAction c",
          "DelayAction", "RandomDelayAction 1", "MapAction", "MoveXAction anim anim 1 2 3",
          "MoveYAction anim anim 1 2 3", "MoveXYAction anim anim 1 2 3 4 5 6 7", "MovieAction",
          "SoundAction", "VerbAction anim 1", "PropertyAction anim x"})
        rows.push_back({words, " - not enough parameters"});
    boxes();
    for (const Row& row : rows) {
        RQueue container(1, false);
        reports.clear();
        OMSArguments::global().clear();
        std::istringstream in(row.words);
        for (std::string word; in >> word;) OMSArguments::global().push(word);
        container.addFromScript();
        const std::string type = row.words.substr(0, row.words.find(' '));
        const std::string told = type + row.report + row.end;
        const Strings warned = boxes();
        EXPECT_EQ(warned.empty(), container.actionCount() == 1);
        EXPECT_EQ(reports, warned.empty()
                               ? Strings{"Creating " + told}
                               : (Strings{told, "Unknown action or container: " + type}));
        const bool may = told.find("ible: 1") + 1 || told.find("upt: 1") + 1;
        EXPECT_EQ(container.isInterruptible(), may || !warned.empty()) << told;
    }
    thread->unload();
    OMSobException::setNotification(nullptr);
}

} // namespace
