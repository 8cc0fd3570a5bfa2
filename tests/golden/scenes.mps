; What lies over what, is painted into the background, frozen and thawed, taken away, black; 256
; colours under three palettes, then what does not exist.
;: rsc golden
;$ screens
;> 22 screenshot equal.png
;> 68 screenshot raised.png
;> 112 screenshot hidden.png
;> 158 screenshot frozen.png
;> 202 screenshot left.png
;> 205 background
;> 240 foreground
;> 248 screenshot thawed.png
;> 292 screenshot black.png
;> 338 screenshot moved.png
;> 428 screenshot quick.png
;> 472 screenshot partly.png
;> 518 screenshot day.png
;> 562 screenshot nonsense.png
;> 608 screenshot night.png
;> 652 screenshot kept.png
;> 698 screenshot plank.png
include golden.mps
; of one depth: the one that came last is on top
a=RAnimation 230 100 100 5
b=RAnimation 231 130 120 5
c=RAnimation 232 160 80 5
low=RAnimation 233 300 100 -32767
below=RAnimation 234 330 120 -32768
d=RAnimation 230 300 300 5
e=RAnimation 231 340 330 6
play d stamp
play e stamp
play d place 450 300
play e place 130 200
; places that the resources bring along, also outside of the window, and others
f=RAnimation 220
g=RAnimation 221
h=RAnimation 222
i=RAnimation 223
j=RAnimation 224 48
k=RAnimation 221 11111 150 7
DisplayScreen
pause 0.05
set a z 6
; the first is taken out from under the second
play d unstamp
drop f g h i j k
SetUseEmbeddedAnimationCoordinates 1
f=RAnimation 220 50 60 7
g=RAnimation 221 70 80 7
SetUseEmbeddedAnimationCoordinates 0
pause 0.05
set a z 5
set c visible 0
set b z -32768
play e unstamp
pause 0.05
set c visible 1
set c z 4
set b z 5
; what comes later is not frozen
FreezeScreen
drop a low d e f
play b offset 200 60
d=RAnimation 233 160 80 5
pause 0.05
drop b c d below g
pause 0.05
a=RAnimation 230 100 100 5
Scene 100
pause 0.05
GoToBlack
play a offset 50 50
pause 0.05
DisplayScreen
pause 0.05
StartTransition
Scene 101 100
b=RAnimation 231 130 120 6
pause 0.05
EndTransition 1
; only what has changed since it went black
pause 0.05
GoToBlack
play b offset 10 20
EndTransition 1
pause 0.05
StartTransition
Scene 110 100
drop a b
EndTransition 0
pause 0.05
Scene 110 101
pause 0.05
Scene 110 102
pause 0.05
Scene 101 999
Scene 999 100
pause 0.05
Scene 101 100
;! RRGB resource 999 not found.
;! ASEQ resource 999 not found.
