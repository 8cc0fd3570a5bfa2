; The figure in each direction and in both frames, whole, cut off by each edge and corner. Dancers,
; with frames of different sizes and places: one hides at the end, one holds, one goes round.
;: rsc golden
;$ --screen 640x480x8
;$ --screen 800x600x8 at:80,60
;$ --screen 800x600x16 depth:16 at:80,60
;$ ini:UseDirectDraw=1
;$ ini:UseDirectDraw=1 ini:DisplayFullScreen=1 --screen 800x600x16
;$ ini:UseDirectDraw=1 --screen 800x600x16 depth:16 at:0,0
;$ ini:UseDirectDraw=1 --screen 640x480x24 depth:24
;$ ini:UseDirectDraw=1 --screen 800x600x32 depth:32 at:0,0
;> 45 screenshot first.png
;> 135 screenshot second.png
; Rings and figures that cross each other, some in front of others: only what changes is drawn; then
; all is drawn again each time.
;> 330 screenshot crossing.png
;> 460 screenshot end.png
;> 840 screenshot end.whole.png
include golden.mps
lefts=[20 60 300 200 420 350 500 100 60 600
tops=[40 200 60 150 40 300 200 350 60 430
over=[15 18 -9 6 -15 -12 -21 9 0 -3
down=[9 -6 12 3 15 -9 3 -12 3 0
procedure moves whole
[
for k 1 10
play f.k place lefts.k tops.k
pause 0.04
for i 1 20
[
for k 1 10
play f.k offset over.k down.k
if whole
DisplayScreen
pause 0.01
]
pause 0.12
]
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
for i 0 3
[
corner.i=RAnimation 200 i%2*630-11 i\2*471-8 11
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
pause 0.1
for i 0 7
[
f.(i+1)=RAnimation 230+i 0 0 i+1
for k 2 5
drop f.(k*10+i)
]
f.9=f.14
call moves 0
call moves 1
