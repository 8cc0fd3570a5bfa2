; Buttons, triggers and hot spots under the mouse. The text below counts the events.
yield off
ActivateDLL golden.rsc
procedure tell
set note text "hit "+hits+", clicked "+clicks+", fired "+turns+", spot "+spots
procedure onHit
[
hits=hits+1
call tell
]
procedure onClicked
[
clicks=clicks+1
call tell
]
procedure onFired
[
turns=turns+1
call tell
]
procedure onSpot
[
spots=spots+1
call tell
]
procedure spot left top wide high seen
[
n=n+1
s.n=RHotSpot left top wide high 20
set s.n outlined seen
set s.n movable 0
set s.n mouseDown onSpot
]
hits=0
clicks=0
turns=0
spots=0
n=0
Scene 100
note=RText 40 440 0-1 0-1 5
set note colorIndex 255
call tell
b.1=RPButton 250 40 40 5
b.2=RPButton 250 160 40 5
set b.2 enabled 0
b.3=RPButton 250 280 40 5
b.4=RPButton 250 400 40 5
set b.4 playDelay 60
b.5=b.4
play b.5 place 520 40
for i 1 5
set b.i hit onHit
g.1=RTrigger 251 40 120 5
set g.1 frame 2
g.2=RTrigger 251 240 120 5
set g.2 framePixelDelta 0-20
set g.2 frame 3
g.3=RTrigger 251 440 120 5
set g.3 framePixelDelta 0
for i 1 3
[
set g.i clicked onClicked
set g.i fired onFired
]
; outlined or not; too small for an outline of two pixels; at the edges; over a button
call spot 40 200 60 40 1
call spot 140 200 60 40 0
call spot 240 200 1 1 1
call spot 250 200 2 2 1
call spot 260 200 3 3 1
call spot 270 200 4 4 1
call spot 280 200 0 9 1
call spot 290 200 12 1 1
call spot 0-10 300 30 30 1
call spot 620 300 30 30 1
call spot 570 30 30 20 1
DisplayScreen
pause 0.4
play b.3 press
play b.4
pause 0.4
; spots that come and go, move, and lie behind something
set s.1 outlined 0
set s.2 outlined 1
play s.9 offset 40 20
set s.5 visible 0
set s.11 z 1
