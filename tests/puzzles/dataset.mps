; What a puzzle is filled with: entries of its data set, by number and by chance, and the texts and
; pictures of its own that go with them.
;: rsc golden
;: face
yield off
ActivateDLL golden.rsc
include steps.mps
procedure born
[
all=all+1
c.all=RECEIVER
]
set RText born born
set OMAnimation born born
procedure living
[
alive=0
for i 11 all
alive=alive+((~c.i)=1)
]
procedure begin count
[
drop p a.1 a.2 a.3 a.4
all=10
p=RPuzzle 0
if count>0
for i 1 count
[
a.i=RGraphicAnswer -1 0 0 5
call do "ask p addAnswer a."+i
]
for i 1 2
[
c.i=kinds.2
call do "ask p addContainer c."+i
]
call clear
]
procedure clear
for i 1 4
if (~a.i)=1
set a.i attribute "x"
procedure read
[
order=""
for i 1 4
if (~a.i)=1
[
get a.i attribute got
order=order+got
]
]
procedure filled
[
play p start
call read
line=line+" "+order
call do "look c.1 attribute, look c.2 attribute"
]

; Answers and containers in their order, each in its own property; calls add, an empty word ends.
call makeKinds 100 100
call begin 1
drop c.1 c.2
a.2=RGraphicTextAnswer -1 0 0 5
a.3=RDoubleGraphicTextAnswer -1 0 0 5
for i 1 6
[
c.i=kinds.i
play p addContainer "c."+i
]
call do "ask p addAnswer a.2, ask p addAnswer a.3, give a.2 value 77, give a.3 text1 old"
call do "ask p setAnswer 1 4 266 two second  none none, ask p setAnswer 1 three "
call do "ask p setContainer 1 12x harbour -3, ask p setContainer 1 4two 5 6 lost  none, ask p start"
call do "look a.1 attribute graphicID value width, look a.2 attribute text value"
call do "look a.3 attribute text1, look c.1 value, look c.2 attribute, look c.3 value"
call do "look c.5 value, look c.6 correctSegments, put a.1 c.4, put a.2 c.4, look c.4 isSolved"
call do "tell"
; With too few, the rest stays as it is; with too many, the last are not used.
call begin 3
call do "ask p setAnswer 1 a -1 b -1 c -1 d -1, ask p setContainer 1 k l m, filled"
call begin 3
call do "give c.2 attribute x, ask p setAnswer 1 e -1 f -1, ask p setContainer 1 v, filled"
call do "give p scrambleAnswers 1"
wrong=0
for j 1 20
[
call clear
play p start
call read
wrong=wrong+(("e"@order)*("f"@order)*("x"@order)=0)
]
; Scrambled answers come in every order of an even number of exchanges, about equally often.
call begin 4
play p setAnswer 1 a -1 b -1 c -1 d -1 e -1
call do "filled, filled, give p scrambleAnswers 1"
for k 31 124
drawn.k=0
for j 1 1200
[
play p start
call read
k=("a"@order)*25+(("b"@order)*5)+("c"@order)
drawn.k=drawn.k+1
]
often=0
rare=0
for k 31 124
if drawn.k>49
often=often+1
else
rare=rare+drawn.k
drop a.4 a.3 a.2
call do "tell, ask p start, look a.1 attribute, lose a.1, ask p start"
say line wrong often rare drawn.58
line=""
; Every entry is picked, those that were skipped too; of none nothing is.
call begin 1
call do "ask p start, ask p setAnswer 3 third -1, ask p setAnswer 1 first -1"
names=[first x third
picked=[0 0 0
for j 1 600
[
call clear
play p start
call read
for i 1 3
picked.i=picked.i+(order=names.i)
]
say picked.1>120 picked.2>120 picked.3>120 picked.1+picked.2+picked.3
; Numbers of entries; the last one.
call do "ask p setAnswer one 1 266, ask p setContainer 1001 1"
call do "ask p setPuzzleText 1001 1 1 1 1 text, ask p setPuzzleGraphic 0 1 266, begin 0"
call do "ask p setPuzzleText 1000 1 10 10 30 last"

; Texts: a line at its left edge, middle or right edge, or a box.
procedure show
[
all=10
play p start
for i 11 all
[
call do "look c."+i+" x y z text textWidth textHeight wrap colorIndex fontAscent touchy movable"
if (i%3=1)+(i=all)>0
call tell
]
]
call do "begin 0, ask p setPuzzleTextFont 300   7, ask p setPuzzleText 1 1 100 50 30 ABA"
call do "ask p setPuzzleText 1 1 100 50 30 ABA 1, ask p setPuzzleText 1 1 100 50 30 ABA 2"
call do "ask p setPuzzleText 1 1 100 50 30 ABA 3, ask p setPuzzleText 1 1 100 50 30 ABA x"
play p setPuzzleText 1 70000 -5 50x -4 ABA
play p setPuzzleText 1 1 100 50 60 20 30 "AB AB"
call do "ask p setPuzzleText 1 1 100 50 6 20 30 3, ask p setPuzzleText 1 1 100 50 30"
say all-10
call show
; Fonts and colours are those of the next start; one without a style is a bitmap font.
call begin 0
call do "ask p setPuzzleText 1 1 10 10 30 AB, ask p start"
play p setPuzzleTextFont 300 "" "" 9
call do "look c.11 colorIndex, look p puzzleTextColorIndex"
fonts=["Golden Letters" "301" "300"
sizes=["20" "24" ""
styles=["1" "" ""
for j 1 3
[
play p setPuzzleTextFont fonts.j sizes.j styles.j j
if j=3
set p puzzleTextColorIndex 6
call show
]
; Pictures, at their own places and at others; one that there is not.
call do "begin 0, ask p setPuzzleGraphic 1 60 220, ask p setPuzzleGraphic 1 1 2 -3 65756"
call do "ask p setPuzzleGraphic 1 1 2 3 405, ask p start"
for i 11 all
call do "look c."+i+" x y z touchy movable"
; What is there is that of the last start, which takes no answer out.
call begin 1
call do "put a.1 c.1, ask p setPuzzleText 1 1 10 10 30 first, ask p setPuzzleGraphic 2 30 266"
all=10
call do "ask p start, ask p start, living, look a.1 isUsed"
say alive
drop p
call living
say alive line
quit
;=  4,266,4,20 two,second,77 three, 12 harbour -3 5 6 1
;=  abc k l efx v x abcd   abcd  
;=  a 0 12 0 0
;= 1 1 1 600
;= 0
;=  100,50,30,ABA,30,10,0,7,8,0,0 100,50,30,ABA,30,10,0,7,8,0,0 85,50,30,ABA,30,10,0,7,8,0,0
;=  70,50,30,ABA,30,10,0,7,8,0,0 100,50,30,ABA,30,10,0,7,8,0,0 -5,50,-4,ABA,30,10,0,7,8,0,0
;=  100,50,30,AB AB,60,20,1,7,8,0,0 100,50,30,3,6,20,1,7,8,0,0 100,50,30,,0,10,0,7,8,0,0
;=  0 9 10,10,30,AB,42,20,0,1,16,0,0
;=  10,10,30,AB,20,10,0,2,8,0,0
;=  10,10,30,AB,20,10,0,6,8,0,0
;= 1
;= 0  302,197,60,0,0 3,-1,-3,0,0 1
;! RPuzzle: entry number 0 is not between 1 and 1000
;! RPuzzle: entry number 1001 is not between 1 and 1000
;! RPuzzle: entry number 1001 is not between 1 and 1000
;! RPuzzle: entry number 0 is not between 1 and 1000
;! ASEQ resource 405 not found.
