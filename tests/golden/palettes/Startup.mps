; All 256 colours under three palettes, one after the other; then a palette and a picture
; that do not exist.
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
