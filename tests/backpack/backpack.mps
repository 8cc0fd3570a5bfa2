; The backpack: which pictures its things have and where they lie, what it refuses, what is dragged out of it,
; and how it is closed. Of the things 2 to 4 have pictures, of 30 by 20, 24 by 24 and 24 by 25 pixels.
;$ --until 20000
yield off
procedure onBorn
[
get RECEIVER "x" left
get RECEIVER "y" top
get RECEIVER "z" depth
thing=RECEIVER
n=n+1
]
procedure onDropped
[
get pack droppedObjectIndex slot
get pack droppedObjectX left
get pack droppedObjectY top
get pack droppedObjectW wide
get pack droppedObjectH high
say "dropped" slot left top wide high
]
procedure onClosed
say "closed"
procedure open
[
pack=RBackPack 2031 200 100 7
set pack objectDropped onDropped
set pack closed onClosed
]
world=RWorldPort 0
play world activatePlayer Ana
set OMAnimation born onBorn
n=0
; the pictures of things; nothing else comes of them, as they are not there
items=[-1 0 12 13 24 29
call open
call onDropped
;= dropped -1 0 0 0 0
for i 1 6
play pack addObject items.i
;! RBackPack: invalid object: -1
;! RBackPack: object 0 animation not found.
;! ASEQ resource 1012 not found.
;! RBackPack: object 12 animation not found.
;! ASEQ resource 11000 not found.
;! RBackPack: object 13 animation not found.
;! ASEQ resource 11014 not found.
;! RBackPack: object 24 animation not found.
;! RBackPack: invalid object: 29
; all put in, then one taken out, or put into the first free slot, at random: as a model has it, each in the
; middle of its cell and one above the panel
wide=[? 30 24 24
high=[? 20 24 25
wrong=0
procedure act
[
item=step%3+2
if model.slot
[
play pack removeObject slot
model.slot=0
]
else
[
for slot 0 11
if model.slot=0
break
model.slot=item
play pack addObject item
n=n-1
if (left=(216+(slot%4*36)+((36-wide.item)\2)))*(top=(174+(slot\4*28)+((28-high.item)\2)))*(depth=8)=0
wrong=wrong+1
]
for k 0 11
[
get world backpackItemPresent k item
if item#model.k
wrong=wrong+1
]
]
procedure fill
[
slot=step
call act
]
for step 0 11
model.step=0
for step 0 11
call fill
play pack addObject 2
;! RBackPack: Backpack is full.
n=0
for step 1 200
[
RandomNumber 0 11
slot=RESULT
call act
]
say "wrong:" wrong
;= wrong: 0
; another one shows the same; what is refused leaves all as it is
for k 0 11
if model.k
n=n-1
procedure tell
[
all="items:"
for k 0 11
[
get world backpackItemPresent k item
all=all+" "+item
]
say all
]
call open
say n
;= 0
play pack removeObject 0-1
play pack removeObject 12
play pack removeObject 1
;! RBackPack: Invalid slot index: -1
;! RBackPack: Invalid slot index: 12
;! RBackPack: No object in slot 1
call tell
;= items: 4 0 3 2 3 3 0 4 0 0 0 0
; dragged inside, over the edges by a pixel, and just outside of each; it goes back. The last release is lost
play world activatePlayer Bo
for i 0 7
play world backpackAddObject 4
for i 0 6
if i#2
play world backpackRemoveObject i
call open
;> 11 down 306 188
;> 13 move 387 288
;> 14 up 387 288
;> 21 down 306 188
;> 23 move 189 89
;> 24 up 189 89
;> 31 down 306 188
;> 33 move 388 188
;> 34 up 388 188
;> 41 down 306 188
;> 43 move 188 188
;> 44 up 188 188
;> 51 down 306 188
;> 53 move 306 289
;> 54 up 306 289
;> 61 down 306 188
;> 63 move 306 88
;> 64 up 306 88
;> 89 down 342 216
;> 91 move 442 316
;> 91 up 442 316
;= dropped 2 376 175 24 25
;= dropped 2 176 175 24 25
;= dropped 2 294 276 24 25
;= dropped 2 294 75 24 25
pause 0.1
DisplayScreen
;= dropped 7 430 303 24 25
pause 0.02
call onDropped
;= dropped 7 430 303 24 25
; a handler puts something else in its place, or drops the backpack
procedure replaced
[
play pack removeObject 2
suspend
for i 0 2
play pack addObject 3
resume
set pack objectDropped onDropped
]
procedure gone
[
drop pack
say "gone"
]
set pack objectDropped replaced
;> 119 down 306 188
;> 124 move 506 288
;> 129 up 506 288
pause 0.05
call tell
;= items: 3 3 3 0 0 0 0 4 0 0 0 0
;> 164 down 306 188
;> 169 move 506 288
;> 174 up 506 288
;= dropped 2 494 276 24 24
pause 0.05
set pack objectDropped gone
;> 209 down 234 188
;> 214 move 506 288
;> 219 up 506 288
pause 0.05
;= gone
call tell
;= items: 3 3 3 0 0 0 0 4 0 0 0 0
; closed from 80, 18 to 100, 48, to the pixel, where it was pressed, as long as it is seen, and not elsewhere
play world activatePlayer Cy
play world backpackAddObject 4
call open
;> 254 down 279 130
;> 255 up 279 130
;> 256 down 300 130
;> 257 up 300 130
;> 258 down 290 117
;> 259 up 290 117
;> 260 down 290 148
;> 261 up 290 148
;> 262 down 290 130
;> 263 move 310 130
;> 264 up 310 130
;> 265 down 310 130
;> 266 move 290 130
;> 267 up 290 130
pause 0.05
play pack place 200 100
;> 298 down 285 120
;> 298 up 285 120
pause 0.01
DisplayScreen
;> 303 up 285 120
pause 0.02
;> 321 down 285 120
pause 0.01
set pack visible 0
;> 330 up 285 120
pause 0.01
set pack visible 1
say "not yet"
;= not yet
;> 344 down 280 118
;> 345 up 280 118
;> 346 down 280 118
;> 347 up 280 118
;> 348 down 234 188
;> 349 up 234 188
;= closed
pause 0.05
; hidden, what is put into it is, too; opened again it is closed by its other corner
play pack addObject 3
get thing visible seen
set pack visible 1
get thing visible now
get pack visible is
say seen now is
;= 0 1 1
;> 389 down 299 147
;> 390 up 299 147
;= closed
pause 0.05
set pack closed gone
set pack visible 1
;> 434 down 285 120
;> 435 up 285 120
;= gone
pause 0.05
; nobody plays
play world removePlayer Cy
n=0
call open
play pack addObject 3
play pack removeObject 0
say n
;= 1
