; The progress screen on a layout of its own: the states of its buttons, what clicks change, whom it tells, and
; its sounds, which are not there: a box tells when they are played. States: three locations, the levels of CMA
; with their check box, those of CWS1, music on and off, the refusal; - is not seen.
;$ --until 100000
yield off
include things.mps
procedure onBorn
[
n=n+1
t.n=RECEIVER
]
procedure states
[
line=line+" "
for i 11 n
[
get t.i sequence s
get t.i frame f
get t.i visible v
if v
line=line+(s+f-1)
else
line=line+"-"
if (i=13)+(i=18)+(i=23)>0
line=line+" "
]
]
procedure onSelected
[
get t.2 selectedLocation a
get t.2 selectedLocationName b
set t.1 visitedCount CMA 1
line=line+" selected "+a+" "+b
]
procedure onClosed
[
get t.2 visible a
line=line+" closed, seen "+a
]
procedure gone
[
drop t.2
line=line+" dropped"
]
procedure open
[
call cut
n=10
t.2=RLapTrap word
set t.2 locationSelected onSelected
set t.2 closed onClosed
]
names=[seenChooseActivity seenLapTrapInPractice seenProgressLevels
names=[seenLapTrapInGame seenCairoMap seenOasisMap
procedure flags
[
line=line+" flags "
for i 1 6
[
get t.1 names.i a
line=line+a
]
]
t.1=RWorldPort 0
call do "run 1 activatePlayer Ana, let 1 currentLocation CHUB"
set OMAnimation born onBorn

; all is introduced the first time; the hint comes after seven seconds
call do "open CMA, states, flags, tell, rest 9"
;=  233 21111 21111 21- flags 111000
;@ 1 WAVE resource 9050 not found.
;@ 1 WAVE resource 9052 not found.
;@ 1 WAVE resource 9053 not found.
;@ 7000 WAVE resource 9051 not found.
; what a handler of the chosen location changes is shown
call do "open 1, states, of 2 selectedLocation, of 2 selectedLocationName, rest 0.1, states, tell"
;> 8111 click 55 65
;=  323 21111 21111 21- 0  selected 1 CWS1 123 21111 21111 21-
; a level that is there already, though the screen does not know, keeps the answers; another one forgets them
procedure answer
[
call cut
for i 1 word
play t.1 correctGuess CWS1
play t.1 autoLevel CWS1
get t.1 currentLevel CWS1 a
get t.1 levelColor 4 CWS1 b
line=line+" "+a+" "+b
call states
call tell
]
set t.1 currentLevel CWS1 4
call do "answer 5, rest 0.05, answer 1, answer 5, rest 0.05, answer 1"
;> 8201 click 115 145
;> 8246 click 85 145
;=  4 0 123 21111 21111 21-
;=  4 1 123 21111 11121 21-
;=  4 1 123 21111 11121 21-
;=  3 1 123 21111 11231 21-
; CMA is refused while it was never visited; levels wait for that
call do "let 1 visitedCount CMA 0, open CMA, rest 0.1, states, let 2 visible 0, states"
call do "let 2 visible 1"
;> 8291 click 55 105
;> 8311 click 25 145
call do "states, rest 1.5, states, tell, rest 0.1, states, rest 1.5, let 2 visible 0"
call do "let 2 visible 1"
;> 9731 click 25 145
;> 9751 click 55 105
call do "states, let 1 visitedCount CMA 1, rest 0.1, states, tell"
;> 11171 click 55 105
;=  233 21111 11231 211 --- ----- ----- --- 233 21111 11231 211 233 21111 11231 21-
;=  233 21111 21131 211 233 21111 21131 21- 233 12111 21131 21-
; music off twice is off
call do "rest 0.1, of 1 isBackgroundMusicOff, states, tell"
;> 11261 click 250 25
;> 11281 click 250 25
;=  1 233 12111 21131 12-

; each part introduces itself when its flag is 0; closing ends it
call do "let 1 seenLapTrapInPractice 0, open CMA, let 1 inGame 1, open CMA, rest 0.5, states"
call do "open OMA, flags"
;@ 11341 WAVE resource 9052 not found.
;@ 11574 WAVE resource 9061 not found.
;@ 11791 WAVE resource 9062 not found.
call do "let 1 seenLapTrapInGame 0, let 1 seenOasisMap 0, open OMA, rest 0.5, flags"
;> 11801 click 370 25
call do "let 1 currentLocation nowhere, open 0, states, tell, let 1 inGame 0"
;=  212 11- flags 111111 closed, seen 0 flags 111111 -
; what it is made with
n=10
t.2=RLapTrap 1 -1 60 11111 40
procedure place
[
call do "of 2 x, of 2 y, of 2 z, of 11 z, tell"
get t.n "z" most
say most
]
call place
;=  60 10 40 41
;= 42
n=10
t.2=RLapTrap Atlantis -1 9
;@ 12241 RLapTrap: unknown location Atlantis
call place
;=  10 10 9 10
;= 11
; handlers that drop it, while it refuses, while a button is held, and while its sound is heard
call do "let 1 visitedCount CMA 0, open CMA"
set t.2 closed gone
;> 12251 click 370 25
call do "rest 0.1, open CMA"
set t.2 locationSelected gone
;> 12341 click 25 65
call do "rest 0.1, tell, open CMA, rest 0.1, lose t.2, open CMA, rest 0.05, lose t.2"
;=  dropped dropped
;> 12431 click 55 105
;> 12521 down 55 145
;> 12566 up 55 145
call do "let 1 inGame 1, let 1 seenLapTrapInGame 0, let 1 seenCairoMap 0, open CMA, lose t.2"
call do "rest 1"

; who clicks anything needs no hint, and it comes once
call do "let 1 inGame 0, open CMA, rest 10, open CMA, rest 10, open CMA, rest 10, open CMA, rest 10"
call do "open CMA, rest 10, tell, open CMA, rest 30"
;> 14466 click 220 25
;> 23566 click 140 110
;> 32666 click 25 105
;> 41766 click 55 65
;> 50866 click 370 25
;=  selected 1 CWS1 closed, seen 0
;@ 65450 WAVE resource 9051 not found.
;: file content/RSC/progress.map
PRACTICE
PANEL 2301 10 10
SOUND 9050
HINT 9051
CLOSE 2413 340 0
REFUSAL 2415 0 0
NAME 5 5 -1 7
MUSIC 2414 200 0 2414 230 0
PART seenLapTrapInPractice 9052
MAP CMA 2320 0 40
MAP CWS1 2320 30 40
MAP CLOC01 2320 60 40
PART seenProgressLevels 9053
LEVELS CMA 2320 0 80 2320 30 80 2320 60 80 2320 90 80 2310 120 80
LEVELS CWS1 2320 0 120 2320 30 120 2320 60 120 2320 90 120 2310 120 120
LEVELS CHUB 2320 0 160 2320 30 160 2320 60 160 2320 90 160
GAME
PANEL 2301 10 10
SOUND 207
CLOSE 2413 340 0
REFUSAL 2415 0 0
PART seenCairoMap 9061 C*
MAP HERE 2320 0 40
LEVELS HERE 2320 0 80 2320 30 80 2320 60 80 2320 90 80
PART seenOasisMap 9062 O*
MAP OMA 2320 30 40
LEVELS OMA 2320 0 120 2320 30 120 2320 60 120 2320 90 120
