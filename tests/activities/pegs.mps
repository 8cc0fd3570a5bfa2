; The peg game: which hole a peg is dropped into, to the pixel, holding one, what handlers do, filling and taking out.
; Hole 1 lies apart, all others in a row of 42 pixels each; what is said are the holes that are empty.
;: rsc golden
; from 6 beside hole 1 on four sides, and onto its corner
;> 100 down 230 115
;> 110 move 285 315
;> 120 up 285 315
;> 130 down 230 115
;> 140 move 345 315
;> 150 up 345 315
;> 160 down 230 115
;> 170 move 315 285
;> 180 up 315 285
;> 190 down 230 115
;> 200 move 315 345
;> 210 up 315 345
;> 220 key t
;> 230 down 230 115
;> 240 move 344 286
;> 250 up 344 286
;> 260 key t
; from 13 over 9 to 6, which lies on 4 then: the first hole counts; then to 6 alone
;> 300 key f
;> 310 down 524 115
;> 320 move 149 115
;> 330 up 149 115
;> 340 key t
;> 350 key b
;> 360 down 524 115
;> 370 move 230 115
;> 380 up 230 115
;> 390 key t
; one that is held stays under the pointer when its hole moves, one that rests goes along; a button that is released
; elsewhere drops it; then one that is taken out while it is held
;> 400 key n
;> 410 down 230 115
;> 420 key h
;> 430 move 315 315
;> 440 key z
;> 450 background
;> 455 up 315 315
;> 460 foreground
;> 470 key b
;> 480 key t
;> 500 down 315 315
;> 510 key x
;> 520 move 500 400
;> 530 up 500 400
;> 540 key t
; a larger peg, in a hole of the size of the first one
;> 550 key l
;> 560 down 524 115
;> 570 move 259 115
;> 580 up 259 115
;> 590 key t
; handlers that begin anew, and that drop the game
;> 600 key s
;> 610 down 230 115
;> 620 move 315 315
;> 630 up 315 315
;> 640 key t
;> 650 key d
;> 660 down 230 115
;> 670 move 315 315
;> 680 up 315 315
;> 700 key e
;> 710 down 230 115
;> 720 move 315 315
;> 730 up 315 315
yield off
ActivateDLL golden.rsc
procedure born
[
pegs=pegs+1
peg.pegs=RECEIVER
]
procedure look
[
deep=" "
for n 1 15
full.n=0
for n 1 pegs
[
if peg.n#("peg."+n)
[
get peg.n x p
get peg.n y q
get peg.n z r
p=(p-5)/42+1
if q=300
p=1
full.p=1
if r#5
deep=" at "+r
]
]
]
procedure tell what
[
call look
what=what+deep+":"
for n 1 15
[
if full.n=0
what=what+" "+n
]
say what
]
procedure leave one two three
[
play game fill
for i 1 15
if (i#one)*(i#two)*(i#three)
play game removePeg i
]
procedure anew
[
say "anew"
play game reset
]
procedure gone
[
say "gone"
drop game
]
procedure start
[
game=RPegGame 5
set game pegID 450
for n 1 15
[
set game pegX n n*42-37
set game pegY n 100
]
set game pegX 1 300
set game pegY 1 300
]
procedure onKey
[
get keys key word
drop wait
]
set OMAnimation born born
pegs=0
call start
get game pegsLeftForSolved a
get game pegMovingZ b
say a b
call tell "at first"
play game removePeg 3
call tell "none to take"
play game fill
play game removePeg 5
play game removePeg 5
play game removePeg 15
call tell "two taken"
play game reset
call tell "but the last"
wrong=[0 16 -1 none
for k 1 4
[
play game removePeg 8
play game removePeg wrong.k
set game pegX wrong.k 77
get game pegX wrong.k a
get game pegY wrong.k b
play game reset
call tell "wrong "+wrong.k+"["+a+b+"]"
]
pegs=0
for n 1 15
emptied.n=0
for k 1 80
[
play game fill
if k>40
play game removePeg ""
else
play game removePeg
play game reset
call look
for n 1 15
if full.n=0
emptied.n=1
]
a=0
for n 1 15
a=a+emptied.n
say "by chance" a "of them"
set game pegID -1
play game fill
call tell "none of no picture"
set game pegID 99
play game reset
;= 15 5
;= at first : 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15
;= none to take : 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15
;= two taken : 5 15
;= but the last : 15
;= wrong 0[] : 1
;= wrong 16[] : 1
;= wrong -1[] : 1
;= wrong none[] : 1
;= by chance 15 of them
;= none of no picture : 11
set game pegID 450
play game removePeg 1
play game reset
keys=RKbdInp 0
set keys keyPressed onKey
DisplayScreen
for
[
wait
if word="t"
call tell "now"
if word="f"
set game pegX 6 160
if word="b"
[
set game pegX 6 215
set game pegX 10 383
]
if word="n"
[
play game removePeg 1
play game reset
set game pegMovingZ 90
]
if word="h"
[
set game pegX 6 1061
set game pegX 10 1061
call tell "hole 10 is 25 and 6 is held"
]
if word="z"
call tell "still"
if word="x"
play game removePeg 1
if word="l"
[
play game fill
play game removePeg 13
set game pegID 281
play game fill
set game pegID 450
play game removePeg 6
]
if word="s"
[
call leave 3 6 0
set game solved anew
set game noMoreMoves anew
]
if word="d"
[
call leave 3 6 0
set game solved gone
]
if word="e"
[
call start
call leave 3 6 0
set game pegsLeftForSolved 0
set game noMoreMoves gone
]

]
;= now : 1
;= now : 3 6
;= now : 3 6
;= now : 3 9 13
;= hole 10 is 25 and 6 is held at 90: 1 10
;= still at 90: 6 10
;= now : 3 6
;= now : 1 3 6
;= now : 9 13
;= anew
;= now : 15
;= gone
;= gone
;! ASEQ resource 99 not found.
;! Nested interrupt on OMAnimation's event
