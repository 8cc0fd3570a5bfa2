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
; The homes of the answers, the middles of the containers, nowhere, beside the first middle.
spots=["30 410" "70 410" "110 410" "140 140" "300 140" "600 440" "141 140"
; Out of a container and back; out of one that takes nothing any more.
plot=[make d1 m4 u4 d4 u4 told d4 told m6 m5 m4 u4 d4 m6 u6 told d1 m4 u4 d4
plot=["give c.1 enabled 0" m7 u7 told
; What containers are told when they are added; the release is lost.
plot=[
plot=["make, give p rejectIncorrectAnswers 1, ask p addContainer c.1, give p lockCorrectAnswers 1"
plot=["ask p addContainer c.2, look c.1 rejectIncorrectAnswers lockCorrectAnswers"
plot=["look c.2 rejectIncorrectAnswers lockCorrectAnswers, give c.2 attribute 2"
plot=[d2 m4 u4 d2 m5 u5 told make d1 m4 "blink" u6 d4 m6 "blink" u4 u6 told
; Without anything all is used, full and solved; names of nothing change nothing, and by script.
plot=["make, bare, states, ask p addContainer c.1, states, ask p addAnswer a.1, states, lose c.1"
plot=["lose a.1, give p areAnswersUsed 0 areContainersFull 0 isSolved 0, states, told, build"
plot=["ask p addAnswer c.1, ask p addContainer a.1, put c.1 a.1, put a.1, take a.1, take a.1 c.1"
plot=["ask p removeAnswer none, ask p removeContainer none, put none c.1, put a.1 none"
plot=["give c.1 enabled 0 rejectIncorrectAnswers 1, put a.1 c.1, put a.1 c.1, put a.2 c.2, states"
plot=["told, ask p reset, states, put a.1 c.1, listen, put a.1 c.2, take a.1 c.1, told"
plot=["ask a.1 place 300 300, take a.1 c.2, ask a.2 place 300 300, ask p reset, told"
; Answers that are taken out are nobody's, one that is added twice counts once; some go.
plot=[make d1 m4 u4 "ask p removeAnswer a.1" d4 m6 u6 told
plot=["ask p addAnswer a.1, ask p addAnswer a.1" d6 m4 u4 told "lose a.1" d2 m4 "lose a.2" m6 u6
plot=["states, told"
; Containers that are taken out take nothing, and keep what they have; some go.
plot=[make d1 m4 u4 "ask p removeContainer c.1" d2 m4 u4 told d4 m5 u5 told
plot=["ask p addContainer c.1" d2 m4 "lose c.1, lose c.2" m6 u6 told
; Two puzzles, which then go.
plot=["make, ask q addContainer c.1, ask q addAnswer a.1" d1 m4 u4
plot=["states, ask p reset, ask p removeAnswer a.1, put a.2 c.1, ask q addAnswer a.2"
plot=["ask q removeContainer c.1, lose p, lose q, told" d4 m6 u6 told
; Shifted and anchored; home stays where it was.
plot=[make d1 m4 u4 "ask p shiftAnswers 5 -7, ask p shiftContainers -3 2, ask p anchorAnswers" d4
plot=[m5 u5 d2 m5 u5 told "ask p unanchorAnswers" d4 m5 u5 d2 m6 u6 told
; Over two, the first of those with the largest part below it; a handler takes the next target away.
plot=["make, give c.2 x 130" d1 "m170 140" "m171 140" "m170 140" "m171 140" "u171 140" told
plot=["make, listenToNext" d1 m4 m5 u5 told end
procedure writeDrags
[
call writePlot
for i 0 53
[
call write kV
call write d1
call write m4
call write u4
call write kX
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
procedure listen
[
for j 1 12
for i 1 3
if (j<5)*((~a.i)=1)
set a.i events.j handlers.j
else if (j>4)*(j<9)*((~c.i)=1)
set c.i events.j handlers.j
for j 9 12
[
set p events.j handlers.j
set q events.j handlers.j
]
heard=""
]
procedure build
[
drop p q c.1 c.2
p=RPuzzle 0
q=RPuzzle 0
for i 1 3
[
a.i=RGraphicAnswer 266 i*40-20 400 50
set a.i attribute i
if i<3
[
c.i=RAttributeContainer -1 i*160-60 100 80 80 10
play p addContainer "c."+i
play p addAnswer "a."+i
]
]
]
procedure make
[
call build
call listen
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
get p areAnswersUsed usedUp
get p areContainersFull fullUp
get p isSolved solvedUp
heard=heard+" "+usedUp+fullUp+solvedUp
]
procedure bare
p=RPuzzle 0
procedure takeNext
[
call hear "off"
play p removeContainer "c.2"
]
procedure listenToNext
set c.1 answerFlyOff takeNext

; Containers of all kinds: v tells that the answer just fits, is a pixel too high, wide or long, that
; nothing is taken, that the answer is beside and over each edge by a pixel, right and wrong.
wants=[value attribute value answerMatchString value correctSegments
takes=[1 0 0 0 1 0 1 1 0
procedure V
[
drop p c.1 c.2 a.1 a.2 a.3
kind=case%6+1
v=case\6
case=case+1
p=RPuzzle 0
c.1=kinds.kind
play c.1 place 120+((v=3)*30)+((v=4)*29) 125+((v=5)*25)+((v=6)*24)
for i 1 2
[
a.i=RGraphicAnswer 266 i*40-20 400 50
set a.i attribute i*2-1
play p addAnswer "a."+i
]
long=(v=1)
call do "give a.2 extraBottom "+(0-long)+" extraRight "+(0-20-long)+" value "+(9+long)
call do "ask p addContainer c.1"
if (kind>2)+long
call do "put a.2 c.1"
good=1+(v=8)
if kind=6
good=11-good
set c.1 wants.kind good
call do "give c.1 enabled "+(v#2)+" rejectIncorrectAnswers "+(v>6)
call listen
]
procedure X
[
expected=" a.1.up a.1.drop"
good=(kind=6)*(long+(v=8))
n=v+1
if takes.n+((v=8)*(kind>2)*(kind<6))
[
expected=" a.1.up c.1.on a.1.drop a.1.in c.1.put p.full"
if kind>2
expected=expected+" p.used"
good=(kind<3)+(kind=6)
if good=0
expected=expected+" p.wrong"
]
if good
expected=expected+" p.solved"
if heard#expected
say "BAD" kind v heard "not" expected
]

procedure E
[
say "cases" case
quit
]
case=0
call makeKinds 60 40
call follow
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put a.1.up c.1.take a.1.out a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  a.1.up c.1.take a.1.out :  130,130,0,1 100,100,0 60,400,0,1 260,100,0
;=  c.1.off c.2.on c.2.off c.1.on a.1.drop a.1.in c.1.put a.1.up c.1.take a.1.out c.1.off a.1.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put a.1.up c.1.take a.1.out c.1.off a.1.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  a.2.up a.2.drop a.2.up c.2.on a.2.drop a.2.in c.2.put :  1,0 1,1 20,400,0,1 100,100,0 290,130,1,0 260,100,1
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put a.1.up c.1.take a.1.out c.1.off a.1.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  111 100 000 111 :  60,400,0,1 260,100,0
;=  110 :  130,130,1,0 100,100,1 290,130,1,1 260,100,1
;=  :  290,130,1,1 100,100,0 60,400,0,1 260,100,1
;=  :  20,400,0,1 100,100,0 300,300,0,1 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put a.1.up a.1.drop :  590,430,0,1 100,100,0 60,400,0,1 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  c.1.take a.2.up c.1.on 100 :  100,100,0 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put a.2.up a.2.drop :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  a.1.up c.1.take a.1.out c.1.off c.2.on a.1.drop a.1.in c.2.put p.full p.wrong :  290,130,1,1 100,100,0 60,400,0,1 260,100,1
;=  a.2.up c.1.on a.2.drop p.solved :  290,130,0,1 60,400,0,1
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put q.full q.used q.wrong 000 :  130,130,1,1 100,100,2 130,130,1,1 260,100,0
;=  a.2.up c.1.take a.2.out a.2.drop :  130,130,1,1 100,100,1 590,430,0,1 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put :  127,132,1,0 97,102,1 65,393,0,0 257,102,0
;=  a.1.up c.1.take a.1.out c.1.off c.2.on a.1.drop a.1.in c.2.put a.2.up a.2.drop :  287,132,1,1 97,102,0 60,400,0,1 257,102,1
;=  a.1.up c.1.on c.1.off c.2.on c.2.off c.1.on c.1.off c.2.on a.1.drop a.1.in c.2.put :  160,130,1,1 100,100,0 60,400,0,1 130,100,1
;=  a.1.up c.1.on c.1.off a.1.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;= cases 54
;! Invoking method "addAnswerToContainer"\ncaused event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! event "addedToContainer" (ignored)\n
;! event "answerPlaced" (ignored)\n
;! Invoking method "removeAnswerFromContainer"\ncaused event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! Invoking method "removeAnswer"\ncaused event "answerRemoved" (ignored)\n
;! event "removedFromContainer" (ignored)\n
;! Invoking method "addAnswerToContainer"\ncaused event "addedToContainer" (ignored)\n
;! event "answerPlaced" (ignored)\n
