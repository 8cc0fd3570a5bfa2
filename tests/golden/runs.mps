; Runs of 250, 251 and 300 pixels of all kinds; the second of each pair begins left of the window.
;: rsc golden
;$ screens
;> 100 screenshot runs.png
yield off
ActivateDLL golden.rsc
Scene 100
for i 1 3
[
a.i=RAnimation 210 20 i*100-90 5
b.i=RAnimation 210 330 i*100-90 5
set a.i frame i
set b.i frame i
set b.i drawDirection 1
]
c=RAnimation 210 0-251 330 6
d=RAnimation 210 0-250 410 6
e=RAnimation 210 389 330 6
f=RAnimation 210 390 410 6
DisplayScreen
