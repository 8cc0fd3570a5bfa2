; The backpack, p: which pictures its things have and where they lie, what it refuses, what is
; dragged out of it, and how it is closed. Things 2 to 4 have pictures, of 30 by 20, 24 by 24 and 24
; by 25.
;> 5 key W
;$ then --input content/drags --until 1000
yield off
include player.mps
include steps.mps
; Cells 0, 2 and 7, places just inside and outside of the edges, and far away; of the close button's
; corners and around it, and one within.
spots=["234 188" "306 188" "342 216" "387 288" "189 89" "388 188" "188 188" "306 289" "306 88"
spots=["506 288" "280 118" "299 147" "279 130" "300 130" "290 117" "290 148" "285 120"
; Inside and over the edges by a pixel; just outside; a lost release; handlers that put something
; else in its place and drop the backpack.
plot=["eight, open" d2 m4 u4 d2 m5 u5 d2 m6 u6 d2 m7 u7 d2 m8 u8 d2 m9 u9 d3 "m442 316" b0 u9 f0
plot=["onDropped, tell, set replaced" d2 m10 u10 "items, tell" d2 m10 u10 "set gone" d1 m10 u10
; Closed where it was pressed, as long as it is seen, and not elsewhere.
plot=["items, tell, single, open" d13 u13 d14 u14 d15 u15 d16 u16 d17 m14 u14 d14 m17 u17
plot=["ask p place 200 100" d17 "blink" u17 d17 "give p visible 0" u17
plot=["give p visible 1, note not_yet" d11 u11 d11 u11 d1 u1 "give p visible 1"
plot=[d12 u12 "set closing, give p visible 1" d17 u17 "tell" end
procedure writeDrags
call writePlot
procedure onBorn
[
a.1=RECEIVER
n=n+1
]
procedure onDropped
call do "look p droppedObjectIndex droppedObjectX droppedObjectY droppedObjectW droppedObjectH"
procedure onClosed
call do "note closed"
procedure open
[
p=RBackPack 2031 200 100 7
set p objectDropped onDropped
set p closed onClosed
]
procedure eight
[
play world activatePlayer Bo
for i 0 7
play world backpackAddObject 4
for i 0 6
if i#2
play world backpackRemoveObject i
]
procedure single
[
play world activatePlayer Cy
play world backpackAddObject 4
]
procedure replaced
[
play p removeObject 2
suspend
for i 0 2
play p addObject 3
resume
set p objectDropped onDropped
]
procedure gone
[
drop p
call do "note gone"
]
procedure set
[
call cut
if word="closing"
set p closed gone
else
set p objectDropped $word
]
procedure items
for k 0 11
[
get world backpackItemPresent k item
line=line+" "+item
]
procedure nobody
[
play world removePlayer Ana
n=0
call do "open, ask p addObject 3, ask p removeObject 0"
line=line+" "+n
]
; All put in, then one taken out, or put into the first free slot, at random, as a model has it.
wide=[? 30 24 24
high=[? 20 24 25
procedure act
[
item=step%3+2
if model.slot
[
play p removeObject slot
model.slot=0
]
else
[
for slot 0 11
if model.slot=0
break
model.slot=item
play p addObject item
n=n-1
get a.1 x left
get a.1 y top
get a.1 z depth
wrong=wrong+(left#(216+(slot%4*36)+((36-wide.item)\2)))+(depth#8)
wrong=wrong+(top#(174+(slot\4*28)+((28-high.item)\2)))
]
for k 0 11
[
get world backpackItemPresent k item
wrong=wrong+(item#model.k)
]
]
procedure random
[
for step 0 11
model.step=0
for step 0 11
[
slot=step
call act
]
play p addObject 2
for step 1 200
[
RandomNumber 0 11
slot=RESULT
call act
]
for k 0 11
n=n-(model.k>0)
call open
line=line+" wrong "+wrong+" "+n
]
world=RWorldPort 0
play world activatePlayer Ana
set OMAnimation born onBorn
n=0
wrong=0
; the pictures of things; nothing else comes of them, as they are not there
call do "open, onDropped, ask p addObject -1, ask p addObject 0, ask p addObject 12"
call do "ask p addObject 13, ask p addObject 24, ask p addObject 29, random, ask p removeObject -1"
call do "ask p removeObject 12, ask p removeObject 1, items, tell"
; hidden, what is put into it is, too; nobody plays
call do "give p visible 0, ask p removeObject 0, ask p addObject 3, look a.1 visible"
call do "give p visible 1, look a.1 visible, nobody, tell"
set OMAnimation born
call follow

;=  -1,0,0,0,0 wrong 0 0 4 0 3 2 3 3 0 4 0 0 0 0
;=  0 1 1
;=  2,376,175,24,25 2,176,175,24,25 2,294,276,24,25 2,294,75,24,25 7,430,303,24,25 7,430,303,24,25
;=  3 3 3 0 0 0 0 4 0 0 0 0
;=  2,494,276,24,24 gone 3 3 3 0 0 0 0 4 0 0 0 0
;=  not_yet closed closed gone
;! RBackPack: invalid object: -1
;! RBackPack: object 0 animation not found.
;! ASEQ resource 1012 not found.
;! RBackPack: object 12 animation not found.
;! ASEQ resource 11000 not found.
;! RBackPack: object 13 animation not found.
;! ASEQ resource 11014 not found.
;! RBackPack: object 24 animation not found.
;! RBackPack: invalid object: 29
;! RBackPack: Backpack is full.
;! RBackPack: Invalid slot index: -1
;! RBackPack: Invalid slot index: 12
;! RBackPack: No object in slot 1
