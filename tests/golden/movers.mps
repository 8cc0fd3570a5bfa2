; Rings and figures that cross each other, some in front of others, on screens of all sizes and
; depths: only what changes is drawn; then all is drawn again each time.
;: rsc golden
;$ --screen 640x480x8
;$ --screen 640x480x32 depth:32
;$ --screen 800x600x8 at:80,60
;$ --screen 800x600x16 depth:16 at:80,60
;$ ini:UseDirectDraw=1
;$ ini:UseDirectDraw=1 ini:DisplayFullScreen=1 --screen 800x600x16
;$ ini:UseDirectDraw=1 --screen 800x600x8 at:0,0
;$ ini:UseDirectDraw=1 --screen 800x600x16 depth:16 at:0,0
;$ ini:UseDirectDraw=1 --screen 640x480x24 depth:24
;$ ini:UseDirectDraw=1 --screen 800x600x32 depth:32 at:0,0
;> 140 screenshot crossing.png
;> 280 screenshot end.png
;> 660 screenshot end.whole.png
include golden.mps
lefts=[20 60 300 200 420 350 500 100 60 600
tops=[40 200 60 150 40 300 200 350 60 430
over=[15 18 -9 6 -15 -12 -21 9 0 -3
down=[9 -6 12 3 15 -9 3 -12 3 0
procedure moves whole
[
for k 1 10
play a.k place lefts.k tops.k
pause 0.04
for i 1 20
[
for k 1 10
play a.k offset over.k down.k
if whole
DisplayScreen
pause 0.01
]
pause 0.12
]
for k 1 8
a.k=RAnimation 229+k 0 0 k
a.9=RAnimation 200 0 0 10
a.10=RAnimation 201 0 0 10
set a.9 drawDirection 5
set a.10 drawDirection 6
set a.10 frame 2
DisplayScreen
call moves 0
call moves 1
