; The figure in each direction, cut off by each edge and by each corner of the window, in both frames.
;: rsc golden
;$ screens
;> 90 screenshot first.png
;> 270 screenshot second.png
;> 450 screenshot third.png
;> 630 screenshot frame.png
;> 810 screenshot gone.png
;> 990 screenshot frame.back.png
yield off
ActivateDLL golden.rsc
procedure turnCorners first
[
for i 0 3
set corner.i drawDirection first+i
]
Scene 100
for i 0 7
[
left.i=RAnimation 200 0-17 i*50+40 10
right.i=RAnimation 201 622 i*50+40 10
top.i=RAnimation 202 i*70+45 0-13 10
bottom.i=RAnimation 200 i*70+45 467 10
set left.i drawDirection i
set right.i drawDirection i
set top.i drawDirection i
set bottom.i drawDirection i
]
corner.0=RAnimation 200 0-11 0-8 11
corner.1=RAnimation 200 619 0-8 11
corner.2=RAnimation 200 0-11 463 11
corner.3=RAnimation 200 619 463 11
call turnCorners 0
DisplayScreen
pause 0.2
call turnCorners 2
pause 0.2
call turnCorners 4
pause 0.2
for i 0 7
[
set left.i frame 2
set right.i frame 2
set top.i frame 2
set bottom.i frame 2
]
for i 0 3
set corner.i frame 2
pause 0.2
; beyond the edges, where nothing of them is left, and back again
for i 0 7
[
play left.i offset 0-40 0
play right.i offset 40 0
play top.i offset 0 0-60
play bottom.i offset 0 40
]
pause 0.2
for i 0 7
[
play left.i offset 40 0
play right.i offset 0-40 0
play top.i offset 0 60
play bottom.i offset 0 0-40
]
