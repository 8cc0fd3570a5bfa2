; The map game: its board and traps, where pictures lie and which trails are seen, and when a run ends or is stopped. The
; boxes tell when; sounds are not there, so that boxes name the one that is played.
yield off
procedure ended
MessageBox "finished"
procedure born
[
marks=marks+1
mark.marks=RECEIVER
if times
MessageBox "step"
]
; the pictures that are there: where, and which frame
procedure tell what
[
for n 1 marks
if mark.n#("mark."+n)
[
get mark.n x p
get mark.n y q
get mark.n frame r
what=what+" "+p+","+q+"/"+r
]
MessageBox what
]
procedure moves way far other more
[
play m clearMoves
play m addMove way far
if more
play m addMove other more
more=0
]
procedure run column row
[
set m startX column
set m startY row
play m move
pause 0.2
]
procedure begin
[
marks=0
m=RMap 20 10
set m cellsH 5
set m cellsV 5
set m cellSizeH 10
set m cellSizeV 8
set m moveDelay 10
for n 0 7
set m directionGraphicID n 2310
]
times=0
more=0
; the board's sizes; the traps of 3 x 2 cells, of a shorter text, and after another size
call begin
set m cellsV 2147483647
set m cellsH 2147483647
get m cellsH a
get m cellsV b
set m cellsH -5
get m cellsH c
set m cellSizeH 20000
get m cellSizeH e
set m startX -2147483648
get m startX f
MessageBox "most "+a+" "+b+" "+c+" "+e+" "+f
procedure traps
[
play m clearMoves
play m addMove 2 1
for n 0 1
for k -1 1
[
set m startX k
set m startY n
play m move }
]
MessageBox "all cells"
]
m=RMap 20 10
set m cellsH 3
set m cellsV 2
set m moveDelay 0
for n 0 9
set m trapSoundID n 300+n
play m setTerrain "1x9/:20000"
call traps
play m setTerrain "5"
set m cellsH 3
call traps
set m cellsV 3
call traps
;@ 1 most 250 1000 0 10000 -1000000
;@ 2 WAVE resource 301 not found.
;@ 4 WAVE resource 309 not found.
;@ 7 WAVE resource 302 not found.
;@ 7 all cells
;@ 8 WAVE resource 305 not found.
;@ 13 all cells
;@ 19 all cells
set OMAnimation born born

; an arrow for each direction; of two trails the older one is still, and the one before that is gone
call begin
ways="all ways"
for i 0 7
[
call moves i 1
call run 2 2
get mark.marks x p
get mark.marks y q
ways=ways+" "+p+","+q
]
MessageBox ways
call moves 2 3
call run 0 0
call tell "three"
call moves 1 1 6 1
call run 0 0
call tell "three and two"
set m directionGraphicID 1 99
set m directionGraphicID 6 2712
call run 0 0
set m directionGraphicID 1 -1
call run 0 0
call tell "one each"
set m cellsH 200
set m moveDelay 0
set m directionGraphicID 2 2712
call moves 2 103
call run 0 0
c=0
for n 1 marks
if mark.n#("mark."+n)
c=c+1
get mark.marks x p
MessageBox "a long trail and the last one: "+c+", ends at "+p
;@ 1459 all ways 32,7 32,23 42,15 22,15 42,7 22,7 42,23 22,23
;@ 1639 three 23,24/2 22,-1/1 32,-1/1 42,-1/1
;@ 1819 three and two 23,0/2 33,0/2 43,0/2 12,7/1 22,15/1
;@ 1829 ASEQ resource 99 not found.
;@ 2179 one each 23,18/1 23,18/1
;@ 2359 a long trail and the last one: 101, ends at 1043

; pictures in the middle of their cells, also larger ones; where the board goes with them
call begin
set m z 30
set m startGraphicID 2712
call tell "start"
set m mapGraphicID 2301
set m finishGraphicID 2631
set m finishX 2
set m finishY 1
call tell "map and finish"
set m cellSizeH 8
set m cellSizeV 7
call tell "smaller cells"
set m x 0
set m touchy 0
call moves 2 1
call run 0 0
call tell "moved"
get mark.2 z a
get mark.4 z b
get mark.4 touchy c
MessageBox "depths "+a+" "+b+", touchy "+c
set m startX -2147483648
get mark.1 x p
set m mapGraphicID 99
set m startGraphicID -1
call tell "start at "+p+", without map and start"
m=RMap 20 10
set m cellSizeH 10
set m finishX 3
set m finishGraphicID 2712
play m offset 5 5
get m x a
set m finishGraphicID -1
get m x b
set m mapGraphicID 2301
get m x c
get m width d
MessageBox "by its finish, without, by its map: "+a+" "+b+" "+c+" "+d
;@ 2359 start 13,2/1
;@ 2359 map and finish 13,2/1 20,10/1 23,7/1
;@ 2359 smaller cells 12,2/1 20,10/1 18,6/1
;@ 2539 moved 0,2/1 8,10/1 6,6/1 7,-1/1
;@ 2539 depths 30 31, touchy 0
;@ 2539 ASEQ resource 99 not found.
;@ 2539 start at -8000000, without map and start 6,6/1 7,-1/1
;@ 2539 by its finish, without, by its map: 48 25 25 416

; when the steps come, with other delays meanwhile, and after a pause, which counts once and for its run alone
call begin
set m finished ended
times=1
d=0
call moves 2 4
set m moveDelay 30
play m pause
play m move
pause 0.05
set m moveDelay 7
pause 0.1
MessageBox "in a pause"
call moves 2 2
set m moveDelay 20
play m move
play m resume
pause 0.01
play m pause
pause 0.1
play m pause
pause 0.1
play m resume
pause 0.1
MessageBox "not in a pause"
play m move
play m pause
play m move
pause 0.1
;@ 2569 step
;@ 2585 step
;@ 2586 step
;@ 2590 finished
;@ 2590 step
;@ 2674 in a pause
;@ 2874 step
;@ 2894 finished
;@ 2894 step
;@ 2953 not in a pause
;@ 2973 step
;@ 2993 finished
;@ 2993 step
; one that is stopped has not finished; the next one begins anew; and no moves have at once, while a run goes on
set m moveDelay 10
play m move
pause 0.02
play m move
pause 0.02
play m interruptMove
pause 0.1
MessageBox "stopped twice"
play m move
play m clearMoves
play m move
pause 0.1
MessageBox "as if it had not been called"
call moves 2 2 2 2
play m move
pause 0.017
call moves 1 1
pause 0.1
;@ 3053 step
;@ 3071 step
;@ 3169 stopped twice
;@ 3169 Invoking method "move"\ncaused event "finished" (ignored)\n
;@ 3179 step
;@ 3189 finished
;@ 3189 step
;@ 3259 as if it had not been called
;@ 3269 step
;@ 3279 step
;@ 3289 finished
;@ 3289 step
; handlers that move again and that drop the map, also when there are no moves
procedure again
[
MessageBox "again"
set m finished gone
play m move
]
procedure gone
[
MessageBox "gone"
drop m
]
times=0
set m finished again
play m move
pause 0.1
call begin
play m resume }
MessageBox "nothing to wait for"
;@ 3374 again
;@ 3384 gone
;@ 3454 nothing to wait for
quit
