; The progress screen in practice, opened at CMA, which was never visited. At CWS1 five answers were
; correct; at CWS2 the player went back from level 2; at CWS3 the level is to stay. What is seen of OWS4
; ends until it was visited, and the third level has no colours.
;: rsc golden
;: face
;$ screens
;> 100 key t
;> 110 key m
;> 200 screenshot opened.png
; the level that there is already: the five answers are kept, and a sixth one makes the player go on
;> 300 click 136 254
;> 320 screenshot opened.same.png
;> 330 key c
;> 340 key t
; a level of OWS2, which also shows what became of CWS1; its picture turns
;> 400 click 516 204
;> 420 screenshot taken.png
;> 430 click 556 204
;> 450 key t
; CMA is refused, and meanwhile nothing else is taken
;> 500 click 136 204
;> 520 screenshot refused.png
;> 530 click 436 204
;> 850 screenshot refusing.png
;> 1200 key t
; by itself or not
;> 1300 click 300 204
;> 1320 click 600 204
;> 1340 click 300 354
;> 1360 screenshot switched.png
;> 1370 key w
;> 1380 key t
; music, through the hole of its picture and on it
;> 1400 down 530 20
;> 1405 up 530 20
;> 1410 key m
;> 1415 down 530 40
;> 1420 up 530 40
;> 1425 screenshot silent.png
;> 1430 key m
;> 1440 click 486 40
;> 1460 key m
; locations: let go beside it, and on it; one of which nothing is seen; a corner
;> 1500 down 70 300
;> 1510 up 70 330
;> 1520 down 70 300
;> 1530 up 100 305
;> 1540 click 370 300
;> 1560 click 31 341
;> 1580 click 370 200
;> 1600 screenshot selected.png
; closed and opened again; meanwhile two locations have been visited
;> 1700 down 600 36
;> 1710 screenshot closing.png
;> 1720 up 600 36
;> 1730 screenshot closed.png
;> 1740 click 70 250
;> 1760 key v
;> 1800 key o
;> 1810 screenshot again.png
;> 1820 click 370 300
;> 1840 key f
; another one, opened for another location
;> 1900 key n
;> 1910 screenshot elsewhere.png
; where it can be changed
;> 1920 click 136 204
;> 1940 key t
;> 1950 screenshot changed.png
;> 2000 key f
yield off
ActivateDLL golden.rsc
include progress.mps
procedure onKey
[
get keys key word
if word="t"
[
call tellLevels "CWS1"
call tellLevels "CWS2"
call tellLevels "CWS3"
call tellLevels "CMA"
call tellLevels "OWS2"
]
if word="f"
call tellFlags
if word="m"
call tellMusic
if word="c"
[
play world correctGuess CWS1
play world autoLevel CWS1
]
if word="w"
[
call answer "OWS2" 10 "incorrectGuess"
play world autoLevel OWS2
]
if word="v"
[
call visit "OWS4" 1
call visit "PWS1" 1
]
if word="o"
set screen visible 1
if word="n"
call open "OWS4"
]
Scene 100
port=RScenePort 0
world=RWorldPort 0
play world activatePlayer "FAgy"
set world currentLocation CMA
call visit "CBA1" 1
call visit "CWS1" 1
call visit "CWS2" 3
call answer "CWS1" 5 "correctGuess"
set world currentLevel CWS2 2
call answer "CWS2" 10 "incorrectGuess"
play world autoLevel CWS2
set world isAutoLevelingEnabled CWS3 0
call answer "CWS3" 6 "correctGuess"
play world autoLevel CWS3
for i 1 3
play world autoLevel CMA
set world currentLevel OWS2 2
call answer "OWS2" 6 "correctGuess"
play world autoLevel OWS2
set world currentLevel OWS2 4
keys=RKbdInp 0
set keys keyPressed onKey
call tellFlags
call open 0
call tellFlags
DisplayScreen
;=   seenChooseActivity 0
;=   seenLapTrapInPractice 0
;=   seenLapTrapInGame 0
;=   seenProgressLevels 0
;=   seenCairoMap 0
;=   seenOasisMap 0
;=   seenChooseActivity 1
;=   seenLapTrapInPractice 1
;=   seenLapTrapInGame 0
;=   seenProgressLevels 1
;=   seenCairoMap 0
;=   seenOasisMap 0
;=   CWS1: level 1 colours 0 0 0 0, by itself 1
;=   CWS2: level 1 colours 0 2 0 0, by itself 1
;=   CWS3: level 1 colours 1 0 0 0, by itself 0
;=   CMA: level 4 colours 1 1 1 0, by itself 1
;=   OWS2: level 4 colours 0 1 0 0, by itself 1
;=   music off 0 enabled 1
;=   CWS1: level 2 colours 1 0 0 0, by itself 1
;=   CWS2: level 1 colours 0 2 0 0, by itself 1
;=   CWS3: level 1 colours 1 0 0 0, by itself 0
;=   CMA: level 4 colours 1 1 1 0, by itself 1
;=   OWS2: level 4 colours 0 1 0 0, by itself 1
;=   CWS1: level 2 colours 1 0 0 0, by itself 1
;=   CWS2: level 1 colours 0 2 0 0, by itself 1
;=   CWS3: level 1 colours 1 0 0 0, by itself 0
;=   CMA: level 4 colours 1 1 1 0, by itself 1
;=   OWS2: level 4 colours 0 1 0 0, by itself 1
;=   CWS1: level 2 colours 1 0 0 0, by itself 1
;=   CWS2: level 1 colours 0 2 0 0, by itself 1
;=   CWS3: level 1 colours 1 0 0 0, by itself 0
;=   CMA: level 4 colours 1 1 1 0, by itself 1
;=   OWS2: level 4 colours 0 1 0 0, by itself 1
;=   CWS1: level 2 colours 1 0 0 0, by itself 1
;=   CWS2: level 1 colours 0 2 0 0, by itself 1
;=   CWS3: level 1 colours 1 0 0 0, by itself 1
;=   CMA: level 4 colours 1 1 1 0, by itself 0
;=   OWS2: level 4 colours 0 1 0 2, by itself 0
;=   music off 0 enabled 1
;=   music off 1 enabled 0
;=   music off 0 enabled 1
;= selected 2 CWS2
;= selected 6 OWS2
;= closed
;= selected 8 OWS4
;=   seenChooseActivity 1
;=   seenLapTrapInPractice 1
;=   seenLapTrapInGame 0
;=   seenProgressLevels 1
;=   seenCairoMap 0
;=   seenOasisMap 0
;=   CWS1: level 2 colours 1 0 0 0, by itself 1
;=   CWS2: level 1 colours 0 2 0 0, by itself 1
;=   CWS3: level 1 colours 1 0 0 0, by itself 1
;=   CMA: level 1 colours 1 1 1 0, by itself 0
;=   OWS2: level 4 colours 0 1 0 2, by itself 0
;=   seenChooseActivity 1
;=   seenLapTrapInPractice 1
;=   seenLapTrapInGame 0
;=   seenProgressLevels 1
;=   seenCairoMap 0
;=   seenOasisMap 0
;! WAVE resource 12101 not found.
;! WAVE resource 12103 not found.
;! WAVE resource 12104 not found.
