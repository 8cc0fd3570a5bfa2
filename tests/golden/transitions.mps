; Black while the next scene is made, whatever happens meanwhile; then the scene in one step.
;: rsc golden
;$ screens
;> 90 screenshot first.png
;> 270 screenshot black.png
;> 450 screenshot moved.png
;> 630 screenshot black.second.png
;> 810 screenshot quick.png
;> 990 screenshot black.third.png
;> 1170 screenshot whole.png
;> 1350 screenshot black.fourth.png
;> 1530 screenshot partly.png
;> 1710 screenshot shown.png
yield off
ActivateDLL golden.rsc
Scene 100
a=RAnimation 230 100 100 5
DisplayScreen
pause 0.2
GoToBlack
play a offset 50 50
pause 0.2
DisplayScreen
pause 0.2
StartTransition
Scene 101 100
b=RAnimation 231 130 120 6
pause 0.2
EndTransition 1
pause 0.2
StartTransition
Scene 110 100
drop a
pause 0.2
EndTransition 0
pause 0.2
; only what has changed since it went black
GoToBlack
play b offset 10 20
pause 0.2
EndTransition 1
pause 0.2
DisplayScreen
