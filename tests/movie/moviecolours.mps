; The colours of the window while movies with their own play, here outside of it. A frame lasts 90 ms, pause 0.1.
;: rsc golden
;$ ini:UseDirectDraw=0
;$ ini:UseDirectDraw=1 ini:DisplayFullScreen=1
yield off
ActivateDLL golden.rsc
Scene 100
DisplayScreen
pause 0.02
; in the colours of the scene; another one collects; the first one with its own, also new ones
one=RSmackerMovie plain.smk 640 0 "" 0
other=RSmackerMovie blue.smk 640 0 "" "" 1
play one start
pause 0.05
;> 64 screenshot scene.png
play other start
pause 0.05
;> 109 screenshot blue.png
drop one
one=RSmackerMovie colours.smk 640 0
play one start
pause 0.05
;> 154 screenshot red.png
RestorePalette
pause 0.05
;> 199 screenshot scene.between.png
pause 0.45
;> 604 screenshot green.png
; the other one still plays
play one stop
pause 0.02
;> 622 screenshot blue.again.png
play other stop
pause 0.02
;> 640 screenshot scene.back.png
; another scene while there are movies that have ended; then what is new to the window only
Scene 100 102
RestorePalette
pause 0.02
;> 658 screenshot night.png
play one start
pause 0.1
;> 748 screenshot green.anew.png
drop one
pause 0.02
;> 766 screenshot night.back.png
; and another one
Scene 100
DisplayScreen
pause 0.02
one=RSmackerMovie colours.smk 640 0
play one start
pause 0.02
;> 802 screenshot red.anew.png
play one release
;> 807 screenshot scene.released.png
; the cursor is hidden while one plays straight
;# 0 title Zorbet Voyages
;# 19 cursor none
;# 109 cursor -1
;# 109 cursor none
;# 604 cursor -1
;# 658 cursor none
;# 748 cursor -1
;# 784 cursor none
;# 802 cursor -1
;# 809 end until
