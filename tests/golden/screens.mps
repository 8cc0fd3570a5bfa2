; Figures in several directions and movers, on screens of all sizes and depths.
;: rsc golden
;$ --screen 640x480x8
;$ --screen 640x480x16 depth:16
;$ --screen 640x480x24 depth:24
;$ --screen 640x480x32 depth:32
;$ --screen 800x600x8 at:80,60
;$ --screen 800x600x16 depth:16 at:80,60
;$ ini:UseDirectDraw=1 --screen 800x600x8 at:0,0
;$ ini:UseDirectDraw=1 --screen 800x600x16 depth:16 at:0,0
;$ ini:UseDirectDraw=1 --screen 800x600x24 depth:24 at:0,0
;$ ini:UseDirectDraw=1 --screen 800x600x32 depth:32 at:0,0
;$ ini:UseDirectDraw=1 ini:DisplayFullScreen=1 --screen 800x600x16
;$ ini:UseDirectDraw=1 --screen 640x480x16 depth:16
;$ ini:UseDirectDraw=1 --screen 640x480x24 depth:24
;$ ini:UseDirectDraw=1 --screen 640x480x32 depth:32
;> 50 screenshot scene.png
;> 300 screenshot moved.png
yield off
ActivateDLL golden.rsc
Scene 100
a=RAnimation 230 20 40 1
b=RAnimation 231 60 200 2
c=RAnimation 232 300 60 3
d=RAnimation 233 200 150 3
e=RAnimation 234 420 40 4
f=RAnimation 235 350 300 5
g=RAnimation 236 500 200 6
h=RAnimation 237 100 350 7
i=RAnimation 200 60 60 10
j=RAnimation 201 600 430 10
k=RAnimation 210 10 380 8
set i drawDirection 5
set j drawDirection 6
set j frame 2
DisplayScreen
pause 0.1
for n 1 6
[
play a offset 5 3
play c offset 0-3 4
play e offset 0-5 5
pause 0.01
]
play d stamp
play d offset 0 60
