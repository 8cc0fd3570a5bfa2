; Triggers, buttons and the events of objects that go in their own handlers. Keys of the input file
; begin each part; the object of the part lies under the pointer. Times are counted from the last press,
; in steps of 10 ms; the click sound lasts 339 ms.
yield off

procedure tick
ms=ms+10
procedure pressed
[
ms=0
say "down"
]
procedure turned
[
get o "frame" f
say "frame" f
]
procedure onClicked
[
get RECEIVER "frame" f
say "clicked, frame" f
]
procedure onFired
[
get RECEIVER "frame" f
say "fired, frame" f
]
procedure when
[
after=ms
if (ms>339)*(ms<450)
after="the sound"
]
procedure onHit
[
call when
say "hit after" after
]
procedure onHitOnce
[
call when
say "hit after" after "and gone"
drop o
]
procedure onTurnedOnce
[
say "turned and gone"
drop o
]
procedure onSelectedOnce
[
get o currentEntry who
say who "and gone"
drop o
]

procedure trigger
[
o=RTrigger 2001 7
set o frame 2
set o framePixelDelta 10
set o clicked onClicked
set o fired onFired
]
procedure button clickSound
[
o=RPButton 2001 7
set o clickSoundID clickSound
set o mouseDown pressed
set o hit onHit
]

; several animations that tell each frame: they take away each other and themselves
procedure onFrame
[
get RECEIVER "name" who
say who "shows a frame"
frames=frames+1
if frames=1
drop fish.2 fish.4
if frames=3
drop fish.1
if frames=5
drop fish.3
if frames=6
drop fish.5
]
procedure fishes
[
frames=0
for i 1 5
[
fish.i=RAnimation 2003 5
set fish.i frameNotification 1
set fish.i frameNotify onFrame
]
]

procedure part
[
get keyboard "key" letter
say "--" letter
if letter="t"
call trigger
if letter="f"
call turned
if letter="b"
call button 208
if letter="s"
call button (0-1)
if letter="n"
set o clickSoundID 0-1
if letter="k"
set o clickSoundID 208
if letter="x"
set o enabled 0
if letter="p"
play o press
if letter="d"
drop o
if letter="h"
set o hit onHitOnce
if letter="c"
set o clicked onTurnedOnce
if letter="g"
set o fired onTurnedOnce
if letter="a"
call fishes
if letter="l"
[
o=RSelList 0 200 200 200
play o addListEntry "Tilli"
set o visibleLines 9
set o entrySelected onSelectedOnce
]
if letter="q"
quit
]
clock=RAnimationTrigger 100
set clock "newFrame" tick
play clock start
keyboard=RKbdInp 0
set keyboard keyPressed part
