; The progress screen on a layout of its own: whom it tells, what clicks change, when its sounds are played,
; which are not there: a box tells it. What it shows is compared in tests/golden.
;$ --until 100000
yield off
include things.mps
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
t.2=RLapTrap word
set t.2 locationSelected onSelected
set t.2 closed onClosed
]
procedure flags
[
line=line+" flags"
call do "of 1 seenChooseActivity, of 1 seenLapTrapInPractice, of 1 seenProgressLevels"
call do "of 1 seenLapTrapInGame, of 1 seenCairoMap, of 1 seenOasisMap"
]
t.1=RWorldPort 0
call do "run 1 activatePlayer Ana, let 1 currentLocation CHUB"

; all is introduced the first time; the hint comes after seven seconds
call do "open CMA, flags, tell, rest 9"
;=  flags 1 1 1 0 0 0
;@ 1 WAVE resource 9050 not found.
;@ 1 WAVE resource 9052 not found.
;@ 1 WAVE resource 9053 not found.
;@ 7000 WAVE resource 9051 not found.
call do "open 1, of 2 selectedLocation, of 2 selectedLocationName, rest 0.1, tell"
;> 8111 tap 55 65
;=  0  selected 1 CWS1
; each part introduces itself when its flag is 0; closing ends it
call do "let 1 seenLapTrapInPractice 0, open CMA, let 1 inGame 1, open CMA, rest 0.5"
call do "open OMA, flags"
;@ 8191 WAVE resource 9052 not found.
;@ 8424 WAVE resource 9061 not found.
;@ 8641 WAVE resource 9062 not found.
call do "let 1 seenLapTrapInGame 0, let 1 seenOasisMap 0, open OMA, rest 0.5, flags"
;> 8651 tap 370 25
call do "let 1 currentLocation nowhere, open 0, tell, let 1 inGame 0"
;=  flags 1 1 1 1 1 1 closed, seen 0 flags 1 1 1 1 1 1
; what it is made with
t.2=RLapTrap 1 -1 60 11111 40
call do "of 2 x, of 2 y, of 2 z, tell"
;=  60 10 40
t.2=RLapTrap Atlantis -1 9
;@ 9091 RLapTrap: unknown location Atlantis
; handlers that drop it, while it refuses, while a button is held, and while its sound is heard
call do "let 1 visitedCount CMA 0, open CMA"
set t.2 closed gone
;> 9101 tap 370 25
call do "rest 0.1, open CMA"
set t.2 locationSelected gone
;> 9191 tap 25 65
call do "rest 0.1, tell, open CMA, rest 0.1, lose t.2, open CMA, rest 0.05, lose t.2"
;=  dropped dropped
;> 9281 tap 55 105
;> 9371 down 55 145
;> 9416 up 55 145
call do "let 1 inGame 1, let 1 seenLapTrapInGame 0, let 1 seenCairoMap 0, open CMA, lose t.2"
call do "rest 1"

; who clicks anything needs no hint, and it comes once
call do "let 1 inGame 0, open CMA, rest 10, open CMA, rest 10, open CMA, rest 10, open CMA, rest 10"
call do "open CMA, rest 10, tell, open CMA, rest 30"
;> 11316 tap 220 25
;> 20416 tap 140 110
;> 29516 tap 25 105
;> 38616 tap 55 65
;> 47716 tap 370 25
;=  selected 1 CWS1 closed, seen 0
;@ 62300 WAVE resource 9051 not found.
;% ERROR: RSC\progress.map line 1: PRACTICE or GAME must come before it, left out
;% ERROR: RSC\progress.map line 9: not of the form PANEL id [x y]
;% ERROR: RSC\progress.map line 10: not of the form SOUND id
;% ERROR: RSC\progress.map line 11: not of the form HINT id
;% ERROR: RSC\progress.map line 12: not of the form CLOSE id x y
;% ERROR: RSC\progress.map line 13: not of the form REFUSAL id x y
;% ERROR: RSC\progress.map line 14: not of the form NAME x y font colour
;% ERROR: RSC\progress.map line 15: not of the form MUSIC id x y id x y
;% ERROR: RSC\progress.map line 16: not of the form PART flag sound [location]..., it is left out as a whole
;% ERROR: RSC\progress.map line 21: not of the form MAP location id x y
;% ERROR: RSC\progress.map line 22: not of the form MAP location id x y
;% ERROR: RSC\progress.map line 26: not of the form LEVELS location, 4 x (id x y), [id x y]
;% ERROR: RSC\progress.map line 27: begins with no word of a layout, left out
;% ERROR: RSC\progress.map line 33: not of the form GAME
;: file content/RSC/progress.map
MAP CMA 1 1 1
PRACTICE ; what makes no sense is left out
PANEL 2301 10 10
SOUND 9050
HINT 9051
CLOSE 2413 340 0
REFUSAL 2415 0 0
MUSIC 2414 200 0 2414 230 0
PANEL 8 10001 0
SOUND
HINT 3x
CLOSE 7 99999999999 1
REFUSAL 32768 1 1
NAME 1 2 -1 256
MUSIC 1 2 3 4 5
PART - 5 CWS* NEVERLAND
MAP CMA 2320 0 40
PART seenLapTrapInPractice 9052
MAP CMA 2320 0 40
MAP CWS1 2320 30 40
MAP cma 2320 0 40
MAP HERE 2320 0 40 1
PART seenProgressLevels 9053
LEVELS CMA 2320 0 80 2320 30 80 2320 60 80 2320 90 80 2310 120 80
LEVELS CWS1 2320 0 120 2320 30 120 2320 60 120 2320 90 120 2310 120 120
LEVELS OMA 1 1 1 2 2 2 3 3 3 4 4
LEVEL 1
GAME
PANEL 2301
SOUND 207
CLOSE 2413 340 0
PART seenCairoMap 9061 C*
GAME 1
MAP HERE 2320 0 40
PART seenOasisMap 9062 O*
MAP OMA 2320 30 40
