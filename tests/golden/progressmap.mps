; A layout of its own, whose panel is a board over the scene: moved, dragged, hidden and not touchy, at
; another place in practice, and while nobody plays.
;: rsc golden
;$ screens
; behind the figure, then before it
;> 100 screenshot behind.png
;> 110 click 382 82
;> 130 key z
;> 140 screenshot opened.png
;> 150 click 382 82
;> 170 key t
; level 3 here; level 2 of CMA is refused
;> 200 click 450 84
;> 220 click 372 124
;> 240 screenshot refused.png
;> 250 key m
;> 260 screenshot moved.png
; dragged by the panel and by nothing else, out of the window
;> 300 down 210 260
;> 310 move 400 380
;> 320 screenshot dragged.png
;> 330 up 400 380
;> 1000 drag 502 400 300 300
;> 1030 screenshot dropped.png
; not touchy: the click goes to the figure
;> 1100 key m
;> 1110 drag 300 340 480 180
;> 1140 key h
;> 1150 click 382 72
;> 1170 key b
;> 1180 screenshot under.png
;> 1190 key y
; at a place without levels
;> 1200 key l
;> 1210 screenshot hub.png
;> 1220 click 494 46
; practice, which has a panel and a close button
;> 1300 key p
;> 1310 screenshot practice.png
;> 1320 click 576 76
; at the script's place
;> 1400 key g
;> 1410 screenshot placed.png
;> 1420 click 96 360
;> 1440 click 50 440
;> 1460 click 60 370
;> 1480 screenshot fixed.png
;> 1490 key t
; nobody plays
;> 1600 key r
;> 1610 screenshot nobody.png
;> 1620 click 580 80
;> 1640 key d
;> 1650 screenshot none.png
yield off
ActivateDLL golden.rsc
include progress.mps
procedure onFigure
say "the figure"
procedure onPanel
say "the panel"
procedure act
[
if word="l"
[
drop screen
call open "CLOC05"
call tellFlag "seenIt"
]
if word="p"
[
set world inGame 0
drop screen
screen=RLapTrap CMA -1 20
call listen
]
if word="g"
[
set world inGame 1
drop screen
screen=RLapTrap CMA 12300 30 300 20
set screen mouseDown onPanel
call listen
]
if word="r"
[
play world removePlayer "^W"
drop screen
call open "CWS2"
]
if word="d"
[
drop screen
screen=0
]
]
procedure onKey
[
get keys key word
call act
if word="t"
[
call tellLevels "CMA"
call tellLevels "CWS2"
call tellFlag "seenProgressLevels"
]
if word="m"
[
set screen x 200
set screen y 200
set screen movable 1
set screen mouseDown onPanel
]
if word="b"
set screen z 5
if word="z"
set screen z 20
if word="h"
set screen touchy 0
if word="y"
set screen touchy 1
]
Scene 100
port=RScenePort 0
world=RWorldPort 0
play world addIntProperty seenIt
play world activatePlayer "^W"
set world inGame 1
play world autoLevel CMA
figure=RAnimation 200 380 60 10
set figure mouseDown onFigure
keys=RKbdInp 0
set keys keyPressed onKey
screen=RLapTrap CWS2 -1 11111 11111 5
call listen
DisplayScreen
;= the figure
;=   CMA: level 2 colours 1 0 0 0, by itself 1
;=   CWS2: level 1 colours 0 0 0 0, by itself 1
;=   seenProgressLevels 1
;= the panel
;= the panel
;= the figure
;=   seenIt 1
;= selected 15 CHUB
;= closed
;= the panel
;= the panel
;=   CMA: level 2 colours 1 0 0 0, by itself 1
;=   CWS2: level 3 colours 0 0 0 0, by itself 1
;=   seenProgressLevels 1
;= closed
;! ASEQ resource 12999 not found.
;! ASEQ resource 12999 not found.
