; Dialogs: what is missing, a handler that opens the next one, one that is before a boat and behind
; it, and who hears of the background while ports and dialogs come and go.
;> 50 tap 5 5
;> 120 tap 56 310
;> 140 tap 535 335
;> 160 tap 380 335
;> 250 tap 56 310
;> 350 tap 5 5
;> 450 tap 5 5
;> 550 tap 5 5
;> 650 tap 5 5
;> 750 tap 5 5
;> 1000 move 5 5
yield off
procedure onHeard
[
get RECEIVER name who
line=line+" "+who
]
procedure onButton
[
get p selectedButton value
drop p
call ask
get p selectedButton none
line=line+" "+value+"<"+none+">"
]
procedure ask
[
p=RDialog 67553 20
play p addButton 2203 1
play p addButton 2205 0-3
set p buttonPressed onButton
set p mouseDown onHeard
]
Scene 100
line=""
p=RDialog 99 3
play p addButton 99 1
play p addGraphic 99
set p mouseDown onHeard
pause 0.11
call ask
a=RAnimation 2001 20
set a mouseDown onHeard
pause 0.11
set p z 18
pause 0.11
drop p a
; Two ports and two dialogs, made in turn, go, with a new background in the midst.
for i 1 3 2
[
c.i=RScenePort 0
set c.i backgroundClicked onHeard
k=i+1
c.k=RDialog 2017 20
set c.k visible 0
]
order=[2 4 1 3 5
for i 1 5
[
line=line+" ."
pause 0.11
if i=2
Scene 100
k=order.i
drop c.k
]
say line
;=  p p p -3<> p 1<> a . . . c.1 c.3 . c.3 .
;! ASEQ resource 99 not found.
;! ASEQ resource 99 not found.
;! ASEQ resource 99 not found.
