; Two rings in a group are dragged beyond the window's edge and back, then dropped; another one
; is moved by the script.
;: rsc golden
;$ screens
;> 100 down 402 102
;> 110 move 452 152
;> 120 move 602 152
;> 150 screenshot beyond.png
;> 200 move 552 202
;> 250 screenshot waiting.png
;> 300 move 382 82
;> 350 up 382 82
;> 400 screenshot dropped.png
;> 1200 screenshot moved.png
yield off
ActivateDLL golden.rsc
Scene 100
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
pause 1
play h offset 0-50 0-100
