; What was frozen stays when its objects are gone; what comes later does not belong to it.
;: rsc golden
;$ screens
;> 50 screenshot composed.png
;> 180 screenshot frozen.png
;> 360 screenshot left.png
;> 540 screenshot thawed.png
yield off
ActivateDLL golden.rsc
Scene 100
a=RAnimation 230 100 100 5
b=RAnimation 231 130 120 6
DisplayScreen
pause 0.1
FreezeScreen
drop a
play b offset 200 60
c=RAnimation 232 160 80 5
pause 0.2
drop b c
pause 0.2
Scene 100
