; Triggers, buttons and the events of objects that go in their own handlers. Keys of the input file
; begin each part; the object of the part lies under the pointer. Times are counted from the last press,
; in steps of 10 ms; the click sound lasts 339 ms.
; a trigger: 35 pixels to the right and back; to the right and let go; beyond both ends
;> 100 key t
;> 110 down 56 310
;> 120 move 91 310
;> 130 key f
;> 140 move 56 310
;> 150 up 56 310
;> 160 drag 56 310 91 310
;> 190 down 56 310
;> 200 move 600 310
;> 210 key f
;> 220 move 0 310
;> 230 up 0 310
;> 240 key d
; a button: its hit waits for the sound; after a longer press it comes at once
;> 250 key b
;> 260 down 56 310
;> 310 up 56 310
;> 910 down 56 310
;> 1410 up 56 310
; clicked twice while it sounds: one hit
;> 1420 down 56 310
;> 1470 up 56 310
;> 1570 down 56 310
;> 1620 up 56 310
;> 2220 key f
; released outside; disabled; gone while it sounds
;> 2230 down 56 310
;> 2240 move 600 60
;> 2250 key f
;> 2260 up 600 60
;> 2760 key x
;> 2770 down 56 310
;> 2780 key f
;> 2790 up 56 310
;> 2800 key d
;> 2810 key b
;> 2820 click 56 310
;> 2930 key d
; without a sound; the sound taken away while a hit waits: that one comes when the sound is ended
;> 3430 key s
;> 3440 down 56 310
;> 3470 up 56 310
;> 3480 key k
;> 3490 down 56 310
;> 3520 up 56 310
;> 3530 key n
;> 3540 down 56 310
;> 3570 up 56 310
;> 3580 key k
;> 3590 drag 56 310 600 60
;> 4110 key f
; pressed by the script: no hit
;> 4120 key p
;> 4130 key f
;> 4360 key f
;> 4380 key f
;> 4780 key d
; objects that go in their own handlers
;> 4790 key b
;> 4800 key h
;> 4810 down 56 310
;> 4840 up 56 310
;> 5440 key s
;> 5450 key h
;> 5460 down 56 310
;> 5490 up 56 310
;> 5500 key t
;> 5510 key c
;> 5520 down 56 310
;> 5550 up 56 310
;> 5560 key t
;> 5570 key g
;> 5580 down 56 310
;> 5590 move 91 310
;> 5620 up 91 310
;> 5630 key l
;> 5640 click 20 210
;> 5660 double 20 210
;> 5670 up 20 210
;> 5680 key a
;> 6680 key q
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
;= -- t
;= -- f
;= frame 5
;= clicked, frame 2
;= fired, frame 5
;= -- f
;= frame 8
;= fired, frame 1
;= -- d
;= -- b
;= down
;= hit after the sound
;= down
;= hit after 500
;= down
;= down
;= hit after the sound
;= -- f
;= frame 1
;= down
;= -- f
;= frame 1
;= -- x
;= down
;= -- f
;= frame 1
;= -- d
;= -- b
;= down
;= -- d
;= -- s
;= down
;= hit after 30
;= -- k
;= down
;= -- n
;= down
;= hit after 0
;= hit after 30
;= -- k
;= down
;= -- f
;= frame 1
;= -- p
;= -- f
;= frame 2
;= -- f
;= frame 2
;= -- f
;= frame 1
;= -- d
;= -- b
;= -- h
;= down
;= hit after the sound and gone
;= -- s
;= -- h
;= down
;= hit after 30 and gone
;= -- t
;= -- c
;= turned and gone
;= -- t
;= -- g
;= turned and gone
;= -- l
;= Tilli and gone
;= -- a
;= fish.1 shows a frame
;= fish.3 shows a frame
;= fish.5 shows a frame
;= fish.3 shows a frame
;= fish.5 shows a frame
;= fish.5 shows a frame
;= -- q
