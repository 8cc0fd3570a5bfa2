; Whatever changes on answers with texts and several pictures, what is seen of them is never old:
; each state is as it is when all is painted anew (.new).
;: rsc golden
;$ screens
;> 103 screenshot a.png
;> 107 screenshot a.new.png
;> 211 screenshot b.png
;> 215 screenshot b.new.png
yield off
ActivateDLL golden.rsc
include steps.mps
Scene 100
texts=["" "A" "BD" "DACB"
pictures=[-1 201 240 251 265 267
properties=[text1 text2 graphic1ID graphic2ID text1OffsetX text2OffsetY graphic1OffsetZ
properties=[graphic2OffsetZ
properties=[textColorIndex visible z drawDirection x y
lows=[? ? ? ? -20 -20 -2 -2 0 0 0 0 20 20
spans=[? ? ? ? 40 40 5 5 256 3 9 8 500 300
procedure make
[
RandomNumber 1 6
a.i=RDoubleGraphicTextAnswer pictures.RESULT i*120-60 i*80-40 5
play a.i setFont 300
]
procedure change
[
RandomNumber 1 4
i=RESULT
RandomNumber 1 22
k=RESULT
if k=15
call make
else if k=16
a.i=a.(5-i)
else if k=17
play a.i playAnimations
else if k=18
play a.i stopAnimations
else if k=19
play a.i stamp
else if k>19
play a.i offset ?*4-18 ?*4-18
else if k>4
[
RandomNumber lows.k lows.k+spans.k-1
set a.i properties.k RESULT
]
else if k>2
[
RandomNumber 1 6
set a.i properties.k pictures.RESULT
]
else
[
RandomNumber 1 4
set a.i properties.k texts.RESULT
]
]
for i 1 4
call make
DisplayScreen
for round 1 2
[
for turn 1 50
[
call change
call wait 2
]
call wait 4
StartTransition
EndTransition 0
call wait 4
]
