; Answers are dropped on containers of all kinds: a table of what is taken, events that move a row, and long random
; plays on stacks, rows and cloth that are compared with a model after each drop.
;: rsc golden
;> 5 key W
;> 20000 quit
;$ then --input content/drags --until 90000
yield off
ActivateDLL golden.rsc
include player.mps
include steps.mps
spots=["30 410" "310 210" "600 440" "307 219"
plot=[other d1 m2 u2 told listenAgain d4 m2 u2 told picky d1 m2 m3 m2 u2 "give c.1 doPixelCompare 1" d1 m2 u2
plot=["give c.1 doPixelCompare 0" d1 m2 u2 told end
procedure writeDrags
[
for n 1 138
[
call write kN
call write d1
call write m2
call write u2
call write kT
]
call writePlot
for n 1 3000
[
call write kR
call write "d26 408"
RandomNumber 11 30
goal=RESULT*10
RandomNumber 10 22
call write "m"+goal+" "+(RESULT*10)
call write "u"+goal+" "+(RESULT*10)
call write kC
]
call write kE
]

; Answers of 20 x 10 pixels that count, and where they are on a container of 60 x 40 at 100, 50. The last is disabled.
lefts=[110 90 80 110 159 160 81 110 90 90 76 155 110 110 110 300 110 150 200 110
tops=[60 60 60 90 89 50 41 40 60 60 60 45 60 60 60 300 60 40 55 60
more=["" "" "" "" "" "" "" "" " extraRight 10" " extraRight 9" " extraRight -5" " extraLeft 3 extraBottom 13" " extraLeft 20" " extraLeft 30 extraRight 10" " extraTop 6 extraBottom 16" "" " extraLeft 5 extraTop 2 extraRight 5 extraBottom 12" " extraLeft -60" " extraLeft -60" ""
; Their hot points.
lefts=[110 90 90 90 90 90 300 110 110
tops=[60 60 60 60 60 60 300 60 60
more=[" hotPointX 0 hotPointY 0" " hotPointX 10 hotPointY 0" " hotPointX 9 hotPointY 0" " hotPointX 69 hotPointY 29" " hotPointX 70 hotPointY 29" " hotPointX 69 hotPointY 30" " hotPointX -200 hotPointY -250" " hotPointX 0 hotPointY -11" " hotPointX 0 hotPointY -10"
call makeKinds 60 40
procedure N
[
kind=case\20+1
row=case%20+1
if case>119
[
kind=2
row=(case-120)%9+21
]
drop p
p=RPuzzle 0
a.1=RGraphicAnswer 266 20 400 50
c.1=kinds.kind
play p addAnswer "a.1"
play p addContainer "c.1"
play c.1 place 400-lefts.row 250-tops.row
call do "give a.1 extraBottom 10"+more.row
if row>20
call do "give a.1 extraLeft 3 extraTop 3 extraRight 3 isUsingHotPoint 1, give c.1 doPixelCompare "+(case>128)
if row=20
set c.1 enabled 0
case=case+1
]
procedure T
[
get c.1 answerCount count
line=line+count
if (row=20)+(row=29)>0
[
call tell
line=" "
]
]

; A row that is moved by the handler of its event, in which nobody slides; and one whose answer is taken out by it
; and stays where it was.
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
play p addContainer "c.1"
call do "give c.1 slideSound 8, put a.2 c.1"
set c.1 answerPlaced movesIt
]
; Who has no hot point is complained of once, not with each step, until pixels are asked for once more.
procedure picky
[
c.1=RAttributeContainer 281 270 190 10
play p addContainer "c.1"
play p addAnswer "a.1"
call do "give c.1 doPixelCompare 1, give a.1 homeX 20 homeY 400"
]

; The model: place, insets and size of answers; who is in the container, from the bottom up or from left to right;
; of cloth ten parts of 20 pixels.
pictures=[263 266 1005 271 260
procedure fresh
[
kind=3+(turn\500%4)
drop p c.1
p=RPuzzle 0
count=0
total=0
for i 1 14
drop a.i
for i 1 10
part.i=0
cx=200
cy=150
cw=60+(?*9)
ch=60+(?*9)
if kind=3
c.1=RStackingContainer -1 200 150 cw ch 10
if kind=4
c.1=RHorizontalContainer -1 200 150 cw ch 10
if kind=5
c.1=RHorizontalValueContainer -1 200 150 cw ch 10
if kind=6
[
cw=200
c.1=RFabricContainer -1 200 150 200 ch 10
]
play p addContainer "c.1"
]
procedure leave seat
[
gone=order.seat
if kind=6
[
for i 1 10
if part.i=gone
part.i=0
]
total=total-long.gone
if seat<count
for i seat count-1
[
k=i+1
order.i=order.k
k=order.i
if kind=3
ay.k=ay.k+long.gone
]
count=count-1
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
if turn%500=0
call fresh
turn=turn+1
RandomNumber 1 24
if (RESULT-count<1)+(count=13)>0
[
RandomNumber 1 count
call leave RESULT
]
RandomNumber 180 240
dx=RESULT-cx
RandomNumber 130 170
dy=RESULT-cy
if ?<5
play c.1 offset dx dy
else
play c.1 place cx+dx cy+dy
cx=cx+dx
cy=cy+dy
if count>0
for i 1 count
[
k=order.i
ax.k=ax.k+dx
ay.k=ay.k+dy
]
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
inset.i=RESULT
]
call do "give a."+h+" extraLeft "+inset.1+" extraTop "+inset.2+" extraRight "+inset.3+" extraBottom "+inset.4
get a.h width ew.h
ew.h=ew.h-inset.1-inset.3
get a.h height eh.h
eh.h=eh.h-inset.2-inset.4
el.h=inset.1
et.h=inset.2
RandomNumber 1 4
worth.h=RESULT-((kind<6)*?)
set a.h value worth.h
set a.h attribute "n"+h
]
procedure arrive
[
long.h=ew.h
if kind=3
long.h=eh.h
if kind=6
long.h=worth.h
at=1
for at<(count+1)
[
k=order.at
if ((kind=4)+(kind=5))*(2*(ax.k+el.k)+ew.k>(2*(fx+el.h)+ew.h))
break
at=at+1
]
if at<(count+1)
for i count at -1
[
k=i+1
order.k=order.i
]
order.at=h
count=count+1
ay.h=cy+((ch-eh.h)\2)-et.h
if kind=3
[
ax.h=cx+((cw-ew.h)\2)-el.h
ay.h=cy+ch-total-eh.h-et.h
]
total=total+long.h
if kind=6
[
ax.h=cx+(free*20-20)+((20*worth.h-ew.h)\2)-el.h
for i free free+worth.h-1
part.i=h
]
if (kind=4)+(kind=5)>0
[
next=cx
if total>cw
next=cx+cw-total
for i 1 count
[
k=order.i
ax.k=next-el.k
next=next+ew.k
]
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
over=(lx<(cx+cw))*(cx<(lx+ew.h))*(ty<(cy+ch))*(cy<(ty+eh.h))
fits=free
if kind=3
fits=(total+eh.h>ch)=0
if (kind=4)+(kind=5)>0
fits=(total+ew.h>cw)=0
if on*over*fits
call arrive
else if (kind<6)*(?=0)
[
forced=forced+1
play a.h place fx fy
play p addAnswerToContainer "a."+h "c.1"
call arrive
]
else
[
refused.kind=refused.kind+1
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
if (lx=ax.k)*(ty=ay.k)=0
say "BAD" turn kind "answer" k "at" lx ty "not" ax.k ay.k
sum=sum+worth.k
text=text+"n"+k
]
whole=cw
if kind=3
whole=ch
if kind=6
whole=10
get c.1 answerCount lx
get c.1 isFull ty
if (lx=count)*(ty=(total<whole=0))=0
say "BAD" turn kind "count" lx "not" count "full" ty "not" total "of" whole
if (kind=3)+(kind=5)>0
[
get c.1 answerValue lx
set c.1 value sum+1
get c.1 isSolved ty
set c.1 value sum
if (lx=sum)*(ty=0)=0
say "BAD" turn kind "sum" lx "not" sum ty
]
if kind=4
[
get c.1 answerMatchString lx
set c.1 answerMatchString text
if lx#text
say "BAD" turn kind "reads" lx "not" text
]
if kind=6
set c.1 correctSegments total
get c.1 isSolved ty
if ty=0
say "BAD" turn kind "not solved"
]
procedure E
[
say turn "forced" forced "refused" refused.3 refused.4 refused.5 refused.6
quit
]
case=0
turn=0
forced=0
for i 3 6
refused.i=0
line=" "
call follow
;=  11001010011100001010
;=  11001010011100001010
;=  11001010011100001010
;=  11001010011100001000
;=  11001010011100001000
;=  11001010011100001010
;=  110100101
;=  110100101
;=   297,209,1 277,209 277,199,2
;=  300,200,0 277,209 277,199,1
;=  302,215,1 277,209 270,190,1
;= 3000 forced 251 refused 797 870 435 418
;! RAttributeContainer attempting pixel comparison: RAnswer must have hot point enabled
;! RAttributeContainer attempting pixel comparison: RAnswer must have hot point enabled
