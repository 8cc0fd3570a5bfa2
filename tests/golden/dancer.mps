; Frames of different sizes at different places; the first sequence hides at its end, the second
; holds, the third goes round.
;: rsc golden
;$ screens
;> 50 screenshot one.png
;> 150 screenshot two.png
;> 250 screenshot three.png
;> 450 screenshot four.png
yield off
ActivateDLL golden.rsc
Scene 100
DisplayScreen
a=RAnimation 240 50 50 5
b=RAnimation 240 250 50 5
set b sequence 2
c=RAnimation 240 450 50 5
set c sequence 3
