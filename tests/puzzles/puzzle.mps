; Puzzles: what a drop leads to, which container gets an answer, what is heard of it and in which
; order, and what belongs to a puzzle. Answers are 20 x 20, the two containers take one each. What
; is told is what was heard since the last time, then place, isUsed and movable of two answers, the
; places of the containers and their answers.
;: rsc golden
;> 5 key W
;$ then --input content/drags --until 40000
yield off
ActivateDLL golden.rsc
include player.mps
include steps.mps
; The homes of the answers, the middles of the containers, nowhere, beside the first middle, in a
; narrow container; places among containers that lie over each other.
spots=["30 410" "70 410" "110 410" "140 140" "300 140" "600 440" "141 140" "110 140"
spots=["110 110" "120 130" "130 120" "140 110" "150 150" "160 140" "170 130" "140 170" "200 200"
; Out of a container and back; out of one that takes nothing any more.
plot=[make d1 m4 u4 told d4 u4 told d4 told m6 m5 m4 u4 told d4 m6 u6 told d1 m4 u4 d4
plot=["give c.1 enabled 0" m7 u7 told
; What containers are told when they are added; the release is lost.
plot=[
plot=["make, give p rejectIncorrectAnswers 1, ask p addContainer c.1, give p lockCorrectAnswers 1, ask p addContainer c.2"
plot=[
plot=["give c.1 attribute 1, give c.2 attribute 2, ask p addAnswer a.3, look c.1 rejectIncorrectAnswers lockCorrectAnswers"
plot=["look c.2 rejectIncorrectAnswers lockCorrectAnswers" d2 m4 u4 told d2 m5 u5 d1 m4 u4 told d3
plot=[m6 u6 told
plot=[make d1 m4 "blink" u6 told d4 m6 "blink" u4 told u6 told
; Without anything all is used, full and solved; names of nothing change nothing.
plot=[
plot=["make, bare, states, give p areAnswersUsed 0, give p areContainersFull 0, give p isSolved 0, states, ask p addContainer c.1"
plot=["states, ask p addAnswer a.1, states, lose c.1, lose a.1, states, settings, told"
plot=["make, namesOfNothing" d1 m4 u4 told
; By script.
plot=["make, give c.1 enabled 0 rejectIncorrectAnswers 1, put a.1 c.1, put a.1 c.1, told"
plot=["put a.1 c.2, take a.1 c.1, told"
plot=["ask a.1 place 300 300, take a.1 c.2, told"
plot=["put a.1 c.1, put a.2 c.2, states, ask p reset, states"
plot=["ask a.2 place 300 300, ask p reset, told"
; Answers that are taken out are nobody's, one that is added twice counts once; some go.
plot=[make d1 m4 u4 "ask p removeAnswer a.1" d4 m6 u6 told
plot=["ask p addAnswer a.1, ask p addAnswer a.1" d6 m4 u4 told
plot=["lose a.1" d2 m4 "lose a.2" m6 u6 "states, told"
; Containers that are taken out take nothing, and keep what they have; some go.
plot=[make d1 m4 u4 "ask p removeContainer c.1" d2 m4 u4 told d4 m5 u5 told "ask p addContainer c.1"
plot=[d2 m4
plot=["lose c.1, lose c.2" m6 u6 told
; Two puzzles, which then go.
plot=["make, second" d1 m4 u4 told
plot=["states, ask p reset, ask p removeAnswer a.1, put a.2 c.1, secondGoes, told" d4 m6 u6 told
; Shifted and anchored; home stays where it was.
plot=[make d1 m4 u4 "ask p shiftAnswers 5 -7, ask p shiftContainers -3 2, ask p anchorAnswers, told"
plot=[d4 m5 u5 d2 m5 u5 told
plot=["ask p unanchorAnswers" d4 m5 u5 d2 m6 u6 told
; A handler takes the next target away.
plot=["make, listenToNext" d1 m4 m5 told u5 told end
procedure writeDrags
[
call writePlot
for i 0 63
[
goal=6+(i%2*2)
call write kS
call write d1
call write "m"+goal
call write "u"+goal
call write kC
]
for i 1 200
[
call write kB
call write d1
for j 1 4
[
RandomNumber 9 17
goal=RESULT
call write "m"+goal
call write kH
]
call write "u"+goal
call write kP
]
call write kE
]

; Events by short names, with their objects.
procedure hear what
[
get RECEIVER name who
heard=heard+" "+who+"."+what
]
procedure onPickedUp
call hear "up"
procedure onDropped
call hear "drop"
procedure onAdded
call hear "in"
procedure onRemoved
call hear "out"
procedure onFlyOn
call hear "on"
procedure onFlyOff
call hear "off"
procedure onPlaced
call hear "put"
procedure onTaken
call hear "take"
procedure onFull
call hear "full"
procedure onUsed
call hear "used"
procedure onSolved
call hear "solved"
procedure onWrong
call hear "wrong"
events=[pickedUp dropped addedToContainer removedFromContainer answerFlyOn answerFlyOff answerPlaced
events=[answerRemoved containersFull answersUsed puzzleSolved puzzleWrong
handlers=[onPickedUp onDropped onAdded onRemoved onFlyOn onFlyOff onPlaced onTaken onFull onUsed
handlers=[onSolved onWrong
procedure make
[
drop p q c.1 c.2 c.3 c.4
p=RPuzzle 0
q=RPuzzle 0
for i 9 12
[
set p events.i handlers.i
set q events.i handlers.i
]
for i 1 3
[
a.i=RGraphicAnswer 266 i*40-20 400 50
set a.i attribute i
for j 1 4
set a.i events.j handlers.j
]
for i 1 2
[
c.i=RAttributeContainer -1 i*160-60 100 80 80 10
for j 5 8
set c.i events.j handlers.j
play p addContainer "c."+i
play p addAnswer "a."+i
]
heard=""
]
procedure told
[
for i 1 2
[
if (~a.i)=1
call do "look a."+i+" x y isUsed movable"
if (~c.i)=1
call do "look c."+i+" x y answerCount"
]
say heard ":" line
heard=""
line=""
]
; All used, all full, all solved.
procedure states
[
get p areAnswersUsed used
get p areContainersFull full
get p isSolved solved
heard=heard+" "+used+full+solved
]
procedure bare
p=RPuzzle 0
words=[lockCorrectAnswers rejectIncorrectAnswers scrambleAnswers puzzleTextColorIndex
procedure settings
for i 1 4
[
get p words.i old
set p words.i 1
get p words.i new
heard=heard+" "+old+new
]
things=["nobody" "" "spot.1" "p"
methods=[addAnswer removeAnswer addContainer removeContainer addAnswerToContainer
methods=[removeAnswerFromContainer
procedure namesOfNothing
[
spot.1=RHotSpot 0 0 10 10
for i 1 6
[
play p methods.i
for j 1 4
[
play p methods.i things.j "c.1"
if i>4
play p methods.i "a.1" things.j
]
]
call do "ask p addAnswer c.1, ask p addContainer a.1, put c.1 a.1, take c.1 a.1, put a.1, take a.1"
call do "take a.1 c.1"
]
procedure second
[
play q addContainer "c.1"
play q addAnswer "a.1"
]
procedure secondGoes
[
play q addAnswer "a.2"
play q removeContainer "c.1"
drop p q
]
procedure takeNext
[
call hear "off"
play p removeContainer "c.2"
]
procedure listenToNext
set c.1 answerFlyOff takeNext

; Every state of two containers, and whether the other answer of the puzzle is used: what comes of a
; drop into the first container, or of none.
drops=[" a.1.up a.1.drop" " a.1.up c.1.on a.1.drop a.1.in c.1.put"
fulls=["" " p.full"
useds=["" " p.used"
ends=["" " p.wrong" " p.solved" " p.solved"
procedure S
[
target=case%2
others=case\2%2
small.1=case\4%2
small.2=case\8%2
right.1=case\16%2
right.2=case\32%2
case=case+1
call make
play p removeAnswer "a.2"
for i 1 2
[
c.i=RHorizontalValueContainer -1 i*160-60 100 80-(small.i*(60-((i-1)*others*20))) 80 10
set c.i answerFlyOn onFlyOn
set c.i answerPlaced onPlaced
play p addContainer "c."+i
]
set c.1 value target+(right.1=0)
set c.2 value 2+(others*3)+(right.2=0)
play p addAnswer "a.3"
set a.2 addedToContainer
set a.3 addedToContainer
set c.2 answerPlaced
play p addAnswerToContainer "a.2" "c.2"
if others
play p addAnswerToContainer "a.3" "c.2"
heard=""
]
procedure C
[
full=small.1*small.2*target
used=others*target
good=right.1*right.2
expected=drops.(target+1)+fulls.(full+1)+useds.(used+1)+ends.((full+used>0)+(good*2)+1)
get p areContainersFull isFull
get p areAnswersUsed isUsed
get p isSolved isGood
get a.1 y top
if (heard=expected)*(isFull=full)*(isUsed=used)*(isGood=good)*((top=400)=(target=0))
fine=fine+1
else
say "BAD state" case-1 heard "not" expected isFull isUsed isGood top
]

; Containers of 40 x 40 that lie over each other, and come and go under an answer that is held: of
; those that take it the first with the largest part below it is lit, and at last has it.
procedure shake
for i 1 4
[
RandomNumber 10 17
z.i=RESULT*10
RandomNumber 10 17
w.i=RESULT*10
play c.i place z.i w.i
RandomNumber 0 2
on.i=RESULT
set c.i enabled on.i
]
procedure B
[
call make
for i 1 4
[
c.i=RAttributeContainer -1 0 0 40 40 10
set c.i answerFlyOn onFlyOn
set c.i answerFlyOff onFlyOff
play p addContainer "c."+i
]
set a.1 pickedUp
set a.1 addedToContainer
set a.1 dropped
call shake
hover=0
heard=""
]
; What 20 pixels have in common with 40 that begin aside of them.
procedure common aside
[
RESULT=20
if aside<0
RESULT=20+aside
if aside>20
RESULT=40-aside
RESULT=RESULT*(RESULT>0)
]
procedure best
[
get a.1 x left
get a.1 y top
now=0
most=0
for i 1 4
if on.i
[
call common left-z.i
wide=RESULT
call common top-w.i
if wide*RESULT>most
[
most=wide*RESULT
now=i
]
]
]
procedure H
[
call best
expected=""
if hover*(now#hover)
expected=" c."+hover+".off"
if now*(now#hover)
expected=expected+" c."+now+".on"
hover=now
if heard#expected
say "BAD hover" heard "not" expected
call shake
call best
heard=""
]
procedure P
[
count=0
if now
get c.now answerCount count
placed=placed+count
get a.1 y top
missed=missed+((now=0)*(top=400))
]
procedure E
[
say "fine" fine "placed" placed "not taken" missed
quit
]
case=0
fine=0
placed=0
missed=0
call follow
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  a.1.up c.1.take a.1.out a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  a.1.up c.1.take a.1.out :  130,130,0,1 100,100,0 60,400,0,1 260,100,0
;=  c.1.off c.2.on c.2.off c.1.on a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  a.1.up c.1.take a.1.out c.1.off a.1.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put a.1.up c.1.take a.1.out c.1.off a.1.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  a.2.up a.2.drop :  1,0 1,1 20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  a.2.up c.2.on a.2.drop a.2.in c.2.put a.1.up c.1.on a.1.drop a.1.in c.1.put p.full p.solved :  130,130,1,1 100,100,1 290,130,1,0 260,100,1
;=  a.3.up a.3.drop p.solved :  130,130,1,1 100,100,1 290,130,1,0 260,100,1
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  a.1.up c.1.take a.1.out c.1.off a.1.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  111 111 100 000 111 01 01 01 01 :  60,400,0,1 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  :  130,130,1,0 100,100,1 60,400,0,1 260,100,0
;=  :  290,130,1,1 100,100,0 60,400,0,1 260,100,1
;=  :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  110 000 :  20,400,0,1 100,100,0 300,300,0,1 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put a.1.up a.1.drop :  590,430,0,1 100,100,0 60,400,0,1 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  c.1.take a.2.up c.1.on 100 :  100,100,0 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put a.2.up a.2.drop :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  a.1.up c.1.take a.1.out c.1.off c.2.on a.1.drop a.1.in c.2.put p.full p.wrong :  290,130,1,1 100,100,0 60,400,0,1 260,100,1
;=  a.2.up c.1.on a.2.drop p.solved :  290,130,0,1 60,400,0,1
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put q.full q.used q.wrong :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  000 :  130,130,1,1 100,100,2 130,130,1,1 260,100,0
;=  a.2.up c.1.take a.2.out a.2.drop :  130,130,1,1 100,100,1 590,430,0,1 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put :  127,132,1,0 97,102,1 65,393,0,0 257,102,0
;=  :  127,132,1,0 97,102,1 65,393,0,0 257,102,0
;=  a.1.up c.1.take a.1.out c.1.off c.2.on a.1.drop a.1.in c.2.put a.2.up a.2.drop :  287,132,1,1 97,102,0 60,400,0,1 257,102,1
;=  a.1.up c.1.on c.1.off :  290,130,0,1 100,100,0 60,400,0,1 260,100,0
;=  a.1.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;= fine 64 placed 95 not taken 105
;! Invoking method "addAnswerToContainer"\ncaused event "addedToContainer" (ignored)\n
;! event "answerPlaced" (ignored)\n
;! Invoking method "addAnswerToContainer"\ncaused event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! event "addedToContainer" (ignored)\n
;! event "answerPlaced" (ignored)\n
;! Invoking method "removeAnswerFromContainer"\ncaused event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! Invoking method "addAnswerToContainer"\ncaused event "addedToContainer" (ignored)\n
;! event "answerPlaced" (ignored)\n
;! Invoking method "addAnswerToContainer"\ncaused event "addedToContainer" (ignored)\n
;! event "answerPlaced" (ignored)\n
;! Invoking method "reset"\ncaused event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! Invoking method "removeAnswer"\ncaused event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! Invoking method "addAnswerToContainer"\ncaused event "addedToContainer" (ignored)\n
;! event "answerPlaced" (ignored)\n
