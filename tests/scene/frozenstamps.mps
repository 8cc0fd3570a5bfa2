; A stamp becomes part of a frozen screen, and goes with its picture.
;: rsc golden
;$ ini:UseDirectDraw=0
;$ ini:UseDirectDraw=1 --screen 640x480x16 depth:16
yield off
ActivateDLL golden.rsc
Scene 100
ring=RAnimation 230 100 100 5
play ring stamp
play ring place 300 200
DisplayScreen
FreezeScreen
play ring unstamp
;> 51 screenshot frozen.png
pause 0.1
play ring stamp
play ring place 400 300
Scene 100
play ring unstamp
;> 141 screenshot thawed.png
