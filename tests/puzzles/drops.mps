; Answers are dropped on containers of all kinds: events that move a row, and long random plays that
; are compared with a model after each drop.
;: rsc golden
;> 5 key W
;> 20000 quit
;$ then --input content/drags --until 90000
yield off
ActivateDLL golden.rsc
include player.mps
include steps.mps
spots=["30 410" "310 210" "" "307 219"
plot=[other d1 m2 u2 told listenAgain d4 m2 u2 told end
procedure writeDrags
[
call writePlot
for n 1 4200
[
call write kR
call write "d26 408"
RandomNumber 110 300
goal=RESULT
RandomNumber 100 220
call write "m"+goal+" "+RESULT
call write "u"+goal+" "+RESULT
call write kC
]
call write kE
]

; A row that is moved by the handler of its event, in which nobody slides; and one whose answer is
; taken out by it and stays where it was.
procedure movesIt
play c.1 offset 7 9
procedure takesIt
play p removeAnswer "a.1"
procedure listenAgain
set c.1 answerPlaced takesIt
procedure told
call do "look a.1 x y isUsed, look a.2 x y, look c.1 x y answerCount, tell"
procedure other
[
p=RPuzzle 0
c.1=RHorizontalContainer -1 270 190 100 40 10
for i 1 2
[
a.i=RGraphicAnswer 266 20 400 50
play p addAnswer "a."+i
]
call do "ask p addContainer c.1, give c.1 slideSound 8, put a.2 c.1"
set c.1 answerPlaced movesIt
]

; The model: insets and size of answers, their places from the container's corner; who is in it,
; from the bottom up or from left to right; of cloth ten parts of 20 pixels.
pictures=[263 266 1005 271 260
insets=[extraLeft extraTop extraRight extraBottom
wants=[value attribute value answerMatchString value correctSegments
reads=[answerMatchString answerValue
procedure fresh
[
kind=1+(turn\700%6)
drop p c.1
p=RPuzzle 0
count=0
total=0
for i 1 14
drop a.i
for i 1 10
part.i=0
cw=60+(?*9)
ch=60+(?*9)
if kind=6
cw=200
call makeKinds cw ch
c.1=kinds.kind
play p addContainer "c.1"
]
; Stacks have no gaps; rows have none when an answer arrives, and reach inside again.
procedure layOut
[
next=ch
if kind>3
next=(total>cw)*(cw-total)
if kind<3
next=(cw-ew.h)\2-hx.h
if count>0
for i 1 count
[
k=order.i
if kind=3
[
next=next-long.k
rx.k=(cw-ew.k)\2-el.k
ry.k=next+((long.k-eh.k)\2)-et.k
]
else
[
rx.k=next-el.k
ry.k=(ch-eh.k)\2-et.k-hy.k
next=next+long.k
]
]
]
procedure leave seat
[
gone=order.seat
for i 1 10
if part.i=gone
part.i=0
total=total-long.gone
count=count-1
for i seat count+1
[
k=i+1
order.i=order.k
]
if kind=3
call layOut
if ?<5
play p removeAnswerFromContainer "a."+gone "c.1"
drop a.gone
]
procedure noteDrop
[
get a.h x fx
get a.h y fy
]
; Something leaves, the container moves, and there is a new answer.
procedure R
[
if turn%700=0
call fresh
turn=turn+1
RandomNumber 1 24
if (RESULT-count<1)+(count=13)>0
[
RandomNumber 1 count
call leave RESULT
]
RandomNumber 180 240
cx=RESULT
RandomNumber 130 170
cy=RESULT
play c.1 place cx cy
on=?>1
set c.1 enabled on
h=1
for (~a.h)=1
h=h+1
RandomNumber 1 5
a.h=RGraphicAnswer pictures.RESULT 20 400 50
set a.h dropped noteDrop
play p addAnswer "a."+h
for i 1 4
[
RandomNumber -2 2
inset.i=RESULT*(1+(8*(?=0)))
set a.h insets.i inset.i
]
el.h=inset.1
et.h=inset.2
get a.h width ew.h
ew.h=ew.h-inset.1-inset.3
get a.h height eh.h
eh.h=eh.h-inset.2-inset.4
RandomNumber 1 4
worth.h=RESULT-((kind<6)*?)
set a.h value worth.h
set a.h attribute "n"+h
hx.h=0
hy.h=0
hot=(kind=2)*?>5
if hot
[
RandomNumber -5 25
hx.h=RESULT
RandomNumber -5 25
hy.h=RESULT
call do "give a."+h+" isUsingHotPoint 1 hotPointX "+hx.h+" hotPointY "+hy.h
]
]
procedure arrive
[
at=1
for at<(count+1)
[
k=order.at
if ((kind=4)+(kind=5))*(2*(cx+rx.k+el.k)+ew.k>(2*(fx+el.h)+ew.h))
break
at=at+1
]
for i count+1 at -1
[
k=i+1
order.k=order.i
]
order.at=h
count=count+1
total=total+long.h
if kind<6
call layOut
else
[
rx.h=free*20-20+((20*worth.h-ew.h)\2)-el.h
ry.h=(ch-eh.h)\2-et.h
for i free free+worth.h-1
part.i=h
]
]
; Part of the cloth from which on there is room for the answer, or 0.
procedure findRoom
[
free=0
room=0
for i 1 10
if free=0
[
room=room+1
if part.i>0
room=0
if room=worth.h
free=i-room+1
]
]
procedure C
[
call findRoom
lx=fx+el.h
ty=fy+et.h
if hot
over=(fx+hx.h<cx=0)*(fx+hx.h<(cx+cw))*(fy+hy.h<cy=0)*(fy+hy.h<(cy+ch))
else
over=(ew.h>0)*(eh.h>0)*(lx<(cx+cw))*(cx<(lx+ew.h))*(ty<(cy+ch))*(cy<(ty+eh.h))
long.h=ew.h*(ew.h>0)
whole=cw
if kind=3
[
long.h=eh.h*(eh.h>0)
whole=ch
]
fits=(total+long.h>whole)=0
if kind<3
[
long.h=1
whole=1
fits=count=0
]
if kind=6
[
long.h=worth.h
whole=10
fits=free
]
if on*over*fits
call arrive
else if (kind>2)*(kind<6)*(?=0)
[
forced=forced+1
play a.h place fx fy
play p addAnswerToContainer "a."+h "c.1"
call arrive
]
else
[
refused.kind=refused.kind+1
call do "look a."+h+" x y isUsed"
if line#" 20,400,0"
say "BAD" turn kind "taken" line
line=""
drop a.h
]
sum=0
text=""
if count>0
for i 1 count
[
k=order.i
get a.k x lx
get a.k y ty
if (lx=(cx+rx.k))*(ty=(cy+ry.k))=0
say "BAD" turn kind "answer" k "at" lx ty "not" cx+rx.k cy+ry.k
sum=sum+worth.k
text=text+"n"+k
]
expected=" "+count+","+(total<whole=0)
call do "look c.1 answerCount isFull"
good=sum
if kind%2=0
good=text
if kind=6
good=total
if (kind>2)*(kind<6)
[
call do "look c.1 "+reads.(kind%2+1)
expected=expected+" "+good
]
if kind<6
[
set c.1 wants.kind good+1
call do "look c.1 isSolved"
expected=expected+" 0"
]
set c.1 wants.kind good
call do "look c.1 isSolved"
if line#(expected+" "+((kind<3)*(count=0)=0))
say "BAD" turn kind line "not" expected
line=""
]
procedure E
[
say turn "forced" forced "refused" refused.1 refused.2 refused.3 refused.4 refused.5 refused.6
quit
]
turn=0
forced=0
for i 1 6
refused.i=0
call follow
;=  297,209,1 277,209 277,199,2
;=  300,200,0 277,209 277,199,1
;= 4200 forced 208 refused 671 674 563 600 590 586
