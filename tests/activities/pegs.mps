; The peg game: which hole a peg is dropped into, to the pixel, holding one, what handlers do, filling and taking out.
; Hole 1 lies apart, all others in a row of 42 pixels each; what is said are the holes that are empty.
;: rsc golden
; the player's hand: after each pause of the script, which lasts 90 ms
;> 10 down 230 115
;> 15 move 285 315
;> 20 up 285 315
;> 30 down 230 115
;> 35 move 345 315
;> 40 up 345 315
;> 50 down 230 115
;> 55 move 315 285
;> 60 up 315 285
;> 70 down 230 115
;> 75 move 315 345
;> 80 up 315 345
;> 100 down 230 115
;> 115 move 344 286
;> 120 up 344 286
;> 200 down 524 115
;> 205 move 149 115
;> 210 up 149 115
;> 290 down 524 115
;> 295 move 230 115
;> 300 up 230 115
;> 370 down 230 115
;> 460 move 315 315
;> 550 background
;> 560 up 315 315
;> 570 foreground
;> 640 down 315 315
;> 725 move 500 400
;> 730 up 500 400
;> 820 down 524 115
;> 825 move 259 115
;> 830 up 259 115
;> 910 down 230 115
;> 915 move 315 315
;> 920 up 315 315
;> 1000 down 230 115
;> 1005 move 315 315
;> 1010 up 315 315
;> 1090 down 230 115
;> 1095 move 315 315
;> 1100 up 315 315
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
procedure leave one two
[
play game fill
for i 1 15
if (i#one)*(i#two)
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
set OMAnimation born born
pegs=0
call start
get game pegsLeftForSolved a
get game pegMovingZ b
say a b
call tell "at first"
play game removePeg 3
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
DisplayScreen
pause 0.1
call tell "peg 6 beside 1 on four sides"
pause 0.1
call tell "onto its corner"
set game pegX 6 160
pause 0.1
call tell "peg 13 onto 4 and 6: the first counts"
set game pegX 6 215
pause 0.1
call tell "peg 13 to 6"
play game removePeg 1
play game reset
set game pegMovingZ 90
pause 0.1
set game pegX 6 1061
set game pegX 10 1061
call tell "peg 6 is held and stays, its hole and 10 are far"
pause 0.1
call tell "above 1"
set game pegX 6 215
set game pegX 10 383
pause 0.1
call tell "released elsewhere"
pause 0.1
play game removePeg 1
pause 0.1
call tell "taken out while it was held"
play game fill
play game removePeg 13
set game pegID 281
play game fill
set game pegID 450
play game removePeg 6
pause 0.1
call tell "a large one from 13 to a hole of the first size"
call leave 3 6
set game solved anew
pause 0.1
call tell "begun anew"
call leave 3 6
set game solved gone
pause 0.1
call start
call leave 3 6
set game pegsLeftForSolved 0
set game noMoreMoves gone
pause 0.1
;= peg 6 beside 1 on four sides : 1
;= onto its corner : 3 6
;= peg 13 onto 4 and 6: the first counts : 3 6
;= peg 13 to 6 : 3 9 13
;= peg 6 is held and stays, its hole and 10 are far at 90: 1 10
;= above 1 at 90: 6 10
;= released elsewhere : 3 6
;= taken out while it was held : 1 3 6
;= a large one from 13 to a hole of the first size : 9 13
;= anew
;= begun anew : 15
;= gone
;= gone
;! ASEQ resource 99 not found.
;! Nested interrupt on OMAnimation's event
