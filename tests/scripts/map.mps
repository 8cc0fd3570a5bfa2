; The map game as scripts see it: what a new one has, its indexed properties, who waits for a run,
; and copies. The game itself is in tests/activities.
yield off
include things.mps
procedure row d
[
call do "run 1 clearMoves, run 1 addMove "+d+" "+length
play t.1 move }
line=line+" "+d
]
t.1=RMap 40 50 7
call do "of 1 moveDelay, of 1 cellsH, of 1 offMapSoundID, of 1 finishGraphicID, tell"
;=  60 0 -1 -1
call do "let 1 cellsH 4, let 1 cellsV 3, let 1 cellSizeH 38, let 1 cellSizeV 44, let 1 finishX 3"
play t.1 setTerrain "oooo"+"oo2o"+"o"
for i -1 10
[
set t.1 trapSoundID i 300+i
set t.1 directionGraphicID i 2201
]
set t.1 trapSoundID 1 208
for n -1 10
[
get t.1 directionGraphicID n a
get t.1 trapSoundID n b
line=line+" "+(a|3)+"/"+(b||2)
]
get t.1 directionGraphicID a
call tell
say "["+a+"]"
;=  / 01/00 01/08 01/02 01/03 01/04 01/05 01/06 01/07 /08 /09 /
;= []
; along the row, which leaves three pictures; into a trap without a sound, off the map, and in no
; direction
set t.1 directionGraphicID 2 2202
length=3
call row 2
call do "of 1 width, of 1 height, of 1 x"
call row 0
set t.1 startX 2
call row 1
set t.1 startX 0
length=1
call row 6
call row 9
call tell
;=  2 112 42 79 0 1 6 9
;! WAVE resource 302 not found.
;! RMap: unknown direction 9, they go from 0 to 7
; a copy has its own pictures, and goes on when the first map is dropped
call do "let 1 visible 0, let 1 mapGraphicID 2202, let 1 finishGraphicID 2201, run 1 addMove 1 3"
play t.1 move
t.2=t.1
call do "lose t.1, of 2 finishX, of 2 width, of 2 x, of 2 visible, tell"
;=  3 151 40 0
play t.2 move }
say "the copy has waited"
;= the copy has waited
quit
