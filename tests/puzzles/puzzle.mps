; Puzzles: what a drop leads to, which container gets an answer, what is heard of it and in which order, and what
; belongs to a puzzle. Answers are 20 x 20, the two containers take one each. Key t tells what was heard since the
; last time, then place, isUsed and movable of two answers, the places of the containers and their answers.
;: rsc golden
;> 5 key w
;$ then --input content/drags --until 40000
yield off
ActivateDLL golden.rsc
include player.mps
; The homes of the answers, the middles of the containers, nowhere, beside the first middle, in a narrow container;
; places among containers that lie over each other.
spots=["30 410" "70 410" "110 410" "140 140" "300 140" "600 440" "141 140" "110 140"
spots=["110 110" "120 130" "130 120" "140 110" "150 150" "160 140" "170 130" "140 170" "200 200"
; out of a container and back; out of one that takes nothing any more
gestures=[k0 d1 m4 u4 kt d4 u4 kt d4 kt m6 m5 m4 u4 kt d4 m6 u6 kt d1 m4 u4 d4 k1 m7 u7 kt
; lock and reject; the release is lost
gestures=[k2 d2 m4 u4 kt d2 m5 u5 d1 m4 u4 kt d3 m6 u6 kt
gestures=[k0 d1 m4 kb u6 kt d4 m6 kb u4 kt u6 kt
; without anything, names of nothing; by script; answers that are taken out; containers
gestures=[k3 d1 m4 u4 kt k4
gestures=[k0 d1 m4 u4 kc d4 m6 u6 kt kd d6 m4 u4 kt ke d2 m4 kf m6 u6 k5 kt
gestures=[k0 d1 m4 u4 kg d2 m4 u4 kt d4 m5 u5 kt kh d2 m4 ki m6 u6 kt
; two puzzles; shifted and anchored; a handler takes the next target away
gestures=[kj d1 m4 u4 kt kk d4 m6 u6 kt
gestures=[k0 d1 m4 u4 kl d4 m5 u5 d2 m5 u5 kt km d4 m5 u5 d2 m6 u6 kt
gestures=[kn d1 m4 m5 kt u5 kt
procedure writeDrags
[
for i 1 141
call write gestures.i
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

procedure listenTo
[
set p containersFull onFull
set p answersUsed onUsed
set p puzzleSolved onSolved
set p puzzleWrong onWrong
]
procedure make
[
drop p q c.1 c.2 c.3 c.4
for i 1 3
[
a.i=RGraphicAnswer 266 i*40-20 400 50
set a.i attribute i
set a.i pickedUp onPickedUp
set a.i dropped onDropped
set a.i addedToContainer onAdded
set a.i removedFromContainer onRemoved
]
p=RPuzzle 0
q=RPuzzle 0
for i 1 2
[
c.i=RAttributeContainer -1 i*160-60 100 80 80 10
set c.i answerFlyOn onFlyOn
set c.i answerFlyOff onFlyOff
set c.i answerPlaced onPlaced
set c.i answerRemoved onTaken
play p addContainer "c."+i
play p addAnswer "a."+i
]
call listenTo
heard=""
]
procedure tell
[
where=""
for i 1 2
[
if (~a.i)=1
[
get a.i x left
get a.i y top
get a.i isUsed used
get a.i movable free
where=where+" "+left+","+top+","+used+","+free
]
if (~c.i)=1
[
get c.i x left
get c.i y top
get c.i answerCount count
where=where+" "+left+","+top+","+count
]
]
say heard ":" where
heard=""
]
; All used, all full, all solved.
procedure states
[
get p areAnswersUsed used
get p areContainersFull full
get p isSolved solved
heard=heard+" "+used+full+solved
]

; Every state of two containers, and whether the other answer of the puzzle is used: what comes of a drop into the
; first container, or of none.
procedure makeState
[
target=case%2
others=case\2%2
small.1=case\4%2
small.2=case\8%2
right.1=case\16%2
right.2=case\32%2
case=case+1
call make
p=RPuzzle 0
call listenTo
for i 1 2
[
c.i=RHorizontalValueContainer -1 i*160-60 100 80-(small.i*(60-((i-1)*others*20))) 80 10
set c.i answerFlyOn onFlyOn
set c.i answerPlaced onPlaced
play p addContainer "c."+i
]
set c.1 value target+(right.1=0)
set c.2 value 2+(others*3)+(right.2=0)
play p addAnswer "a.1"
play p addAnswer "a.3"
set a.2 addedToContainer
set a.3 addedToContainer
set c.2 answerPlaced
play p addAnswerToContainer "a.2" "c.2"
if others
play p addAnswerToContainer "a.3" "c.2"
heard=""
]
procedure checkState
[
full=small.1*small.2*target
used=others*target
good=right.1*right.2
expected=" a.1.up a.1.drop"
if target
expected=" a.1.up c.1.on a.1.drop a.1.in c.1.put"
if full
expected=expected+" p.full"
if used
expected=expected+" p.used"
if good
expected=expected+" p.solved"
if (full+used>0)*(good=0)
expected=expected+" p.wrong"
get p areContainersFull isFull
get p areAnswersUsed isUsed
get p isSolved isGood
get a.1 y top
if (heard=expected)*(isFull=full)*(isUsed=used)*(isGood=good)*((top=400)=(target=0))
fine=fine+1
else
say "BAD state" case-1 heard "not" expected isFull isUsed isGood top
]

; Containers of 40 x 40 that lie over each other, and come and go under an answer that is held: of those that take it
; the first with the largest part below it is lit, and at last has it.
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
procedure makeBest
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
; What two lengths of 20 and 40 pixels have in common.
procedure common from other
[
low=from
if other>from
low=other
high=from+20
if other+40<high
high=other+40
RESULT=high-low
if RESULT<0
RESULT=0
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
call common left z.i
wide=RESULT
call common top w.i
if wide*RESULT>most
[
most=wide*RESULT
now=i
]
]
]
procedure checkHover
[
call best
expected=""
if now#hover
[
if hover
expected=" c."+hover+".off"
if now
expected=expected+" c."+now+".on"
]
hover=now
if heard#expected
say "BAD hover" heard "not" expected
call shake
call best
heard=""
]
procedure checkPlace
[
if now
[
get c.now answerCount count
placed=placed+count
]
else
[
get a.1 y top
missed=missed+(top=400)
]
]

procedure lockAndReject
[
drop p
p=RPuzzle 0
set p rejectIncorrectAnswers 1
for i 1 2
set c.i attribute i
play p addContainer "c.1"
set p lockCorrectAnswers 1
play p addContainer "c.2"
play p addContainer "c.2"
for i 1 3
play p addAnswer "a."+i
call listenTo
for i 1 2
[
get c.i rejectIncorrectAnswers rejects
get c.i lockCorrectAnswers locks
heard=heard+" "+rejects+locks
]
]
procedure withoutAnything
[
p=RPuzzle 0
call states
set p areAnswersUsed 0
set p areContainersFull 0
set p isSolved 0
call states
play p addContainer "c.1"
call states
play p addAnswer "a.1"
call states
drop c.1 a.1
call states
words=[lockCorrectAnswers rejectIncorrectAnswers scrambleAnswers puzzleTextColorIndex
for i 1 4
[
get p words.i old
set p words.i 1
get p words.i new
heard=heard+" "+old+new
]
]
procedure namesOfNothing
[
call tell
call make
spot.1=RHotSpot 0 0 10 10
things=["nobody" "" "spot.1" "p"
methods=[addAnswer removeAnswer addContainer removeContainer addAnswerToContainer removeAnswerFromContainer
for i 1 4
for j 1 4
play p methods.i things.j
play p addAnswer "c.1"
play p addContainer "a.1"
for i 5 6
[
for j 1 4
[
play p methods.i "a.1" things.j
play p methods.i things.j "c.1"
]
play p methods.i
play p methods.i "a.1"
play p methods.i "c.1" "a.1"
]
play p removeAnswerFromContainer "a.1" "c.1"
]
procedure byScript
[
call make
set c.1 enabled 0
set c.1 rejectIncorrectAnswers 1
play p addAnswerToContainer "a.1" "c.1"
play p addAnswerToContainer "a.1" "c.1"
call tell
play p addAnswerToContainer "a.1" "c.2"
play p removeAnswerFromContainer "a.1" "c.1"
call tell
play a.1 place 300 300
play p removeAnswerFromContainer "a.1" "c.2"
call tell
play p addAnswerToContainer "a.1" "c.1"
play p addAnswerToContainer "a.2" "c.2"
call states
play p reset
call states
play a.2 place 300 300
play p reset
call tell
]
procedure takeNext
[
call hear "off"
play p removeContainer "c.2"
]
procedure onKey
[
get keys key word
if word="w"
call writeAll
if word="t"
call tell
if ("0"@word)+("2"@word)+("j"@word)+("n"@word)>0
call make
if word="1"
set c.1 enabled 0
if word="2"
call lockAndReject
if word="b"
[
StartTransition
EndTransition 0
]
if word="3"
[
call make
call withoutAnything
call namesOfNothing
]
if word="4"
call byScript
if word="5"
call states
if word="c"
play p removeAnswer "a.1"
if word="d"
[
play p addAnswer "a.1"
play p addAnswer "a.1"
]
if word="e"
drop a.1
if word="f"
drop a.2
if word="g"
play p removeContainer "c.1"
if word="h"
play p addContainer "c.1"
if word="i"
drop c.1 c.2
if word="j"
[
play q addContainer "c.1"
play q addAnswer "a.1"
set q containersFull onFull
set q answersUsed onUsed
set q puzzleWrong onWrong
]
if word="k"
[
call states
play p reset
play p removeAnswer "a.1"
play p addAnswerToContainer "a.2" "c.1"
play q addAnswer "a.2"
play q removeContainer "c.1"
drop p q
call tell
]
if word="l"
[
play p shiftAnswers 5 -7
play p shiftContainers -3 2
play p anchorAnswers
call tell
]
if word="m"
play p unanchorAnswers
if word="n"
set c.1 answerFlyOff takeNext
if word="S"
call makeState
if word="C"
call checkState
if word="B"
call makeBest
if word="H"
call checkHover
if word="P"
call checkPlace
if word="E"
say "fine" fine "placed" placed "not taken" missed
]
case=0
fine=0
placed=0
missed=0
keys=RKbdInp 0
set keys keyPressed onKey
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  a.1.up c.1.take a.1.out a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  a.1.up c.1.take a.1.out :  130,130,0,1 100,100,0 60,400,0,1 260,100,0
;=  c.1.off c.2.on c.2.off c.1.on a.1.drop a.1.in c.1.put :  130,130,1,1 100,100,1 60,400,0,1 260,100,0
;=  a.1.up c.1.take a.1.out c.1.off a.1.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  a.1.up c.1.on a.1.drop a.1.in c.1.put a.1.up c.1.take a.1.out c.1.off a.1.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
;=  10 11 a.2.up a.2.drop :  20,400,0,1 100,100,0 60,400,0,1 260,100,0
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
;! Nested interrupt on c.1's event
;! Invoking method "addAnswerToContainer"\ncaused event "addedToContainer" (ignored)\n
;! event "answerPlaced" (ignored)\n
