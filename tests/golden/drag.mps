; A ring is dragged beyond the window and back, by its rim; through its hole the figure behind it is
; caught. Dropped for the first time, it may leave the window. Two rings in a group are dragged,
; others moved by the script.
;: rsc golden
;$ screens
;> 10 down 304 204
;> 20 move 624 224
;> 30 screenshot edge.png
;> 40 move 604 254
;> 50 screenshot waiting.png
;> 60 move 554 254
;> 70 screenshot joined.png
;> 80 move 1 -36
;> 90 screenshot corner.png
;> 100 move 24 44
;> 110 up 24 44
;> 120 screenshot dropped.png
;> 130 down 21 41
;> 140 move -14 11
;> 150 move -29 11
;> 160 screenshot beyond.png
;> 170 move 301 201
;> 180 up 301 201
;> 190 drag 312 216 362 226
;> 220 screenshot through.png
;> 230 down 402 102
;> 240 move 602 152
;> 250 screenshot group.png
;> 260 move 552 202
;> 270 screenshot grouped.png
;> 280 move 382 82
;> 290 up 382 82
;> 400 screenshot moved.png
yield off
ActivateDLL golden.rsc
procedure dropped
SetCorralTrinketNormalization 0
Scene 100
figure=RAnimation 200 310 215 5
ring=RAnimation 233 300 200 9
set ring mouseUp dropped
a=RAnimation 230 400 100 5
b=RAnimation 231 470 180 5
g=OMMultiTrinket 20
play g addTrinket "a"
play g addTrinket "b" 1
c=RAnimation 232 200 300 6
d=RAnimation 235 240 350 6
h=OMMultiTrinket 10
play h addTrinket "c"
play h addTrinket "d"
DisplayScreen
pause 0.25
SetCorralTrinketNormalization 1
pause 0.1
play h offset 0-50 0-100
