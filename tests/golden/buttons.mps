; Buttons, triggers and hot spots; what is heard of the others is in tests/scripts.
;: rsc golden
;$ screens
; pressed, left and entered again; its hole is outside; one that cannot be pressed
;> 10 down 50 60
;> 15 screenshot pressed.png
;> 20 move 300 300
;> 25 screenshot outside.png
;> 30 move 50 60
;> 35 screenshot pressed.again.png
;> 40 move 72 58
;> 45 screenshot outside.hole.png
;> 46 up 72 58
;> 50 down 170 60
;> 55 screenshot outside.disabled.png
;> 60 up 170 60
; two that a script has pressed, one of them for a shorter time; one turned by 35 pixels, then
; beyond its end
;> 120 screenshot script.png
;> 175 screenshot later.png
;> 300 down 100 125
;> 305 move 135 125
;> 310 screenshot turned.png
;> 315 move 639 125
;> 316 move 0 125
;> 320 up 0 125
; one that goes the other way, and one that is not turned
;> 330 down 250 125
;> 340 move 290 300
;> 345 screenshot ends.png
;> 350 up 290 300
;> 360 drag 450 125 600 125
;> 400 screenshot spots.png
; seen, hidden, above a button, below it
;> 410 click 75 225
;> 430 click 175 225
;> 450 click 625 310
;> 470 click 575 45
yield off
ActivateDLL golden.rsc
procedure onSpot
[
get RECEIVER name who
say who
]
procedure spot left top wide high seen
[
n=n+1
s.n=RHotSpot left top wide high 20
set s.n outlined seen
set s.n mouseDown onSpot
]
n=0
Scene 100
b.1=RPButton 250 40 40 5
b.2=RPButton 250 160 40 5
set b.2 enabled 0
b.3=RPButton 250 280 40 5
b.4=RPButton 250 400 40 5
set b.4 playDelay 60
b.5=b.4
play b.5 place 520 40
for i 1 3
g.i=RTrigger 251 i*200-160 120 5
set g.1 frame 2
set g.2 framePixelDelta 0-20
set g.2 frame 3
set g.3 framePixelDelta 0
; outlined or not; too small for an outline of two pixels; at the edges; over a button
call spot 40 200 60 40 1
call spot 140 200 60 40 0
for i 1 4
call spot i*10+230 200 i i 1
call spot 280 200 0 9 1
call spot 290 200 12 1 1
call spot 0-10 300 30 30 1
call spot 620 300 30 30 1
call spot 570 30 30 20 1
DisplayScreen
pause 0.1
play b.3 press
play b.4
pause 0.3
; spots that come and go, move, and lie behind something
set s.1 outlined 0
set s.2 outlined 1
play s.9 offset 40 20
set s.5 visible 0
set s.11 z 1
;= s.1
;= s.2
;= s.10
