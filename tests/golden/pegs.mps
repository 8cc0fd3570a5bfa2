; The peg game: a jump, a new game, and pegs of another picture. Its holes are the board's; the
; marks are a scene's other things, between pegs that rest and one that is held. The game itself is
; in tests/activities.
;: rsc golden
; from 4 over 2 into 1, which is empty; back over the gap, by the corner of its picture
;> 50 screenshot begun.png
;> 60 down 255 195
;> 65 move 302 140
;> 70 screenshot held.png
;> 72 drag 302 140 312 80
;> 75 screenshot jumped.png
;> 76 drag 301 61 200 440
;> 80 screenshot jumped.back.png
;> 140 screenshot other.png
; a hole elsewhere, whose peg comes along; the last jump
;> 150 drag 375 195 315 75
;> 180 screenshot solved.png
;> 230 screenshot both.png
;> 320 screenshot none.png
yield off
ActivateDLL golden.rsc
procedure won
say "solved"
Scene 100
game=RPegGame 10
set game pegID 450
set game pegMovingZ 50
set game pegsLeftForSolved 1
set game solved won
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
DisplayScreen
pause 0.1
play game fill
for i 1 15
if (i=3)+(i=6)=0
play game removePeg i
set game pegX 10 500
set game pegY 10 60
pause 0.1
set game pegID 263
play game fill
pause 0.1
drop game
;= solved
