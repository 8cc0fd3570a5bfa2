; The peg game: jumps, what is refused, a game that ends with too many pegs, and one that is solved. Its
; holes are the board's; the marks are a scene's other things, between pegs that rest and one that is held.
;: rsc golden
;$ screens
; hole 1 is empty; from 4 over 2 into 1
;> 100 screenshot begun.png
;> 110 down 255 195
;> 120 move 302 140
;> 130 screenshot held.png
;> 140 move 312 80
;> 150 up 312 80
;> 160 screenshot jumped.png
; from 6 nothing leads into 2; dropped beside all holes; dropped on a peg; from 1 back over the gap
;> 200 drag 375 195 285 135
;> 230 screenshot jumped.refused.png
;> 240 down 375 195
;> 250 move 600 440
;> 260 screenshot away.png
;> 270 up 600 440
;> 280 drag 375 195 345 135
;> 310 drag 315 75 255 195
;> 340 screenshot jumped.still.png
; through the corner of a peg's picture
;> 350 drag 301 61 200 440
;> 380 screenshot jumped.corner.png
; a new game at another hole
;> 400 key r
;> 410 screenshot other.png
; three pegs: one jump, and the two that are left are too many
;> 500 key l
;> 510 screenshot three.png
;> 520 drag 375 195 315 75
;> 550 screenshot lost.png
; a hole elsewhere; its peg comes along
;> 600 key w
;> 610 key m
;> 620 screenshot two.png
; solved
;> 700 drag 375 195 315 75
;> 730 screenshot solved.png
; all filled again with other pegs, and the end
;> 800 key p
;> 810 key r
;> 820 screenshot both.png
;> 900 key d
;> 910 screenshot none.png
yield off
ActivateDLL golden.rsc
procedure won
say "solved"
procedure lost
say "no more moves"
; leaves three pegs
procedure leave one other third
[
play game fill
for i 1 15
if i#one
if i#other
if i#third
play game removePeg i
]
procedure onKey
[
get keys key word
if word="r"
[
play game removePeg 5
play game reset
]
if word="l"
call leave 3 6 11
if word="w"
call leave 3 6 0
if word="m"
[
set game pegX 3 500
set game pegY 3 60
]
if word="p"
set game pegID 263
if word="d"
drop game
]
Scene 100
game=RPegGame 10
set game pegID 450
set game pegMovingZ 50
set game pegsLeftForSolved 1
set game solved won
set game noMoreMoves lost
hole=1
for line 0 4
for column 0 line
[
set game pegX hole 300-line*30+column*60
set game pegY hole 60+line*60
hole=hole+1
]
play game reset
stripe=RAnimation 262 280 130 20
set stripe touchy 0
keys=RKbdInp 0
set keys keyPressed onKey
DisplayScreen
;= no more moves
;= solved
