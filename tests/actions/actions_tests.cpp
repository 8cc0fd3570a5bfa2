// What the log says of actions, and which parameters are refused.
#include "actions/rqueue.h"
#include "commands/vocabulary.h"
#include "movie/rsmackermovie.h"
#include "omsarguments.h"
#include "omsexception.h"
#include "omtrinketwindow.h"
#include "trinkets/scriptfixture.h"
#include "trinkets/wordtable.h"

#include <sstream>

namespace {

using ActionTest = testing_support::ScriptTest;

/// What an action is made of, and what is reported behind its type; MAY, MAYNOT and OPEN tell
/// whether it can be interrupted.
constexpr const char* kActionCases = R"(
AnimAction 5 1 2 3 4 1 => , resID: 5, x: 1, y: 2, z: 3, repeatCount: 4, MAY
AnimAction 5 1 2 3 4 => , resID: 5, x: 1, y: 2, z: 3, repeatCount: 4, OPEN
AnimAction 5 3 4 0 => , resID: 5, z: 3, repeatCount: 4, MAYNOT
PlayAnimAction anim 1 => , RAnimation variable name: anim, MAY
CharacterAnimAction guide 7 2 0 1
=> , RCharacter variable name: guide, animID: 7, repeatCount: 2, showSettleWhenDone: 0, MAY
CharacterAnimAction guide 7
=> , RCharacter variable name: guide, animID: 7, repeatCount: (1), showSettleWhenDone: (TRUE), OPEN
CharacterSpeechAction guide 9 0 => , RCharacter variable name: guide, speechSoundID: 9, MAYNOT
MapAction bay 1 => - RMap variable name: bay, MAY
DelayAction 500 0 => , delayTime (in ms): 500, MAYNOT
RandomDelayAction 5 9 1 => , min delay time (ms): 5, max delay time (ms): 9, MAY
EmptyAction => - interruptible (container specified)
MoveXYAction anim anim 1 2 3 4 5 6 7 8 0 => - RAnimation variable name: anim, OMTrinket variable
=> name: anim, initial X: 1, X velocity: 2, X acceleration: 3, final X: 4, initial Y: 5,
=> Y velocity: 6, Y acceleration: 7, final Y: 8, MAYNOT
MovieAction a.smk 9 0 1 1
=> , filename: a.smk, extraBufferMemory: 9, useMoviePalette: 0, cache: 1, canInterrupt: 1
MovieAction a.smk => , filename: a.smk, extraBufferMemory: (SMACKAUTOEXTRA), useMoviePalette:
=> (TRUE), cache: (FALSE), canInterrupt: (containerSpecified)
SoundAction 7 1 0 => , sound ID: 7, streamed: 1, MAYNOT
SoundAction 7 => , sound ID: 7, streamed: (FALSE), OPEN
VerbAction anim 1 setX => , object variable name: anim, MAY, verb: setX
VerbAction anim 0 setX 5 b => , object variable name: anim, MAYNOT, verb: setX, parameters: 5 b_
PropertyAction anim x 9 1 => , object variable name: anim, property: x, value: 9, MAY
PlayAnimAction queue => - unknown object: queue
CharacterAnimAction anim 1 => - unknown object: anim
CharacterSpeechAction none 1 => - unknown object: none
MapAction anim => - unknown map: anim
MoveXAction none anim 1 2 3 4 => - unknown animation: none
MoveYAction anim queue 1 2 3 4 => - unknown trinket: queue
VerbAction none 1 start => - unknown object: none
PropertyAction none x 1 => - unknown object: none)";

TEST_F(ActionTest, WhatIsReportedAndWhatIsRefused) {
    OMTrinketWindow window{{0, 0, 100, 80}, nullptr, "Test"};
    RScriptClasses classes;
    RMovies movies;
    Strings reports;
    OMSobException::setNotification(
        [&](const OMSobException& report) { reports.push_back(report.text()); });
    run("anim=RGraphicAnswer -1 0 0 0\nguide=RCharacter -1 0 0 0\nbay=RMap 0 0\nqueue=RQueue 1\n");
    auto rows = testing_support::rowTable(kActionCases, " ");
    for (const char* words :
         {"AnimAction 1 2", "PlayAnimAction", "CharacterAnimAction c", "CharacterSpeechAction c",
          "DelayAction", "RandomDelayAction 1", "MapAction", "MoveXAction anim anim 1 2 3",
          "MoveYAction anim anim 1 2 3", "MoveXYAction anim anim 1 2 3 4 5 6 7", "MovieAction",
          "SoundAction", "VerbAction anim 1", "PropertyAction anim x"})
        rows.emplace_back(words, "- not enough parameters");
    boxes();
    const std::pair<std::string, std::string> meanings[] = {
        {"MAYNOT", "interruptible: 0"},
        {"MAY", "interruptible: 1"},
        {"OPEN", "interruptible: (container specified)"},
        {"_", " "}};
    for (auto& [made, report] : rows) {
        for (const auto& [word, meaning] : meanings)
            if (const auto at = report.find(word); at != report.npos)
                report.replace(at, word.size(), meaning);
        RQueue container(1, false);
        reports.clear();
        OMSArguments::global().clear();
        std::istringstream in(made);
        for (std::string word; in >> word;) OMSArguments::global().push(word);
        container.addFromScript();
        const std::string type = made.substr(0, made.find(' '));
        const std::string told = type + (report[0] == '-' ? " " : "") + report;
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
