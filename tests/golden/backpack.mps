; A backpack with four things. What is dropped over the figure is taken; all else springs back.
;: rsc golden
;$ screens
;> 50 screenshot full.png
; dropped inside, and outside
;> 100 drag 246 170 300 150
;> 130 screenshot full.back.png
;> 140 down 272 174
;> 150 move 480 330
;> 160 screenshot held.png
;> 170 up 480 330
;> 180 screenshot full.sprung.png
; given to the figure; another thing comes into the first free slot
;> 200 drag 284 200 112 140
;> 230 screenshot given.png
;> 240 key t
;> 250 key a
;> 260 screenshot added.png
; the panel is dragged, and moved behind and before the figure
;> 300 down 225 200
;> 310 move 375 270
;> 320 screenshot dragged.png
;> 330 up 375 270
;> 340 key m
;> 350 screenshot behind.png
;> 360 key z
;> 370 screenshot before.png
; a thing that is larger than its cell, by its right end
;> 380 drag 167 174 500 440
; closed, and opened again
;> 410 click 170 125
;> 430 screenshot closed.png
;> 440 key o
;> 450 screenshot before.again.png
;> 460 key t
;> 470 click 170 125
;> 490 screenshot closed.again.png
yield off
ActivateDLL golden.rsc
procedure onDropped
[
get pack droppedObjectIndex slot
get pack droppedObjectX left
get pack droppedObjectY top
get pack droppedObjectW wide
get pack droppedObjectH high
say "dropped" slot "at" left top "of" wide high
if left<150
play pack removeObject slot
]
procedure onClosed
say "closed"
procedure onKey
[
get keys key word
if word="t"
for i 0 11
[
get world backpackItemPresent i item
if item#0
say "  slot" i "item" item
]
if word="a"
play pack addObject 19
if word="m"
play pack place 80 90
if word="z"
set pack z 20
if word="o"
set pack visible 1
]
Scene 100
world=RWorldPort 0
play world activatePlayer Ana
play world backpackAddObject 1
play world backpackAddObject 5
for i 2 4
play world backpackAddObject 1
play world backpackAddObject 28
for i 6 10
play world backpackAddObject 1
play world backpackAddObject 19
for i 2 10
if i#5
play world backpackRemoveObject i
figure=RAnimation 200 90 110 10
pack=RBackPack 430 220 90 5
set pack objectDropped onDropped
set pack closed onClosed
keys=RKbdInp 0
set keys keyPressed onKey
DisplayScreen
;= dropped 1 at 478 328 of 40 12
;= dropped 5 at 110 138 of 15 15
;=   slot 0 item 1
;=   slot 1 item 5
;=   slot 11 item 19
;= dropped 1 at 463 438 of 40 12
;= closed
;=   slot 0 item 1
;=   slot 1 item 5
;=   slot 2 item 19
;=   slot 11 item 19
;= closed
