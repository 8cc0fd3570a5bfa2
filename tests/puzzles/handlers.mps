; Handlers that destroy and change what they like in the middle of a drag, in any event, and in what
; a statement of the script destroys. What is left must be of one mind, or a line that begins with
; BAD tells the case. Objects 1 to 3 are answers, 4 and 5 containers, 6 is the game.
;: rsc golden
;> 5 key W
;> 200000 quit
;$ then --input content/drags --until 600000
yield off
ActivateDLL golden.rsc
include player.mps
include steps.mps
; The homes of the answers, the middles of the containers, and nowhere.
spots=["30 410" "70 410" "110 410" "140 140" "300 140" "600 440"
events=[pickedUp dropped addedToContainer removedFromContainer answerFlyOn answerFlyOff
events=[answerPlaced answerRemoved containersFull answersUsed puzzleSolved puzzleWrong
; What a handler tells the puzzle.
methods=[reset start removeAnswer removeContainer addAnswerToContainer addAnswerToContainer
methods=[addAnswerToContainer removeAnswerFromContainer anchorAnswers shiftContainers
firsts=[0 0 one near one one another one 0 0
seconds=[0 0 0 0 far near near near 0 200
another="o.3"
procedure writeDrags
for n 1 20000
[
RandomNumber 1 5
call write "d"+RESULT
for i 1 1+(?<5)
[
RandomNumber 1 6
call write "m"+RESULT
]
call write "u"+RESULT
call write kA
]
procedure make
[
drop o.6 o.4 o.5 o.1 o.2 o.3
o.6=RPuzzle 0
for i 1 5
if i<4
[
o.i=RGraphicAnswer 266 i*40-20 400 50
if i<(3+right)
play o.6 addAnswer "o."+i
]
else
[
o.i=kinds.kind
play o.i place i*160-510 130
play o.6 addContainer "o."+i
]
number=7+right*3
play o.6 setAnswer 1 10 266 10 266 10 266
play o.6 setContainer 1 number number
play o.6 setPuzzleText 1 1 10 10 90 "Where?"
play o.6 start
set o.3 attribute 10
]
; Without a handler none is heard.
procedure attach handler
for event 1 12
for i 1 6
if ((event-1)\4=((i>3)+(i>5)))*((~o.i)=1)
[
set o.i events.event
if handler
set o.i events.event handler
]
; What a handler does with answer who and container at.
procedure act
[
RandomNumber 1 19
deed=RESULT
RandomNumber 1 3
who=RESULT
RandomNumber 4 5
at=RESULT
one="o."+who
near="o."+at
far="o."+(9-at)
if deed<7
drop o.deed
else if deed=7
drop o.6 o.4 o.5 o.1 o.2 o.3
else if deed=8
call blink
else if (deed=9)*((~o.at)=1)
set o.at enabled 0
else if (deed>9)*((~o.6)=1)
play o.6 methods.(deed-9) $firsts.(deed-9) $seconds.(deed-9)
]
procedure any
if ?<5
[
call attach 0
call act
call attach any
]
; Who is in a container is so by all accounts; nobody is held, nothing is lit.
procedure check
[
inside=0
lit=0
for i 1 5
if (~o.i)=1
if i<4
[
get o.i isUsed used
inside=inside-used
taken=taken+used
]
else
[
get o.i answerCount got
inside=inside+got
if kind<6
get o.i highlighted got
lit=lit+(got*(kind<6))
]
if (inside#0)+lit>0
say "BAD" step kind right deed "inside" inside "lit" lit
]
call makeKinds 20 20
taken=0
right=1
for step 1 20000
[
if step%6=1
[
kind=1+(step\6%6)
right=1-right
call make
call attach any
]
wait
call check
if step%6=4
[
RandomNumber 1 6
drop o.RESULT
call check
]
call attach any
]
say "taken" taken
quit
;= taken 3925
