; A backpack with four things, which is dragged, and lies behind and before a figure.
;: rsc golden
;> 50 screenshot full.png
;> 60 down 272 174
;> 65 move 480 330
;> 70 screenshot held.png
;> 75 up 480 330
;> 140 screenshot added.png
;> 150 down 225 200
;> 155 move 375 270
;> 160 screenshot dragged.png
;> 165 up 375 270
;> 230 screenshot behind.png
;> 320 screenshot before.png
; a thing that is larger than its cell, by its right end; then closed, and opened again
;> 330 drag 167 174 500 440
;> 360 click 170 125
;> 380 screenshot closed.png
;> 500 screenshot before.again.png
yield off
ActivateDLL golden.rsc
Scene 100
world=RWorldPort 0
play world activatePlayer Ana
items=[1 5 28 1 1 1 1 1 1 1 1 19
for i 1 12
play world backpackAddObject items.i
for i 3 10
play world backpackRemoveObject i
figure=RAnimation 200 90 110 10
pack=RBackPack 430 220 90 5
DisplayScreen
pause 0.1
play pack removeObject 2
play pack addObject 28
play pack addObject 19
pause 0.1
play pack place 80 90
pause 0.1
set pack z 20
pause 0.2
set pack visible 1
