; The pattern of a pentomino board as it is seen and stamped: without its picture, of all letters
; but one, changed after it was stamped, hidden; and the stamp of a board that is gone. Cursors over
; pieces that were made before and after.
;: rsc golden
;> 50 screenshot none.png
;> 140 screenshot seen.png
;> 230 screenshot changed.png
;> 320 screenshot none.hidden.png
;> 410 screenshot larger.png
;> 500 screenshot larger.left.png
;> 550 move 100 370
;> 560 click 100 370
;> 580 click 460 390
;> 640 click 460 390
yield off
ActivateDLL golden.rsc
include steps.mps
procedure begin
[
p=RPentominoGame 100 80 5
call do "give p cellsH 5 cellsV 4 cellWidth 20 cellHeight 20"
]
procedure pattern
[
call cut
play p setSolutionString word words|1|(~words-1)
words=""
]
Scene 100
call do "begin, pattern 1 X-?, ask p stamp"
DisplayScreen
call do "await 90, give p solutionBoxGraphicID 99, look p solutionBoxGraphicID"
call do "give p solutionBoxGraphicID 422, ask p stamp, await 90, pattern 1 -X, ask p offset 0 20"
call do "await 90, ask p offset 0 -20, give p visible 0, ask p unstamp, ask p unstamp, await 90"
call do "give p visible 1 cellsV 3, pattern 2 X, give p cellHeight 40, ask p stamp, await 90"
call do "lose p, await 90, begin, look p pieceGrabAOCursorID pieceSpotAOCursorID"
set p pieceGraphicID 7 407
call do "ask p setPieceHomeBox 7 30 300 130 400"
call do "give p pieceGrabAOCursorID -4 pieceSpotAOCursorID -2"
set p pieceGraphicID 10 410
call do "ask p setPieceHomeBox 10 420 300 520 400, tell, await 90, give p pieceGrabAOCursorID 65535"
;=  -1 -1,-1
;! ASEQ resource 99 not found.
;# 0 title Zorbet Voyages
;# 550 cursor -2
;# 560 cursor -4
;# 570 cursor -2
;# 580 cursor -4
;# 590 cursor -2
;# 640 cursor -1
;# 650 cursor -2
;# 652 cursor -1
;# 652 end until
