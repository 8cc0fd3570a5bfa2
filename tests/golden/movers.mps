; Rings that cross each other, some in front of others, on screens of all sizes and depths: only
; what changes is drawn; then all is drawn again each time.
;: rsc golden
;$ --screen 640x480x8
;$ --screen 640x480x16 depth:16
;$ --screen 640x480x24 depth:24
;$ --screen 640x480x32 depth:32
;$ --screen 800x600x8 at:80,60
;$ --screen 800x600x16 depth:16 at:80,60
;$ ini:UseDirectDraw=1
;$ ini:UseDirectDraw=1 ini:DisplayFullScreen=1 --screen 800x600x16
;$ ini:UseDirectDraw=1 --screen 800x600x8 at:0,0
;$ ini:UseDirectDraw=1 --screen 800x600x16 depth:16 at:0,0
;$ ini:UseDirectDraw=1 --screen 800x600x24 depth:24 at:0,0
;$ ini:UseDirectDraw=1 --screen 800x600x32 depth:32 at:0,0
;$ ini:UseDirectDraw=1 --screen 640x480x16 depth:16
;$ ini:UseDirectDraw=1 --screen 640x480x24 depth:24
;$ ini:UseDirectDraw=1 --screen 640x480x32 depth:32
;> 50 screenshot start.png
;> 300 screenshot crossing.png
;> 700 screenshot end.png
;> 1350 screenshot end.whole.png
yield off
ActivateDLL golden.rsc
lefts=[20 60 300 200 420 350 500 100 60 600
tops=[40 200 60 150 40 300 200 350 60 430
over=[5 6 -3 2 -5 -4 -7 3 0 -1
down=[3 -2 4 1 5 -3 1 -4 1 0
procedure moves whole
[
for k 1 10
play a.k place lefts.k tops.k
pause 0.1
for i 1 60
[
for k 1 10
play a.k offset over.k down.k
if whole
DisplayScreen
pause 0.01
]
pause 0.1
]
Scene 100
for k 1 8
a.k=RAnimation 229+k 0 0 k
a.9=RAnimation 200 0 0 10
a.10=RAnimation 201 0 0 10
runs=RAnimation 210 10 380 8
set a.9 drawDirection 5
set a.10 drawDirection 6
set a.10 frame 2
DisplayScreen
call moves 0
call moves 1
