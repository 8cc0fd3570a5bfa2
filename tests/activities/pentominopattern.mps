; The pattern of a pentomino board as it is seen and stamped: without its picture, of all letters but one, changed after
; it was stamped, hidden; and the stamp of a board that is gone. Cursors over pieces that were made before and after.
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
procedure begin
[
board=RPentominoGame 100 80 5
set board cellsH 5
set board cellsV 4
set board cellWidth 20
set board cellHeight 20
]
Scene 100
call begin
play board setSolutionString 1 "X-?"
play board stamp
DisplayScreen
pause 0.1
set board solutionBoxGraphicID 99
get board solutionBoxGraphicID a
set board solutionBoxGraphicID 422
play board stamp
pause 0.1
play board setSolutionString 1 "-X"
play board offset 0 20
pause 0.1
play board offset 0 -20
set board visible 0
play board unstamp
play board unstamp
pause 0.1
set board visible 1
set board cellsV 3
play board setSolutionString 2 "X"
set board cellHeight 40
play board stamp
pause 0.1
drop board
pause 0.1
call begin
get board pieceGrabAOCursorID b
get board pieceSpotAOCursorID c
set board pieceGraphicID 7 407
play board setPieceHomeBox 7 30 300 130 400
set board pieceGrabAOCursorID -4
set board pieceSpotAOCursorID -2
set board pieceGraphicID 10 410
play board setPieceHomeBox 10 420 300 520 400
say a b c
pause 0.1
set board pieceGrabAOCursorID 65535
;= -1 -1 -1
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
