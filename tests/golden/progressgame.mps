; The progress screen in the game: at CWS1, then at OMA, over a scene whose figure is seen through the
; panel's hole. Levels of the locations that can be solved are refused or not.
;: rsc golden
;: face
;$ screens
;> 100 screenshot hub.png
; of the other half nothing is there; the figure is seen and clicked through the hole
;> 110 click 70 300
;> 130 click 380 100
;> 150 click 586 442
; solved
;> 200 click 216 204
;> 220 screenshot solved.png
;> 230 key t
; the other half; the refusal goes with the screen
;> 300 key o
;> 310 screenshot oasis.png
;> 400 click 436 154
;> 420 screenshot taken.png
; OMA is played, PWS1 was never visited, PWS2 was and is not solved yet
;> 500 click 476 104
;> 520 screenshot played.png
;> 1200 click 476 354
;> 1220 screenshot played.unvisited.png
;> 1900 click 476 404
;> 1920 screenshot visited.png
;> 1930 key t
;> 1940 key s
;> 1950 click 436 404
;> 1970 screenshot refused.png
;> 1980 key t
; closed while it refuses
;> 2000 click 600 36
;> 2020 screenshot closed.png
;> 2030 key m
;> 2040 screenshot again.png
;> 3000 screenshot later.png
;> 3010 click 380 450
yield off
ActivateDLL golden.rsc
include progress.mps
procedure tellAll
[
call tellLevels "CMA"
call tellLevels "OMA"
call tellLevels "OWS1"
call tellLevels "PWS1"
call tellLevels "PWS2"
]
procedure onFigure
say "the figure"
procedure onKey
[
get keys key word
if word="t"
call tellAll
if word="s"
set world PWS2Solved 1
if word="o"
[
drop screen
call open "OMA"
call tellFlags
]
if word="m"
[
set port isBackgroundMusicEnabled 0
set screen visible 0
set screen visible 1
]
]
Scene 100
port=RScenePort 0
world=RWorldPort 0
play world activatePlayer "MiW"
set world inGame 1
set world currentLocation CWS1
call visit "CHUB" 2
call visit "CMA" 1
call visit "OMA" 1
call visit "OWS4" 1
call visit "PWS2" 2
set world CMASolved 1
set world currentLevel OWS1 4
call answer "OWS1" 10 "incorrectGuess"
play world autoLevel OWS1
figure=RAnimation 200 570 440 10
set figure mouseDown onFigure
keys=RKbdInp 0
set keys keyPressed onKey
call open 0
call tellFlags
DisplayScreen
;=   seenChooseActivity 0
;=   seenLapTrapInPractice 0
;=   seenLapTrapInGame 1
;=   seenProgressLevels 1
;=   seenCairoMap 1
;=   seenOasisMap 0
;= selected 2 CWS2
;= the figure
;=   CMA: level 1 colours 0 0 0 0, by itself 1
;=   OMA: level 1 colours 0 0 0 0, by itself 1
;=   OWS1: level 3 colours 0 0 0 2, by itself 1
;=   PWS1: level 1 colours 0 0 0 0, by itself 1
;=   PWS2: level 1 colours 0 0 0 0, by itself 1
;=   seenChooseActivity 0
;=   seenLapTrapInPractice 0
;=   seenLapTrapInGame 1
;=   seenProgressLevels 1
;=   seenCairoMap 1
;=   seenOasisMap 1
;=   CMA: level 1 colours 0 0 0 0, by itself 1
;=   OMA: level 1 colours 0 0 0 0, by itself 1
;=   OWS1: level 1 colours 0 0 0 2, by itself 1
;=   PWS1: level 1 colours 0 0 0 0, by itself 1
;=   PWS2: level 2 colours 0 0 0 0, by itself 1
;=   CMA: level 1 colours 0 0 0 0, by itself 1
;=   OMA: level 1 colours 0 0 0 0, by itself 1
;=   OWS1: level 1 colours 0 0 0 2, by itself 1
;=   PWS1: level 1 colours 0 0 0 0, by itself 1
;=   PWS2: level 2 colours 0 0 0 0, by itself 1
;= closed
;= selected 16 OHUB
;! WAVE resource 12201 not found.
;! WAVE resource 12203 not found.
;! WAVE resource 12104 not found.
;! WAVE resource 12204 not found.
