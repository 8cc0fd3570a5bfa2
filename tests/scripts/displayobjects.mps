; Triggers and buttons: ms from the last press on, in tens. The click sound lasts 339 ms.
;$ --until 20000
yield off
include things.mps
procedure tick
ms=ms+10
procedure pressed
[
ms=0
line=line+" down"
]
procedure see
[
get t.1 frame number
line=line+" frame "+number
]
procedure turned
call do "note fired, see"
procedure onClicked
call do "note clicked, see"
procedure onHit
line=line+" hit "+ms
clock=RAnimationTrigger 100
set clock newFrame tick
play clock start
t.1=RTrigger 2001 7
set t.1 clicked onClicked
set t.1 fired turned
; to the right and back; to the right and let go; beyond both ends
;> 10 pull 56 310 91 310 56 310
;> 40 pull 56 310 91 310
;> 70 down 56 310
;> 75 move 600 310
;> 95 move 0 310
;> 100 up 0 310
call do "let 1 frame 2, let 1 framePixelDelta 10, rest 0.1, see, rest 0.1, tell"
;=  clicked frame 2 fired frame 5 frame 8 fired frame 1
t.1=RPButton 2001 7
set t.1 mouseDown pressed
set t.1 hit onHit
; the hit waits for the sound; after a longer press it comes at once; clicked twice while it sounds
;> 200 down 56 310
;> 250 up 56 310
;> 650 down 56 310
;> 1150 up 56 310
;> 1270 down 56 310
;> 1320 up 56 310
;> 1420 down 56 310
;> 1470 up 56 310
call do "let 1 clickSoundID 208, rest 0.5, see, rest 0.7, see, rest 0.7, see, tell"
;=  down hit 380 frame 1 down hit 500 frame 1 down down hit 380 frame 1
; disabled meanwhile; pressed by the script, for as long as it says
;> 1900 down 56 310
;> 1950 up 56 310
call do "rest 0.05, let 1 enabled 0, rest 0.1, see, let 1 enabled 1, run 1 press, rest 0.01, see"
call do "rest 0.25, see, rest 0.03, see, tell"
;=  down frame 1 frame 2 frame 2 frame 1
; without a sound; the sound taken away while a hit waits: that one comes when the sound is ended
;> 2300 down 56 310
;> 2330 up 56 310
;> 2380 down 56 310
;> 2410 up 56 310
;> 2470 down 56 310
;> 2500 up 56 310
call do "let 1 clickSoundID -1, rest 0.1, let 1 clickSoundID 208, rest 0.1"
call do "let 1 clickSoundID -1, rest 0.1, tell"
;=  down hit 30 down down hit 0 hit 30
; gone while it sounds
;> 2560 tap 56 310
call do "let 1 clickSoundID 208, rest 0.1, lose t.1, rest 0.5, tell"
;=  down
quit
