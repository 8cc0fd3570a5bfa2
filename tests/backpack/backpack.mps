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
plot=["onDropped, tell, replace" d2 m10 u10 "items, tell" d2 m10 u10
; Closed where it was pressed, as long as it is seen, and not elsewhere.
plot=["items, tell, ask q activatePlayer Cy, ask q backpackAddObject 4, open" d13 u13 d14 u14 d15
plot=[u15 d16 u16 d17 m14 u14 d14 m17 u17 "ask p place 200 100" d17 "blink" u17 d17
plot=["give p visible 0" u17 "give p visible 1, note not_yet" d11 u11 d11 u11 d1 u1
plot=["give p visible 1" d12 u12 "give p visible 1" d17 u17 "tell" end
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
play q activatePlayer Bo
for i 0 7
play q backpackAddObject 4
for i 0 6
if i#2
play q backpackRemoveObject i
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
procedure replace
set p objectDropped replaced
procedure items
for k 0 11
[
get q backpackItemPresent k item
line=line+" "+item
]
; The next thing comes into this slot.
wide=[? 30 24 24
high=[? 20 24 25
procedure put slot
[
item=slot%3+2
play p addObject item
get a.1 x left
get a.1 y top
get a.1 z depth
left=left-216-(slot%4*36)-((36-wide.item)\2)
top=top-174-(slot\4*28)-((28-high.item)\2)
line=line+" "+left+top+depth
]
q=RWorldPort 0
play q activatePlayer Ana
set OMAnimation born onBorn
; the pictures of things; nothing else comes of them, as they are not there
call do "open, onDropped, ask p addObject -1, ask p addObject 0, ask p addObject 12"
call do "ask p addObject 13, ask p addObject 24, ask p addObject 29"
for i 0 11
call put i
n=0
call do "tell, ask p addObject 2, items"
line=line+" "+n
call do "tell, ask p removeObject -1, ask p removeObject 12"
call do "ask p removeObject 7, ask p removeObject 3, ask p removeObject 3"
call put 3
; hidden, what is put into it is, too; as it is when it is opened again; nobody plays
n=0
call do "items, give p visible 0, ask p removeObject 0, ask p addObject 3, look a.1 visible"
call do "give p visible 1, look a.1 visible, open, ask q removePlayer Ana, open"
call do "ask p addObject 3, ask p removeObject 0"
say line n
line=""
set OMAnimation born
call follow
;=  -1,0,0,0,0 008 008 008 008 008 008 008 008 008 008 008 008
;=  2 3 4 2 3 4 2 3 4 2 3 4 0
;=  008 2 3 4 2 3 4 2 0 4 2 3 4 0 1 13
;=  2,376,175,24,25 2,176,175,24,25 2,294,276,24,25 2,294,75,24,25 7,430,303,24,25 7,430,303,24,25
;=  3 3 3 0 0 0 0 4 0 0 0 0
;=  2,494,276,24,24 3 3 3 0 0 0 0 4 0 0 0 0
;=  not_yet closed closed closed
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
;! RBackPack: No object in slot 3
