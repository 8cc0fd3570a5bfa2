; Handlers that destroy and change what they like in the middle of a drag. In a first visit the
; script writes down what the player does in the second one. There each deed is done in each event,
; with every kind of container and with all right and all wrong; then anything in any event. What is
; left must be of one mind and play on, or a line that begins with BAD tells the case.
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
events=[pickedUp dropped addedToContainer removedFromContainer answerFlyOn answerFlyOff answerPlaced answerRemoved answerFlyOn answerFlyOff containersFull answersUsed puzzleSolved puzzleWrong
; What a handler drops (the bits of these), and what it tells the puzzle.
names=[game a.1 c.1 c.2 a.2 a.3
victims=[1 2 4 8 6 3 5 63 16
methods=[reset start removeAnswer removeContainer addAnswerToContainer addAnswerToContainer addAnswerToContainer removeAnswerFromContainer anchorAnswers shiftContainers
firsts=[0 0 one here one one another one 0 0
seconds=[0 0 0 0 there here here here 0 200
another="a.3"

; Every event comes when nobody interferes; then who is left is put in and taken out again. Down,
; move, up, key.
gestures=[kN d1 m4 m5 m4 u4 d2 m5 u5 d3 m6 u6 d4 m6 m4 u4 d5 m6 u6 m4 kC d1 m4 u4 kP d4 m6 u6 d1 m5 u5 kP d5 m6 u6 d2 m4 u4 kP d4 m6 u6 d2 m5 u5 kP d5 m6 u6

procedure writeDrags
[
for n 1 6*25*24
for i 1 49
call write gestures.i
for n 1 3000
[
RandomNumber 1 5
call write "d"+RESULT
RandomNumber 1 6
call write "m"+RESULT
call write "u"+RESULT
call write kS
]
call write kT
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
; To one answer and container, or to all; without a handler none is heard.
procedure attach handler last
[
if event<5
[
for i 1 last
if (~a.i)=1
[
set a.i events.event
if handler
set a.i events.event handler
]
]
else if event<11
[
for i 1+(event>8) (event>8)+(event>6)*(last>1)+1
if (~c.i)=1
[
set c.i events.event
if handler
set c.i events.event handler
]
]
else if (~game)=1
[
set game events.event
if handler
set game events.event handler
]
]
; What a handler does with answer who and container at.
procedure act
[
one="a."+who
here="c."+at
there="c."+(3-at)
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
[
StartTransition
EndTransition 0
]
]
procedure react
[
raised=raised+1
if (raised<4)*(((~game)+(~a.1)+(~c.1)+(~c.2))=4)
[
call attach 0 1
call act
call attach react 1
]
]
procedure attachAll handler
for event 1 14
call attach handler 3
procedure any
[
call attachAll 0
if ?<3
[
RandomNumber 1 24
deed=RESULT
RandomNumber 1 3
who=RESULT
RandomNumber 1 2
at=RESULT
call act
]
call attachAll any
]

; Who is in a container is so by all accounts; nobody is held, nothing is lit, and who is in none is
; at home.
procedure check homes
[
inside=0
lit=0
used=0
away=0
for i 1 2
if (~c.i)=1
[
get c.i answerCount count
inside=inside+count
if kind<6
[
get c.i highlighted on
lit=lit+on
]
]
for i 1 3
if (~a.i)=1
[
get a.i isUsed in
used=used+in
get a.i x left
get a.i y top
if (in=0)*(i<(3+right))*((left#(i*40-20))+(top#400)>0)
away=away+1
]
if (inside#used)+lit+(homes*away)>0
say "BAD" kind right events.event deed "inside" inside used "lit" lit "away" away
]
procedure C
[
if raised=0
say "BAD" kind right events.event deed "never came"
call check ((~game)=1)*(deed#12)
call attach 0 1
if (~game)#1
game=RPuzzle 0
for i 1 2
if (~c.i)=1
[
play game addContainer "c."+i
set c.i enabled 1
play c.i place i*160-30 130
]
for i 1 3
if (~a.i)=1
[
play game addAnswer "a."+i
set a.i visible 1
]
play game unanchorAnswers
play game reset
for i 1 3
if (~a.i)=1
[
set a.i homeX i*40-20
set a.i homeY 400
]
placings=0
]
procedure N
[
call check 0
deed=deed+1
if deed>24
[
deed=1
event=event+1
if right*((event=12)+(event=14))+((event=13)*(right=0))>0
event=event+1
]
if event>14
[
event=1
right=1-right
if right
kind=kind+1
]
call make
raised=0
call attach react 1
]
procedure P
[
k=1+(placings\2)
l=1+(placings%2)
placings=placings+1
if ((~a.k)=1)*((~c.l)=1)
[
get c.l answerCount count
get a.k isUsed in
if count*in=1
played.kind=played.kind+1
else
say "BAD" kind right events.event deed "answer" k "container" l "has" count
]
]
; The player has moved something while handlers did anything; now and then all begins anew.
procedure S
[
taken=taken+used
call attachAll 0
call check 0
steps=steps+1
if steps%12=1
[
kind=1+(steps\12%6)
right=1-right
call make
]
call attachAll any
]
procedure T
[
for kind 1 6
say kind "plays on" played.kind "times"
say "taken" taken>500
quit
]
call makeKinds 20 20
for kind 1 6
played.kind=0
right=1
event=8
; An answer goes in a statement of the script, and its container tells.
for kind 1 6
for deed 1 24
[
call make
play game addAnswerToContainer "a.1" "c.1"
play game addAnswerToContainer "a.2" "c.2"
raised=0
call attach react 1
drop a.1
if raised#1
say "BAD" raised
call check 0
]
drop c.1 c.2
steps=0
taken=0
kind=1
event=1
deed=0
who=1
at=1
raised=1
;= 1 plays on 1925 times
;= 2 plays on 1925 times
;= 3 plays on 1925 times
;= 4 plays on 1925 times
;= 5 plays on 1925 times
;= 6 plays on 1925 times
;= taken 1
