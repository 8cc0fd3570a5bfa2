; Another program takes the screen and gives it back; meanwhile things move.
;: rsc golden
;$ screens
;> 90 screenshot before.png
;> 100 background
;> 170 foreground
;> 270 screenshot moved.png
;> 280 background
;> 340 foreground
;> 350 screenshot moved.again.png
;> 450 screenshot after.png
yield off
ActivateDLL golden.rsc
Scene 100
a=RAnimation 230 100 100 5
b=RAnimation 231 130 120 6
DisplayScreen
pause 0.2
play a offset 40 60
pause 0.2
play b offset 0 100
