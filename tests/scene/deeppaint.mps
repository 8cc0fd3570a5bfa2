; Where pixels have colours of their own, what is painted into the picture, stamped or frozen, keeps
; its colours when others are installed, as does the picture; a movie has its own. The ring is of
; another scene. A stamp becomes part of a frozen screen, and goes with its picture.
;: rsc golden
;$ ini:UseDirectDraw=1 --screen 640x480x24 depth:24
;$ ini:UseDirectDraw=1 --screen 640x480x16 depth:16
;$ ini:UseDirectDraw=1 --screen 640x480x32 depth:32
yield off
include things.mps
ActivateDLL golden.rsc
Scene 100 102
t.1=RAnimation 230 100 100 5
t.2=RSmackerMovie blue.smk 620 0
Scene 100
Scene 100 999
call do "run 1 paint, let 1 visible 0, run 2 start, show, rest 0.1, run 2 stop"
;> 51 screenshot painted.png
Scene 100
Scene 100 999
call do "let 1 visible 1, let 1 x 300, run 1 stamp, run 1 place 300 200, show"
FreezeScreen
call do "run 1 unstamp, run 1 stamp, run 1 place 400 300, run 2 start, show, rest 0.2"
;> 231 screenshot frozen.png
Scene 100
call do "run 1 unstamp, show, rest 0.1"
;> 321 screenshot thawed.png
;! RRGB resource 999 not found.
;! RRGB resource 999 not found.
