; Playing with keys alone: what the mark goes to and in which order, what is heard of a click, of a
; drag and of keys, and how the mark looks.
;: rsc golden
;$ screens
;> 0 keys on
; The first in reading order is the left button; the ring has a hole in its middle.
;> 200 screenshot first.png
;> 210 key Enter
;> 400 key Tab
;> 410 key Enter
;> 600 key Tab
;> 700 screenshot ring.png
;> 710 key Enter
; Back to the second button and down to the spot, whose double click is heard, and to the figure,
; which goes its way, and goes: its neighbour is marked then.
;> 900 key Shift-Tab
;> 910 key Down
;> 920 key Ctrl-Enter
;> 1300 key Right
;> 1440 screenshot moved.png
;> 1450 key Enter
;> 1590 screenshot gone.png
; Both answers into the two containers, the first one put back before.
;> 1600 key Down Enter Up Esc
;> 2100 key Enter Up
;> 2300 screenshot carried.png
;> 2310 key Enter
;> 2500 key Down Enter Up Enter
; Who takes keys has all until Tab, and then those that the mark has no use for; all while it is off.
;> 2950 run keyboard=RKbdInp 0
;> 2960 run set keyboard keyPressed typed
;> 3000 key x
;> 3010 key Enter
;> 3020 key Tab
;> 3100 key F6
;> 3110 key Enter
;> 3300 keys off
;> 3310 screenshot off.png
;> 3320 key Tab
;> 3330 key Enter
;> 3400 nothing
;= pressed left
;= over right
;= pressed right
;= pressed ring
;= over right
;= twice spot
;= gone figure
;= placed in second
;= placed in first
;= solved
;= key x
;= key Enter
;= key F6
;= pressed left
;= key Tab
;= key Enter
include golden.mps
procedure hear
[
get RECEIVER tag who
say "pressed" who
]
procedure twice
[
get RECEIVER tag who
say "twice" who
]
procedure over
[
get RECEIVER tag who
say "over" who
]
procedure leave
[
get RECEIVER tag who
say "gone" who
play clock stop
drop figure
]
procedure placed
[
get RECEIVER tag who
say "placed in" who
]
procedure solved
say "solved"
procedure typed
[
get keyboard key what
say "key" what
]
procedure walk
play figure offset 1 0
b.1=RPButton 250 20 40 5
b.2=RPButton 250 200 45 5
set b.1 tag "left"
set b.2 tag "right"
set b.1 hit hear
set b.2 hit hear
set b.2 flyOn over
ring=RAnimation 230 420 30 5
set ring movable 0
set ring tag "ring"
set ring mouseDown hear
; The button is under it as a whole, and the picture hears nothing.
covered=RPButton 250 320 300 5
set covered hit hear
lid=RAnimation 100 300 250 6
set lid movable 0
plain=RAnimation 231 560 40 5
spot=RHotSpot 200 140 60 30 5
set spot tag "spot"
set spot movable 0
set spot dblClick twice
figure=RAnimation 200 280 130 5
set figure tag "figure"
set figure movable 0
set figure mouseDown leave
c.1=RAttributeContainer -1 60 250 40 40 4
c.2=RAttributeContainer -1 160 250 40 40 4
set c.1 tag "first"
set c.2 tag "second"
set c.1 answerPlaced placed
set c.2 answerPlaced placed
a.1=RGraphicAnswer 260 70 410 8
a.2=RGraphicAnswer 260 170 410 8
set c.1 attribute 1
set c.2 attribute 2
set a.1 attribute 1
set a.2 attribute 2
p=RPuzzle 0
set p lockCorrectAnswers 1
for i 1 2
[
play p addContainer "c."+i
play p addAnswer "a."+i
]
set p puzzleSolved solved
clock=RAnimationTrigger 20
set clock newFrame walk
play clock start
