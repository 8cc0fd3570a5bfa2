; Places that the resources bring along, also outside of the window; then places of the script, and
; the switch that makes them count for nothing.
;: rsc golden
;$ screens
;> 90 screenshot places.png
;> 270 screenshot switched.png
yield off
ActivateDLL golden.rsc
Scene 100
a=RAnimation 220
b=RAnimation 221
c=RAnimation 222
d=RAnimation 223
e=RAnimation 224 48
f=RAnimation 220 100 100 7
g=RAnimation 221 11111 150 7
DisplayScreen
pause 0.2
drop a b c d e f g
SetUseEmbeddedAnimationCoordinates 1
a=RAnimation 220 50 60 7
b=RAnimation 221 70 80 7
