; All 256 colours under three palettes, one after the other; then a palette and a picture
; that do not exist.
;: rsc golden
;$ screens
;> 90 screenshot day.png
;> 270 screenshot nonsense.png
;> 450 screenshot night.png
;> 630 screenshot kept.png
;> 810 screenshot kept.second.png
;> 990 screenshot plank.png
yield off
ActivateDLL golden.rsc
Scene 110 100
DisplayScreen
pause 0.2
Scene 110 101
pause 0.2
Scene 110 102
pause 0.2
Scene 101 999
pause 0.2
Scene 999 100
pause 0.2
Scene 101 100
;! RRGB resource 999 not found.
;! ASEQ resource 999 not found.
