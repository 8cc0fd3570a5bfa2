; A backpack with four things. What is dropped over the figure is taken; all else springs back.
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
