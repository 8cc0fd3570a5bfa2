; The figure in its eight directions, first frame above, second frame below; then cut off at all four
; edges of the window.
;: rsc golden
;$ screens
;> 100 screenshot directions.png
yield off
ActivateDLL golden.rsc
Scene 100
for i 0 7
[
f.i=RAnimation 200 i*78+10 60 10
g.i=RAnimation 201 i*78+19 160 10
set f.i drawDirection i
set g.i drawDirection i
set g.i frame 2
]
for i 0 3
[
l.i=RAnimation 202 0-20 i*60+250 10
r.i=RAnimation 202 625 i*60+250 10
t.i=RAnimation 202 i*100+100 0-15 10
b.i=RAnimation 202 i*100+100 465 10
set l.i drawDirection i*2
set r.i drawDirection i*2+1
set t.i drawDirection i*2
set b.i drawDirection i*2+1
]
DisplayScreen
