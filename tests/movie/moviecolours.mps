; The colours of the window while movies with their own play, here outside of it. A frame lasts 90
; ms, pause 0.1. The cursor is hidden while one plays straight.
;: rsc golden
;$ ini:UseDirectDraw=0
;$ ini:UseDirectDraw=1 ini:DisplayFullScreen=1
yield off
include things.mps
procedure restore
RestorePalette
ActivateDLL golden.rsc
Scene 100
call do "show, rest 0.02"
; in the colours of the scene; another one collects; the first one with its own, also new ones; then
; the other one still plays
t.1=RSmackerMovie plain.smk 640 0 "" 0
t.2=RSmackerMovie blue.smk 640 0 "" "" 1
call do "run 1 start, rest 0.05, run 2 start, rest 0.05"
;> 64 screenshot scene.png
;> 109 screenshot blue.png
drop t.1
t.1=RSmackerMovie colours.smk 640 0
call do "run 1 start, rest 0.05, restore, rest 0.5, run 1 stop, rest 0.02, run 2 stop, rest 0.02"
;> 199 screenshot scene.between.png
;> 604 screenshot green.png
;> 622 screenshot blue.again.png
;> 640 screenshot scene.back.png
; another scene while there are movies that have ended; then what is new to the window only
Scene 100 102
call do "restore, rest 0.02, run 1 start, rest 0.1, run 1 release, rest 0.02"
;> 748 screenshot green.anew.png
;> 766 screenshot night.back.png
;# 0 title Zorbet Voyages
;# 19 cursor none
;# 109 cursor -1
;# 109 cursor none
;# 604 cursor -1
;# 658 cursor none
;# 748 cursor -1
;# 768 end until
