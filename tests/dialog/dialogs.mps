; Dialogs: what is missing, their depths, a handler that opens the next one, and who hears of the
; background while ports and dialogs come and go.
;> 5 key W
;$ then --input content/drags --until 1000
yield off
include player.mps
include steps.mps
procedure onHeard
[
get RECEIVER name who
line=line+" "+who
]
procedure onButton
[
call do "look p selectedButton"
drop p
call do "ask, note next:, look p selectedButton"
]
procedure ask
[
p=RDialog 67553 20
play p addButton 2203 1
play p addButton 2205 0-3
set p buttonPressed onButton
set p mouseDown onHeard
]
; Two ports and two dialogs, made in turn, go in these orders, with a new background in the midst.
; What is told are the ports that hear of a click before each step.
orders=["1234" "4321" "2413" "3142" "1324" "4231"
procedure N
[
order=order+1
gone=0
for i 1 3 2
[
c.i=RScenePort 0
set c.i backgroundClicked onHeard
k=i+1
c.k=RDialog 2017 20
set c.k visible 0
]
line=line+" :"
]
procedure S
[
line=line+"."
gone=gone+1
if gone=2
Scene 100
i=orders.order
i=i|gone|1
drop c.i
]
; One whose pictures are missing, which a handler drops for the next one; at last it lies behind.
plot=["empty" "d5 5" "u5 5" "ask" "d56 310" "u56 310" "d535 335" "u535 335" "give p z 18, tell"
plot=["d56 310" "u56 310" "lose p, lose a.1" end
procedure empty
[
p=RDialog 99 3
play p addButton 99 1
play p addGraphic 99
set p mouseDown onHeard
]
procedure writeDrags
[
call writePlot
for n 1 6
[
call write kN
for k 1 4
[
call write "d5 5"
call write kS
]
call write "d5 5"
]
call write kT
]
procedure T
call do "tell"
order=0
Scene 100
a.1=RAnimation 2001 20
set a.1 mouseDown onHeard
call follow
;=  p p p -3 next: 
;=  a.1 :.... :... c.1. :.. c.1 c.3. c.3. :.... :.... :.. c.1 c.3. c.1.
;! ASEQ resource 99 not found.
;! ASEQ resource 99 not found.
;! ASEQ resource 99 not found.
