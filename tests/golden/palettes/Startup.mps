; All 256 colours under three palettes, and under one that does not exist.
yield off
ActivateDLL golden.rsc
Scene 110 100
DisplayScreen
pause 0.2
Scene 110 101
pause 0.2
Scene 110 102
pause 0.2
Scene 101 100
