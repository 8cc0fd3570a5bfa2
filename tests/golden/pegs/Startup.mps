; The peg game: jumps, what is refused, a game that ends with too many pegs, and one that is solved. Its
; holes are the board's; the marks are a scene's other things, between pegs that rest and one that is held.
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
