; The map game, p: its board and traps, where pictures lie and which trails are seen, when a run
; ends or is stopped, what the log says of it. Sounds are not there, so that boxes name what is
; played.
yield off
include steps.mps
procedure ended
line=line+" @"+now
procedure born
[
marks=marks+1
mark.marks=RECEIVER
if timed
line=line+" s"+now
]
; the pictures that are there: where, and which frame
procedure see
for n 1 marks
if mark.n#("mark."+n)
[
get mark.n x left
get mark.n y top
get mark.n frame number
line=line+" "+left+","+top+"/"+number
]
procedure way
[
play p clearMoves
for ~words
[
call cut
far=word
call cut
play p addMove far word
]
]
; from a column and a row, with directions and lengths
procedure run
[
call cut
set p startX word
call cut
set p startY word
if ~words
call way
call go
call wait 180
]
procedure go
[
now=0
play p move
]
procedure begin
[
marks=0
p=RMap 20 10
call do "give p cellsH 5 cellsV 5 cellSizeH 10 cellSizeV 8 moveDelay 10"
for n 0 7
set p directionGraphicID n 2310
]
; how runs end, also over the finish, beside the board, on traps with and without sounds, without
; steps; the board's sizes; traps of a shorter text, and after another size
timed=0
p=RMap 20 10
set p finished ended
call do "give p cellsH 5 cellsV 5 moveDelay 10 finishX 4 offMapSoundID 66"
call do "ask p setTerrain 00000000000030010000"
set p trapSoundID 3 33
call do "run 0 0 2 4, run 3 0 2 1 1 2, run 4 4 2 9, run 0 0 5 3, run 3 3 6 1 1 1, run -1 1 2 1"
call do "run 0 2 2 4, run 0 4 0 1, run 2 2 1 1, run 0 0 1 0 2 4 1 -7, run 4 0 2 0"
for n 0 9
set p trapSoundID n 300+n
call do "ask p setTerrain 1x9/:2, run -1 0 2 1, run 0 0 2 1, run 1 0 2 1, run 2 0 2 1, run 3 0 2 1"
call do "tell, ask p setTerrain 5, run -1 0 2 1, run 3 0 2 1, give p cellsV 6, run -1 0 2 1"
call do "give p cellsV 2147483647 cellsH 2147483647, look p cellsH cellsV"
call do "give p cellsH -5 cellSizeH 20000 startX -2147483648, look p cellsH cellSizeH startX, tell"
;% Next move: direction 2, length 4
;% Hit the finish!
;% Map starting moves, moves in queue: 2
;% Didn't hit anything...
;% Ran off the board!
;% Hit trap 3
set OMAnimation born born
; an arrow for each direction; of two trails the older one is still, and the one before that is gone
call do "begin, run 2 2 0 1, see, run 2 2 1 1, run 2 2 2 1, see, run 2 2 3 1, run 2 2 4 1, see"
call do "tell, run 2 2 5 1, run 2 2 6 1, see, run 2 2 7 1, run 0 0 2 3, see, run 0 0 1 1 6 1, see"
set p directionGraphicID 1 99
set p directionGraphicID 6 2712
call do "run 0 0"
set p directionGraphicID 1 -1
call do "run 0 0, see, give p cellsH 200 moveDelay 0"
set p directionGraphicID 2 2712
call do "run 0 0 2 103"
count=0
for n 1 marks
count=count+(mark.n#("mark."+n))
get mark.marks x left
line=line+" "+count+" to "+left
call tell
; pictures in the middle of their cells, also larger ones; where the board goes with them
call do "begin, give p z 30 startGraphicID 2712, see"
call do "give p mapGraphicID 2301 finishGraphicID 2631 finishX 2 finishY 1, see"
call do "give p cellSizeH 8 cellSizeV 7, see, give p x 0 touchy 0, run 0 0 2 1, see"
for n 2 4
[
get mark.n z left
line=line+" "+left
]
get mark.4 touchy left
line=line+","+left
call do "tell, give p startX -2147483648"
get mark.1 x left
line=line+" "+left
call do "give p mapGraphicID 99 startGraphicID -1, see"
p=RMap 20 10
call do "give p cellSizeH 10 finishX 3 finishGraphicID 2712, ask p offset 5 5, look p x"
call do "give p finishGraphicID -1, look p x, give p mapGraphicID 2301, look p x width, tell"
; when the steps come, with other delays meanwhile, and after a pause, which counts once, for its
; run; one that is stopped has not finished; the next one begins anew; no moves have at once
call begin
set p finished ended
timed=1
call do "way 2 4, give p moveDelay 30, ask p pause, go, await 45, give p moveDelay 7, await 90"
call do "way 2 2, give p moveDelay 20, go, ask p resume, await 9, ask p pause, await 90"
call do "ask p pause, await 90, ask p resume, await 90, go, ask p pause, go, await 90, tell"
call do "give p moveDelay 10, go, await 18, go, await 18, ask p interruptMove, await 90"
call do "note stopped, go, ask p clearMoves, ask p move, await 90, way 2 2 2 2, go, await 15"
call do "way 1 1, await 90, tell"
; who waits for a run that goes on waits for its end
call do "way 2 2, give p moveDelay 20, go, ask p pause, await 9"
play p resume }
call do "see, tell"
quit
;=  @39 @29 @9 @9 @19 @9 @19 @9 @9 @39 @9 @9 @9 @9 @9 @9
;=  @9 @9 @9 250,1000 0,10000,-1000000
;=  32,7/1 33,24/2 42,15/1 23,16/2 42,7/1
;=  23,8/2 42,23/1 23,24/2 22,-1/1 32,-1/1 42,-1/1 23,0/2 33,0/2 43,0/2 12,7/1 22,15/1 23,18/1 23,18/1 101 to 1043
;=  13,2/1 13,2/1 20,10/1 23,7/1 12,2/1 20,10/1 18,6/1 0,2/1 8,10/1 6,6/1 7,-1/1 30 31 31,0
;=  -8000000 6,6/1 7,-1/1 48 25 25,416
;=  s29 s45 s46 @50 s50 s199 @219 s219 s19 @39 s39
;=  s9 s9 stopped s9 @19 s19 s9 s19 @29 s29
;=  s9 23,0/2 33,0/2 33,8/2 32,-1/1
;! WAVE resource 66 not found.
;! WAVE resource 66 not found.
;! WAVE resource 66 not found.
;! WAVE resource 33 not found.
;! WAVE resource 301 not found.
;! WAVE resource 309 not found.
;! WAVE resource 305 not found.
;! ASEQ resource 99 not found.
;! ASEQ resource 99 not found.
;! Invoking method "move"\ncaused event "finished" (ignored)\n
