; The figure in each direction and in both frames, whole, and cut off by each edge and corner of the
; window. Dancers, whose frames have different sizes at different places: the first hides at the
; end, the second holds, the third goes round.
;: rsc golden
;$ screens
;> 45 screenshot first.png
;> 135 screenshot second.png
include golden.mps
procedure corners picture first
for i 0 3
[
set corner.i drawDirection first+i
set corner.i frame picture
]
for i 0 7
[
f.i=RAnimation 200 0-17 i*50+40 10
f.(i+10)=RAnimation 201 622 i*50+40 10
f.(i+20)=RAnimation 202 i*70+45 0-13 10
f.(i+30)=RAnimation 200 i*70+45 467 10
f.(i+40)=RAnimation 200 i*70+60 300 10
f.(i+50)=RAnimation 201 i*70+60 380 10
for k 0 5
set f.(k*10+i) drawDirection i
]
corner.0=RAnimation 200 -11 -8 11
corner.1=RAnimation 200 619 -8 11
corner.2=RAnimation 200 -11 463 11
corner.3=RAnimation 200 619 463 11
for i 1 3
[
dancer.i=RAnimation 240 i*150 180 5
set dancer.i sequence i
]
call corners 1 0
DisplayScreen
pause 0.1
for i 0 7
for k 0 5
set f.(k*10+i) frame 2
call corners 2 4
