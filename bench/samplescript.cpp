#include "samplescript.h"

#include "ykeyword.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t kWantedSize = 60'000; ///< bytes; scripts end at 65,535

/// One thing of the scene with its data, its handler and its helpers. "#" stands for a number.
constexpr std::string_view kThing = R"(
; ----- the lamp number # on the shelf -----
lamp#=Lamp 12# 4 230 1#5 64 48
set lamp# brightness level#
set lamp# visible 1
set lamp# lit onLit#
set lamp# picked onPicked#
level#=10+#*3
note.#="the lamp "+#+' of '+count
list#=[ red green blue "light grey" 1#0 -4 0.75
procedure onLit# who
[
	count=count+1
	lastLit=#
	if count>limit
	[
		count=0
		call fade# lamp# 0.5
		play lamp# fade 12 }
	]
	else
	[
		set lamp# brightness (level#+count*5)%100
		play lamp# blink 2 150
	]
]
procedure onPicked#
[
	suspend
	get lamp# brightness now
	if (now>50)*(state#='on')
	[
		state#=off
		say lamp# is off after count rounds
	]
	else
	[
		state#="on"
		title#=name+": "+(now\2)+'/'+~name
	]
	total=total+now/3-0.25
	shelf.lastLit.place=now
	resume
]
procedure fade# which pace
[
	for n# 100 0 -5
	[
		set which brightness n#
		pause 0.05
		if key|1|1='q'
			break
		if n#%20=0
			continue
		item.n#=item.n#+n#*pace
	]
	light room# pace
	idle 12.5 onPicked#
	short#=title#|3|5
]
)";

} // namespace

SampleScript makeSampleScript() {
    SampleScript script;
    script.text = "yield off\ncount=0\ntotal=0\nlimit=7\nname=shelf\n";
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
