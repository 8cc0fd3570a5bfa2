; Buttons, triggers and hot spots under the mouse. The text below counts the events.
;: rsc golden
;$ screens
; the first button, pressed, left and entered again; its hole is outside
;> 100 down 50 60
;> 150 screenshot pressed.png
;> 160 move 300 300
;> 170 screenshot outside.png
;> 180 move 50 60
;> 190 screenshot pressed.again.png
;> 200 move 72 58
;> 210 screenshot outside.hole.png
;> 220 move 50 60
;> 221 up 50 60
; a hit; then released outside; then one that cannot be pressed
;> 230 screenshot hit.png
;> 240 down 50 60
;> 241 move 300 300
;> 242 up 300 300
;> 250 down 170 60
;> 251 up 170 60
;> 260 screenshot hit.alone.png
; two that a script has pressed, one of them for a shorter time
;> 380 screenshot script.png
;> 440 screenshot later.png
; turned by 35 pixels and let go; back to where it was; beyond the ends
;> 740 down 100 125
;> 745 move 135 125
;> 750 screenshot turned.png
;> 755 up 135 125
;> 760 down 100 125
;> 761 move 170 125
;> 762 move 109 125
;> 763 up 109 125
;> 770 down 250 125
;> 771 move 290 300
;> 772 up 290 300
;> 780 down 100 125
;> 781 move 639 125
;> 782 move 0 125
;> 783 up 0 125
;> 790 down 250 125
;> 791 move 639 125
;> 792 move 0 125
;> 800 screenshot ends.png
;> 801 up 0 125
;> 830 down 450 125
;> 831 move 600 125
;> 832 up 600 125
; the spots: seen, hidden, above a button, below it
;> 840 down 75 225
;> 841 up 75 225
;> 842 down 175 225
;> 843 up 175 225
;> 844 down 625 310
;> 845 up 625 310
;> 846 down 575 45
;> 847 up 575 45
;> 850 screenshot spots.png
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
