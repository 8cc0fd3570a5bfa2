; The figure in each direction and in both frames, whole, and cut off by each edge and corner of the
; window. Dancers, whose frames have different sizes at different places: the first hides at the
; end, the second holds, the third goes round. Runs of 250, 251 and 300 pixels, which begin left of
; the window or end right of it.
;: rsc golden
;$ screens
;> 45 screenshot first.png
;> 135 screenshot second.png
;> 260 screenshot runs.png
include golden.mps
procedure spread out
for i 0 7
[
play left.i place 0-17-out i*50+40
play right.i place 622+out i*50+40
play top.i place i*70+45 0-13-out
play bottom.i place i*70+45 467+out
play near.i place i*70+60 300
]
procedure show frame first
for i 0 3
[
set corner.i drawDirection first+i
set corner.i frame frame
]
for i 0 7
[
left.i=RAnimation 200 0 0 10
right.i=RAnimation 201 0 0 10
top.i=RAnimation 202 0 0 10
bottom.i=left.i
near.i=left.i
far.i=RAnimation 201 i*70+60 380 10
set left.i drawDirection i
set right.i drawDirection i
set top.i drawDirection i
set bottom.i drawDirection i
set near.i drawDirection i
set far.i drawDirection i
set far.i frame 2
]
lefts=[-11 619 -11 619
tops=[-8 -8 463 463
for i 0 3
corner.i=RAnimation 200 lefts.(i+1) tops.(i+1) 11
for i 1 3
[
dancer.i=RAnimation 240 i*150 180 5
set dancer.i sequence i
]
call spread 0
call show 1 0
DisplayScreen
pause 0.1
for i 0 7
[
set left.i frame 2
set right.i frame 2
set top.i frame 2
set bottom.i frame 2
]
call show 2 4
pause 0.1
call spread 60
for i 1 3
[
a.i=RAnimation 210 20 i*100-60 5
b.i=RAnimation 210 330 i*100-60 5
set a.i frame i
set b.i frame i
set b.i drawDirection 1
]
c=RAnimation 210 -251 330 6
d=RAnimation 210 -250 410 6
e=RAnimation 210 389 330 6
f=RAnimation 210 390 410 6
