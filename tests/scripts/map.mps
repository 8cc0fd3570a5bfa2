; The map game as scripts see it: what a new one has, its indexed properties, who waits for a run,
; and copies. The game itself is in tests/activities.
yield off
procedure row d
[
play m clearMoves
play m addMove d length
play m move }
line=line+" "+d
]
m=RMap 40 50 7
get m moveDelay a
get m cellsH b
get m offMapSoundID c
get m finishGraphicID d
say a b c d
;= 60 0 -1 -1
set m cellsH 4
set m cellsV 3
set m cellSizeH 38
set m cellSizeV 44
set m finishX 3
play m setTerrain "oooo"+"oo2o"+"o"
for i -1 10
[
set m trapSoundID i 300+i
set m directionGraphicID i 2201
]
set m trapSoundID 1 208
directions=""
traps=""
for n -1 10
[
get m directionGraphicID n a
get m trapSoundID n b
directions=directions+" "+a
traps=traps+" "+b
]
get m directionGraphicID a
say directions "/" traps "/" a
;=   2201 2201 2201 2201 2201 2201 2201 2201    /   300 208 302 303 304 305 306 307 308 309  / 
; along the row, which leaves three pictures; into a trap without a sound, off the map, and in no
; direction
set m directionGraphicID 2 2202
line="waited for"
length=3
call row 2
get m width a
get m height b
get m x c
say a b c
;= 112 42 79
call row 0
set m startX 2
call row 1
set m startX 0
length=1
call row 6
call row 9
say line
;= waited for 2 0 1 6 9
;! WAVE resource 302 not found.
;! RMap: unknown direction 9, they go from 0 to 7
; a copy has its own pictures, and goes on when the first map is dropped
set m visible 0
set m mapGraphicID 2202
set m finishGraphicID 2201
play m addMove 1 3
play m move
other=m
drop m
get other finishX a
get other width b
get other x c
get other visible d
say a b c d
;= 3 151 40 0
play other move }
say "the copy has waited"
;= the copy has waited
quit
