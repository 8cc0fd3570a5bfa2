; Handlers that destroy and change what they like in the middle of a drag, in any event, and in what
; a statement of the script destroys. What is left must be of one mind and play on, or a line that
; begins with BAD tells the case.
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
; What a handler drops (the bits of these), and what it tells the puzzle.
names=[game a.1 c.1 c.2 a.2 a.3
victims=[1 2 4 8 6 3 5 63 16
methods=[reset start removeAnswer removeContainer addAnswerToContainer addAnswerToContainer
methods=[addAnswerToContainer removeAnswerFromContainer anchorAnswers shiftContainers
firsts=[0 0 one near one one another one 0 0
seconds=[0 0 0 0 far near near near 0 200
another="a.3"
procedure writeDrags
for n 1 20000
[
RandomNumber 1 5
call write "d"+RESULT
RandomNumber 1 6
call write "m"+RESULT
if ?<5
[
RandomNumber 1 6
call write "m"+RESULT
]
call write "u"+RESULT
call write kA
]
procedure make
[
drop game other c.1 c.2 a.1 a.2 a.3
game=RPuzzle 0
other=RPuzzle 0
for i 1 3
[
a.i=RGraphicAnswer 266 i*40-20 400 50
if i<(3+right)
play game addAnswer "a."+i
]
for i 1 2
[
c.i=kinds.kind
play c.i place i*160-30 130
play game addContainer "c."+i
]
number=7+right*3
play game setAnswer 1 10 266 10 266 10 266
play game setContainer 1 number number
play game setPuzzleText 1 1 10 10 90 "Where?"
play game start
set a.3 attribute 10
]
; Without a handler none is heard.
procedure attach handler
for event 1 12
[
for i 1 3
if (event<5)*((~a.i)=1)
[
set a.i events.event
if handler
set a.i events.event handler
]
for i 1 2
if (event>4)*(event<9)*((~c.i)=1)
[
set c.i events.event
if handler
set c.i events.event handler
]
if (event>8)*((~game)=1)
[
set game events.event
if handler
set game events.event handler
]
]
; What a handler does with answer who and container at.
procedure act
[
RandomNumber 1 24
deed=RESULT
RandomNumber 1 3
who=RESULT
RandomNumber 1 2
at=RESULT
one="a."+who
near="c."+at
far="c."+(3-at)
done.deed=done.deed+1
if deed<10
[
for i 1 6
if victims.deed\(2^(i-1))%2
[
name=names.i
drop var name
]
]
else if deed<20
[
if (~game)=1
play game methods.(deed-9) $firsts.(deed-9) $seconds.(deed-9)
]
else if deed=20
play other addAnswer one
else if (deed=21)*((~c.at)=1)
set c.at enabled 0
else if (deed=22)*((~a.who)=1)
set a.who visible 0
else if (deed=23)*((~a.who)=1)
set a.who homeX who*40-20
else if deed=24
call blink
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
used=0
for i 1 2
if (~c.i)=1
[
get c.i answerCount got
inside=inside+got
if kind<6
get c.i highlighted got
lit=lit+(got*(kind<6))
]
for i 1 3
if (~a.i)=1
[
get a.i isUsed got
used=used+got
]
taken=taken+used
if (inside#used)+lit>0
say "BAD" step kind right deed "inside" inside used "lit" lit
]
; Who is left is at home, and goes into each container and out of it.
procedure playOn
[
call attach 0
p=RPuzzle 0
for k 1 2
if (~c.k)=1
call do "ask p addContainer c."+k+", give c."+k+" enabled 1"
for i 1 3
if (~a.i)=1
call do "ask p addAnswer a."+i+", give a."+i+" visible 1 homeX "+(i*40-20)+" homeY 400"
play p reset
for i 1 3
for k 1 2
if (~a.i)*(~c.k)=1
[
call do "put a."+i+" c."+k+", look c."+k+" answerCount, look a."+i+" isUsed, take a."+i+" c."+k
call do "look a."+i+" y"
if line#" 1 1 400"
say "BAD" step kind "answer" i "container" k "has" line
line=""
played.kind=played.kind+1
]
drop p
]
call makeKinds 20 20
taken=0
for kind 1 6
played.kind=0
for i 1 24
done.i=0
right=1
for step 1 20000
[
if step%6=1
[
if step>1
call playOn
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
name=names.RESULT
drop var name
call check
]
call attach any
]
least=999
for i 1 24
if done.i<least
least=done.i
for kind 1 6
say kind "plays on" played.kind "times"
say "taken" taken "each deed" least
quit

;= 1 plays on 1191 times
;= 2 plays on 1140 times
;= 3 plays on 1175 times
;= 4 plays on 1182 times
;= 5 plays on 1197 times
;= 6 plays on 1241 times
;= taken 3126 each deed 401