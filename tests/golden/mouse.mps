; Buttons, triggers, hot spots and a ring; what is heard of them is in tests/scripts.
;: rsc golden
;$ screens
; pressed, and left through its hole; one that cannot be pressed
;> 10 down 50 60
;> 15 screenshot pressed.png
;> 20 move 72 58
;> 25 screenshot outside.png
;> 40 up 300 300
;> 50 tap 170 60
;> 55 screenshot outside.disabled.png
; two that a script has pressed, one of them for a shorter time
;> 120 screenshot script.png
;> 175 screenshot later.png
; one turned by 35 pixels, then beyond its end; one that goes the other way, and one that is not
; turned
;> 200 down 100 125
;> 205 move 135 125
;> 210 screenshot turned.png
;> 215 up 639 125
;> 220 pull 250 125 290 300
;> 245 pull 450 125 600 125
; the ring by its rim, beyond the window and back; through its hole the figure behind it. Dropped
; for the first time, it may leave the window
;> 270 down 304 204
;> 275 move 624 224
;> 280 screenshot edge.png
;> 295 move 1 -36
;> 300 screenshot corner.png
;> 305 move 24 44
;> 310 up 24 44
;> 320 down 21 41
;> 325 move -29 11
;> 330 screenshot beyond.png
;> 335 move 301 201
;> 340 up 301 201
;> 345 pull 312 216 362 226
;> 440 screenshot moved.png
include golden.mps
procedure dropped
SetCorralTrinketNormalization 0
procedure spot left top wide high
[
n=n+1
s.n=RHotSpot left top wide high 20
set s.n outlined n-2
]
for i 1 5
[
b.i=RPButton 250 i*120-80 40 5
g.i=RTrigger 251 i*200-160 120 5
]
set b.2 enabled 0
set b.4 playDelay 60
set g.1 frame 2
set g.2 framePixelDelta -20
set g.2 frame 3
set g.3 framePixelDelta 0
; outlined or not; too small for an outline of two pixels; at the edges; over a button
n=0
call spot 40 300 60 40
call spot 40 360 60 40
for i 1 4
call spot i*10+130 300 i i
call spot 180 300 0 9
call spot 190 300 12 1
call spot -10 400 30 30
call spot 620 400 30 30
call spot 570 30 30 20
figure=RAnimation 200 310 215 5
ring=RAnimation 233 300 200 9
set ring mouseUp dropped
DisplayScreen
pause 0.1
play b.3 press
play b.4
pause 0.3
set s.1 outlined 0
set s.3 visible 0
play s.9 offset 40 20
set s.11 z 1
