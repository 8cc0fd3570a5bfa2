; A layout of its own, whose panel is a board over the scene: moved, dragged, hidden and not touchy, at
; another place in practice, and while nobody plays.
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
