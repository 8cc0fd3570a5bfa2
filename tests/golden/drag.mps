; A ring is dragged beyond the window and back, by its rim; through its hole the figure behind it is
; caught. Dropped for the first time, it may leave the window.
;: rsc golden
;$ screens
;> 50 screenshot start.png
;> 100 down 304 204
;> 110 move 394 224
;> 120 screenshot held.png
;> 130 move 624 224
;> 140 screenshot edge.png
;> 150 move 604 254
;> 160 screenshot waiting.png
;> 170 move 554 254
;> 180 screenshot joined.png
;> 190 move 1 -36
;> 200 screenshot corner.png
;> 210 move 24 44
;> 220 up 24 44
;> 230 screenshot dropped.png
;> 300 down 21 41
;> 310 move -14 11
;> 320 move -29 11
;> 330 screenshot beyond.png
;> 340 move 301 201
;> 350 up 301 201
;> 360 screenshot start.back.png
;> 400 drag 312 216 362 226
;> 430 screenshot through.png
yield off
ActivateDLL golden.rsc
procedure dropped
SetCorralTrinketNormalization 0
Scene 100
figure=RAnimation 200 310 215 5
ring=RAnimation 233 300 200 9
set ring mouseUp dropped
DisplayScreen
