; The figure in each direction, whole, and cut off by each edge and by each corner of the window, in
; both frames. Dancers, whose frames have different sizes at different places; the first hides at
; the end, the second holds, the third goes round. Runs of 250, 251 and 300 pixels of all kinds,
; which begin left of the window or end right of it.
;: rsc golden
;$ screens
;> 45 screenshot first.png
;> 135 screenshot second.png
;> 225 screenshot third.png
;> 315 screenshot frame.png
;> 405 screenshot gone.png
;> 495 screenshot back.png
yield off
ActivateDLL golden.rsc
procedure corners first
for i 0 3
set corner.i drawDirection first+i
procedure move by
for i 0 7
[
play left.i offset 0-by 0
play right.i offset by 0
play top.i offset 0 0-by
play bottom.i offset 0 by
]
Scene 100
for i 0 7
[
left.i=RAnimation 200 0-17 i*50+40 10
right.i=RAnimation 201 622 i*50+40 10
top.i=RAnimation 202 i*70+45 0-13 10
bottom.i=RAnimation 200 i*70+45 467 10
near.i=RAnimation 200 i*70+60 300 10
far.i=RAnimation 201 i*70+60 380 10
set left.i drawDirection i
set right.i drawDirection i
set top.i drawDirection i
set bottom.i drawDirection i
set near.i drawDirection i
set far.i drawDirection i
set far.i frame 2
]
corner.0=RAnimation 200 0-11 0-8 11
corner.1=RAnimation 200 619 0-8 11
corner.2=RAnimation 200 0-11 463 11
corner.3=RAnimation 200 619 463 11
for i 1 3
[
dancer.i=RAnimation 240 i*150 180 5
set dancer.i sequence i
]
call corners 0
DisplayScreen
pause 0.1
call corners 2
pause 0.1
call corners 4
pause 0.1
for i 0 7
[
set left.i frame 2
set right.i frame 2
set top.i frame 2
set bottom.i frame 2
]
for i 0 3
set corner.i frame 2
pause 0.1
call move 60
for i 1 3
[
a.i=RAnimation 210 20 i*100-60 5
b.i=RAnimation 210 330 i*100-60 5
set a.i frame i
set b.i frame i
set b.i drawDirection 1
]
c=RAnimation 210 0-251 330 6
d=RAnimation 210 0-250 410 6
e=RAnimation 210 389 330 6
f=RAnimation 210 390 410 6
pause 0.1
call move 0-60
