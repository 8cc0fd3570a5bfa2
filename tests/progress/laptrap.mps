; The progress screen on a layout of its own: the states of its buttons, what clicks change, whom it tells, and
; its sounds, which are not there: a box tells when they are played. States: three locations, the levels of CMA
; with their check box, those of CWS1, music on and off, the refusal; - is not seen.
;$ --until 100000
yield off
procedure onBorn
[
n=n+1
b.n=RECEIVER
]
procedure states when
[
all=when+": "
for i 1 n
[
get b.i sequence s
get b.i frame f
get b.i visible v
if v
all=all+(s+f-1)
else
all=all+"-"
if (i=3)+(i=8)+(i=13)>0
all=all+" "
]
say all
]
procedure open place
[
n=0
screen=RLapTrap place
set screen locationSelected onSelected
set screen closed onClosed
]
procedure onSelected
[
get screen selectedLocation number
get screen selectedLocationName name
set world visitedCount CMA 1
say "selected" number name
]
procedure onClosed
[
get screen visible seen
say "closed, seen:" seen
]
procedure gone
[
drop screen
say "dropped"
]
flags=[seenChooseActivity seenLapTrapInPractice seenProgressLevels seenLapTrapInGame seenCairoMap seenOasisMap
procedure tellFlags
[
all="flags "
for i 1 6
[
get world flags.i value
all=all+value
]
say all
]
world=RWorldPort 0
play world activatePlayer "Ana"
set world currentLocation CHUB
set OMAnimation born onBorn

; all is introduced the first time; the hint comes after seven seconds
call open CMA
call states "practice"
;= practice: 233 21111 21111 21-
call tellFlags
;= flags 111000
;@ 1 WAVE resource 9050 not found.
;@ 1 WAVE resource 9052 not found.
;@ 1 WAVE resource 9053 not found.
pause 9
;@ 7000 WAVE resource 9051 not found.
; what a handler of the chosen location changes is shown
call open 1
call states "at CWS1, chosen"
;= at CWS1, chosen: 323 21111 21111 21-
get screen selectedLocation number
get screen selectedLocationName name
say "none:" number name
;= none: 0 
;> 8111 click 55 65
pause 0.1
;= selected 1 CWS1
call states "chosen"
;= chosen: 123 21111 21111 21-
; a level that is there already, though the screen does not know, keeps the answers; another one forgets them
procedure answer count
[
for i 1 count
play world correctGuess CWS1
play world autoLevel CWS1
get world currentLevel CWS1 number
get world levelColor 4 CWS1 color
call states "level "+number+" colour "+color
]
set world currentLevel CWS1 4
call answer 5
;= level 4 colour 0: 123 21111 21111 21-
;> 8201 click 115 145
pause 0.05
call answer 1
;= level 4 colour 1: 123 21111 11121 21-
call answer 5
;= level 4 colour 1: 123 21111 11121 21-
;> 8246 click 85 145
pause 0.05
call answer 1
;= level 3 colour 1: 123 21111 11231 21-
; CMA is refused while it was never visited; levels wait for that
set world visitedCount CMA 0
call open CMA
;> 8291 click 55 105
;> 8311 click 25 145
pause 0.1
call states "refused"
;= refused: 233 21111 11231 211
set screen visible 0
call states "hidden"
;= hidden: --- ----- ----- ---
set screen visible 1
call states "refusing"
;= refusing: 233 21111 11231 211
pause 1.5
call states "over"
;= over: 233 21111 11231 21-
;> 9731 click 25 145
;> 9751 click 55 105
pause 0.1
call states "refused again"
;= refused again: 233 21111 21131 211
pause 1.5
set screen visible 0
set screen visible 1
call states "seen again"
;= seen again: 233 21111 21131 21-
set world visitedCount CMA 1
;> 11171 click 55 105
pause 0.1
call states "visited"
;= visited: 233 12111 21131 21-
; music off twice is off
;> 11261 click 250 25
;> 11281 click 250 25
pause 0.1
get world isBackgroundMusicOff off
call states "music off "+off
;= music off 1: 233 12111 21131 12-

; each part introduces itself when its flag is 0; closing ends it
set world seenLapTrapInPractice 0
call open CMA
;@ 11341 WAVE resource 9052 not found.
set world inGame 1
call open CMA
pause 0.5
;@ 11574 WAVE resource 9061 not found.
call states "game"
;= game: 212 11-
call open OMA
;@ 11791 WAVE resource 9062 not found.
call tellFlags
;= flags 111111
set world seenLapTrapInGame 0
set world seenOasisMap 0
call open OMA
;> 11801 click 370 25
pause 0.5
;= closed, seen: 0
call tellFlags
;= flags 111111
set world currentLocation nowhere
call open 0
call states "nowhere"
;= nowhere: -
; what it is made with
set world inGame 0
n=0
screen=RLapTrap 1 -1 60 11111 40
procedure tellPlace
[
get screen "x" left
get screen "y" top
get screen "z" depth
get b.1 "z" above
get b.n "z" most
say "at" left top depth above most
]
call tellPlace
;= at 60 10 40 41 42
n=0
screen=RLapTrap Atlantis -1 9
;@ 12241 RLapTrap: unknown location Atlantis
call tellPlace
;= at 10 10 9 10 11
; handlers that drop it, while it refuses, while a button is held, and while its sound is heard
set world visitedCount CMA 0
call open CMA
set screen closed gone
;> 12251 click 370 25
pause 0.1
;= dropped
call open CMA
set screen locationSelected gone
;> 12341 click 25 65
pause 0.1
;= dropped
call open CMA
;> 12431 click 55 105
pause 0.1
drop screen
call open CMA
;> 12521 down 55 145
pause 0.05
drop screen
;> 12566 up 55 145
set world inGame 1
set world seenLapTrapInGame 0
set world seenCairoMap 0
call open CMA
drop screen
pause 1

; who clicks anything needs no hint, and it comes once
set world inGame 0
;> 14466 click 220 25
;> 23566 click 140 110
;> 32666 click 25 105
;> 41766 click 55 65
;> 50866 click 370 25
for times 1 5
[
call open CMA
pause 10
]
;= selected 1 CWS1
;= closed, seen: 0
say "no hint"
;= no hint
call open CMA
pause 30
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
