; The progress screens of the built-in layouts. In practice it is opened at CMA, which was never
; visited. At CWS1 five answers were correct; at CWS2 the player went back from level 2; at CWS3 the
; level is to stay. What is seen of OWS4 ends until it was visited, and the third level has no
; colours. What clicks do is in tests/progress.
;: rsc golden
;: face
;> 100 screenshot opened.png
; a level of OWS2, which also shows what became of CWS1; CMA is refused, and meanwhile nothing else
; is taken
;> 110 click 516 204
;> 130 click 556 204
;> 150 click 136 204
;> 170 click 436 204
;> 190 screenshot refused.png
;> 500 screenshot refusing.png
; by itself or not; music, through the hole of its picture and on it; locations: let go beside it,
; and on it; a corner; where nothing is
;> 1300 click 300 204
;> 1320 click 600 204
;> 1340 click 300 354
;> 1360 click 530 20
;> 1380 click 530 40
;> 1400 drag 70 300 70 330
;> 1425 drag 70 300 100 305
;> 1450 click 31 341
;> 1470 click 370 200
;> 1490 screenshot switched.png
;> 1500 down 600 36
;> 1505 screenshot closing.png
;> 1510 up 600 36
; opened again after visits, and for another location
;> 1600 screenshot again.png
;> 1750 screenshot elsewhere.png
; in the game: at CWS1, over a scene whose figure is seen and clicked through the panel's hole; CMA
; is solved
;> 1950 click 70 300
;> 1970 click 380 100
;> 1990 click 586 442
;> 2010 click 216 204
;> 2030 screenshot solved.png
; the other half; OMA is played; PWS2 was visited, PWS1 never
;> 2100 click 436 154
;> 2120 click 476 104
;> 2140 screenshot played.png
;> 2800 click 476 404
;> 2820 click 476 354
;> 2840 screenshot unvisited.png
; closed while it refuses
;> 2850 click 600 36
;> 2870 screenshot closed.png
;> 3100 screenshot anew.png
yield off
ActivateDLL golden.rsc
procedure onSelected
[
get screen selectedLocation number
get screen selectedLocationName place
say number place
]
procedure onFigure
say "the figure"
procedure open place
[
drop screen
screen=RLapTrap place
set screen locationSelected onSelected
]
procedure answer place count guess
[
for i 1 count
play world guess place
play world autoLevel place
]
procedure visit place count
set world visitedCount place count
Scene 100
port=RScenePort 0
world=RWorldPort 0
play world activatePlayer "FAgy"
set world currentLocation CMA
call visit CBA1 1
call visit CWS1 1
call visit CWS2 3
for i 1 5
play world correctGuess CWS1
set world currentLevel CWS2 2
call answer CWS2 10 incorrectGuess
set world isAutoLevelingEnabled CWS3 0
call answer CWS3 6 correctGuess
for i 1 3
play world autoLevel CMA
set world currentLevel OWS2 2
call answer OWS2 6 correctGuess
set world currentLevel OWS2 4
call open 0
DisplayScreen
pause 1.7
call visit OWS4 1
call visit PWS1 1
set screen visible 1
pause 0.2
call open OWS4
pause 0.2
play world activatePlayer "MiW"
set world inGame 1
set world currentLocation CWS1
call visit CHUB 2
call visit CMA 1
call visit OMA 1
call visit OWS4 1
call visit PWS2 2
set world CMASolved 1
set world currentLevel OWS1 4
call answer OWS1 10 incorrectGuess
figure=RAnimation 200 570 440 10
set figure mouseDown onFigure
call open 0
pause 0.2
call open OMA
pause 1.1
set screen visible 1
;= 2 CWS2
;= 6 OWS2
;= 2 CWS2
;= the figure
;! WAVE resource 12101 not found.
;! WAVE resource 12103 not found.
;! WAVE resource 12104 not found.
;! WAVE resource 12201 not found.
;! WAVE resource 12203 not found.
;! WAVE resource 12104 not found.
;! WAVE resource 12204 not found.
