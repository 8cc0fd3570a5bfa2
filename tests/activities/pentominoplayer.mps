; A player carries pieces of the pentomino board, p, to the tools and drops them; handlers put the
; held one elsewhere, make another one of it or drop the board. The sounds are not there, so that
; boxes tell which one is played. Of pieces 7 and 10 are told cell and view. At last cursors are seen.
;: rsc golden
;> 5 key W
;$ then --input content/drags --until 1000
yield off
ActivateDLL golden.rsc
include player.mps
include steps.mps
; Piece 10, the rotater, off it, the flipper, both tools; piece 7.
spots=["439 391" "464 206" "309 231" "464 101" "59 391" "109 131" "129 151"
; Four times round, with a step on the tool; mirrored, straight to the other tool and back; on both
; tools the flipper counts; what is left on it holds the next one up until that is off.
plot=[d1 m2 "m466 209" m3 "view" m2 m3 "view" m2 m3 "view" m2 m3 "view" m4 m2 m4 m3 view
plot=["give p piecePickedUpSoundID -1 rotaterGraphicID 99 rotaterGraphicID -1"
plot=["look p rotaterGraphicID, give p rotaterGraphicID 440" u3
plot=["d439 371" "m447 114" "u447 114" d5 m4 "m570 101" m4 u4 "cells"
; Put on the board while it is held, then carried on; reset, after it was put where it began;
; dropped by a button that is released elsewhere.
plot=[d5 "m370 300" "ask p setPieceCellXY 7 0 0" "m390 320" "u390 320" "cells" d7
plot=["ask p setPieceCellXY 7 0 0" "m470 300" "ask p setPieceCellXY 10 1 2, ask p reset" m7 b0 u7 f0
plot=["m570 400" "cells, pickedAgain"
; Made anew when it is picked up; the board goes in these events.
plot=["d109 131" u7 "cells, solvedGone" d5 m6 u6
plot=["begin, pickedGone" d5 m6 u6 "tell, begin, cursors" m5 d5 u5 d5 "lose p" end
procedure writeDrags
call writePlot
procedure cells
[
for n 7 10 3
[
get p pieceCellX n left
get p pieceCellY n top
get p pieceView n number
line=line+" "+left+","+top+"/"+number
]
MessageBox line
line=""
]
procedure view
[
get p pieceView 10 number
line=line+" "+number
]
procedure cursors
call do "give p pieceGrabAOCursorID -4 pieceSpotAOCursorID -2 piecePickedUpSoundID -1"
procedure again
[
call do "note again"
call piece 7
]
procedure gone
call do "note gone, lose p"
procedure pickedAgain
set p piecePickedUp again
procedure pickedGone
set p piecePickedUp gone
procedure solvedGone
[
set p piecePickedUp
call do "ask p setSolutionString 1 --X, ask p setSolutionString 2 --X"
call do "ask p setSolutionString 3 XXX"
set p solved gone
]
procedure piece n
[
set p pieceGraphicID n 400+n
play p setPieceHomeBox n n*130-880 300 n*130-780 400
]
procedure begin
[
p=RPentominoGame 100 80 5
call do "give p cellsH 5 cellsV 4 cellWidth 20 cellHeight 20 rotaterGraphicID 420"
call do "give p flipperGraphicID 421 pieceFlippedSoundID 21 pieceGoHomeSoundID 22"
call do "give p piecePickedUpSoundID 23 pieceRotatedSoundID 24 pieceSnappedSoundID 25"
call piece 7
call piece 10
]
call begin
call follow
;# 0 title Zorbet Voyages
;# 7 end until
;# 0 title Zorbet Voyages
;# 108 cursor -2
;# 109 cursor -4
;# 110 cursor -2
;# 111 cursor -4
;# 112 cursor -1
;# 1001 end until
;=  gone gone
;! WAVE resource 23 not found.
;! WAVE resource 24 not found.
;! WAVE resource 24 not found.
;! WAVE resource 24 not found.
;! WAVE resource 24 not found.
;! WAVE resource 21 not found.
;! ASEQ resource 99 not found.
;! WAVE resource 22 not found.
;! WAVE resource 21 not found.
;! WAVE resource 22 not found.
;! WAVE resource 21 not found.
;! WAVE resource 22 not found.
;!  1 2 3 0 4 420 ,/4 ,/0
;! WAVE resource 25 not found.
;!  1,1/4 ,/0
;! WAVE resource 25 not found.
;!  0,0/4 ,/0
;!  again ,/0 ,/0
;! WAVE resource 23 not found.
;! WAVE resource 22 not found.
