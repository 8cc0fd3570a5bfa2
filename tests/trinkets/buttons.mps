; A button that is disabled, hidden or pressed by the script while it is held; one whose sound is
; missing; a trigger that is turned the other way, and not at all.
;$ --until 20000
yield off
line=""
procedure onHit
line=line+" hit"
procedure look
[
pause 0.1
get o frame number
line=line+" "+number
]
o=RPButton 2001 7
set o hit onHit
;> 40 down 56 310
;> 120 up 56 310
pause 0.1
set o enabled 0
call look
set o enabled 1
;> 220 down 56 310
;> 300 up 56 310
pause 0.1
set o visible 0
call look
set o visible 1
;> 400 down 56 310
;> 480 up 56 310
pause 0.1
play o press
call look
set o clickSoundID 9999
;> 580 tap 56 310
call look
o=RTrigger 2001 7
set o frame 2
set o framePixelDelta 0-5
;> 680 down 56 310
;> 690 move 45 310
call look
set o framePixelDelta 0
;> 740 move 500 60
;> 760 up 500 60
call look
say line
quit
;=  1 1 hit 1 hit 1 4 2
;! WAVE resource 9999 not found.
