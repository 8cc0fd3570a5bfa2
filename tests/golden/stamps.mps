; Stamps under all objects, of which the first one is taken out from under the second.
;: rsc golden
;$ screens
;> 90 screenshot both.png
;> 270 screenshot one.png
;> 450 screenshot none.png
yield off
ActivateDLL golden.rsc
Scene 100
a=RAnimation 230 100 100 5
b=RAnimation 231 140 130 6
DisplayScreen
play a stamp
play b stamp
play a place 300 100
play b place 300 300
pause 0.2
play a unstamp
pause 0.2
play b unstamp
