; Where pixels have colours of their own, animations keep those that were there when they were made.
;: rsc golden
;$ ini:UseDirectDraw=1 --screen 640x480x24 depth:24
;$ ini:UseDirectDraw=1 --screen 640x480x16 depth:16
;$ ini:UseDirectDraw=1 --screen 800x600x16 depth:16 at:0,0
;> 90 screenshot day.png
;> 270 screenshot night.png
include golden.mps
a=RAnimation 230 100 100 5
b=RAnimation 200 300 100 5
DisplayScreen
pause 0.2
Scene 101 102
c=RAnimation 230 140 140 5
d=RAnimation 200 330 115 5
play a offset 10 10
twin=a
set twin x 500
