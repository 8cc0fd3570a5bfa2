; Where pixels have colours of their own, what is painted into the picture, or frozen, keeps its colours, and
; so does the picture, when others are installed. The ring is of another scene.
;: rsc golden
;$ ini:UseDirectDraw=1 --screen 640x480x24 depth:24
;$ ini:UseDirectDraw=1 --screen 640x480x16 depth:16
;$ ini:UseDirectDraw=1 --screen 640x480x32 depth:32
yield off
ActivateDLL golden.rsc
Scene 100 102
ring=RAnimation 230 100 100 5
other=RSmackerMovie blue.smk 640 0
Scene 100
Scene 100 999
play ring paint
set ring visible 0
play other start
DisplayScreen
;> 51 screenshot painted.png
pause 0.1
play other stop
Scene 100
Scene 100 999
set ring visible 1
set ring "x" 300
DisplayScreen
FreezeScreen
drop ring
play other start
DisplayScreen
;> 141 screenshot frozen.png
;! RRGB resource 999 not found.
;! RRGB resource 999 not found.
