; The map game as scripts see it: the numbers of its indexed properties, who waits for a run, events that
; are heard and one that is not, and a run for each way to end.
yield off
procedure ended
say "finished"
procedure tell
[
get m directionGraphicID n a
get m trapSoundID n b
say n "direction" a "trap" b
]
procedure row
[
play m clearMoves
play m addMove d length
play m move }
say "waited for direction" d
]
m=RMap 40 50 7
get m moveDelay a
get m cellsH b
get m offMapSoundID c
get m finishGraphicID d
say "at first" a b c d
set m cellsH 4
set m cellsV 3
set m cellSizeH 38
set m cellSizeV 44
set m finishX 3
play m setTerrain "oooo"+"oo2o"+"o"
for i 0 9
set m trapSoundID i 300+i
for i 0 7
set m directionGraphicID i 2201
set m directionGraphicID 8 1
set m directionGraphicID -1 1
set m trapSoundID 10 1
set m trapSoundID 1 208
for n -1 10
call tell
get m directionGraphicID a
say "without a number" a
; along the row, which leaves three pictures
set m directionGraphicID 2 2202
length=3
d=2
call row
get m width a
get m height b
get m x c
say "a trail" a b "from" c
d=0
call row
set m startX 2
d=1
call row
set m startX 0
length=1
d=6
call row
d=9
play m addMove d 1
; heard while the script does not wait
set m finished ended
play m move
play m interruptMove
play m move
pause 3
play m clearMoves
play m move
play m move }
say "no moves"
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
say "a copy" a b "from" c "visible" d
play other move }
say "the copy has waited"
quit
;= at first 60 0 -1 -1
;= -1 direction  trap 
;= 0 direction 2201 trap 300
;= 1 direction 2201 trap 208
;= 2 direction 2201 trap 302
;= 3 direction 2201 trap 303
;= 4 direction 2201 trap 304
;= 5 direction 2201 trap 305
;= 6 direction 2201 trap 306
;= 7 direction 2201 trap 307
;= 8 direction  trap 308
;= 9 direction  trap 309
;= 10 direction  trap 
;= without a number 
;= waited for direction 2
;= a trail 112 42 from 79
;= waited for direction 0
;= waited for direction 1
;= waited for direction 6
;= finished
;= no moves
;= a copy 3 151 from 40 visible 0
;= the copy has waited
;! WAVE resource 302 not found.
;! RMap: unknown direction 9, they go from 0 to 7
;! Invoking method "move"\ncaused event "finished" (ignored)\n
;! Invoking method "move"\ncaused event "finished" (ignored)\n
