; Three overlapping rings of one depth: the one that came last is on top. Then depths change.
;: rsc golden
;$ screens
;> 90 screenshot equal.png
;> 270 screenshot raised.png
;> 450 screenshot hidden.png
;> 630 screenshot back.png
yield off
ActivateDLL golden.rsc
Scene 100
a=RAnimation 230 100 100 5
b=RAnimation 231 130 120 5
c=RAnimation 232 160 80 5
low=RAnimation 233 300 100 -32767
below=RAnimation 234 330 120 -32768
DisplayScreen
pause 0.2
set a z 6
pause 0.2
set a z 5
set c visible 0
set b z -32768
pause 0.2
set c visible 1
set c z 4
set b z 5
