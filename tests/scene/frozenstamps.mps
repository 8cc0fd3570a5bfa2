; A stamp becomes part of a frozen screen, and goes with its picture.
;: rsc golden
;$ ini:UseDirectDraw=0
;$ ini:UseDirectDraw=1 --screen 640x480x16 depth:16
yield off
include things.mps
ActivateDLL golden.rsc
Scene 100
t.1=RAnimation 230 100 100 5
call do "run 1 stamp, run 1 place 300 200, show"
FreezeScreen
call do "run 1 unstamp, rest 0.1, run 1 stamp, run 1 place 400 300"
;> 51 screenshot frozen.png
Scene 100
play t.1 unstamp
;> 141 screenshot thawed.png
