#include "samplescript.h"

#include "ykeyword.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t kWantedSize = 60'000; ///< bytes; scripts end at 65,535

/// One thing of the scene with its data, its handlers and a helper. "#" stands for a number.
constexpr std::string_view kThing = R"(
; ----- lamp number # on the shelf: its place, its level and what it answers to -----
lampOnShelf#=Lamp 12# 4 230 1#5 64 48
set lampOnShelf# brightness levelOfLamp#
set lampOnShelf# visible 1
set lampOnShelf# lit whenLampIsLit#
set lampOnShelf# picked whenLampIsPicked#
levelOfLamp#=(10+#*3)%100
noteOnLamp.#="the lamp "+#+' of the shelf, seen '+countOfVisits+" times"
coloursOfLamp#=[ red green blue yellow "light grey" "dark grey" 1#0 -4 0.75
procedure whenLampIsLit# whoLitTheLamp
[
    countOfVisits=countOfVisits+1
    lastLampThatWasLit=lampOnShelf#
    if (countOfVisits>limitOfVisits)+(levelOfLamp#>90)
    [
        countOfVisits=0
        call fadeLamp# lampOnShelf# 0.5
        play lampOnShelf# fade 12 levelOfLamp# }
    ]
    else
    [
        set lampOnShelf# brightness (levelOfLamp#+countOfVisits*5)%100
        play lampOnShelf# blink 2 150
    ]
]
; a click, or the end of a drag over the shelf
procedure whenLampIsPicked#
[
    suspend
    get lampOnShelf# brightness brightnessNow
    if (brightnessNow>50)*(stateOfLamp#='on')
    [
        stateOfLamp#=off
        say lampOnShelf# is off after countOfVisits visits, level brightnessNow
    ]
    else
    [
        stateOfLamp#="on"
        titleOfShelf=nameOfShelf+": "+(brightnessNow\2)+'/'+~nameOfShelf
    ]
    totalBrightness=totalBrightness+brightnessNow/3-0.25
    shelf.lastLampThatWasLit.place=brightnessNow
    resume
]
procedure fadeLamp# lampToFade paceOfFading
[
    for stepOfFading# 100 0 -5
    [
        set lampToFade brightness stepOfFading#
        pause 0.05*paceOfFading
        if lastKeyThatWasPressed|1|1='q'
            break
        if stepOfFading#%20=0
            continue
        brightnessAfter.stepOfFading#=brightnessAfter.stepOfFading#+stepOfFading#*paceOfFading
    ]
    light roomBehindShelf# paceOfFading
    idle 12.5 whenLampIsPicked#
    shortTitleOfShelf=titleOfShelf|3|5
]
)";

} // namespace

SampleScript makeSampleScript() {
    SampleScript script;
    script.text = "yield off\ncountOfVisits=0\ntotalBrightness=0\nlimitOfVisits=7\n"
                  "nameOfShelf=shelf\n";
    for (int number = 1;; ++number) {
        std::string thing;
        for (const char c : kThing) {
            if (c == '#')
                thing += std::to_string(number);
            else
                thing += c;
        }
        if (script.text.size() + thing.size() > kWantedSize) break;
        script.text += thing;
    }
    script.text += "wait\n";
    script.lines = static_cast<int>(std::count(script.text.begin(), script.text.end(), '\n'));
    std::replace(script.text.begin(), script.text.end(), '\n', '\r');
    return script;
}

void registerSampleCommands() { YCommands::add("light", nullptr); }
