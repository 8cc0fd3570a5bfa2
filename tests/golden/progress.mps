; The progress screens of the built-in layouts. CMA and OWS4 were never visited. At CWS1 five
; answers were correct; at CWS2 the player went back from level 2; at CWS3 the level is to stay.
; What clicks do is in tests/progress.
;: rsc golden
;: face
;> 100 screenshot opened.png
; CMA is refused
;> 110 tap 136 204
;> 150 screenshot refused.png
; a level, which also shows what became of CWS1; by itself or not; music
;> 900 tap 516 204
;> 920 tap 600 204
;> 940 tap 300 354
;> 960 tap 530 40
;> 1010 tap 31 341
;> 1050 screenshot switched.png
;> 1060 tap 600 36
;> 1065 screenshot closing.png
; in the game, at CWS1; a figure is clicked through the panel's hole; CMA is solved
;> 1190 tap 586 442
;> 1210 screenshot solved.png
;> 1310 screenshot played.png
; a panel of its own, behind the figure, then before it and dragged by nothing else than the panel
;> 1410 screenshot behind.png
;> 1500 pull 38 148 100 100
;> 1530 down 60 260
;> 1540 move 250 380
;> 1550 screenshot dragged.png
include golden.mps
procedure onFigure
say "the figure"
procedure visit where
set world visitedCount where 1
procedure answer where count guess
for i 1 count
[
play world guess where
play world autoLevel where
]
procedure player name
[
drop screen
play world activatePlayer name
]
world=RWorldPort 0
call player "FAgy"
set world currentLocation CMA
call visit CBA1
call visit CWS1
call visit CWS2
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
screen=RLapTrap 0
DisplayScreen
pause 1.25
call player "MiW"
set world inGame 1
set world currentLocation CWS1
call visit CHUB
call visit CMA
call visit OMA
call visit OWS4
call visit PWS2
set world CMASolved 1
set world currentLevel OWS1 4
call answer OWS1 10 incorrectGuess
figure=RAnimation 200 570 440 10
set figure mouseDown onFigure
screen=RLapTrap 0
pause 0.13
drop screen
screen=RLapTrap OMA
pause 0.1
drop screen
play figure place 60 260
screen=RLapTrap CWS1 12300 30 200 5
pause 0.1
set screen z 20
set screen movable 1
;= the figure
;! WAVE resource 12101 not found.
;! WAVE resource 12103 not found.
;! WAVE resource 12104 not found.
;! WAVE resource 12201 not found.
;! WAVE resource 12203 not found.
;! WAVE resource 12104 not found.
;! WAVE resource 12204 not found.
