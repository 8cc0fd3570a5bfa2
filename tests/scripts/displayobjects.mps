; Triggers and buttons. What is heard in each part is told at its end; times are counted from the
; last press in steps of 10 ms. The click sound lasts 339 ms.
;$ --until 20000
yield off
procedure tick
ms=ms+10
procedure pressed
[
ms=0
line=line+" down"
]
procedure turned
[
get RECEIVER frame number
line=line+" fired "+number
]
procedure onClicked
[
get RECEIVER frame number
line=line+" clicked "+number
]
procedure onHit
if (ms>339)*(ms<400)
line=line+" hit after the sound"
else
line=line+" hit "+ms
procedure look
[
get o frame number
line=line+" frame "+number
]
procedure part what length
[
pause length
call look
say what+line
line=":"
]
line=":"
clock=RAnimationTrigger 100
set clock newFrame tick
play clock start
o=RTrigger 2001 7
set o frame 2
set o framePixelDelta 10
set o clicked onClicked
set o fired turned
; to the right and back; to the right and let go; beyond both ends
;> 10 down 56 310
;> 20 move 91 310
;> 30 move 56 310
;> 35 up 56 310
;> 40 drag 56 310 91 310
;> 70 down 56 310
;> 75 move 600 310
pause 0.1
call look
;> 95 move 0 310
;> 100 up 0 310
call part "trigger" 0.1
;= trigger: clicked 2 fired 5 frame 8 fired 1 frame 1
drop o
o=RPButton 2001 7
set o clickSoundID 208
set o mouseDown pressed
set o hit onHit
; the hit waits for the sound; after a longer press it comes at once; clicked twice while it sounds
;> 200 down 56 310
;> 250 up 56 310
call part "short" 0.6
;= short: down hit after the sound frame 1
;> 800 down 56 310
;> 1300 up 56 310
call part "long" 0.7
;= long: down hit 500 frame 1
;> 1400 down 56 310
;> 1450 up 56 310
;> 1550 down 56 310
;> 1600 up 56 310
call part "twice" 0.8
;= twice: down down hit after the sound frame 1
; released outside; disabled; pressed by the script, for as long as it says
;> 2100 drag 56 310 600 60
call part "outside" 0.5
;= outside: down frame 1
set o enabled 0
;> 2550 click 56 310
call part "disabled" 0.5
;= disabled: down frame 1
set o enabled 1
play o press
pause 0.01
call look
pause 0.25
call look
call part "by the script" 0.03
;= by the script: frame 2 frame 2 frame 1
; without a sound; the sound taken away while a hit waits: that one comes when the sound is ended
set o clickSoundID 0-1
;> 3260 down 56 310
;> 3290 up 56 310
call part "silent" 0.1
;= silent: down hit 30 frame 1
set o clickSoundID 208
;> 3350 down 56 310
;> 3380 up 56 310
pause 0.1
set o clickSoundID 0-1
;> 3440 down 56 310
;> 3470 up 56 310
call part "silenced" 0.1
;= silenced: down down hit 0 hit 30 frame 1
; gone while it sounds
set o clickSoundID 208
;> 3540 click 56 310
pause 0.1
drop o
pause 0.5
say line
;= : down
quit
